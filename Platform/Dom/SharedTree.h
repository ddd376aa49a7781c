#pragma once

#include "Dom/DomTree.h"
#include "Dom/ReadBack.h"

#include <memory>
#include <mutex>
#include <string>

namespace OvPlatform {

/// A document's tree in one state, for other documents that are to begin with the same. As long as the
/// document does not change, the tree stays its own, and nothing is copied; before it changes, it leaves a
/// copy behind, and when it ends, the tree. The others may look from any thread.
class SharedTree {
public:
    /// `readBack` must say that the tree is a copy of what its text says.
    SharedTree(DomTree& tree, const ReadBack& readBack) noexcept : m_readBack(readBack), m_tree(&tree) {}
    SharedTree(const SharedTree&) = delete;
    SharedTree& operator=(const SharedTree&) = delete;
    ~SharedTree();

    const ReadBack& Form() const noexcept { return m_readBack; }

    // For the tree itself.

    /// Before it changes; it lets go then. Throws std::bad_alloc, and the tree must not change.
    void Part();
    /// When it ends: whether somebody else has it from now on.
    bool Inherit() noexcept;

private:
    friend class TreeShare;

    /// Whether it belongs to nobody who could change it.
    bool IsLeft() noexcept;
    void AddReader() noexcept;
    void RemoveReader() noexcept;
    DomTree::Pointer Take(const DomSettings& settings);
    DomTree::Pointer Copy(const DomSettings& settings) const;
    bool Write(std::string& bytes);

    const ReadBack m_readBack;
    std::mutex m_lock;
    DomTree* m_tree;
    bool m_isOwn = false;      ///< the tree belongs to this
    bool m_isReadBack = false; ///< it is a copy, which is the same as what its text says
    std::size_t m_readers = 0;
};

/// One reader's hold on a shared tree. May be empty.
class TreeShare {
public:
    TreeShare() = default;
    explicit TreeShare(std::shared_ptr<SharedTree> tree) noexcept;
    TreeShare(const TreeShare& other) noexcept : TreeShare(other.m_tree) {}
    TreeShare(TreeShare&&) noexcept = default;
    TreeShare& operator=(TreeShare other) noexcept {
        std::swap(m_tree, other.m_tree);
        return *this;
    }
    ~TreeShare();

    explicit operator bool() const noexcept { return m_tree != nullptr; }
    const ReadBack& Form() const noexcept { return m_tree->Form(); }

    /// A tree of the reader's own, and his hold ends. Throws std::bad_alloc, and the hold stays.
    DomTree::Pointer Take(const DomSettings& settings);
    /// As DomSerializer::ToBytes.
    bool Write(std::string& bytes) const { return m_tree->Write(bytes); }

private:
    std::shared_ptr<SharedTree> m_tree;
};

} // namespace OvPlatform
