#pragma once

#include "Dom/DomNodeObject.h"

namespace OvPlatform {

/// Asked of an interface to find the object behind it; no other implementation answers.
inline constexpr IID domNodeObjectId = {
    0x6b2f5a0e, 0x7c41, 0x4e58, {0x9d, 0x13, 0x2a, 0x80, 0x5e, 0x17, 0xc4, 0x9b}};

/// The COM side of a node: the slots of IXMLDOMNode for an interface that derives from it.
template <class Interface_>
class DomNode : public Dispatch<CountedObject<Interface_, ISupportErrorInfo>>, public DomNodeObject {
public:
    using DomNodeObject::DomNodeObject;

    IXMLDOMNode* Interface() noexcept override { return this; }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** object) override {
        if (object == nullptr) return E_POINTER;
        *object = nullptr;
        if (riid == domNodeObjectId) {
            *object = static_cast<DomNodeObject*>(this); // not counted
            return S_OK;
        }
        if (riid == __uuidof(ISupportErrorInfo))
            *object = static_cast<ISupportErrorInfo*>(this);
        else if (riid == __uuidof(IUnknown) || riid == __uuidof(IDispatch) || riid == __uuidof(IXMLDOMNode) ||
                 Answers(riid))
            *object = static_cast<Interface_*>(this);
        else
            return OtherInterface(riid, object);
        this->AddRef();
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID riid) override {
        return riid == __uuidof(IXMLDOMNode) || Answers(riid) ? S_OK : S_FALSE;
    }

    HRESULT STDMETHODCALLTYPE get_nodeName(BSTR* name) override {
        return Guarded([&] { return NodeName(name); });
    }
    HRESULT STDMETHODCALLTYPE get_nodeValue(VARIANT* value) override {
        return Guarded([&] { return NodeValue(value); });
    }
    HRESULT STDMETHODCALLTYPE put_nodeValue(VARIANT value) override {
        return Guarded([&] { return SetNodeValue(value); });
    }
    HRESULT STDMETHODCALLTYPE get_nodeType(DOMNodeType* type) override {
        return Guarded([&] { return NodeType(type); });
    }
    HRESULT STDMETHODCALLTYPE get_parentNode(IXMLDOMNode** parent) override {
        return Guarded([&] { return ParentNode(parent); });
    }
    HRESULT STDMETHODCALLTYPE get_childNodes(IXMLDOMNodeList** list) override {
        return Guarded([&] { return ChildNodes(list); });
    }
    HRESULT STDMETHODCALLTYPE get_firstChild(IXMLDOMNode** child) override {
        return Guarded([&] { return FirstChild(child); });
    }
    HRESULT STDMETHODCALLTYPE get_lastChild(IXMLDOMNode** child) override {
        return Guarded([&] { return LastChild(child); });
    }
    HRESULT STDMETHODCALLTYPE get_previousSibling(IXMLDOMNode** sibling) override {
        return Guarded([&] { return PreviousSibling(sibling); });
    }
    HRESULT STDMETHODCALLTYPE get_nextSibling(IXMLDOMNode** sibling) override {
        return Guarded([&] { return NextSibling(sibling); });
    }
    HRESULT STDMETHODCALLTYPE get_attributes(IXMLDOMNamedNodeMap** map) override {
        return Guarded([&] { return Attributes(map); });
    }
    HRESULT STDMETHODCALLTYPE insertBefore(IXMLDOMNode* child, VARIANT reference,
                                           IXMLDOMNode** inserted) override {
        return Guarded([&] { return InsertBefore(child, reference, inserted); });
    }
    HRESULT STDMETHODCALLTYPE replaceChild(IXMLDOMNode* child, IXMLDOMNode* old,
                                           IXMLDOMNode** replaced) override {
        return Guarded([&] { return ReplaceChild(child, old, replaced); });
    }
    HRESULT STDMETHODCALLTYPE removeChild(IXMLDOMNode* child, IXMLDOMNode** removed) override {
        return Guarded([&] { return RemoveChild(child, removed); });
    }
    HRESULT STDMETHODCALLTYPE appendChild(IXMLDOMNode* child, IXMLDOMNode** appended) override {
        return Guarded([&] { return AppendChild(child, appended); });
    }
    HRESULT STDMETHODCALLTYPE hasChildNodes(VARIANT_BOOL* has) override {
        return Guarded([&] { return HasChildNodes(has); });
    }
    HRESULT STDMETHODCALLTYPE get_ownerDocument(IXMLDOMDocument** document) override {
        return Guarded([&] { return OwnerDocument(document); });
    }
    HRESULT STDMETHODCALLTYPE cloneNode(VARIANT_BOOL deep, IXMLDOMNode** clone) override {
        return Guarded([&] { return CloneNode(deep != VARIANT_FALSE, clone); });
    }
    HRESULT STDMETHODCALLTYPE get_nodeTypeString(BSTR* name) override {
        return Guarded([&] { return NodeTypeString(name); });
    }
    HRESULT STDMETHODCALLTYPE get_text(BSTR* text) override {
        return Guarded([&] { return Text(text); });
    }
    HRESULT STDMETHODCALLTYPE put_text(BSTR text) override {
        return Guarded([&] { return SetText(text); });
    }
    /// Attributes that a schema supplied do not occur.
    HRESULT STDMETHODCALLTYPE get_specified(VARIANT_BOOL* specified) override {
        return Guarded([&] { return GiveFlag(specified, VARIANT_TRUE); });
    }
    HRESULT STDMETHODCALLTYPE get_definition(IXMLDOMNode** definition) override {
        return Guarded([&]() -> HRESULT { return GiveNothing(definition); });
    }
    HRESULT STDMETHODCALLTYPE get_nodeTypedValue(VARIANT* value) override {
        return Guarded([&] { return TypedValue(value); });
    }
    HRESULT STDMETHODCALLTYPE put_nodeTypedValue(VARIANT value) override {
        return Guarded([&] { return SetTypedValue(value); });
    }
    HRESULT STDMETHODCALLTYPE get_dataType(VARIANT* name) override {
        return Guarded([&] { return DataType(name); });
    }
    HRESULT STDMETHODCALLTYPE put_dataType(BSTR name) override {
        return Guarded([&] { return SetDataType(name); });
    }
    HRESULT STDMETHODCALLTYPE get_xml(BSTR* text) override {
        return Guarded([&] { return Xml(text); });
    }
    HRESULT STDMETHODCALLTYPE transformNode(IXMLDOMNode*, BSTR*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE selectNodes(BSTR query, IXMLDOMNodeList** list) override {
        return Guarded([&] { return SelectNodes(query, list); });
    }
    HRESULT STDMETHODCALLTYPE selectSingleNode(BSTR query, IXMLDOMNode** node) override {
        return Guarded([&] { return SelectSingleNode(query, node); });
    }
    HRESULT STDMETHODCALLTYPE get_parsed(VARIANT_BOOL* parsed) override {
        return Guarded([&] { return GiveFlag(parsed, VARIANT_TRUE); });
    }
    HRESULT STDMETHODCALLTYPE get_namespaceURI(BSTR* uri) override {
        return Guarded([&] { return NamespaceUri(uri); });
    }
    HRESULT STDMETHODCALLTYPE get_prefix(BSTR* prefix) override {
        return Guarded([&] { return Prefix(prefix); });
    }
    HRESULT STDMETHODCALLTYPE get_baseName(BSTR* name) override {
        return Guarded([&] { return BaseName(name); });
    }
    HRESULT STDMETHODCALLTYPE transformNodeToObject(IXMLDOMNode*, VARIANT) override { return E_NOTIMPL; }

protected:
    /// Whether the primary interface stands for `riid`.
    virtual bool Answers(REFIID riid) const noexcept { return riid == __uuidof(Interface_); }
    /// Any further interface; counts what it gives.
    virtual HRESULT OtherInterface(REFIID, void**) { return E_NOINTERFACE; }

    static HRESULT GiveFlag(VARIANT_BOOL* place, VARIANT_BOOL value) noexcept {
        if (place == nullptr) return E_INVALIDARG;
        *place = value;
        return S_OK;
    }
    template <class T>
    static HRESULT GiveNothing(T** place) noexcept {
        if (place == nullptr) return E_INVALIDARG;
        *place = nullptr;
        return S_FALSE;
    }
};

} // namespace OvPlatform
