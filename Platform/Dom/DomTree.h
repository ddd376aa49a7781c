#pragma once

#include "Dom/AttributeOrder.h"
#include "Dom/DetachedNodes.h"
#include "Dom/DomSettings.h"
#include "Dom/NamedElements.h"
#include "Dom/ReadBack.h"
#include "Xml/XmlPointer.h"

#include <windows.h>
#include <libxml/tree.h>

#include <atomic>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace OvPlatform {

class DomNodeObject;
class SharedTree;
class TreeShare;

/// The nodes of one document, counted by every object that refers to one of them: whoever holds a node keeps
/// the whole tree. Nodes outside the tree that hang together, by parent, child or attribute, end together,
/// once no object refers to any of them. Belongs to one thread at a time, like the document.
class DomTree {
public:
    struct Releaser {
        void operator()(DomTree* tree) const noexcept { tree->Release(); }
    };
    using Pointer = std::unique_ptr<DomTree, Releaser>;

    /// Null makes an empty document.
    static Pointer Create(XmlDocument document, const DomSettings& settings);

    void AddRef() noexcept { ++m_count; }
    void Release() noexcept {
        if (--m_count == 0) End();
    }

    xmlDoc* Document() const noexcept { return m_document; }
    xmlNode* DocumentNode() const noexcept { return reinterpret_cast<xmlNode*>(m_document); }

    /// Whether it is empty, and only the document refers to it.
    bool IsUnused() const noexcept { return m_count == 1 && m_document->children == nullptr; }

    /// Those of the document; some act on the next tree only.
    DomSettings& Settings() noexcept { return m_settings; }

    /// Whether this tree was made with white space that counts.
    bool PreservesWhiteSpace() const noexcept { return m_preservesWhiteSpace; }

    /// Changes whenever nodes come, go or move. No other tree ever has the same.
    std::uint64_t Version() const noexcept { return m_version; }
    /// The same for the children of nodes that are watched alone.
    std::uint64_t WatchedVersion() const noexcept { return m_watchedVersion; }
    /// Of whatever kind the change is.
    void Changed() noexcept {
        ++m_version;
        m_named.GiveUp();
    }
    /// No element came, went, moved, or has another value of an attribute.
    void ContentChanged() noexcept { ++m_version; }
    /// An element has got an attribute.
    void AttributeAdded(const xmlAttr* attribute) noexcept {
        ++m_version;
        m_named.AttributeChanged(attribute);
    }
    /// Gives the elements that are called by their attribute `name`, in document order. Not for a document
    /// with entities.
    void FindNamed(const ElementTest& test, std::string_view name, std::vector<xmlNode*>& found) {
        m_named.Find(m_document, test, name, found);
    }

    /// Before every change of what the document holds. Throws std::bad_alloc, and nothing must change then.
    void BeforeChange() {
        m_readBack.reset();
        if (m_shared || m_origin) Part();
    }

    /// What reading its text back would make of it.
    const ReadBack& Form();
    /// The same, where it is known.
    void SetForm(const ReadBack& form) noexcept { m_readBack = form; }
    /// The tree as it is now, for another document. Its form must be ReadBack::isCopy.
    TreeShare Share();
    /// As long as this does not change, others may begin with what it is a copy of. Throws std::bad_alloc.
    void CameFrom(const TreeShare& origin);

    /// A namespace for nodes to refer to, which lives as long as the tree. Null prefix: none. Null for an
    /// empty URI.
    xmlNs* Namespace(std::string_view prefix, std::string_view uri);

    /// New nodes, outside the tree.
    xmlNode* NewElement(std::string_view name, xmlNs* ns);
    xmlAttr* NewAttribute(std::string_view name, xmlNs* ns, std::string_view value);
    xmlNode* NewText(std::string_view text);
    xmlNode* NewCharacterData(xmlElementType type, std::string_view text);
    xmlNode* NewProcessingInstruction(std::string_view target, std::string_view data);
    xmlNode* NewFragment();

    /// Whether an attribute stands for a namespace declaration.
    static bool IsDeclaration(const xmlNode* attribute) noexcept;
    /// Whether a node is the text of an attribute that stands for an element's declaration: it goes and
    /// changes only with the attribute.
    static bool IsPartOfDeclaration(const xmlNode* text) noexcept;
    /// The attribute that stands for a declaration of `element`. Its owner is the tree.
    xmlAttr* MirrorOf(xmlNode* element, xmlNs* declaration);
    /// The declaration that an attribute stands for while an element has it, else null.
    static xmlNs* DeclarationOf(const xmlNode* attribute) noexcept;
    /// Gives `element` the declaration that the detached `mirror` describes. One of the same prefix goes, and
    /// is given back as a detached attribute, or null. A default declaration takes an element that is in no
    /// namespace into the one it declares, which its text would say in any case.
    xmlAttr* Declare(xmlNode* element, xmlAttr* mirror);
    /// Takes a declaration away. What it bound stays in its namespace. Gives the detached attribute.
    xmlAttr* Undeclare(xmlNode* element, xmlNs* declaration);
    /// Changes what a declaration says, with the same for what it bound.
    void ChangeDeclaration(xmlNode* element, xmlNs* declaration, std::string_view uri);

    static std::string AttributeValue(const xmlAttr* attribute);
    static void SetAttributeValue(xmlAttr* attribute, std::string_view value, DomTree& tree);

    /// Takes a node out of its parent, attributes included.
    void Unlink(xmlNode* node) noexcept;
    /// Puts a detached node of this tree before `next`, or last where that is null. Texts are not joined.
    void Link(xmlNode* parent, xmlNode* node, xmlNode* next) noexcept;
    /// Ends a node, if it stands outside the tree, with all that hangs together with it there, once no object
    /// refers to any of that: at once, or soon where that takes long to see. To be called when the object of
    /// a node ends.
    void Dispose(xmlNode* node) noexcept;

    /// While pinned, nodes outside the tree stay: a list refers to nodes that have no objects.
    void Pin() noexcept { ++m_pins; }
    void Unpin() noexcept;

    /// A copy of a node of any tree, outside this one.
    xmlNode* Copy(const DomTree& from, xmlNode* source, bool deep);
    /// Brings a node that stands outside the tree `from`, with its objects, here.
    xmlNode* Adopt(DomTree& from, xmlNode* source);

private:
    DomTree() = default;
    ~DomTree();
    DomTree(const DomTree&) = delete;
    DomTree& operator=(const DomTree&) = delete;

    xmlNs* NamespaceFrom(const DomTree& from, xmlNs* ns);
    xmlNode* CopyNode(const DomTree& from, xmlNode* source);
    void End() noexcept;
    void Part();
    void ChildrenChanged(const xmlNode* parent) noexcept;
    void FreeEnded();
    void Free(xmlNode* top) noexcept;
    void FreeMirror(xmlNs* declaration) noexcept;
    void FreeAttribute(xmlAttr* attribute) noexcept;
    void Forget(xmlAttr* attribute) noexcept;
    xmlNs* NewNs(std::string_view prefix, std::string_view uri);
    void Retire(xmlNs* declaration) noexcept;
    void FollowDefault(xmlNode* element, std::string_view prefix, std::string_view uri);

    xmlDoc* m_document = nullptr;
    std::uint64_t m_version = 0;
    std::uint64_t m_watchedVersion = 0;
    std::uint32_t m_count = 1;
    std::uint32_t m_pins = 0;
    bool m_preservesWhiteSpace = false;
    DomSettings m_settings;
    std::optional<ReadBack> m_readBack;
    std::shared_ptr<SharedTree> m_shared; ///< the tree as it is now, where it was shared since it changed
    std::unique_ptr<TreeShare> m_origin;  ///< another one's that is the same, where that is known
    std::unordered_map<std::string, xmlNs*> m_namespaces;
    /// Declarations that no element has any more, linked; nodes may still be in their namespaces.
    xmlNs* m_retired = nullptr;
    std::unordered_set<xmlAttr*> m_mirrors;
    DetachedNodes m_detached;
    NamedElementsOnDemand m_named;
    std::pair<xmlNs*, xmlNs*> m_lastMapped{};
};

/// What a node remembers beside its content.
enum NodeMark : unsigned short {
    BreakBefore = 1,     ///< blanks that were dropped stood before it
    BreakBeforeEnd = 2,  ///< blanks that were dropped stood before its end tag
    ReadDeclaration = 4, ///< the XML declaration came with the text
    Watched = 8,         ///< a list shows its children
};
// Who reads a shared tree may read marks while the tree's own thread sets one.
inline unsigned short MarksOf(const xmlNode* node) noexcept {
    return std::atomic_ref(const_cast<xmlNode*>(node)->extra).load(std::memory_order_relaxed);
}
inline void Mark(xmlNode* node, NodeMark mark) noexcept {
    std::atomic_ref(node->extra)
        .store(static_cast<unsigned short>(node->extra | mark), std::memory_order_relaxed);
}

/// The node behind `node` in document order below `top`, null at the end. Attributes are passed over.
inline xmlNode* NextInTree(xmlNode* node, const xmlNode* top) noexcept {
    if (node->children != nullptr) return node->children;
    while (node != top && node->next == nullptr)
        node = node->parent;
    return node == top ? nullptr : node->next;
}

} // namespace OvPlatform
