#pragma once

#include "Dom/DomSettings.h"
#include "Dom/DomTree.h"
#include "Xml/EventParse.h"

#include <string>
#include <string_view>
#include <vector>

namespace OvPlatform {

/// Makes a tree of a text.
class DomLoader final : public EventParse {
public:
    explicit DomLoader(const DomSettings& settings) : m_settings(settings) {}

    /// From bytes, by their byte order mark and their declaration. Null on failure.
    XmlDocument FromBytes(std::string_view bytes);

    /// From text that already is UTF-8, whatever its declaration says.
    XmlDocument FromText(std::string_view utf8);

    /// Of the document that was made, what reading back its text would make of it.
    ReadBack Form(const xmlDoc* document) const;

private:
    void StartDocument() override;
    void EndDocument() override;
    void StartElement(const StartTagEvent& tag) override;
    void EndElement(const xmlChar* name, const xmlChar* prefix, const xmlChar* uri) override;
    void Characters(const xmlChar* text, int length) override;
    void CData(const xmlChar* text, int length) override;
    void Comment(const xmlChar* text) override;
    void ProcessingInstruction(const xmlChar* target, const xmlChar* data) override;

    XmlDocument Parse();
    xmlNode* AddElement(const StartTagEvent& tag);
    void AddDeclarations(const StartTagEvent& tag, xmlNode* element);
    void AddAttributes(const StartTagEvent& tag, xmlNode* element);
    /// Of a prefix that is declared, as the parser spells it: all its texts are of one dictionary.
    xmlNs* Namespace(const xmlChar* prefix) const noexcept;
    void EndText() noexcept;
    void MarkBreak(xmlNode* node, NodeMark mark, const xmlNode* before) noexcept;
    /// Adds a node that is no element and no text, and marks a break before it.
    template <class Add>
    void AddNode(Add&& add);

    struct Declared {
        const xmlChar* prefix;
        xmlNs* ns;
    };

    const DomSettings& m_settings;
    std::vector<Declared> m_declared;   ///< what is in force, the innermost last
    std::vector<std::size_t> m_outside; ///< for each open element how many were before it
    /// Blanks at the beginning of a text, which are dropped if nothing else follows.
    std::string m_blanks;
    bool m_inText = false;
    bool m_breakPending = false;
    bool m_hasIdleMarks = false; ///< of breaks that are not written
    std::size_t m_depth = 0;     ///< the deepest element
};

} // namespace OvPlatform
