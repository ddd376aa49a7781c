#include "Ticket/EnforcedValue.h"

#include "ComSupport/FailureBarrier.h"
#include "ComSupport/ThrowHresult.h"
#include "PrintSchema/Bstr.h"
#include "PrintSchema/DocumentQuery.h"
#include "PrintSchema/PrintSchemaKeywords.h"
#include "PrintSchema/PrintTicketXmlDocument.h"

#include <LowLevelFacilities/Failures/CPComException.h>
#include <LowLevelFacilities/Formatter/CPFormat.h>

#include <string_view>

namespace {

using TicketEnforcement::Feature;
using TicketEnforcement::Setter;
using TicketEnforcement::Value;

CComBSTR FeaturePrefix(const PrintTicketXmlDocument& ticket, const Feature& feature) {
    return feature.isPublic ? ticket.GetKeywordsNsPrefix() : ticket.GetUserKeywordsNsPrefix();
}

// An option as it is written: private keywords have a prefix that is fixed.
std::wstring_view Local(std::wstring_view option) { return option.substr(option.find(L':') + 1); }

// The Value of the initialiser that the property refers to, which SetScoredPropertyValue would replace by a
// text that no provider takes. Null where the property has a value of its own, or none.
CComPtr<IXMLDOMNode> FindInitialiserValue(const PrintTicketXmlDocument& ticket, const Feature& feature) {
    DocumentQuery query(ticket);
    query.AddFeature(FeaturePrefix(ticket, feature), feature.ticketName);
    query.AddScoredProperty(ticket.GetKeywordsNsPrefix(), feature.attribute);
    const CComPtr<IXMLDOMNode> property = query.FindFirst();
    if (!property) return nullptr;
    const CComBSTR element = PrintSchemaText::Join(
        {PrintSchemaText::View(ticket.GetFrameworkNsPrefix()), PrintSchema::PARAM_REF_ELEMENT_NAME});
    CComPtr<IXMLDOMNode> reference;
    ThrowIfFailed(property->selectSingleNode(element, &reference));
    CComBSTR name;
    if (!reference || ticket.GetAttributeValue(reference, PrintSchema::NAME_ATTRIBUTE_NAME, &name) != S_OK)
        return nullptr;
    const std::wstring_view local = Local(std::wstring_view(name, name.Length()));
    const std::wstring prefix(name, name.Length() - local.size());
    CComPtr<IXMLDOMNode> value;
    ticket.GetParameterInitValueNodeIfExists(prefix.c_str(), std::wstring(local).c_str(), &value);
    return value;
}

void SetNumber(PrintTicketXmlDocument& ticket, const Feature& feature, int number) {
    if (const CComPtr<IXMLDOMNode> value = FindInitialiserValue(ticket, feature); value)
        ThrowIfFailed(value->put_text(PrintSchemaText::Make(std::to_wstring(number))));
    else
        ticket.SetScoredPropertyValue(feature.ticketName, feature.isPublic, feature.attribute, number);
}

// The results of the setters do not count: a ticket without the feature, or with a nameless option, stays as
// it is.
void Set(PrintTicketXmlDocument& ticket, const Feature& feature, const Value& value) {
    switch (feature.setter) {
    case Setter::ScoredProperty:
        SetNumber(ticket, feature, value.number);
        break;
    case Setter::Option:
        ticket.SetChildNodeOptionAttributeValue(feature.ticketName, feature.isPublic, feature.attribute,
                                                value.text);
        break;
    case Setter::PublicOption: {
        const CComBSTR option =
            PrintSchemaText::Join({PrintSchemaText::View(ticket.GetKeywordsNsPrefix()), value.text});
        ticket.SetChildNodeOptionAttributeValue(feature.ticketName, feature.isPublic, feature.attribute,
                                                option);
        break;
    }
    }
}

bool Overrules(const Feature& feature, const Value& value, const CXString& current) {
    if (current.IsEmpty()) return false; // not there, or without a name
    return feature.setter == Setter::PublicOption ? TicketEnforcement::Replaces(value, current.View())
                                                  : Local(value.text) != current.View();
}

} // namespace

std::vector<EnforcedFeature> FindEnforcedFeatures(const NativeXmlConfigurationFeatureSet& configuration) {
    std::vector<EnforcedFeature> enforced;
    for (const Feature& feature : TicketEnforcement::GetFeatures()) {
        const auto* const configured =
            configuration.TryGetFeature(CPString(std::string(feature.configurationName)));
        const Value* const value =
            configured != nullptr ? TicketEnforcement::FindValue(feature, *configured) : nullptr;
        if (value != nullptr) enforced.push_back({&feature, configured, value});
    }
    return enforced;
}

CXString ReadEnforcedValue(const PrintTicketXmlDocument& ticket, const Feature& feature) {
    CComBSTR text;
    try {
        const HRESULT hr =
            feature.setter == Setter::ScoredProperty
                ? ticket.GetScoredPropertyValue(feature.ticketName, feature.isPublic, feature.attribute,
                                                &text)
                : ticket.GetFeatureOption(FeaturePrefix(ticket, feature), feature.ticketName, &text, nullptr);
        return SUCCEEDED(hr) ? CXString(text) : CXString();
    } catch (const CPComException& failure) {
        if (failure.GetHresult() != E_FAIL) throw;
        return {}; // not a valid name
    }
}

void WriteEnforcedValue(PrintTicketXmlDocument& ticket, const Feature& feature, const CXString& value) {
    const bool isNumber = feature.setter == Setter::ScoredProperty;
    if (!ReadEnforcedValue(ticket, feature).IsEmpty()) {
        const std::wstring option = (feature.isPublic ? L"" : L"ok:") + std::wstring(value.View());
        Set(ticket, feature, {DataModelIds::VAL_UNSPECIFIED, option.c_str(), isNumber ? _wtoi(value) : 0});
        return;
    }
    ticket.DeleteFeatureNodeIfExists(FeaturePrefix(ticket, feature), feature.ticketName);
    CComPtr<IXMLDOMElement> node;
    CComPtr<IXMLDOMElement> option;
    if (isNumber) {
        ThrowIfFailed(ticket.CreateFeatureOptionPair(feature.ticketName, feature.isPublic, &node, &option));
        ThrowIfFailed(ticket.AppendChildIntegerScoredProperty(option, feature.attribute, _wtoi(value)));
    } else {
        ThrowIfFailed(ticket.CreateFeatureOptionPair(feature.ticketName, feature.isPublic, value,
                                                     feature.isPublic, &node, &option));
    }
    ThrowIfFailed(ticket.AppendChildToRootNode(node));
}

std::vector<EnforcedChange> EnforceConfiguration(PrintTicketXmlDocument& ticket,
                                                 const NativeXmlConfigurationFeatureSet& configuration) {
    const OperationScope operation("PrintTicketManager::SanitizePrintTicketForXmlConfig");
    std::vector<EnforcedChange> changes;
    for (const auto& [feature, configured, value] : FindEnforcedFeatures(configuration)) {
        try {
            const CXString current = ReadEnforcedValue(ticket, *feature);
            if (!Overrules(*feature, *value, current)) continue;
            Set(ticket, *feature, *value);
            changes.push_back({feature, configured, current});
        } catch (...) {
            ReportCaughtException();
        }
    }
    return changes;
}
