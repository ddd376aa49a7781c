#include "Dom/DomNamedNodeMap.h"

#include "Dom/DomErrorInfo.h"
#include "Xml/TextConversion.h"

#include <libxml/xmlmemory.h>

namespace OvPlatform {

namespace {

constexpr std::string_view xmlUri = "http://www.w3.org/XML/1998/namespace";

bool BoundElsewhere(const xmlNs* ns, std::string_view prefix, std::string_view uri) noexcept {
    return ns != nullptr && View(ns->prefix) == prefix && View(ns->href) != uri;
}

/// The namespace that a prefix has where `element` stands; null if it has none.
const xmlNs* NamespaceInScope(const xmlNode* element, std::string_view prefix) noexcept {
    for (; element != nullptr && element->type == XML_ELEMENT_NODE; element = element->parent) {
        for (const xmlNs* declaration = element->nsDef; declaration != nullptr;
             declaration = declaration->next)
            if (View(declaration->prefix) == prefix) return declaration;
        if (element->ns != nullptr && View(element->ns->prefix) == prefix) return element->ns;
    }
    return nullptr;
}

} // namespace

DomNamedNodeMap::DomNamedNodeMap(DomNodeObject& element) noexcept
    : m_element(element), m_cursor(element.Node()) {
    m_element.Interface()->AddRef();
}

DomNamedNodeMap::~DomNamedNodeMap() { m_element.Interface()->Release(); }

HRESULT DomNamedNodeMap::Give(DomNodeObject& element, AttributeSlot slot, IXMLDOMNode** item) {
    xmlAttr* attribute = slot.declaration != nullptr
                             ? element.Tree().MirrorOf(element.Node(), slot.declaration)
                             : slot.attribute;
    return DomNodeObject::Give(element.Tree(), reinterpret_cast<xmlNode*>(attribute), item);
}

HRESULT DomNamedNodeMap::GiveAt(std::size_t index, IXMLDOMNode** item) {
    if (!m_last || m_version != m_element.Tree().Version() || index < m_lastIndex) {
        m_version = m_element.Tree().Version();
        m_cursor = AttributeCursor(m_element.Node());
        m_last = m_cursor.Next();
        m_lastIndex = 0;
    }
    for (; m_last && m_lastIndex < index; ++m_lastIndex)
        m_last = m_cursor.Next();
    return Give(m_element, m_last, item);
}

std::size_t DomNamedNodeMap::Length() {
    std::size_t length = 0;
    AttributeCursor cursor(m_element.Node());
    while (cursor.Next())
        ++length;
    return length;
}

HRESULT DomNamedNodeMap::Get(DomNodeObject& element, BSTR name, IXMLDOMNode** item) {
    if (item == nullptr || name == nullptr) return E_INVALIDARG;
    *item = nullptr;
    std::string wanted;
    if (!AppendXmlUtf8(wanted, ViewOf(name))) return S_FALSE;
    return Give(element, AttributeOrder::Find(element.Node(), wanted), item);
}

bool DomNamedNodeMap::MayDeclare(const xmlNode* element, std::string_view prefix,
                                 std::string_view uri) noexcept {
    if (prefix == "xml" || prefix == "xmlns" || uri == xmlUri || uri == xmlnsUri) return false;
    if (!prefix.empty() && uri.empty()) return false;
    if (BoundElsewhere(element->ns, prefix, uri)) return false;
    for (const xmlAttr* attribute = element->properties; attribute != nullptr && !prefix.empty();
         attribute = attribute->next)
        if (BoundElsewhere(attribute->ns, prefix, uri)) return false;
    return true;
}

HRESULT DomNamedNodeMap::Set(DomNodeObject& element, IXMLDOMNode* attribute, IXMLDOMNode** replaced) {
    if (replaced != nullptr) *replaced = nullptr;
    DomNodeObject* object = DomNodeObject::Behind(attribute);
    if (object == nullptr || object->Node()->type != XML_ATTRIBUTE_NODE) return E_INVALIDARG;
    if (object->Node()->parent == element.Node()) return S_OK;
    if (object->Node()->parent != nullptr) return E_FAIL; // another element has it
    DomTree& tree = element.Tree();
    if (&object->Tree() != &tree) {
        DomTree& from = object->Tree();
        from.AddRef();
        tree.Adopt(from, object->Node());
        from.Release();
    }
    auto* node = reinterpret_cast<xmlAttr*>(object->Node());
    xmlAttr* old = nullptr;
    if (DomTree::IsDeclaration(object->Node())) {
        const std::string_view prefix = node->ns->prefix ? View(node->name) : std::string_view();
        const std::string uri = DomTree::AttributeValue(node);
        if (!MayDeclare(element.Node(), prefix, uri)) return E_INVALIDARG;
        old = tree.Declare(element.Node(), node);
    } else {
        const std::string_view uri = node->ns ? View(node->ns->href) : std::string_view();
        const std::string_view prefix = node->ns ? View(node->ns->prefix) : std::string_view();
        if (!prefix.empty() && prefix != "xml") {
            for (const xmlNs* own = element.Node()->nsDef; own != nullptr; own = own->next)
                if (BoundElsewhere(own, prefix, uri)) return E_INVALIDARG;
        }
        tree.BeforeChange();
        old = AttributeOrder::Find(element.Node(), View(node->name), uri).attribute;
        AttributeOrder::Insert(element.Node(), node, old);
        if (old != nullptr) tree.Unlink(reinterpret_cast<xmlNode*>(old));
        tree.AttributeAdded(node);
    }
    if (old == nullptr) return S_OK;
    if (replaced != nullptr) return DomNodeObject::Give(tree, reinterpret_cast<xmlNode*>(old), replaced);
    tree.Dispose(reinterpret_cast<xmlNode*>(old));
    return S_OK;
}

HRESULT DomNamedNodeMap::SetValue(DomNodeObject& element, BSTR name, std::string_view value) {
    std::string qualified;
    if (name == nullptr) return E_INVALIDARG;
    if (!AppendXmlUtf8(qualified, ViewOf(name)) || xmlValidateQName(AsXml(qualified.c_str()), 0) != 0)
        return Failed(E_FAIL, "The name of an attribute is not well formed: " + qualified);
    DomTree& tree = element.Tree();
    xmlNode* node = element.Node();
    const AttributeSlot known = AttributeOrder::Find(node, qualified);
    if (known.attribute != nullptr) {
        DomTree::SetAttributeValue(known.attribute, value, tree);
        return S_OK;
    }
    if (known.declaration != nullptr) {
        if (!MayDeclare(node, View(known.declaration->prefix), value)) return E_INVALIDARG;
        tree.ChangeDeclaration(node, known.declaration, value);
        return S_OK;
    }
    const std::size_t colon = qualified.find(':');
    const std::string prefix = colon == std::string::npos ? "" : qualified.substr(0, colon);
    const std::string local = colon == std::string::npos ? qualified : qualified.substr(colon + 1);
    if (prefix == "xmlns" || qualified == "xmlns") {
        if (!MayDeclare(node, prefix.empty() ? std::string_view() : local, value)) return E_INVALIDARG;
        tree.Declare(node, tree.NewAttribute(local, tree.Namespace(prefix, xmlnsUri), value));
        return S_OK;
    }
    xmlNs* ns = nullptr;
    if (prefix == "xml") {
        ns = tree.Namespace(prefix, xmlUri);
    } else if (!prefix.empty()) {
        const xmlNs* bound = NamespaceInScope(node, prefix);
        if (bound == nullptr) return Failed(E_FAIL, "Reference to undeclared namespace prefix: " + prefix);
        ns = tree.Namespace(prefix, View(bound->href));
    }
    tree.BeforeChange();
    // Under another prefix the same attribute may be there: then the new one takes its place.
    xmlAttr* old = ns != nullptr ? AttributeOrder::Find(node, local, View(ns->href)).attribute : nullptr;
    xmlAttr* const fresh = tree.NewAttribute(local, ns, value);
    AttributeOrder::Insert(node, fresh, old);
    tree.AttributeAdded(fresh);
    if (old != nullptr) {
        tree.Unlink(reinterpret_cast<xmlNode*>(old));
        tree.Dispose(reinterpret_cast<xmlNode*>(old));
    }
    return S_OK;
}

HRESULT DomNamedNodeMap::Remove(DomNodeObject& element, AttributeSlot slot, IXMLDOMNode** removed) {
    if (removed != nullptr) *removed = nullptr;
    if (!slot) return S_FALSE;
    DomTree& tree = element.Tree();
    tree.BeforeChange();
    xmlNode* node = nullptr;
    if (slot.declaration != nullptr) {
        node = reinterpret_cast<xmlNode*>(tree.Undeclare(element.Node(), slot.declaration));
    } else {
        node = reinterpret_cast<xmlNode*>(slot.attribute);
        tree.Unlink(node);
    }
    if (removed != nullptr) return DomNodeObject::Give(tree, node, removed);
    tree.Dispose(node);
    return S_OK;
}

HRESULT STDMETHODCALLTYPE DomNamedNodeMap::getNamedItem(BSTR name, IXMLDOMNode** item) {
    return Guarded([&] { return Get(m_element, name, item); });
}

HRESULT STDMETHODCALLTYPE DomNamedNodeMap::setNamedItem(IXMLDOMNode* newItem, IXMLDOMNode** item) {
    return Guarded([&] {
        const HRESULT result = Set(m_element, newItem, nullptr);
        if (item != nullptr) {
            *item = SUCCEEDED(result) ? newItem : nullptr;
            if (*item != nullptr) newItem->AddRef();
        }
        return result;
    });
}

HRESULT STDMETHODCALLTYPE DomNamedNodeMap::removeNamedItem(BSTR name, IXMLDOMNode** item) {
    return Guarded([&]() -> HRESULT {
        if (item != nullptr) *item = nullptr;
        if (name == nullptr) return E_INVALIDARG;
        std::string wanted;
        if (!AppendXmlUtf8(wanted, ViewOf(name))) return S_FALSE;
        return Remove(m_element, AttributeOrder::Find(m_element.Node(), wanted), item);
    });
}

HRESULT STDMETHODCALLTYPE DomNamedNodeMap::getQualifiedItem(BSTR baseName, BSTR namespaceUri,
                                                            IXMLDOMNode** item) {
    return Guarded([&]() -> HRESULT {
        if (item == nullptr || baseName == nullptr) return E_INVALIDARG;
        *item = nullptr;
        std::string name, uri;
        if (!AppendXmlUtf8(name, ViewOf(baseName)) || !AppendXmlUtf8(uri, ViewOf(namespaceUri)))
            return S_FALSE;
        return Give(m_element, AttributeOrder::Find(m_element.Node(), name, uri), item);
    });
}

HRESULT STDMETHODCALLTYPE DomNamedNodeMap::removeQualifiedItem(BSTR baseName, BSTR namespaceUri,
                                                               IXMLDOMNode** item) {
    return Guarded([&]() -> HRESULT {
        if (item != nullptr) *item = nullptr;
        if (baseName == nullptr) return E_INVALIDARG;
        std::string name, uri;
        if (!AppendXmlUtf8(name, ViewOf(baseName)) || !AppendXmlUtf8(uri, ViewOf(namespaceUri)))
            return S_FALSE;
        return Remove(m_element, AttributeOrder::Find(m_element.Node(), name, uri), item);
    });
}

} // namespace OvPlatform
