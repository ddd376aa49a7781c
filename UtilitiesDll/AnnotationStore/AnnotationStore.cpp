#include "AnnotationStore/AnnotationStore.h"

#include "LowLevelFacilities/Failures/CPComException.h"
#include "LowLevelFacilities/Failures/CPExceptionInvalidArgument.h"
#include "LowLevelFacilities/Failures/ThrowFailure.h"
#include "LowLevelFacilities/Formatter/CPFormat.h"
#include "LowLevelFacilities/Strings/CPStringUtils.h"
#include "Xml/MicrosoftXmlParser.h"
#include "Xml/XmlText.h"

#include <utf16units.h>

#include <string>
#include <string_view>
#include <utility>

namespace {

constexpr wchar_t rootElement[] = L"AnnotationStore";
constexpr wchar_t entryElement[] = L"Definition";
constexpr wchar_t definitionElement[] = L"annotation-col-api";
constexpr wchar_t nameAttribute[] = L"name";
constexpr wchar_t versionAttribute[] = L"version";
constexpr wchar_t spaceAttribute[] = L"xml:space";
constexpr wchar_t ownVersion[] = L"1.0";
constexpr std::wstring_view majorVersion = L"1.";

template <typename... Arguments>
[[noreturn]] void Refuse(const char* format, const Arguments&... arguments) {
    ThrowFailure<CPExceptionInvalidArgument>([&] { return FormatStdString(format, arguments...); });
}

/// Whether it is the parser that refused a text, by one of its own codes (0xC00CExxx).
bool IsParserCode(HRESULT code) { return (static_cast<DWORD>(code) & 0xFFFFF000U) == 0xC00CE000U; }

/// The root of a text, whose document lives as long. Throws if it is not well-formed.
XmlDomNode::Pointer Parse(const CXString& what, const CPString& xml) {
    MicrosoftXmlParser parser(what, false);
    try {
        parser.parse(xml);
    } catch (const CPComException& failure) {
        if (IsParserCode(failure.GetHresult())) Refuse("%s", failure.getExceptionMessage());
        throw;
    }
    XmlDomNode::Pointer root = parser.getDocument().GetDocumentElement();
    if (!root) Refuse("%s: there is no element", what);
    return root;
}

CPString TextOf(const XmlDomNode& element) {
    CComBSTR xml;
    ThrowIfFailed(element.GetInterface()->get_xml(&xml));
    const std::wstring_view text = XmlText::viewOf(xml);
    return CPString(CPStringUtils::narrowToStdString(text.data(), text.size()));
}

/// What an attribute can hold as it is: no characters that XML has not, no half of a pair.
bool IsXmlText(std::wstring_view text) {
    for (std::size_t at = 0; at < text.size(); ++at) {
        const wchar_t unit = text[at];
        if (OvPlatform::Utf16::IsPairAt(text, at))
            ++at;
        else if (unit < 0x20 || unit == 0xfffe || unit == 0xffff || OvPlatform::Utf16::IsSurrogate(unit))
            return false;
    }
    return true;
}

void CheckName(const CXString& name) {
    if (name.IsBlank()) Refuse("An annotation definition without a name");
    if (name.View().size() > AnnotationStore::maxNameUnits)
        Refuse("The name of an annotation definition is longer than %u units", AnnotationStore::maxNameUnits);
    if (!IsXmlText(name.View())) Refuse("The name of an annotation definition cannot stand in XML");
}

std::string Escaped(const CXString& name) {
    std::string escaped;
    for (const char unit : CPStringUtils::narrowToStdString(name, name.View().size())) {
        switch (unit) {
        case '&':
            escaped += "&amp;";
            break;
        case '<':
            escaped += "&lt;";
            break;
        case '"':
            escaped += "&quot;";
            break;
        default:
            escaped += unit;
        }
    }
    return escaped;
}

bool IsText(const XmlDomNode& node) {
    DOMNodeType type = NODE_INVALID;
    ThrowIfFailed(node.GetInterface()->get_nodeType(&type));
    return type == NODE_TEXT || type == NODE_CDATA_SECTION;
}

/// The node or the first element behind it. Text on the way is refused.
XmlDomNode::Pointer NextElement(XmlDomNode::Pointer node) {
    while (node && !node->IsElement()) {
        if (IsText(*node) && !node->GetTextValue().IsBlank())
            Refuse("There is text between the elements of an annotation store");
        node = node->GetNextSibling();
    }
    return node;
}

/// Whether blanks in an element are kept: what it says itself, or else what its surroundings say.
bool KeepsBlanks(const XmlDomNode& element, bool inSurroundings) {
    CXString own;
    return element.GetAttribute(spaceAttribute, own) ? own == L"preserve" : inSurroundings;
}

/// Says whether the store is of a later version than this reader, and so may hold what is unknown here.
bool IsLater(const XmlDomNode& root) {
    CXString version;
    root.GetAttribute(versionAttribute, version);
    if (!version.View().starts_with(majorVersion) || version.View().size() == majorVersion.size())
        Refuse("The version '%s' of an annotation store is not known", version);
    return !(version == ownVersion);
}

} // namespace

AnnotationStore::AnnotationStore(CPString&& xml, bool throwIfInvalid) {
    const OperationScope operation("AnnotationStore::AnnotationStore");
    const CPString text = std::move(xml);
    try {
        Read(text);
    } catch (const CPExceptionInvalidArgument&) {
        m_definitions.clear();
        if (throwIfInvalid) throw;
    }
}

void AnnotationStore::Read(const CPString& xml) {
    if (xml.isEmptyOrOnlyWhitespace()) return;
    if (xml.view().size() > maxBytes) Refuse("An annotation store of more than %u bytes", maxBytes);
    const XmlDomNode::Pointer root = Parse(L"annotation store", xml);
    if (!(root->GetNodeName() == rootElement)) Refuse("'%s' is no annotation store", root->GetNodeName());
    const bool isLater = IsLater(*root);
    const bool keepsBlanks = KeepsBlanks(*root, false);
    for (auto entry = NextElement(root->GetFirstChild()); entry;
         entry = NextElement(entry->GetNextSibling())) {
        if (!(entry->GetNodeName() == entryElement)) {
            if (!isLater) Refuse("'%s' is unknown in an annotation store", entry->GetNodeName());
            continue;
        }
        CXString name;
        entry->GetAttribute(nameAttribute, name);
        CheckName(name);
        const XmlDomNode::Pointer definition = NextElement(entry->GetFirstChild());
        if (!definition || !(definition->GetNodeName() == definitionElement))
            Refuse("The annotation definition '%s' does not begin with '%s'", name, definitionElement);
        if (!isLater && NextElement(definition->GetNextSibling()))
            Refuse("The annotation definition '%s' has more than one element", name);
        // It goes on without its surroundings.
        if (KeepsBlanks(*definition, KeepsBlanks(*entry, keepsBlanks)))
            definition->SetAttribute(spaceAttribute, L"preserve");
        if (m_definitions.size() == maxDefinitions)
            Refuse("An annotation store of more than %u definitions", maxDefinitions);
        if (!m_definitions.emplace(name, TextOf(*definition)).second)
            Refuse("The annotation definition '%s' stands twice", name);
    }
}

CPString AnnotationStore::GetAnnotationStoreXml() const {
    std::string xml = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
    xml += FormatStdString("<%s %s=\"%s\">", rootElement, versionAttribute, ownVersion);
    for (const auto& [name, definition] : m_definitions) {
        xml += FormatStdString("\n<%s %s=\"%s\">", entryElement, nameAttribute, Escaped(name));
        xml += definition.view();
        xml += FormatStdString("</%s>", entryElement);
    }
    xml += FormatStdString("\n</%s>\n", rootElement);
    return CPString(std::move(xml));
}

CPString AnnotationStore::GetAnnotationDefinitionByName(const CXString& name) const {
    const auto found = m_definitions.find(name);
    return found == m_definitions.end() ? CPString() : found->second;
}

XmlDomNode::Pointer AnnotationStore::GetAnnotationDefinitionByNameAsXmlDomNode(const CXString& name) const {
    const OperationScope operation("AnnotationStore::GetAnnotationDefinitionByNameAsXmlDomNode");
    const auto found = m_definitions.find(name);
    return found == m_definitions.end() ? nullptr : Parse(L"annotation definition", found->second);
}

void AnnotationStore::AddOrReplaceAnnotationDefinition(const CXString& name, const CPString& definition) {
    const OperationScope operation("AnnotationStore::AddOrReplaceAnnotationDefinition");
    CheckName(name);
    if (definition.view().size() > maxBytes)
        Refuse("An annotation definition of more than %u bytes", maxBytes);
    const XmlDomNode::Pointer root = Parse(L"annotation definition", definition);
    if (!(root->GetNodeName() == definitionElement))
        Refuse("'%s' is no annotation definition", root->GetNodeName());

    AnnotationStore changed = *this;
    changed.m_definitions.insert_or_assign(name, TextOf(*root));
    if (changed.m_definitions.size() > maxDefinitions)
        Refuse("An annotation store of more than %u definitions", maxDefinitions);
    if (changed.GetAnnotationStoreXml().view().size() > maxBytes)
        Refuse("An annotation store of more than %u bytes", maxBytes);
    m_definitions.swap(changed.m_definitions);
}
