#pragma once

#include "Dom/DomFailure.h"
#include "Dom/DomSettings.h"
#include "Dom/DomTree.h"
#include "Dom/SourceText.h"

#include <libxml/parser.h>

#include <memory>
#include <string_view>

namespace OvPlatform {

/// Makes a tree of a text. No network, no document type declarations, no entities but the five of XML itself,
/// and no prefix without its declaration.
class DomLoader {
public:
    explicit DomLoader(const DomSettings& settings) : m_settings(settings) {}

    /// From bytes, by their byte order mark and their declaration. Null on failure.
    xmlDoc* FromBytes(std::string_view bytes);

    /// From text that already is UTF-8, whatever its declaration says.
    xmlDoc* FromText(std::string_view utf8);

    /// Why there is no document.
    const DomFailure& Failure() const noexcept { return m_failure; }

private:
    static DomLoader& Of(void* context) noexcept;
    static void StartDocument(void* context);
    static void StartElement(void* context, const xmlChar* name, const xmlChar* prefix, const xmlChar* uri,
                             int declarationCount, const xmlChar** declarations, int attributeCount,
                             int defaultedCount, const xmlChar** attributes);
    static void EndElement(void* context, const xmlChar* name, const xmlChar* prefix, const xmlChar* uri);
    static void Characters(void* context, const xmlChar* text, int length);
    static void CData(void* context, const xmlChar* text, int length);
    static void Comment(void* context, const xmlChar* text);
    static void ProcessingInstruction(void* context, const xmlChar* target, const xmlChar* data);
    static void DocumentType(void* context, const xmlChar* name, const xmlChar* publicId,
                             const xmlChar* systemId);
    static void NoteError(void* context, xmlError* error);

    xmlDoc* Parse();
    void Refuse(HRESULT code, std::string reason);
    void FailAt(xmlParserCtxt* parser, HRESULT code, std::string reason, int line, int column);
    void NoteSource(int line, int column);
    void EndText() noexcept;
    void MarkBreak(xmlNode* node, NodeMark mark) noexcept;
    void AfterNode(xmlParserCtxt* parser, xmlNode* before) noexcept;

    const DomSettings& m_settings;
    DomFailure m_failure;
    SourceText m_source;
    LONG m_depth = 0;
    /// Blanks at the beginning of a text, which are dropped if nothing else follows.
    std::string m_blanks;
    bool m_inText = false;
    bool m_breakPending = false;
};

} // namespace OvPlatform
