#pragma once

#include "Dom/DomTree.h"
#include "Dom/WrittenNamespaces.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace OvPlatform {

class TargetEncoding;

/// Writes nodes as text. The form is described in docs/formats/dom-text.md.
class DomSerializer {
public:
    /// What becomes of the encoding in a declaration that came with the text.
    enum class Declaration { WithEncoding, WithoutEncoding };

    DomSerializer(const DomTree& tree, Declaration declaration) noexcept
        : m_tree(tree), m_declaration(declaration) {}

    /// Appends a node, which may be the document, in UTF-8.
    void Write(const xmlNode* node);

    std::string TakeText() noexcept { return std::move(m_text); }

    /// The document in the encoding of its declaration: UTF-8 without one. False if that encoding is unknown,
    /// or lacks a character where none can be written by number.
    static bool ToBytes(const DomTree& tree, std::string& bytes);

private:
    struct OpenElement {
        std::string_view prefix; ///< as it is written, which may not be the element's own
        bool preservesSpace;     ///< by xml:space
    };

    void WriteSubtree(const xmlNode* top);
    void StartElement(const xmlNode* element);
    void EndElement(const xmlNode* element);
    void Close();
    void WriteLeaf(const xmlNode* node);
    void WriteProcessingInstruction(const xmlNode* node);
    void WriteAttribute(const xmlAttr* attribute, std::string_view prefix);
    void WriteDeclaration(std::string_view prefix, std::string_view uri);
    void WriteName(std::string_view prefix, std::string_view name);
    void WriteEscaped(std::string_view text, bool inAttribute);
    void WriteRaw(std::string_view text);
    void RequireCharacters(std::string_view text);
    bool PreservesSpace(const xmlNode* element) const noexcept;
    /// Whether a line may end between two nodes of the innermost element, null being one of its tags: it may
    /// not where the break would become content.
    bool MayBreak(const xmlNode* left, const xmlNode* right) const noexcept;
    void Break();
    /// The prefix to write, which the element then declares where nothing does.
    std::string_view PrefixFor(const xmlNode* element);
    std::string_view PrefixFor(const xmlAttr* attribute);

    const DomTree& m_tree;
    Declaration m_declaration;
    std::string m_text;
    std::size_t m_depth = 0;
    WrittenNamespaces m_scope;
    std::vector<OpenElement> m_open;
    /// The namespace whose prefix needed nothing last, and when: most elements are in that of their
    /// neighbours.
    std::pair<const xmlNs*, std::size_t> m_fitting{nullptr, static_cast<std::size_t>(-1)};
    /// The encoding to come, where that is neither UTF-8 nor UTF-16, and whether it fails the document.
    TargetEncoding* m_encoding = nullptr;
    bool m_lacksCharacters = false;
};

} // namespace OvPlatform
