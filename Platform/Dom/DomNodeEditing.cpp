// The operations of DomNodeObject that move nodes.

#include "Dom/DomNodeFactory.h"
#include "Dom/DomNodeObject.h"
#include "Xml/XmlDeclaration.h"

namespace OvPlatform {

namespace {

bool HasElement(const xmlNode* parent, const xmlNode* besides) noexcept {
    for (const xmlNode* child = parent->children; child != nullptr; child = child->next)
        if (child->type == XML_ELEMENT_NODE && child != besides) return true;
    return false;
}

/// Whether `node` is `top` or stands in it. Looks up from the one and down from the other at once, so that
/// neither a deep place nor a large piece makes it long by itself.
bool IsWithin(const xmlNode* node, xmlNode* top) noexcept {
    xmlNode* below = top;
    for (const xmlNode* above = node; above != nullptr && below != nullptr; above = above->parent) {
        if (above == top || below == node) return true;
        below = NextInTree(below, top);
    }
    return false;
}

/// Whether `child` may come before `next` (or last), with `gone` no longer there.
bool MayInsert(const xmlNode* parent, xmlNode* child, const xmlNode* next, const xmlNode* gone) noexcept {
    if (IsWithin(parent, child) || DomTree::IsPartOfDeclaration(child)) return false;
    const bool inDocument = parent->type == XML_DOCUMENT_NODE;
    if (!inDocument && parent->type != XML_ELEMENT_NODE && parent->type != XML_DOCUMENT_FRAG_NODE)
        return false;
    const xmlNode* first = parent->children == gone && gone != nullptr ? gone->next : parent->children;
    if (XmlDeclaration::Is(child))
        return inDocument && next == first && !(first != nullptr && XmlDeclaration::Is(first));
    // Nothing but a declaration stands before a declaration.
    if (next != nullptr && XmlDeclaration::Is(next)) return false;
    switch (child->type) {
    case XML_ELEMENT_NODE:
        return !inDocument || child->parent == parent || !HasElement(parent, gone);
    case XML_COMMENT_NODE:
    case XML_PI_NODE:
        return true;
    case XML_TEXT_NODE:
    case XML_CDATA_SECTION_NODE:
        return !inDocument;
    default:
        return false;
    }
}

bool IsEmptyReference(const VARIANT& reference) noexcept {
    switch (reference.vt) {
    case VT_EMPTY:
    case VT_NULL:
    case VT_ERROR:
        return true;
    case VT_UNKNOWN:
    case VT_DISPATCH:
        return reference.punkVal == nullptr;
    default:
        return false;
    }
}

} // namespace

HRESULT DomNodeObject::Insert(IXMLDOMNode* child, xmlNode* before, IXMLDOMNode** inserted) {
    DomNodeObject* object = Behind(child);
    if (object == nullptr) return E_INVALIDARG;
    xmlNode* node = object->m_node;
    if (before != nullptr && before == node) before = node->next;

    if (node->type == XML_DOCUMENT_FRAG_NODE) {
        bool hasElement = false;
        for (xmlNode* part = node->children; part != nullptr; part = part->next) {
            if (!MayInsert(m_node, part, before, nullptr)) return E_FAIL;
            if (m_node->type == XML_DOCUMENT_NODE && part->type == XML_ELEMENT_NODE &&
                std::exchange(hasElement, true))
                return E_FAIL;
        }
        if (IsWithin(m_node, node)) return E_FAIL;
        m_tree->BeforeChange();
        while (xmlNode* part = node->children) {
            object->m_tree->Unlink(part);
            if (object->m_tree != m_tree) part = m_tree->Adopt(*object->m_tree, part);
            m_tree->Link(m_node, part, before);
        }
    } else {
        if (!MayInsert(m_node, node, before, nullptr)) return E_FAIL;
        DomTree& from = *object->m_tree;
        m_tree->BeforeChange();
        from.BeforeChange();
        xmlNode* left = node->parent;
        from.AddRef();
        from.Unlink(node);
        if (&from != m_tree) node = m_tree->Adopt(from, node);
        m_tree->Link(m_node, node, before);
        // The node may have been all that kept what it stood in, outside a tree.
        if (left != nullptr) from.Dispose(left);
        from.Release();
    }
    if (inserted != nullptr) {
        *inserted = child;
        child->AddRef();
    }
    return S_OK;
}

HRESULT DomNodeObject::AppendChild(IXMLDOMNode* child, IXMLDOMNode** appended) {
    if (appended != nullptr) *appended = nullptr;
    return Insert(child, nullptr, appended);
}

HRESULT DomNodeObject::InsertBefore(IXMLDOMNode* child, const VARIANT& reference, IXMLDOMNode** inserted) {
    if (inserted != nullptr) *inserted = nullptr;
    if (IsEmptyReference(reference)) return Insert(child, nullptr, inserted);
    if (reference.vt != VT_UNKNOWN && reference.vt != VT_DISPATCH) return E_INVALIDARG;
    const DomNodeObject* before = Behind(reference.punkVal);
    if (before == nullptr || before->m_node->parent != m_node || before->m_node->type == XML_ATTRIBUTE_NODE)
        return E_INVALIDARG;
    return Insert(child, before->m_node, inserted);
}

HRESULT DomNodeObject::RemoveChild(IXMLDOMNode* child, IXMLDOMNode** removed) {
    if (removed != nullptr) *removed = nullptr;
    const DomNodeObject* object = Behind(child);
    if (object == nullptr || object->m_node->parent != m_node || object->m_node->type == XML_ATTRIBUTE_NODE)
        return E_INVALIDARG;
    if (DomTree::IsPartOfDeclaration(object->m_node)) return E_FAIL;
    m_tree->BeforeChange();
    m_tree->Unlink(object->m_node);
    if (removed != nullptr) {
        *removed = child;
        child->AddRef();
    }
    return S_OK;
}

HRESULT DomNodeObject::ReplaceChild(IXMLDOMNode* child, IXMLDOMNode* old, IXMLDOMNode** replaced) {
    if (replaced != nullptr) *replaced = nullptr;
    const DomNodeObject* gone = Behind(old);
    const DomNodeObject* fresh = Behind(child);
    if (fresh == nullptr || gone == nullptr || gone->m_node->parent != m_node ||
        gone->m_node->type == XML_ATTRIBUTE_NODE)
        return E_INVALIDARG;
    if (fresh != gone) {
        xmlNode* next = gone->m_node->next;
        if (fresh->m_node->type != XML_DOCUMENT_FRAG_NODE &&
            !MayInsert(m_node, fresh->m_node, next == fresh->m_node ? next->next : next, gone->m_node))
            return E_FAIL;
        if (next == fresh->m_node) next = next->next;
        m_tree->BeforeChange();
        fresh->m_tree->BeforeChange();
        xmlNode* removed = gone->m_node;
        m_tree->Unlink(removed);
        if (const HRESULT result = Insert(child, next, nullptr); FAILED(result)) {
            m_tree->Link(m_node, removed, next);
            return result;
        }
    }
    if (replaced != nullptr) {
        *replaced = old;
        old->AddRef();
    }
    return S_OK;
}

} // namespace OvPlatform
