#pragma once

#include "Xml/SourceStream.h"
#include "Xml/SourceText.h"
#include "Xml/XmlPointer.h"

#include <libxml/parser.h>

#include <memory>
#include <string>

namespace OvPlatform {

/// One parse of one text by events, for derived classes that handle them. No network, no document type
/// declarations, no entities but the five of XML itself, and no prefix without its declaration. The first
/// failure ends it.
class EventParse {
public:
    EventParse(const EventParse&) = delete;
    EventParse& operator=(const EventParse&) = delete;

    /// Why the text was not read to its end.
    const XmlFailure& Failure() const noexcept { return m_failure; }

protected:
    /// A start tag as libxml2 tells of it: a declaration is two texts, an attribute five.
    struct StartTagEvent {
        const xmlChar* name;
        const xmlChar* prefix;
        const xmlChar* uri;
        int declarationCount;
        const xmlChar** declarations;
        int attributeCount;
        int defaultedCount;
        const xmlChar** attributes;
    };

    EventParse() = default;
    virtual ~EventParse() = default;

    virtual void StartDocument() = 0;
    virtual void EndDocument() = 0;
    virtual void StartElement(const StartTagEvent& tag) = 0;
    virtual void EndElement(const xmlChar* name, const xmlChar* prefix, const xmlChar* uri) = 0;
    virtual void Characters(const xmlChar* text, int length) = 0;
    virtual void CData(const xmlChar* text, int length) = 0;
    virtual void Comment(const xmlChar* text) = 0;
    virtual void ProcessingInstruction(const xmlChar* target, const xmlChar* data) = 0;

    /// The text, from bytes or from text. False with Failure.
    bool TakeBytes(std::string_view bytes) { return m_source.FromBytes(bytes, m_failure); }
    bool TakeText(std::string_view utf8) { return m_source.FromText(utf8, m_failure); }
    /// The text, to be read as the parse goes on: what is read last need not be in memory with the rest. Such
    /// a text has no Source, and failures no line of it.
    bool TakeStream(CComPtr<ISequentialStream> stream);
    const SourceText& Source() const noexcept { return m_source; }

    /// Makes the parser for the text, with libxml2's `options` beside those that all have. False with Failure
    /// where there is nothing to be read.
    bool Open(int options);
    /// Null until Open; stays until the object ends.
    xmlParserCtxt* Parser() const noexcept { return m_parser.get(); }
    /// Reads to the end or to the first failure.
    void Run();

    /// To be asked at every start tag: whether elements may be nested so deeply. 0 for `most` is no bound.
    bool Enter(LONG most);
    /// At every end tag.
    void Leave() noexcept { --m_depth; }
    std::size_t Depth() const noexcept { return m_depth; }

    /// Before the parse, or without a place in the text.
    void Refuse(HRESULT code, std::string reason);
    /// Ends the parse where it stands.
    void FailHere(HRESULT code, std::string reason);
    void NotWellFormed();

private:
    struct Events;

    XmlPointer<xmlParserCtxt> MakeParser();
    /// Ends the parse; line and column are 0 where there is no place to point at.
    void FailAt(HRESULT code, std::string reason, int line, int column);
    void NoteSource(int line, int column);

    XmlFailure m_failure;
    SourceText m_source;
    std::unique_ptr<SourceStream> m_stream; // null for a text that is there as a whole
    XmlPointer<xmlParserCtxt> m_parser;
    std::size_t m_depth = 0;
};

} // namespace OvPlatform
