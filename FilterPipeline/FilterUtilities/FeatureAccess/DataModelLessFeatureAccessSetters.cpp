#include "DataModelLessFeatureAccess.h"

#include "FeatureKeywordTables.h"

#include <DataModel/NativeXmlConfigOptionValueDictionary.h>
#include <DeviceDescription/IPrintTicketAccess.h>
#include <EmbeddedSettings/PublicDocSettingsDocument.h>

using namespace DataModelIds;

namespace {

constexpr wchar_t keywordSyntax[] = L"keyword";
constexpr wchar_t nameSyntax[] = L"name";

/// Empty for a value that is not written.
CXString KeywordOf(FeatureKeywordTables::Rows rows, tagValueEnum value) {
    const FeatureKeywordTables::Row* const row = FeatureKeywordTables::FindValue(rows, value);
    return row != nullptr ? CXString(row->keyword.data(), static_cast<int>(row->keyword.size())) : CXString();
}

} // namespace

HRESULT DataModelLessFeatureAccess::SetCurrentValueAsStringForOrvelPublicDocSettingsFeature(
    const CXString& cpssName, const CXString& syntax, bool isSpecified, const CXString& value) {
    const PublicDocSettingsDocument document(InitializeOrvelPublicDocSettingsInitOnFirstUse());
    return PublicDocSettingsDocument::Guarded(
        cpssName, [&] { return document.SetString(cpssName, syntax, isSpecified, value); });
}

void DataModelLessFeatureAccess::SetStringValue(tagFeatureEnum feature, const CXString& text,
                                                bool isSpecified) {
    CXString syntax;
    switch (feature) {
    case FEAT_CREATOR_VERSION_ATTRIBUTES:
    case FEAT_CREATOR_VERSION_PDL:
    case FEAT_CURRENT_USER_NAME:
    case FEAT_CURRENT_USER_DOMAIN:
        break;
    case FEAT_CREATOR_NAME_PDL: {
        const CXString unknown =
            KeywordOf(FeatureKeywordTables::creatorNamePdl, VAL_CREATOR_NAME_PDL_UNKNOWN_APPLICATION);
        syntax = text == unknown ? keywordSyntax : nameSyntax;
        break;
    }
    default:
        return;
    }
    SetCurrentValueAsStringForOrvelPublicDocSettingsFeature(GetFeatureCpssName(feature), syntax, isSpecified,
                                                            text);
}

void DataModelLessFeatureAccess::SetOptionValue(tagFeatureEnum feature, const SimpleOptionValue& value) {
    const auto setElement = [&](FeatureKeywordTables::Rows keywords) {
        SetCurrentValueAsStringForOrvelPublicDocSettingsFeature(GetFeatureCpssName(feature), keywordSyntax,
                                                                value.IsSpecified(),
                                                                KeywordOf(keywords, value.GetValue()));
    };
    const auto setTicketOption = [&](const CXString& option) {
        m_ticket.SetCurrentValueOptionFeature(GetFeaturePrintTicketName(feature), option);
    };
    // Deliberate: the ticket gets the value, specified or not.
    switch (feature) {
    case FEAT_COLLATION:
        if (const CXString option = KeywordOf(FeatureKeywordTables::collation, value.GetValue());
            !option.IsEmpty())
            setTicketOption(option);
        break;
    case FEAT_SIDES_IMAGED:
        if (FeatureKeywordTables::FindValue(FeatureKeywordTables::sides, value.GetValue()) != nullptr)
            setTicketOption(
                CXString(m_optionValueDictionary->GetEntry(value.GetValue()).printTicketOptionName));
        break;
    case FEAT_CREATOR_NAME_ATTRIBUTES:
        setElement(FeatureKeywordTables::creatorName);
        break;
    case FEAT_CREATOR_NAME_PDL:
        setElement(FeatureKeywordTables::creatorNamePdl);
        break;
    default:
        break;
    }
}
