#include "Xml/EventParse.h"

#include "Xml/ParserError.h"

#include <libxml/parserInternals.h>
#include <utf8coder.h>

#include <algorithm>
#include <new>
#include <utility>

namespace OvPlatform {

namespace {

constexpr std::size_t longestSource = 512;

} // namespace

/// libxml2's events, each for the object that listens to its parser.
struct EventParse::Events {
    static EventParse& Of(void* parser) noexcept {
        return *static_cast<EventParse*>(static_cast<xmlParserCtxt*>(parser)->_private);
    }

    static void StartDocument(void* parser) { Of(parser).StartDocument(); }
    static void EndDocument(void* parser) { Of(parser).EndDocument(); }

    static void StartElement(void* parser, const xmlChar* name, const xmlChar* prefix, const xmlChar* uri,
                             int declarationCount, const xmlChar** declarations, int attributeCount,
                             int defaultedCount, const xmlChar** attributes) {
        Of(parser).StartElement(
            {name, prefix, uri, declarationCount, declarations, attributeCount, defaultedCount, attributes});
    }

    static void EndElement(void* parser, const xmlChar* name, const xmlChar* prefix, const xmlChar* uri) {
        Of(parser).EndElement(name, prefix, uri);
    }

    static void Characters(void* parser, const xmlChar* text, int length) {
        Of(parser).Characters(text, length);
    }

    static void CData(void* parser, const xmlChar* text, int length) { Of(parser).CData(text, length); }
    static void Comment(void* parser, const xmlChar* text) { Of(parser).Comment(text); }

    static void ProcessingInstruction(void* parser, const xmlChar* target, const xmlChar* data) {
        Of(parser).ProcessingInstruction(target, data);
    }

    static void DocumentType(void* parser, const xmlChar*, const xmlChar*, const xmlChar*) {
        Of(parser).FailHere(XML_E_DTD_PROHIBITED, "A document type declaration (DTD) is not allowed");
    }

    static void Error(void* context, xmlError* error) {
        if (ParserError::Matters(*error))
            Of(error->ctxt != nullptr ? error->ctxt : context)
                .FailAt(CodeOfParserError(error->code), ParserError::Reason(error), error->line, error->int2);
    }

    static void ListenTo(xmlParserCtxt& parser) {
        xmlSAXHandler& handlers = *parser.sax;
        handlers = {}; // of libxml2's own, which make a tree, none is called but by a derived class
        handlers.initialized = XML_SAX2_MAGIC;
        handlers.internalSubset = DocumentType;
        handlers.startDocument = StartDocument;
        handlers.endDocument = EndDocument;
        handlers.startElementNs = StartElement;
        handlers.endElementNs = EndElement;
        handlers.characters = Characters;
        handlers.ignorableWhitespace = Characters;
        handlers.cdataBlock = CData;
        handlers.comment = Comment;
        handlers.processingInstruction = ProcessingInstruction;
        handlers.serror = Error;
    }
};

bool EventParse::TakeStream(CComPtr<ISequentialStream> stream) {
    m_stream = std::make_unique<SourceStream>(std::move(stream));
    if (m_stream->Begin()) return true;
    m_failure = m_stream->Failure();
    return false;
}

XmlPointer<xmlParserCtxt> EventParse::MakeParser() {
    const std::string_view text = m_source.Text();
    if (!m_stream)
        return XmlPointer<xmlParserCtxt>(
            xmlCreateMemoryParserCtxt(text.data(), static_cast<int>(text.size())));
    const auto read = [](void* stream, char* buffer, int size) {
        return static_cast<SourceStream*>(stream)->Read(buffer, size);
    };
    return XmlPointer<xmlParserCtxt>(
        xmlCreateIOParserCtxt(nullptr, nullptr, read, nullptr, m_stream.get(), XML_CHAR_ENCODING_NONE));
}

bool EventParse::Open(int options) {
    if (m_stream ? m_stream->IsEmpty() : m_source.Text().empty()) {
        Refuse(XML_E_MISSINGROOT, "The text is empty: a document must have a root element");
        return false;
    }
    m_parser = MakeParser();
    if (!m_parser) throw std::bad_alloc();
    m_parser->_private = this;
    Events::ListenTo(*m_parser);
    const bool isUtf8 = m_stream ? m_stream->IsUtf8() : m_source.IsUtf8();
    // The derived class bounds the depth, hence the option for huge documents.
    xmlCtxtUseOptions(m_parser.get(),
                      options | XML_PARSE_NONET | XML_PARSE_HUGE | (isUtf8 ? XML_PARSE_IGNORE_ENC : 0));
    return true;
}

void EventParse::Run() {
    xmlParseDocument(m_parser.get());
    // To the parser, a stream that fails has come to its end.
    if (m_stream && m_stream->Failure().code != S_OK)
        m_failure = m_stream->Failure();
    else if (m_parser->wellFormed == 0)
        NotWellFormed();
}

bool EventParse::Enter(LONG most) {
    if (most > 0 && m_depth >= static_cast<std::size_t>(most)) {
        FailHere(XML_E_MAX_ELEMENT_DEPTH, "Elements are nested too deeply");
        return false;
    }
    ++m_depth;
    return true;
}

void EventParse::Refuse(HRESULT code, std::string reason) {
    m_failure.code = code;
    m_failure.reason = std::move(reason);
}

void EventParse::FailHere(HRESULT code, std::string reason) {
    FailAt(code, std::move(reason), m_parser->input->line, m_parser->input->col);
}

void EventParse::NotWellFormed() { FailAt(XML_E_SYNTAX, ParserError::Reason(nullptr), 0, 0); }

void EventParse::FailAt(HRESULT code, std::string reason, int line, int column) {
    if (m_failure.code == S_OK) {
        Refuse(code, std::move(reason));
        m_failure.line = line;
        m_failure.column = column;
        if (const xmlParserInput* input = m_parser->input; input != nullptr) {
            const auto read = static_cast<std::size_t>(input->cur - input->base);
            m_failure.position = static_cast<LONG>(input->consumed + read);
        }
        NoteSource(line, column);
    }
    xmlStopParser(m_parser.get());
}

void EventParse::NoteSource(int line, int column) {
    std::string_view rest = m_source.Text();
    for (int passed = 1; passed < line; ++passed) {
        const std::size_t end = rest.find('\n');
        if (end == std::string_view::npos) break;
        rest.remove_prefix(end + 1);
    }
    rest = rest.substr(0, std::min(rest.find_first_of("\r\n"), rest.size()));
    const auto at = static_cast<std::size_t>(std::max(column, 0));
    std::size_t begin = at > longestSource ? std::min(at - longestSource, rest.size()) : 0;
    while (begin < rest.size() && Utf8::IsTrail(rest[begin]))
        ++begin;
    std::size_t end = std::min(begin + 2 * longestSource, rest.size());
    while (end < rest.size() && Utf8::IsTrail(rest[end]))
        ++end;
    m_failure.source = rest.substr(begin, end - begin);
}

} // namespace OvPlatform
