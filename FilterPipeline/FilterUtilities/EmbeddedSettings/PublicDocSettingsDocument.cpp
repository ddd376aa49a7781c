#include "EmbeddedSettings/PublicDocSettingsDocument.h"

#include "DataModel/PrintSchemaKeywordLiterals.h"
#include "PrintSchema/TreeChange.h"

#include <LowLevelFacilities/Failures/CPComException.h>
#include <LowLevelFacilities/Failures/ThrowComException.h>
#include <LowLevelFacilities/Formatter/CPFormat.h>
#include <Xml/UtilitiesLibraryHost.h>
#include <Xml/XmlOutputUtf8StringCallback.h>

#include <string_view>

namespace {

constexpr wchar_t syntaxAttribute[] = L"syntax";
constexpr const wchar_t* specifiedAttribute = PrintSchema::Keywords::SPECIFIED_ATTRIBUTE_NAME;
constexpr wchar_t notSpecified[] = L"false";

/// Whether blanks are part of a value of that syntax.
bool KeepsBlanks(const CXString& syntax) { return syntax == L"name" || syntax == L"text"; }

/// Whether it is the platform's XML parser that refused the text, by one of its own codes (0xC00CExxx).
bool IsParserCode(HRESULT code) { return (static_cast<DWORD>(code) & 0xFFFFF000U) == 0xC00CE000U; }

/// Puts another element in the place of one, which it is but for its text and marks. No syntax stays as it
/// is.
void ChangeElement(const XmlDomNode& element, const CXString& syntax, bool specified, const CXString& value) {
    CComPtr<IXMLDOMNode> copy;
    ThrowIfFailed(element.GetInterface()->cloneNode(VARIANT_TRUE, &copy));
    XmlDomNode changed(copy);
    if (!syntax.IsEmpty()) changed.SetAttribute(syntaxAttribute, syntax);
    CXString mark;
    const bool isMarked = changed.GetAttribute(specifiedAttribute, mark);
    if (specified && isMarked && mark == notSpecified) changed.RemoveAttribute(specifiedAttribute);
    // Deliberate: a mark with another text stays, and the element counts as specified.
    if (!specified && !isMarked) changed.SetAttribute(specifiedAttribute, notSpecified);
    changed.SetTextValue(value);
    CComPtr<IXMLDOMNode> parent;
    ThrowIfFailed(element.GetInterface()->get_parentNode(&parent));
    ThrowIfFailed(parent->replaceChild(copy, element.GetInterface(), nullptr));
}

XmlDomNode::Pointer NextElement(XmlDomNode::Pointer node) {
    while (node && !node->IsElement())
        node = node->GetNextSibling();
    return node;
}

LONG ToInt(LONG found, bool specified, const CXString& text, int& value) {
    if (FAILED(found)) return found;
    if (found != S_OK || !specified || text.IsBlank()) return S_FALSE;
    value = text.GetAsInt();
    return S_OK;
}

} // namespace

CPString PublicDocSettingsDocument::GetEmptyDocument() {
    constexpr char format[] = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                              "<%s cpss-version=\"2.07\" version=\"2.0\" xml:lang=\"en-US\""
                              " xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\"> </%s>";
    constexpr char root[] = "OrvelPublicDocSettings";
    return CPString(FormatStdString(format, root, root));
}

CPString PublicDocSettingsDocument::ReadOrCreate(const std::function<CPString()>& read,
                                                 const std::function<void(const CPString&)>& write) {
    CPString text = read();
    if (!text.isEmptyOrOnlyWhitespace()) return text;
    write(GetEmptyDocument());
    return read();
}

PublicDocSettingsDocument::Parser PublicDocSettingsDocument::Parse(const CPString& text) {
    if (text.isEmptyOrOnlyWhitespace()) return nullptr;
    try {
        Parser parser(new MicrosoftXmlParser(L"Don't Know", false));
        parser->parse(text);
        return parser;
    } catch (const CPComException& failure) {
        if (!IsParserCode(failure.GetHresult())) throw;
        return nullptr;
    }
}

CPString PublicDocSettingsDocument::GetText(const MicrosoftXmlParser& document) {
    CPString text;
    XmlOutputUtf8StringCallback output(text, XmlOutputCallback::DoNotEnhanceXmlLegibility);
    document.convertToXmlStream(output, true);
    return text;
}

LONG PublicDocSettingsDocument::ReportCaughtException(const CXString& name) noexcept {
    CPString message;
    try {
        // The doubled words are part of the message.
        message = CPString(FormatStdString(
            "while parsing while parsing PrintTicket's JobOrvelPublicDocSettings for %s", name));
    } catch (...) {
        message.clear(); // Out of memory: the code is all that can be told.
    }
    return UtilitiesLibraryHost::CatchPossibleComErrorExceptionAndAssertUnreachable(message);
}

XmlDomNode::Pointer PublicDocSettingsDocument::Find(const CXString& name, Depth depth) const {
    if (m_document == nullptr) return nullptr;
    const XmlDomNode::Pointer root = m_document->getDocument().GetDocumentElement();
    if (!root) return nullptr;
    return depth == Depth::JobLevel ? root->FindNamedChildElementNode(name)
                                    : root->FindNamedChildElementNodeRecursive(name, 0);
}

CXString PublicDocSettingsDocument::GetAttributeAsString(const XmlDomNode& node, const wchar_t* name) {
    CXString text;
    node.GetAttribute(name, text);
    return text;
}

bool PublicDocSettingsDocument::IsSpecified(const XmlDomNode& node) {
    return !(GetAttributeAsString(node, specifiedAttribute) == notSpecified);
}

LONG PublicDocSettingsDocument::GetString(const CXString& name, Depth depth, bool& specified,
                                          CXString& value) const {
    specified = false;
    value.Empty();
    const XmlDomNode::Pointer element = Find(name, depth);
    if (!element) return S_FALSE;
    specified = IsSpecified(*element);
    value = element->GetTextValue();
    return S_OK;
}

LONG PublicDocSettingsDocument::GetInt(const CXString& name, bool& specified, int& value,
                                       int defaultValue) const {
    value = defaultValue;
    CXString text;
    const LONG found = GetString(name, Depth::Any, specified, text);
    return ToInt(found, specified, text, value);
}

LONG PublicDocSettingsDocument::GetNumberOfChildren(const CXString& name, bool& specified,
                                                    unsigned int& count) const {
    specified = false;
    count = 0;
    const XmlDomNode::Pointer element = Find(name);
    if (!element) return S_FALSE;
    specified = IsSpecified(*element);
    count = CountEntries(*element);
    return S_OK;
}

XmlDomNode::Pointer PublicDocSettingsDocument::FindEntry(const XmlDomNode& collection, unsigned int index) {
    XmlDomNode::Pointer entry = NextElement(collection.GetFirstChild());
    for (; entry && index > 0; --index)
        entry = NextEntry(*entry);
    return entry;
}

XmlDomNode::Pointer PublicDocSettingsDocument::NextEntry(const XmlDomNode& entry) {
    return NextElement(entry.GetNextSibling());
}

unsigned int PublicDocSettingsDocument::CountEntries(const XmlDomNode& collection) {
    unsigned int count = 0;
    for (auto entry = FindEntry(collection, 0); entry; entry = NextEntry(*entry))
        ++count;
    return count;
}

LONG PublicDocSettingsDocument::GetMemberString(const CXString& name, unsigned int index,
                                                const CXString& member, bool& specified,
                                                CXString& value) const {
    specified = false;
    value.Empty();
    const XmlDomNode::Pointer collection = Find(name);
    if (!collection) return S_FALSE;
    if (!IsSpecified(*collection)) return E_INVALIDARG;
    const XmlDomNode::Pointer entry = FindEntry(*collection, index);
    if (!entry) return S_FALSE;
    return GetMemberString(*entry, member, specified, value);
}

LONG PublicDocSettingsDocument::GetMemberString(const XmlDomNode& entry, const CXString& member,
                                                bool& specified, CXString& value) {
    specified = false;
    value.Empty();
    const XmlDomNode::Pointer found = entry.FindNamedChildElementNodeRecursive(member, 0);
    if (!found || !IsSpecified(*found)) return S_FALSE;
    specified = true;
    value = found->GetTextValue();
    return S_OK;
}

LONG PublicDocSettingsDocument::GetMemberInt(const CXString& name, unsigned int index, const CXString& member,
                                             bool& specified, int& value, int defaultValue) const {
    value = defaultValue;
    CXString text;
    const LONG found = GetMemberString(name, index, member, specified, text);
    return ToInt(found, specified, text, value);
}

LONG PublicDocSettingsDocument::SetString(const CXString& name, const CXString& syntax, bool specified,
                                          const CXString& value) const {
    const OperationScope operation("PublicDocSettingsDocument::SetString");
    if (m_document == nullptr) return S_FALSE;
    if (const XmlDomNode::Pointer element = Find(name)) {
        ChangeElement(*element, {}, specified, value);
        return S_OK;
    }
    const XmlDomNode::Pointer root = m_document->getDocument().GetDocumentElement();
    if (!root) return S_FALSE;
    AppendElement(*root, name, syntax, specified, value);
    return S_OK;
}

LONG PublicDocSettingsDocument::SetMemberString(const CXString& name, unsigned int index,
                                                const CXString& member, const CXString& syntax,
                                                bool specified, const CXString& value) const {
    const OperationScope operation("PublicDocSettingsDocument::SetMemberString");
    if (m_document == nullptr) return S_FALSE;
    const XmlDomNode::Pointer collection = Find(name);
    // Deliberate: the syntax of the collection is not known here, so it is not made, and no failure.
    if (!collection) return S_OK;
    if (!IsSpecified(*collection)) return E_INVALIDARG;
    const XmlDomNode::Pointer entry = FindEntry(*collection, index);
    if (!entry) return S_OK; // Deliberate: entries are the caller's to make.
    if (const XmlDomNode::Pointer element = entry->FindNamedChildElementNodeRecursive(member, 0)) {
        ChangeElement(*element, syntax, specified, value);
    } else {
        AppendElement(*entry, member, syntax, specified, value);
    }
    return S_OK;
}

void PublicDocSettingsDocument::AppendElement(XmlDomNode& parent, const CXString& name,
                                              const CXString& syntax, bool specified,
                                              const CXString& value) const {
    const XmlDomDocument& document = m_document->getDocument();
    const XmlDomNode::Pointer element = document.CreateElement(name);
    if (!syntax.IsEmpty()) element->SetAttribute(syntaxAttribute, syntax);
    if (KeepsBlanks(syntax)) element->SetAttribute(L"xml:space", L"preserve");
    if (!specified) element->SetAttribute(specifiedAttribute, notSpecified);
    element->AppendChild(*document.CreateTextNode(value));
    parent.AppendChild(*element);
}

LONG PublicDocSettingsDocument::Replace(const CXString& name, const XmlDomNode& node) const {
    const OperationScope operation("PublicDocSettingsDocument::Replace");
    if (m_document == nullptr) return S_FALSE;
    const XmlDomNode::Pointer root = m_document->getDocument().GetDocumentElement();
    if (!root) return S_FALSE;
    const XmlDomNode::Pointer old = Find(name);
    TreeChange change(root->GetInterface());
    change.Append(root->GetInterface(), node.GetInterface());
    // The caller may give the element itself, to be the last.
    if (old && !CComPtr<IUnknown>(old->GetInterface()).IsEqualObject(node.GetInterface()))
        change.Remove(old->GetInterface());
    change.Keep();
    return S_OK;
}

LONG PublicDocSettingsDocument::Delete(const CXString& name) const {
    const OperationScope operation("PublicDocSettingsDocument::Delete");
    const XmlDomNode::Pointer element = Find(name);
    if (!element) return S_FALSE;
    CComPtr<IXMLDOMNode> parent;
    ThrowIfFailed(element->GetInterface()->get_parentNode(&parent));
    ThrowIfFailed(parent->removeChild(element->GetInterface(), nullptr));
    return S_OK;
}
