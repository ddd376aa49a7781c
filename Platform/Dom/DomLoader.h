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
    static void SetHandlers(xmlSAXHandler& handlers);
    static void StartDocument(void* context);
    static void StartElement(void* context, const xmlChar* name, const xmlChar* prefix, const xmlChar* uri,
                             int declarationCount, const xmlChar** declarations, int attributeCount,
                             int defaultedCount, const xmlChar** attributes);
    static void EndElement(void* context, const xmlChar* name, const xmlChar* prefix, const xmlChar* uri);
    static void Characters(void* context, const xmlChar* text, int length);
    static void CData(void* context, const xmlChar* text, int length);
    static void Comment(void* context, const xmlChar* text);
    static void ProcessingInstruction(void* context, const xmlChar* target, const xmlChar* data);

    XmlDocument Parse();
    void EndText() noexcept;
    void MarkBreak(xmlNode* node, NodeMark mark) noexcept;
    void AfterNode(xmlParserCtxt* parser, xmlNode* before) noexcept;

    const DomSettings& m_settings;
    /// Blanks at the beginning of a text, which are dropped if nothing else follows.
    std::string m_blanks;
    bool m_inText = false;
    bool m_breakPending = false;
};

} // namespace OvPlatform
