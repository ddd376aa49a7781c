#pragma once

#include "Dom/DomSettings.h"

#include <libxml/tree.h>

#include <cstddef>

namespace OvPlatform {

class DomTree;

/// What would come of a document whose text is written and read back: whether that is its tree again, so that
/// a copy of the tree does instead.
struct ReadBack {
    bool isCopy = false; ///< a TreeCopy, which mends marks of line breaks and how values are held
    bool isSame = false; ///< the tree as it stands
    bool preservesWhiteSpace = false;
    std::size_t depth = 0;     ///< of elements
    std::size_t mostBytes = 0; ///< the text has no more in UTF-8

    /// Looks at every node. Throws std::bad_alloc.
    static ReadBack Of(const DomTree& tree);
    /// Of a tree as a parser has just made it of a text of `bytes`. hasIdleMarks: breaks were marked where
    /// none is written.
    static ReadBack OfLoaded(const xmlDoc* document, std::size_t bytes, std::size_t depth, bool hasIdleMarks);

    /// Whether a document of these settings would read it.
    bool IsCopyFor(const DomSettings& settings) const noexcept;
};

/// The marks that a node has once its text is read back: those of line breaks that are written. Whether
/// blanks count around a node, and inside of it, is by the tree and by xml:space.
unsigned short MarksReadBack(const xmlNode* node, bool blanksCountAround, bool blanksCountInside) noexcept;

} // namespace OvPlatform
