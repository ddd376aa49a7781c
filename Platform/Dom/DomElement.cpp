#include "Dom/DomElement.h"

#include "Dom/DomDataType.h"
#include "Dom/DomNamedNodeMap.h"
#include "Xml/TextConversion.h"

#include <atlcomcli.h>

namespace OvPlatform {

HRESULT STDMETHODCALLTYPE DomElement::get_tagName(BSTR* name) {
    return Guarded([&] { return NodeName(name); });
}

HRESULT STDMETHODCALLTYPE DomElement::getAttribute(BSTR name, VARIANT* value) {
    return Guarded([&]() -> HRESULT {
        if (name == nullptr || value == nullptr) return E_INVALIDARG;
        ::VariantInit(value);
        value->vt = VT_NULL;
        std::string wanted;
        if (!AppendXmlUtf8(wanted, ViewOf(name))) return E_FAIL;
        const AttributeSlot slot = AttributeOrder::Find(Node(), wanted);
        if (!slot) return xmlValidateQName(AsXml(wanted.c_str()), 0) == 0 ? S_FALSE : E_FAIL;
        if (slot.declaration != nullptr) return GiveText(value, View(slot.declaration->href));
        const xmlNode* const text = slot.attribute->children;
        if (text != nullptr && text->next == nullptr) return GiveText(value, View(text->content));
        return GiveText(value, DomTree::AttributeValue(slot.attribute));
    });
}

HRESULT STDMETHODCALLTYPE DomElement::setAttribute(BSTR name, VARIANT value) {
    return Guarded([&] {
        std::string text;
        const HRESULT result = DomDataType::TextOf(value, text);
        return FAILED(result) ? result : DomNamedNodeMap::SetValue(*this, name, text);
    });
}

HRESULT STDMETHODCALLTYPE DomElement::removeAttribute(BSTR name) {
    return Guarded([&]() -> HRESULT {
        std::string wanted;
        if (name == nullptr) return E_INVALIDARG;
        if (!AppendXmlUtf8(wanted, ViewOf(name))) return S_FALSE;
        return DomNamedNodeMap::Remove(*this, AttributeOrder::Find(Node(), wanted), nullptr);
    });
}

HRESULT STDMETHODCALLTYPE DomElement::getAttributeNode(BSTR name, IXMLDOMAttribute** attribute) {
    return Guarded([&]() -> HRESULT {
        if (attribute == nullptr) return E_INVALIDARG;
        *attribute = nullptr;
        CComPtr<IXMLDOMNode> node;
        const HRESULT result = DomNamedNodeMap::Get(*this, name, &node);
        return result == S_OK ? node->QueryInterface(attribute) : result;
    });
}

HRESULT STDMETHODCALLTYPE DomElement::setAttributeNode(IXMLDOMAttribute* attribute,
                                                       IXMLDOMAttribute** replaced) {
    return Guarded([&]() -> HRESULT {
        if (replaced != nullptr) *replaced = nullptr;
        CComPtr<IXMLDOMNode> old;
        const HRESULT result = DomNamedNodeMap::Set(*this, attribute, replaced != nullptr ? &old : nullptr);
        return SUCCEEDED(result) && old ? old->QueryInterface(replaced) : result;
    });
}

HRESULT STDMETHODCALLTYPE DomElement::removeAttributeNode(IXMLDOMAttribute* attribute,
                                                          IXMLDOMAttribute** removed) {
    return Guarded([&]() -> HRESULT {
        if (removed != nullptr) *removed = nullptr;
        const DomNodeObject* object = Behind(attribute);
        if (object == nullptr || object->Node()->parent != Node()) return E_INVALIDARG;
        AttributeSlot slot;
        slot.declaration = DomTree::DeclarationOf(object->Node());
        if (slot.declaration == nullptr) slot.attribute = reinterpret_cast<xmlAttr*>(object->Node());
        const HRESULT result = DomNamedNodeMap::Remove(*this, slot, nullptr);
        if (SUCCEEDED(result) && removed != nullptr) {
            *removed = attribute;
            attribute->AddRef();
        }
        return result;
    });
}

HRESULT STDMETHODCALLTYPE DomElement::getElementsByTagName(BSTR name, IXMLDOMNodeList** list) {
    return Guarded([&] { return ElementsByTagName(name, list); });
}

void DomElement::JoinTexts(xmlNode* first) {
    if (first->next == nullptr || first->next->type != XML_TEXT_NODE) return;
    std::string all(View(first->content));
    while (first->next != nullptr && first->next->type == XML_TEXT_NODE) {
        xmlNode* joined = first->next;
        all.append(View(joined->content));
        Tree().Unlink(joined);
        Tree().Dispose(joined);
    }
    xmlNodeSetContentLen(first, AsXml(all.c_str()), static_cast<int>(all.size()));
    Tree().ContentChanged();
}

HRESULT STDMETHODCALLTYPE DomElement::normalize() {
    return Guarded([&]() -> HRESULT {
        Tree().BeforeChange();
        for (xmlNode* node = NextInTree(Node(), Node()); node != nullptr;) {
            xmlNode* next = NextInTree(node, Node());
            if (node->type == XML_TEXT_NODE) {
                JoinTexts(node);
                next = NextInTree(node, Node());
                if (View(node->content).empty()) {
                    Tree().Unlink(node);
                    Tree().Dispose(node);
                }
            }
            node = next;
        }
        return S_OK;
    });
}

} // namespace OvPlatform
