#include "Dom/DomNodeList.h"

namespace OvPlatform {

DomSelection::DomSelection(DomTree& tree, std::vector<xmlNode*> nodes) noexcept
    : m_tree(tree), m_nodes(std::move(nodes)) {
    m_tree.AddRef();
    m_tree.Pin();
}

DomSelection::~DomSelection() {
    m_tree.Unpin();
    m_tree.Release();
}

HRESULT DomSelection::GiveAt(std::size_t index, IXMLDOMNode** item) {
    return DomNodeObject::Give(m_tree, index < m_nodes.size() ? m_nodes[index] : nullptr, item);
}

DomChildList::DomChildList(DomNodeObject& parent) noexcept : m_parent(parent) {
    m_parent.Interface()->AddRef();
}

DomChildList::~DomChildList() { m_parent.Interface()->Release(); }

void DomChildList::StartOverIfChanged() noexcept {
    const DomTree& tree = m_parent.Tree();
    if (m_version == tree.WatchedVersion()) return;
    m_version = tree.WatchedVersion();
    xmlNode* parent = m_parent.Node();
    if (parent->type != XML_DOCUMENT_NODE && parent->type != XML_ATTRIBUTE_NODE) Mark(parent, Watched);
    m_last = nullptr;
    m_length.reset();
}

HRESULT DomChildList::GiveAt(std::size_t index, IXMLDOMNode** item) {
    StartOverIfChanged();
    if (m_last == nullptr || index < m_lastIndex) {
        m_last = m_parent.Node()->children;
        m_lastIndex = 0;
    }
    xmlNode* node = m_last;
    std::size_t at = m_lastIndex;
    for (; node != nullptr && at < index; ++at)
        node = node->next;
    if (node != nullptr) {
        m_last = node;
        m_lastIndex = at;
    }
    return DomNodeObject::Give(m_parent.Tree(), node, item);
}

std::size_t DomChildList::Length() {
    StartOverIfChanged();
    if (!m_length) {
        m_length = 0;
        for (const xmlNode* node = m_parent.Node()->children; node != nullptr; node = node->next)
            ++*m_length;
    }
    return *m_length;
}

} // namespace OvPlatform
