#pragma once

#include "Xml/SourceText.h"
#include "Xml/XmlPointer.h"

#include <libxml/parser.h>

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
    /// Puts the derived class's handlers where libxml2 calls them. They find their object by Of.
    using Listen = void (*)(xmlSAXHandler& handlers);

    EventParse() = default;
    ~EventParse() = default;

    template <class Derived>
    static Derived& Of(void* context) noexcept {
        return static_cast<Derived&>(
            *static_cast<EventParse*>(static_cast<xmlParserCtxt*>(context)->_private));
    }

    /// The text, from bytes or from text. False with Failure.
    bool TakeBytes(std::string_view bytes) { return m_source.FromBytes(bytes, m_failure); }
    bool TakeText(std::string_view utf8) { return m_source.FromText(utf8, m_failure); }
    const SourceText& Source() const noexcept { return m_source; }

    /// For the text, with libxml2's `options` beside those that all have. Null with Failure where there is
    /// nothing to be read.
    XmlPointer<xmlParserCtxt> NewParser(Listen listen, int options);

    /// Reads to the end or to the first failure.
    void Run(xmlParserCtxt* parser);

    /// To be asked at every start tag: whether elements may be nested so deeply. 0 for `most` is no bound.
    bool Enter(xmlParserCtxt* parser, LONG most);
    /// At every end tag.
    void Leave() noexcept { --m_depth; }
    std::size_t Depth() const noexcept { return m_depth; }

    /// Without a place in the text.
    void Refuse(HRESULT code, std::string reason);
    /// Ends the parse where it stands.
    void FailHere(xmlParserCtxt* parser, HRESULT code, std::string reason);
    /// Ends the parse; line and column are 0 where there is no place to point at.
    void FailAt(xmlParserCtxt* parser, HRESULT code, std::string reason, int line, int column);
    void NotWellFormed(xmlParserCtxt* parser);

private:
    static void NoteError(void* context, xmlError* error);
    static void DocumentType(void* context, const xmlChar* name, const xmlChar* publicId,
                             const xmlChar* systemId);
    void NoteSource(int line, int column);

    XmlFailure m_failure;
    SourceText m_source;
    std::size_t m_depth = 0;
};

} // namespace OvPlatform
