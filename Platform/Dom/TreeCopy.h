#pragma once

#include "Dom/DomTree.h"

#include <unordered_map>
#include <utility>
#include <vector>

namespace OvPlatform {

/// A tree like that of another document, as its text would be read back; the document must be in the form of
/// ReadBack::isCopy. Of the source only what its own thread never writes while it reads is looked at.
class TreeCopy {
public:
    /// Throws std::bad_alloc.
    static DomTree::Pointer Of(const DomTree& source, const DomSettings& settings);

private:
    TreeCopy(const DomTree& source, DomTree& target) noexcept;

    void Run();
    void CopyElement(const xmlNode* element);
    void CopyDeclarations(const xmlNode* element, xmlNode* copy);
    void CopyAttributes(const xmlNode* element, xmlNode* copy);
    void CopyLeaf(const xmlNode* node);
    /// New, and last in what is open.
    xmlNode* Append(xmlElementType type);
    const xmlChar* Name(const xmlChar* name);
    xmlNs* Namespace(const xmlNs* ns, std::pair<const xmlNs*, xmlNs*>& last);

    const DomTree& m_source;
    DomTree& m_target;
    xmlDoc* const m_document;
    xmlNode* m_parent;
    std::vector<bool> m_blanksCount; ///< for each open element
    std::unordered_map<const xmlNs*, xmlNs*> m_namespaces;
    std::pair<const xmlNs*, xmlNs*> m_elementNs{};
    std::pair<const xmlNs*, xmlNs*> m_attributeNs{};
};

} // namespace OvPlatform
