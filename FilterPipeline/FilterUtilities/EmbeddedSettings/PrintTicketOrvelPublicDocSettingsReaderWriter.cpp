#include "EmbeddedSettings/PrintTicketOrvelPublicDocSettingsReaderWriter.h"

#include "ComSupport/ThrowHresult.h"
#include "PrintSchema/DocumentQuery.h"
#include "PrintSchema/PrintSchemaKeywords.h"
#include "PrintSchema/PrintTicketXmlDocument.h"
#include "PrintSchema/TreeChange.h"

#include <Xml/UtilitiesLibraryHost.h>

#include <atlcomcli.h>
#include <msxml6.h>

namespace {

using This = PrintTicketOrvelPublicDocSettingsReaderWriter;
using Depth = PublicDocSettingsDocument::Depth;

constexpr const wchar_t* const& parameterName = PrintSchema::JobOrvelPublicDocSettings::PARAMETERNAME;
constexpr char committing[] = "while committing OrvelPublicDocSettings changes";

CXString decimal(int value) {
    CXString text;
    text.Format(L"%d", value);
    return text;
}

} // namespace

This::PrintTicketOrvelPublicDocSettingsReaderWriter(PrintTicketXmlDocument* ticket,
                                                    EmptyDocument emptyDocument)
    : m_ticket(ticket), m_emptyDocument(emptyDocument) {}

This::~PrintTicketOrvelPublicDocSettingsReaderWriter() = default;

void This::Dump(DumpArgs) const {}

bool This::HasOrvelPublicDocSettings() {
    bool hasSettings = false;
    PublicDocSettingsDocument::Guarded(parameterName, [&] {
        CPString xml;
        GetJobOrvelPublicDocSettingsXml(xml);
        hasSettings = !xml.isEmptyOrOnlyWhitespace();
        return S_OK;
    });
    return hasSettings;
}

bool This::IsPresent(const CXString& name, Depth depth) {
    return PublicDocSettingsDocument::Guarded(
               name, [&] { return Document().Find(name, depth) ? S_OK : S_FALSE; }) == S_OK;
}

bool This::IsOrvelPublicDocSettingsFeaturePresent(const CXString& name) {
    return IsPresent(name, Depth::Any);
}

bool This::IsOrvelPublicDocSettingsFeaturePresentAtJobLevel(const CXString& name) {
    return IsPresent(name, Depth::JobLevel);
}

LONG This::GetCurrentValueAsStringForOrvelPublicDocSettingsFeature(const CXString& name, bool& specified,
                                                                   CXString& value) {
    specified = false;
    value.Empty();
    return PublicDocSettingsDocument::Guarded(
        name, [&] { return Document().GetString(name, Depth::Any, specified, value); });
}

LONG This::GetCurrentValueAsStringForJobLevelOrvelPublicDocSettingsFeature(const CXString& name,
                                                                           bool& specified, CXString& value) {
    specified = false;
    value.Empty();
    return PublicDocSettingsDocument::Guarded(
        name, [&] { return Document().GetString(name, Depth::JobLevel, specified, value); });
}

LONG This::GetCurrentValueAsIntForOrvelPublicDocSettingsFeature(const CXString& name, bool& specified,
                                                                int& value, int defaultValue) {
    specified = false;
    value = defaultValue;
    return PublicDocSettingsDocument::Guarded(
        name, [&] { return Document().GetInt(name, specified, value, defaultValue); });
}

LONG This::GetNumberOfChildrenForOrvelPublicDocSettingsFeature(const CXString& name, bool& specified,
                                                               unsigned int& count) {
    specified = false;
    count = 0;
    return PublicDocSettingsDocument::Guarded(
        name, [&] { return Document().GetNumberOfChildren(name, specified, count); });
}

LONG This::GetCurrentValueAsStringForOrvelPublicDocSettingsFeature(const CXString& name, unsigned int index,
                                                                   const CXString& childName, bool& specified,
                                                                   CXString& value) {
    specified = false;
    value.Empty();
    return PublicDocSettingsDocument::Guarded(
        name, [&] { return Document().GetMemberString(name, index, childName, specified, value); });
}

LONG This::GetCurrentValueAsIntForOrvelPublicDocSettingsFeature(const CXString& name, unsigned int index,
                                                                const CXString& childName, bool& specified,
                                                                int& value, int defaultValue) {
    specified = false;
    value = defaultValue;
    return PublicDocSettingsDocument::Guarded(name, [&] {
        return Document().GetMemberInt(name, index, childName, specified, value, defaultValue);
    });
}

LONG This::VisitEntriesOfOrvelPublicDocSettingsFeature(const CXString& name,
                                                       const std::function<void(const XmlDomNode&)>& visit) {
    return PublicDocSettingsDocument::Guarded(name, [&] {
        const XmlDomNode::Pointer collection = Document().Find(name);
        if (!collection || !PublicDocSettingsDocument::IsSpecified(*collection)) return S_FALSE;
        for (auto entry = PublicDocSettingsDocument::FindEntry(*collection, 0); entry;
             entry = PublicDocSettingsDocument::NextEntry(*entry))
            visit(*entry);
        return S_OK;
    });
}

LONG This::SetCurrentValueAsStringForOrvelPublicDocSettingsFeature(const CXString& name,
                                                                   const CXString& syntax, bool specified,
                                                                   const CXString& value) {
    return PublicDocSettingsDocument::Guarded(
        name, [&] { return Document().SetString(name, syntax, specified, value); });
}

LONG This::SetCurrentValueAsIntForOrvelPublicDocSettingsFeature(const CXString& name, const CXString& syntax,
                                                                bool specified, int value) {
    return PublicDocSettingsDocument::Guarded(
        name, [&] { return Document().SetString(name, syntax, specified, decimal(value)); });
}

LONG This::SetCurrentValueAsStringForOrvelPublicDocSettingsFeature(const CXString& name, unsigned int index,
                                                                   const CXString& childName,
                                                                   const CXString& syntax, bool specified,
                                                                   const CXString& value) {
    return PublicDocSettingsDocument::Guarded(
        name, [&] { return Document().SetMemberString(name, index, childName, syntax, specified, value); });
}

LONG This::SetCurrentValueAsInitForOrvelPublicDocSettingsFeature(const CXString& name, unsigned int index,
                                                                 const CXString& childName,
                                                                 const CXString& syntax, bool specified,
                                                                 int value) {
    return PublicDocSettingsDocument::Guarded(name, [&] {
        return Document().SetMemberString(name, index, childName, syntax, specified, decimal(value));
    });
}

LONG This::SetCurrentValueForOrvelPublicDocSettingsFeatureWithXmlDomNode(const CXString& name,
                                                                         XmlDomNode* node) {
    if (node == nullptr) return E_INVALIDARG;
    return PublicDocSettingsDocument::Guarded(name, [&] { return Document().Replace(name, *node); });
}

LONG This::DeleteOrvelPublicDocSettingsFeature(const CXString& name) {
    return PublicDocSettingsDocument::Guarded(name, [&] { return Document().Delete(name); });
}

LONG This::Commit(const MicrosoftXmlParser& document) {
    const CPString xml = PublicDocSettingsDocument::GetText(document);
    if (xml.view().size() > maxCommittedBytes) return E_FAIL;
    SetJobOrvelPublicDocSettingsXml(xml);
    return S_OK;
}

LONG This::CommitChangesToPrintTicket() {
    try {
        return m_parser ? Commit(*m_parser) : S_FALSE;
    } catch (...) {
        return UtilitiesLibraryHost::CatchPossibleComErrorExceptionAndAssertUnreachable(committing);
    }
}

LONG This::ChangeAndCommit(const std::function<LONG(const PublicDocSettingsDocument&)>& change) {
    try {
        const MicrosoftXmlParser* const current = GetDomWithOrvelPublicDocSettingsInitOnFirstUse();
        if (current == nullptr) return S_FALSE;
        auto changed = PublicDocSettingsDocument::Parse(PublicDocSettingsDocument::GetText(*current));
        LONG result = changed ? change(PublicDocSettingsDocument(changed.get())) : E_FAIL;
        if (SUCCEEDED(result)) result = Commit(*changed);
        if (SUCCEEDED(result)) m_parser.swap(changed);
        return result;
    } catch (...) {
        return UtilitiesLibraryHost::CatchPossibleComErrorExceptionAndAssertUnreachable(committing);
    }
}

MicrosoftXmlParser* This::GetDomWithOrvelPublicDocSettingsInitOnFirstUse() {
    if (m_parser || m_ticket == nullptr) return m_parser.get();
    CPString kept;
    m_parser = PublicDocSettingsDocument::Parse(PublicDocSettingsDocument::ReadOrCreate(
        [&] {
            CPString xml = kept;
            if (xml.isEmptyOrOnlyWhitespace()) GetJobOrvelPublicDocSettingsXml(xml);
            return xml;
        },
        [&](const CPString& xml) {
            if (m_emptyDocument == EmptyDocument::WithCommit)
                kept = xml;
            else
                SetJobOrvelPublicDocSettingsXml(xml);
        }));
    return m_parser.get();
}

void This::GetJobOrvelPublicDocSettingsXml(CPString& xml) {
    const OperationScope operation(
        "PrintTicketOrvelPublicDocSettingsReaderWriter::GetJobOrvelPublicDocSettingsXml");
    xml.clear();
    if (m_ticket == nullptr) return;
    CComPtr<IXMLDOMNode> value;
    m_ticket->GetParameterInitValueNodeIfExists(m_ticket->GetUserKeywordsNsPrefix(), parameterName, &value);
    if (value == nullptr) return;
    CComBSTR text;
    ThrowIfFailed(value->get_text(&text));
    xml = CPString(CPStringUtils::narrowToStdString(text.m_str, text.Length()));
}

void This::SetJobOrvelPublicDocSettingsXml(const CPString& xml) {
    const OperationScope operation(
        "PrintTicketOrvelPublicDocSettingsReaderWriter::SetJobOrvelPublicDocSettingsXml");
    if (m_ticket == nullptr) ThrowComException(E_POINTER);
    const CComBSTR prefix = m_ticket->GetUserKeywordsNsPrefix();
    TreeChange change(m_ticket->GetRootNode());
    CComPtr<IXMLDOMElement> init;
    m_ticket->CreateStringParameterInit(prefix, parameterName, CXString(xml), &init);
    change.Replace(m_ticket->ParameterInitQuery(prefix, parameterName), init, TreeChange::Place::First);
    change.Keep();
}

CXString This::GetAttributeAsString(XmlDomNode* node, const wchar_t* name) {
    return node == nullptr ? CXString() : PublicDocSettingsDocument::GetAttributeAsString(*node, name);
}

bool This::IsSpecified(XmlDomNode* node) {
    // As a node without the attribute.
    return node == nullptr || PublicDocSettingsDocument::IsSpecified(*node);
}
