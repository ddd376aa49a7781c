#pragma once

#include "Dom/DomTree.h"

#include <deque>
#include <string>
#include <string_view>
#include <vector>

namespace OvPlatform {

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

    /// The document in the encoding of its declaration: UTF-8 without one. False if that encoding is unknown.
    static bool ToBytes(const DomTree& tree, std::string& bytes);

private:
    struct Binding {
        std::string_view prefix;
        std::string_view uri;
    };

    void WriteSubtree(const xmlNode* top);
    void StartElement(const xmlNode* element);
    void EndElement(const xmlNode* element);
    void WriteLeaf(const xmlNode* node);
    void WriteProcessingInstruction(const xmlNode* node);
    void WriteAttribute(const xmlAttr* attribute, std::string_view prefix);
    void WriteDeclaration(std::string_view prefix, std::string_view uri);
    void WriteName(std::string_view prefix, std::string_view name);
    void WriteEscaped(std::string_view text, bool inAttribute);
    void WriteRaw(std::string_view text);
    void BreakAfter(const xmlNode* previous);
    const Binding* BindingOf(std::string_view prefix) const noexcept;
    std::string_view PrefixFor(const xmlAttr* attribute, std::size_t own);

    const DomTree& m_tree;
    Declaration m_declaration;
    std::string m_text;
    std::size_t m_depth = 0;
    /// What is declared where the writer stands, and for each open element how much was before it.
    std::vector<Binding> m_bindings;
    std::vector<std::size_t> m_frames;
    /// Prefixes made up for attributes that have a namespace and none.
    std::deque<std::string> m_madeUp;
};

} // namespace OvPlatform
