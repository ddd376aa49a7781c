#pragma once

#include "Dom/AttributeOrder.h"
#include "Dom/DetachedNodes.h"
#include "Dom/DomSettings.h"
#include "Dom/NamedElements.h"
#include "Xml/XmlPointer.h"

#include <windows.h>
#include <libxml/tree.h>

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace OvPlatform {

class DomNodeObject;

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
        if (--m_count == 0) delete this;
    }

    xmlDoc* Document() const noexcept { return m_document; }
    xmlNode* DocumentNode() const noexcept { return reinterpret_cast<xmlNode*>(m_document); }

    /// Those of the document; some act on the next tree only.
    DomSettings& Settings() noexcept { return m_settings; }

    /// Whether this tree was made with white space that counts.
    bool PreservesWhiteSpace() const noexcept { return m_preservesWhiteSpace; }

    /// Changes whenever nodes come, go or move. No other tree ever has the same.
    std::uint64_t Version() const noexcept { return m_version; }
    /// The same for the children of nodes that are watched alone.
    std::uint64_t WatchedVersion() const noexcept { return m_watchedVersion; }
    void Changed() noexcept { ++m_version; }
    /// Null where the document has to be searched. Holds until the next change.
    const NamedElements* Named() { return m_named.Of(m_document, m_version); }

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
inline unsigned short MarksOf(const xmlNode* node) noexcept { return node->extra; }
inline void Mark(xmlNode* node, NodeMark mark) noexcept {
    node->extra = static_cast<unsigned short>(node->extra | mark);
}

/// The node behind `node` in document order below `top`, null at the end. Attributes are passed over.
xmlNode* NextInTree(xmlNode* node, const xmlNode* top) noexcept;

} // namespace OvPlatform
