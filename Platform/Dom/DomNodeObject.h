#pragma once

#include "Com/Dispatch.h"
#include "Com/FaultInjection.h"
#include "Com/Guarded.h"
#include "Dom/DomTree.h"

#include <msxml6.h>

#include <new>
#include <string>
#include <utility>

namespace OvPlatform {

/// What the objects of all nodes have in common: which node they stand for, and the published operations on
/// it. There is at most one object for a node at a time, so that two interfaces of one node are one object.
class DomNodeObject {
public:
    DomNodeObject(DomTree& tree, xmlNode* node) noexcept;
    virtual ~DomNodeObject();
    DomNodeObject(const DomNodeObject&) = delete;
    DomNodeObject& operator=(const DomNodeObject&) = delete;

    DomTree& Tree() const noexcept { return *m_tree; }
    xmlNode* Node() const noexcept { return m_node; }

    /// Not counted.
    virtual IXMLDOMNode* Interface() noexcept = 0;

    /// Stands for another node from now on.
    void MoveTo(DomTree& tree, xmlNode* node) noexcept;

    /// The object behind an interface, null if it is not one of this room. Not counted.
    static DomNodeObject* Behind(IUnknown* node) noexcept;

    /// The object of a node, made if there is none: S_FALSE and null for no node. E_INVALIDARG for a null
    /// place.
    static HRESULT Give(DomTree& tree, xmlNode* node, IXMLDOMNode** place);
    /// The same for a node that was just made: it ends if its object cannot be given.
    static HRESULT GiveNew(DomTree& tree, xmlNode* node, IXMLDOMNode** place);
    /// The same in an interface of that kind of node.
    template <class Wanted>
    static HRESULT GiveAs(DomTree& tree, xmlNode* node, Wanted** place) {
        if (place == nullptr) return E_INVALIDARG;
        *place = nullptr;
        IXMLDOMNode* object = nullptr;
        const HRESULT result = Give(tree, node, &object);
        if (result != S_OK) return result;
        const HRESULT asked = object->QueryInterface(__uuidof(Wanted), reinterpret_cast<void**>(place));
        object->Release();
        return asked;
    }

    // The operations, by the names of the published slots.
    HRESULT NodeName(BSTR* name) const;
    HRESULT NodeValue(VARIANT* value) const;
    HRESULT SetNodeValue(const VARIANT& value);
    HRESULT NodeType(DOMNodeType* type) const;
    HRESULT NodeTypeString(BSTR* name) const;
    HRESULT ParentNode(IXMLDOMNode** parent) const;
    HRESULT ChildNodes(IXMLDOMNodeList** list);
    HRESULT FirstChild(IXMLDOMNode** child) const;
    HRESULT LastChild(IXMLDOMNode** child) const;
    HRESULT PreviousSibling(IXMLDOMNode** sibling) const;
    HRESULT NextSibling(IXMLDOMNode** sibling) const;
    HRESULT Attributes(IXMLDOMNamedNodeMap** map);
    HRESULT InsertBefore(IXMLDOMNode* child, const VARIANT& reference, IXMLDOMNode** inserted);
    HRESULT ReplaceChild(IXMLDOMNode* child, IXMLDOMNode* old, IXMLDOMNode** replaced);
    HRESULT RemoveChild(IXMLDOMNode* child, IXMLDOMNode** removed);
    HRESULT AppendChild(IXMLDOMNode* child, IXMLDOMNode** appended);
    HRESULT HasChildNodes(VARIANT_BOOL* has) const;
    HRESULT OwnerDocument(IXMLDOMDocument** document) const;
    HRESULT CloneNode(bool deep, IXMLDOMNode** clone) const;
    HRESULT Text(BSTR* text) const;
    HRESULT SetText(BSTR text);
    HRESULT TypedValue(VARIANT* value) const;
    HRESULT SetTypedValue(const VARIANT& value);
    HRESULT DataType(VARIANT* name) const;
    HRESULT SetDataType(BSTR name);
    HRESULT Xml(BSTR* text) const;
    HRESULT SelectNodes(BSTR query, IXMLDOMNodeList** list);
    HRESULT SelectSingleNode(BSTR query, IXMLDOMNode** node);
    HRESULT NamespaceUri(BSTR* uri) const;
    HRESULT Prefix(BSTR* prefix) const;
    HRESULT BaseName(BSTR* name) const;
    HRESULT ElementsByTagName(BSTR name, IXMLDOMNodeList** list);

    /// The text of the node and all in it, without blanks at its ends unless they count there.
    std::string TextContent() const;
    /// The value of an attribute or the text of a character node, as it stands.
    std::string Value() const;
    /// Replaces the value of an attribute or the text of a character node.
    HRESULT SetValue(std::string_view value);

protected:
    /// As OvPlatform::Guarded, after BeforeUse.
    template <class Work>
    HRESULT Guarded(Work&& work) const noexcept {
        return OvPlatform::Guarded([&]() -> HRESULT {
            const_cast<DomNodeObject*>(this)->BeforeUse();
            return work();
        });
    }

    /// Before each operation: a document takes over what was written to it.
    virtual void BeforeUse() {}

private:
    /// The same for a caller's text. E_FAIL for the XML declaration, which can only be replaced.
    HRESULT Change(std::string_view value);
    HRESULT SetData(std::string_view value);
    HRESULT Insert(IXMLDOMNode* child, xmlNode* before, IXMLDOMNode** inserted);

    DomTree* m_tree;
    xmlNode* m_node;
};

} // namespace OvPlatform
