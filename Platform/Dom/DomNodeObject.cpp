#include "Dom/DomNodeObject.h"

#include "Dom/DomDataType.h"
#include "Dom/DomErrorInfo.h"
#include "Dom/DomNamedNodeMap.h"
#include "Dom/DomNode.h"
#include "Dom/DomNodeFactory.h"
#include "Dom/DomNodeList.h"
#include "Dom/DomSerializer.h"
#include "Dom/WhiteSpace.h"
#include "Dom/XPathCache.h"
#include "Xml/TextConversion.h"
#include "Xml/XmlDeclaration.h"

#include <array>

namespace OvPlatform {

namespace {

struct NodeKind {
    xmlElementType type;
    DOMNodeType published;
    std::string_view name; ///< the node's name where it has none of its own
    std::string_view typeName;
};

constexpr std::array<NodeKind, 8> kinds = {{
    {XML_ELEMENT_NODE, NODE_ELEMENT, "", "element"},
    {XML_ATTRIBUTE_NODE, NODE_ATTRIBUTE, "", "attribute"},
    {XML_TEXT_NODE, NODE_TEXT, "#text", "text"},
    {XML_CDATA_SECTION_NODE, NODE_CDATA_SECTION, "#cdata-section", "cdatasection"},
    {XML_PI_NODE, NODE_PROCESSING_INSTRUCTION, "", "processinginstruction"},
    {XML_COMMENT_NODE, NODE_COMMENT, "#comment", "comment"},
    {XML_DOCUMENT_NODE, NODE_DOCUMENT, "#document", "document"},
    {XML_DOCUMENT_FRAG_NODE, NODE_DOCUMENT_FRAGMENT, "#document-fragment", "documentfragment"},
}};

const NodeKind& KindOf(const xmlNode* node) noexcept {
    for (const NodeKind& kind : kinds)
        if (kind.type == node->type) return kind;
    return kinds[2]; // the parser makes no other kinds
}

bool IsNamed(const xmlNode* node) noexcept {
    return node->type == XML_ELEMENT_NODE || node->type == XML_ATTRIBUTE_NODE;
}

/// Texts, CDATA sections, comments and processing instructions.
bool HasContent(const xmlNode* node) noexcept {
    return IsText(node) || node->type == XML_COMMENT_NODE || node->type == XML_PI_NODE;
}

std::string QualifiedName(const xmlNode* node) {
    std::string name;
    if (IsNamed(node) && node->ns != nullptr && node->ns->prefix != nullptr)
        name.append(View(node->ns->prefix)).append(1, ':');
    return name.append(View(node->name));
}

bool HasQualifiedName(const xmlNode* element, std::string_view name) noexcept {
    const std::string_view local = View(element->name);
    if (!name.ends_with(local)) return false;
    name.remove_suffix(local.size());
    if (element->ns == nullptr || element->ns->prefix == nullptr) return name.empty();
    return name.ends_with(':') && name.substr(0, name.size() - 1) == View(element->ns->prefix);
}

HRESULT GiveNull(VARIANT* place) noexcept {
    if (place == nullptr) return E_INVALIDARG;
    ::VariantInit(place);
    place->vt = VT_NULL;
    return S_FALSE;
}

HRESULT GiveNoText(BSTR* place) noexcept {
    if (place == nullptr) return E_INVALIDARG;
    *place = nullptr;
    return S_FALSE;
}

} // namespace

DomNodeObject::DomNodeObject(DomTree& tree, xmlNode* node) noexcept : m_tree(&tree), m_node(node) {
    tree.AddRef();
    node->_private = this;
}

DomNodeObject::~DomNodeObject() {
    m_node->_private = nullptr;
    m_tree->Dispose(m_node);
    m_tree->Release();
}

void DomNodeObject::MoveTo(DomTree& tree, xmlNode* node) noexcept {
    m_node->_private = nullptr;
    m_node = node;
    node->_private = this;
    tree.AddRef();
    std::exchange(m_tree, &tree)->Release();
}

DomNodeObject* DomNodeObject::Behind(IUnknown* node) noexcept {
    void* object = nullptr;
    if (node == nullptr || FAILED(node->QueryInterface(domNodeObjectId, &object))) return nullptr;
    return static_cast<DomNodeObject*>(object);
}

HRESULT DomNodeObject::Give(DomTree& tree, xmlNode* node, IXMLDOMNode** place) {
    if (place == nullptr) return E_INVALIDARG;
    *place = nullptr;
    if (node == nullptr) return S_FALSE;
    if (auto* known = static_cast<DomNodeObject*>(node->_private)) {
        *place = known->Interface();
        (*place)->AddRef();
    } else {
        *place = DomNodeFactory::Make(tree, node);
    }
    return S_OK;
}

HRESULT DomNodeObject::GiveNew(DomTree& tree, xmlNode* node, IXMLDOMNode** place) {
    try {
        return Give(tree, node, place);
    } catch (...) {
        tree.Dispose(node);
        throw;
    }
}

HRESULT DomNodeObject::NodeName(BSTR* name) const {
    const std::string_view fixed = KindOf(m_node).name;
    return fixed.empty() ? GiveText(name, QualifiedName(m_node)) : GiveText(name, fixed);
}

HRESULT DomNodeObject::NodeType(DOMNodeType* type) const {
    if (type == nullptr) return E_INVALIDARG;
    *type = KindOf(m_node).published;
    return S_OK;
}

HRESULT DomNodeObject::NodeTypeString(BSTR* name) const { return GiveText(name, KindOf(m_node).typeName); }

HRESULT DomNodeObject::NodeValue(VARIANT* value) const {
    if (m_node->type != XML_ATTRIBUTE_NODE && !HasContent(m_node)) return GiveNull(value);
    return GiveText(value, Value());
}

HRESULT DomNodeObject::SetNodeValue(const VARIANT& value) {
    if (m_node->type != XML_ATTRIBUTE_NODE && !HasContent(m_node)) return E_FAIL;
    std::string text;
    if (const HRESULT result = DomDataType::TextOf(value, text); FAILED(result)) return result;
    return Change(text);
}

HRESULT DomNodeObject::ParentNode(IXMLDOMNode** parent) const {
    return Give(*m_tree, m_node->type == XML_ATTRIBUTE_NODE ? nullptr : m_node->parent, parent);
}

HRESULT DomNodeObject::ChildNodes(IXMLDOMNodeList** list) {
    if (list == nullptr) return E_INVALIDARG;
    *list = new DomChildList(*this);
    return S_OK;
}

HRESULT DomNodeObject::FirstChild(IXMLDOMNode** child) const {
    return Give(*m_tree, m_node->children, child);
}

HRESULT DomNodeObject::LastChild(IXMLDOMNode** child) const { return Give(*m_tree, m_node->last, child); }

HRESULT DomNodeObject::PreviousSibling(IXMLDOMNode** sibling) const {
    return Give(*m_tree, m_node->type == XML_ATTRIBUTE_NODE ? nullptr : m_node->prev, sibling);
}

HRESULT DomNodeObject::NextSibling(IXMLDOMNode** sibling) const {
    return Give(*m_tree, m_node->type == XML_ATTRIBUTE_NODE ? nullptr : m_node->next, sibling);
}

HRESULT DomNodeObject::Attributes(IXMLDOMNamedNodeMap** map) {
    if (map == nullptr) return E_INVALIDARG;
    *map = nullptr;
    if (m_node->type != XML_ELEMENT_NODE) return S_FALSE;
    *map = new DomNamedNodeMap(*this);
    return S_OK;
}

HRESULT DomNodeObject::HasChildNodes(VARIANT_BOOL* has) const {
    if (has == nullptr) return E_INVALIDARG;
    *has = m_node->children != nullptr ? VARIANT_TRUE : VARIANT_FALSE;
    return *has != VARIANT_FALSE ? S_OK : S_FALSE;
}

HRESULT DomNodeObject::OwnerDocument(IXMLDOMDocument** document) const {
    return GiveAs(*m_tree, m_node->type == XML_DOCUMENT_NODE ? nullptr : m_tree->DocumentNode(), document);
}

HRESULT DomNodeObject::CloneNode(bool deep, IXMLDOMNode** clone) const {
    if (clone == nullptr) return E_INVALIDARG;
    return GiveNew(*m_tree, m_tree->Copy(*m_tree, m_node, deep), clone);
}

std::string DomNodeObject::Value() const {
    if (HasContent(m_node)) return std::string(View(m_node->content));
    return DomTree::AttributeValue(reinterpret_cast<const xmlAttr*>(m_node));
}

std::string DomNodeObject::TextContent() const {
    if (m_node->type == XML_ATTRIBUTE_NODE || (HasContent(m_node) && m_node->type != XML_TEXT_NODE))
        return Value();

    std::string text;
    const xmlNode* first = nullptr;
    const xmlNode* last = nullptr;
    for (xmlNode* inner = m_node; inner != nullptr; inner = NextInTree(inner, m_node)) {
        if (!IsText(inner)) continue;
        text.append(View(inner->content));
        if (first == nullptr) first = inner;
        last = inner;
    }
    const bool ofAttribute = m_node->parent != nullptr && m_node->parent->type == XML_ATTRIBUTE_NODE;
    if (first == nullptr || ofAttribute || m_tree->PreservesWhiteSpace()) return text;
    // A CDATA section keeps its blanks, and so does what xml:space protects.
    if (last->type == XML_TEXT_NODE && !SpaceIsPreserved(last->parent))
        text.erase(text.find_last_not_of(xmlBlanks) + 1);
    if (first->type == XML_TEXT_NODE && !SpaceIsPreserved(first->parent))
        text.erase(0, text.find_first_not_of(xmlBlanks));
    return text;
}

HRESULT DomNodeObject::Text(BSTR* text) const { return GiveText(text, TextContent()); }

HRESULT DomNodeObject::SetText(BSTR text) {
    if (m_node->type == XML_DOCUMENT_NODE) return E_FAIL;
    std::string value;
    if (!AppendXmlUtf8(value, ViewOf(text))) return E_INVALIDARG;
    return Change(value);
}

HRESULT DomNodeObject::Change(std::string_view value) {
    return XmlDeclaration::Is(m_node) ? E_FAIL : SetValue(value);
}

HRESULT DomNodeObject::SetValue(std::string_view value) {
    m_tree->BeforeChange();
    switch (m_node->type) {
    case XML_ATTRIBUTE_NODE: {
        auto* attribute = reinterpret_cast<xmlAttr*>(m_node);
        xmlNs* declaration = DomTree::DeclarationOf(m_node);
        if (declaration == nullptr) {
            DomTree::SetAttributeValue(attribute, value, *m_tree);
            return S_OK;
        }
        if (!DomNamedNodeMap::MayDeclare(m_node->parent, View(declaration->prefix), value))
            return E_INVALIDARG;
        m_tree->ChangeDeclaration(m_node->parent, declaration, value);
        return S_OK;
    }
    case XML_ELEMENT_NODE:
    case XML_DOCUMENT_FRAG_NODE: {
        xmlNode* text = value.empty() ? nullptr : m_tree->NewText(value);
        while (xmlNode* child = m_node->children) {
            m_tree->Unlink(child);
            m_tree->Dispose(child);
        }
        m_node->extra = static_cast<unsigned short>(m_node->extra & ~BreakBeforeEnd);
        m_tree->ContentChanged();
        if (text != nullptr) m_tree->Link(m_node, text, nullptr);
        return S_OK;
    }
    default:
        return SetData(value);
    }
}

HRESULT DomNodeObject::SetData(std::string_view value) {
    if (DomTree::IsPartOfDeclaration(m_node)) return E_FAIL;
    const auto data = DomNodeFactory::Held(m_node->type, View(m_node->name), value);
    if (!data) return E_INVALIDARG;
    xmlNodeSetContentLen(m_node, AsXml(data->c_str()), static_cast<int>(data->size()));
    if (m_node->parent != nullptr && m_node->parent->type == XML_ATTRIBUTE_NODE)
        m_tree->Changed();
    else
        m_tree->ContentChanged();
    return S_OK;
}

HRESULT DomNodeObject::TypedValue(VARIANT* value) const {
    if (m_node->type == XML_DOCUMENT_NODE || m_node->type == XML_DOCUMENT_FRAG_NODE) return GiveNull(value);
    if (m_node->type != XML_ELEMENT_NODE) return GiveText(value, Value());
    return DomDataType::Typed(DomDataType::NameOf(m_node), TextContent(), value);
}

HRESULT DomNodeObject::SetTypedValue(const VARIANT& value) {
    if (m_node->type == XML_DOCUMENT_NODE || m_node->type == XML_DOCUMENT_FRAG_NODE) return E_FAIL;
    std::string text;
    const HRESULT result = DomDataType::Untyped(DomDataType::NameOf(m_node), value, text);
    return FAILED(result) ? result : Change(text);
}

HRESULT DomNodeObject::DataType(VARIANT* name) const {
    const std::string type = DomDataType::NameOf(m_node);
    return type.empty() ? GiveNull(name) : GiveText(name, type);
}

HRESULT DomNodeObject::SetDataType(BSTR name) {
    std::string type;
    if (name == nullptr) return E_INVALIDARG;
    if (m_node->type != XML_ELEMENT_NODE || !AppendXmlUtf8(type, ViewOf(name)) || !DomDataType::IsKnown(type))
        return E_FAIL;
    const AttributeSlot known =
        AttributeOrder::Find(m_node, DomDataType::attributeName, DomDataType::namespaceUri);
    if (known.attribute != nullptr) {
        DomTree::SetAttributeValue(known.attribute, type, *m_tree);
    } else {
        m_tree->BeforeChange();
        xmlNs* ns = m_tree->Namespace("dt", DomDataType::namespaceUri);
        AttributeOrder::Insert(m_node, m_tree->NewAttribute(DomDataType::attributeName, ns, type), nullptr);
        m_tree->ContentChanged();
    }
    return S_OK;
}

HRESULT DomNodeObject::Xml(BSTR* text) const {
    DomSerializer serializer(*m_tree, DomSerializer::Declaration::WithoutEncoding);
    serializer.Write(m_node);
    return GiveText(text, serializer.TakeText());
}

HRESULT DomNodeObject::SelectNodes(BSTR query, IXMLDOMNodeList** list) {
    if (list == nullptr || query == nullptr) return E_INVALIDARG;
    *list = nullptr;
    std::vector<xmlNode*> nodes;
    XPathCache& xpath = XPathCache::OfThisThread();
    const HRESULT result = xpath.Select(*m_tree, m_node, ViewOf(query), ElementPath::Wanted::All, nodes);
    if (FAILED(result)) return Failed(result, xpath.Reason());
    *list = new DomSelection(*m_tree, std::move(nodes));
    return S_OK;
}

HRESULT DomNodeObject::SelectSingleNode(BSTR query, IXMLDOMNode** node) {
    if (node == nullptr || query == nullptr) return E_INVALIDARG;
    *node = nullptr;
    std::vector<xmlNode*> nodes;
    XPathCache& xpath = XPathCache::OfThisThread();
    const HRESULT result = xpath.Select(*m_tree, m_node, ViewOf(query), ElementPath::Wanted::First, nodes);
    if (FAILED(result)) return Failed(result, xpath.Reason());
    return Give(*m_tree, nodes.empty() ? nullptr : nodes[0], node);
}

HRESULT DomNodeObject::ElementsByTagName(BSTR name, IXMLDOMNodeList** list) {
    if (list == nullptr || name == nullptr) return E_INVALIDARG;
    *list = nullptr;
    std::string wanted;
    if (!AppendXmlUtf8(wanted, ViewOf(name))) return E_INVALIDARG;
    std::vector<xmlNode*> nodes;
    for (xmlNode* node = NextInTree(m_node, m_node); node != nullptr; node = NextInTree(node, m_node))
        if (node->type == XML_ELEMENT_NODE && (wanted == "*" || HasQualifiedName(node, wanted)))
            nodes.push_back(node);
    *list = new DomSelection(*m_tree, std::move(nodes));
    return S_OK;
}

HRESULT DomNodeObject::NamespaceUri(BSTR* uri) const {
    if (!IsNamed(m_node) || m_node->ns == nullptr) return GiveNoText(uri);
    return GiveText(uri, View(m_node->ns->href));
}

HRESULT DomNodeObject::Prefix(BSTR* prefix) const {
    if (!IsNamed(m_node) || m_node->ns == nullptr || m_node->ns->prefix == nullptr) return GiveNoText(prefix);
    return GiveText(prefix, View(m_node->ns->prefix));
}

HRESULT DomNodeObject::BaseName(BSTR* name) const {
    if (!IsNamed(m_node) && m_node->type != XML_PI_NODE) return GiveNoText(name);
    return GiveText(name, View(m_node->name));
}

} // namespace OvPlatform
