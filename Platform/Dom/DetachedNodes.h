#pragma once

#include <libxml/tree.h>

#include <cstddef>
#include <unordered_set>
#include <vector>

namespace OvPlatform {

/// Finds out which nodes outside a document have come to their end: no object refers to any node of what
/// hangs together there. That takes a walk, which a large piece would need again and again while its objects
/// end one by one. So a walk is cut short where it gets long, and nodes then wait for so many others that one
/// walk for all of them costs each no more than a short one.
class DetachedNodes {
public:
    enum class Fate { Kept, Ended, Unknown };
    struct Verdict {
        Fate fate;
        xmlNode* top; ///< of the piece, where that is known
    };

    /// A short look at a node that has lost an object, or was taken out: in the document it is kept.
    static Verdict Look(xmlNode* node, const xmlNode* document) noexcept;
    /// The same however long it takes.
    static Verdict LookThrough(xmlNode* node, const xmlNode* document) noexcept;

    /// Throws std::bad_alloc.
    void Wait(xmlNode* node) { m_waiting.insert(node); }
    /// The node ends by itself. All nodes of a piece that ends must be forgotten.
    void Forget(xmlNode* node) noexcept {
        if (!m_waiting.empty()) m_waiting.erase(node);
    }
    /// Whether enough wait that looking through all is worth it.
    bool IsDue() const noexcept { return m_waiting.size() > m_patience; }

    /// The tops of the pieces among those waiting that have come to their end; nobody waits any more: a piece
    /// that is kept comes back with the next object that ends in it. Throws std::bad_alloc, and all wait on.
    std::vector<xmlNode*> TakeEnded(const xmlNode* document);

private:
    std::unordered_set<xmlNode*> m_waiting;
    std::size_t m_patience = 0;
};

} // namespace OvPlatform
