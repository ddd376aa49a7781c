#pragma once

#include "Dom/DomSettings.h"
#include "Dom/DomTree.h"
#include "Xml/EventParse.h"

#include <string>
#include <string_view>

namespace OvPlatform {

/// Makes a tree of a text.
class DomLoader final : public EventParse {
public:
    explicit DomLoader(const DomSettings& settings) : m_settings(settings) {}

    /// From bytes, by their byte order mark and their declaration. Null on failure.
    XmlDocument FromBytes(std::string_view bytes);

    /// From text that already is UTF-8, whatever its declaration says.
    XmlDocument FromText(std::string_view utf8);

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
    void EndText() noexcept;
    void MarkBreak(xmlNode* node, NodeMark mark) noexcept;
    /// Adds a node that is no element and no text, and marks a break before it.
    template <class Add>
    void AddNode(Add&& add);

    const DomSettings& m_settings;
    /// Blanks at the beginning of a text, which are dropped if nothing else follows.
    std::string m_blanks;
    bool m_inText = false;
    bool m_breakPending = false;
};

} // namespace OvPlatform
