#include "Editor.h"

#include "Documents.h"

#include <array>
#include <cstdlib>

namespace {

// Of lengths without a common divisor, so that every one meets every other.
constexpr std::array<const wchar_t*, 3> prefixes = {L"p", L"", L"ns0"};
constexpr std::array<const wchar_t*, 4> uris = {L"urn:p", L"urn:q", L"urn:p", L""};

} // namespace

Editor::Editor(IXMLDOMDocument3* document, const CComBSTR& query)
    : m_document(document), m_other(NewDocument()), m_query(query) {
    m_other->loadXML(CComBSTR(L"<o xmlns:p='urn:o' p:x='1'><p:i/></o>"), nullptr);
    Select();
}

void Editor::Apply(char edit) {
    if (!m_first || !m_second) Select(); // the list was empty, or a node went
    const auto known = edits.find(edit);
    if (known != edits.end() && m_first && m_second) (this->*known->second)();
}

void Editor::Select() {
    m_list.Release();
    m_document->selectNodes(m_query, &m_list);
    Next();
    Next();
}

void Editor::Next() {
    m_first = m_second;
    m_second.Release();
    if (!m_list || m_list->nextNode(&m_second) == S_OK) return;
    m_list->reset();
    m_list->nextNode(&m_second);
}

void Editor::Reload() {
    CComPtr<IStream> stream;
    if (SUCCEEDED(m_document->QueryInterface(&stream))) Load(m_document, stream);
}

void Editor::WriteInto() {
    CComPtr<IStream> stream;
    const std::string_view text = "<p:w xmlns:p='urn:p'><p:x p:y='1'>t</p:x></p:w>";
    if (FAILED(m_document->QueryInterface(&stream))) std::abort();
    stream->Write(text.data(), static_cast<ULONG>(text.size()), nullptr);
}

void Editor::Append() { m_first->appendChild(m_second, nullptr); }

void Editor::Insert() {
    CComPtr<IXMLDOMNode> parent;
    if (m_first->get_parentNode(&parent) == S_OK)
        parent->insertBefore(m_second, CComVariant(static_cast<IUnknown*>(m_first.p)), nullptr);
}

void Editor::Replace() {
    CComPtr<IXMLDOMNode> parent;
    if (m_first->get_parentNode(&parent) == S_OK) parent->replaceChild(m_second, m_first, nullptr);
}

void Editor::Remove() {
    CComPtr<IXMLDOMNode> parent;
    if (m_first->get_parentNode(&parent) == S_OK) parent->removeChild(m_first, nullptr);
}

void Editor::Clone() {
    CComPtr<IXMLDOMNode> copy;
    if (m_first->cloneNode(VARIANT_TRUE, &copy) == S_OK) m_second->appendChild(copy, nullptr);
}

void Editor::Import() {
    CComPtr<IXMLDOMNode> copy;
    if (m_other->importNode(m_first, VARIANT_TRUE, &copy) == S_OK) m_second->appendChild(copy, nullptr);
}

void Editor::MoveAway() {
    CComPtr<IXMLDOMElement> root;
    if (m_other->get_documentElement(&root) == S_OK) root->appendChild(m_first, nullptr);
}

void Editor::MoveHere() {
    CComPtr<IXMLDOMElement> root;
    if (m_other->get_documentElement(&root) != S_OK) return;
    CComPtr<IXMLDOMNode> last;
    if (root->get_lastChild(&last) == S_OK) m_first->appendChild(last, nullptr);
}

void Editor::SetText() { m_first->put_text(CComBSTR(L" <t>\r\n]]>&\x00E4 ")); }

void Editor::SetAttribute(const wchar_t* name, const wchar_t* value) {
    if (const CComQIPtr<IXMLDOMElement> element(m_first.p); element)
        element->setAttribute(CComBSTR(name), CComVariant(value));
}

void Editor::SetPlain() { SetAttribute(L"x", L"\n\"<&>"); }

void Editor::SetPrefixed() { SetAttribute(L"p:x", L"1"); }

void Editor::SetOtherPrefixed() { SetAttribute(L"q:x", L"2"); }

void Editor::Declare() { SetAttribute(L"xmlns:p", L"urn:p"); }

void Editor::DeclareAnew() { SetAttribute(L"xmlns:q", L"urn:p"); }

void Editor::DeclareDefault() { SetAttribute(L"xmlns", L"urn:d"); }

void Editor::SetType() { m_first->put_dataType(CComBSTR(L"int")); }

void Editor::RemoveFirstAttribute() {
    CComPtr<IXMLDOMNamedNodeMap> map;
    CComPtr<IXMLDOMNode> attribute;
    if (m_first->get_attributes(&map) != S_OK || map->get_item(0, &attribute) != S_OK) return;
    CComBSTR name;
    attribute->get_nodeName(&name);
    map->removeNamedItem(name, nullptr);
    CComPtr<IXMLDOMNamedNodeMap> target;
    if (m_second->get_attributes(&target) == S_OK) target->setNamedItem(attribute, nullptr);
}

void Editor::Normalize() {
    if (const CComQIPtr<IXMLDOMElement> element(m_first.p); element) element->normalize();
}

void Editor::Split() {
    CComPtr<IXMLDOMText> right;
    if (const CComQIPtr<IXMLDOMText> text(m_first.p); text) text->splitText(1, &right);
}

void Editor::AppendFragment() {
    CComPtr<IXMLDOMDocumentFragment> fragment;
    if (FAILED(m_document->createDocumentFragment(&fragment))) std::abort();
    fragment->appendChild(m_first, nullptr);
    m_second->appendChild(fragment, nullptr);
}

void Editor::Create(int type) {
    CComPtr<IXMLDOMNode> node;
    const wchar_t* name = type == NODE_PROCESSING_INSTRUCTION ? L"n" : L"p:n";
    m_document->createNode(CComVariant(type), CComBSTR(name), CComBSTR(L"urn:n"), &node);
    if (!node) return;
    node->put_text(CComBSTR(L"c]]>d"));
    m_first->appendChild(node, nullptr);
    if (const CComQIPtr<IXMLDOMElement> element(m_first.p); element)
        if (const CComQIPtr<IXMLDOMAttribute> attribute(node.p); attribute)
            element->setAttributeNode(attribute, nullptr);
}

void Editor::CreateElement() { Create(NODE_ELEMENT); }

void Editor::CreateAttribute() { Create(NODE_ATTRIBUTE); }

void Editor::CreateSection() { Create(NODE_CDATA_SECTION); }

void Editor::CreateComment() { Create(NODE_COMMENT); }

void Editor::CreateInstruction() { Create(NODE_PROCESSING_INSTRUCTION); }

const wchar_t* Editor::NextPrefix() { return prefixes[m_prefix++ % prefixes.size()]; }

const wchar_t* Editor::NextUri() { return uris[m_uri++ % uris.size()]; }

CComBSTR Editor::NextName(const wchar_t* local) {
    CComBSTR name = NextPrefix();
    if (name.Length() != 0) name += L":";
    name += local;
    return name;
}

void Editor::AddElement() {
    CComPtr<IXMLDOMNode> element;
    m_document->createNode(CComVariant(NODE_ELEMENT), NextName(L"e"), CComBSTR(NextUri()), &element);
    if (!element) return;
    m_first->appendChild(element, nullptr);
    m_second = element;
}

void Editor::AddAttribute() {
    CComPtr<IXMLDOMNode> node;
    m_document->createNode(CComVariant(NODE_ATTRIBUTE), NextName(L"v"), CComBSTR(NextUri()), &node);
    if (!node) return;
    node->put_text(CComBSTR(L"p:\r\n\t"));
    const CComQIPtr<IXMLDOMElement> element(m_first.p);
    const CComQIPtr<IXMLDOMAttribute> attribute(node.p);
    if (element && attribute) element->setAttributeNode(attribute, nullptr);
}

void Editor::SetNamed() { SetAttribute(NextName(L"w"), L"ns0:x"); }

void Editor::GiveName() {
    constexpr std::array<const wchar_t*, 3> names = {L"n", L"", L"p:\x00E4"};
    SetAttribute(L"name", names[m_name++ % names.size()]);
}

void Editor::TakeName() {
    if (const CComQIPtr<IXMLDOMElement> element(m_first.p); element)
        element->removeAttribute(CComBSTR(L"name"));
}

void Editor::DeclareAny() {
    const CComBSTR prefix = NextPrefix();
    CComBSTR name = L"xmlns";
    if (prefix.Length() != 0) name += L":";
    name += prefix;
    SetAttribute(name, NextUri());
}

void Editor::UndeclareAny() {
    const CComBSTR prefix = NextPrefix();
    CComBSTR name = L"xmlns";
    if (prefix.Length() != 0) name += L":";
    name += prefix;
    if (const CComQIPtr<IXMLDOMElement> element(m_first.p); element) element->removeAttribute(name);
}

void Editor::MoveDeclaration() {
    CComPtr<IXMLDOMNamedNodeMap> from, to;
    CComPtr<IXMLDOMNode> declaration;
    if (m_first->get_attributes(&from) != S_OK || m_second->get_attributes(&to) != S_OK) return;
    if (from->removeNamedItem(CComBSTR(L"xmlns:p"), &declaration) == S_OK)
        to->setNamedItem(declaration, nullptr);
}

void Editor::ChangeAttribute() {
    CComPtr<IXMLDOMNamedNodeMap> map;
    CComPtr<IXMLDOMNode> attribute, text;
    if (m_first->get_attributes(&map) != S_OK || map->nextNode(&attribute) != S_OK) return;
    attribute->put_nodeValue(CComVariant(NextUri()));
    if (attribute->get_firstChild(&text) != S_OK) return;
    text->put_text(CComBSTR(L"q:\"\r]]>"));
    CComPtr<IXMLDOMText> right;
    if (const CComQIPtr<IXMLDOMText> left(text.p); left) left->splitText(2, &right);
}

void Editor::SetSpace() {
    constexpr std::array<const wchar_t*, 3> words = {L"preserve", L"default", L"other"};
    SetAttribute(L"xml:space", words[m_prefix++ % words.size()]);
}

void Editor::SetBlanks() { m_first->put_text(CComBSTR(L" \n ")); }

void Editor::SetData() { m_first->put_nodeValue(CComVariant(L" \r\n-]]>?\r")); }

void Editor::RemoveLast() {
    CComPtr<IXMLDOMNode> last;
    if (m_first->get_lastChild(&last) == S_OK) m_first->removeChild(last, nullptr);
}

void Editor::Keep() { m_kept.push_back(m_first); }

void Editor::Drop() { m_kept.clear(); }

const std::map<char, Editor::Edit> Editor::edits = {
    {'>', &Editor::Next},
    {'?', &Editor::Select},
    {'L', &Editor::Reload},
    {write, &Editor::WriteInto},
    {'a', &Editor::Append},
    {'i', &Editor::Insert},
    {'r', &Editor::Replace},
    {'d', &Editor::Remove},
    {'c', &Editor::Clone},
    {'I', &Editor::Import},
    {'m', &Editor::MoveAway},
    {'M', &Editor::MoveHere},
    {'t', &Editor::SetText},
    {'x', &Editor::SetPlain},
    {'p', &Editor::SetPrefixed},
    {'q', &Editor::SetOtherPrefixed},
    {'N', &Editor::Declare},
    {'Q', &Editor::DeclareAnew},
    {'D', &Editor::DeclareDefault},
    {'T', &Editor::SetType},
    {'A', &Editor::RemoveFirstAttribute},
    {'n', &Editor::Normalize},
    {'s', &Editor::Split},
    {'f', &Editor::AppendFragment},
    {'1', &Editor::CreateElement},
    {'2', &Editor::CreateAttribute},
    {'4', &Editor::CreateSection},
    {'8', &Editor::CreateComment},
    {'7', &Editor::CreateInstruction},
    {'E', &Editor::AddElement},
    {'V', &Editor::AddAttribute},
    {'w', &Editor::SetNamed},
    {'g', &Editor::GiveName},
    {'h', &Editor::TakeName},
    {'X', &Editor::DeclareAny},
    {'U', &Editor::UndeclareAny},
    {'u', &Editor::MoveDeclaration},
    {'v', &Editor::ChangeAttribute},
    {'S', &Editor::SetSpace},
    {'b', &Editor::SetBlanks},
    {'z', &Editor::SetData},
    {'l', &Editor::RemoveLast},
    {'k', &Editor::Keep},
    {'K', &Editor::Drop},
};
