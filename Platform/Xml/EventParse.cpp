#include "Xml/EventParse.h"

#include "Xml/ParserError.h"

#include <libxml/parserInternals.h>
#include <utf8coder.h>

#include <algorithm>
#include <new>
#include <utility>

namespace OvPlatform {

namespace {

constexpr std::size_t LongestSource = 512;

} // namespace

XmlPointer<xmlParserCtxt> EventParse::NewParser(Listen listen, int options) {
    const std::string_view text = m_source.Text();
    if (text.empty()) {
        Refuse(XML_E_MISSINGROOT, "The text is empty: a document must have a root element");
        return nullptr;
    }
    XmlPointer<xmlParserCtxt> parser(xmlCreateMemoryParserCtxt(text.data(), static_cast<int>(text.size())));
    if (parser == nullptr) throw std::bad_alloc();
    parser->_private = this;
    xmlSAXHandler& handlers = *parser->sax;
    listen(handlers);
    handlers.internalSubset = DocumentType;
    handlers.serror = NoteError;
    handlers.error = nullptr;
    handlers.warning = nullptr;
    // The derived class bounds the depth, hence the option for huge documents.
    xmlCtxtUseOptions(parser.get(), options | XML_PARSE_NONET | XML_PARSE_HUGE |
                                        (m_source.IsUtf8() ? XML_PARSE_IGNORE_ENC : 0));
    return parser;
}

void EventParse::Run(xmlParserCtxt* parser) {
    xmlParseDocument(parser);
    if (parser->wellFormed == 0) NotWellFormed(parser);
}

bool EventParse::Enter(xmlParserCtxt* parser, LONG most) {
    if (most > 0 && m_depth >= static_cast<std::size_t>(most)) {
        FailHere(parser, XML_E_MAX_ELEMENT_DEPTH, "Elements are nested too deeply");
        return false;
    }
    ++m_depth;
    return true;
}

void EventParse::Refuse(HRESULT code, std::string reason) {
    m_failure.code = code;
    m_failure.reason = std::move(reason);
}

void EventParse::FailHere(xmlParserCtxt* parser, HRESULT code, std::string reason) {
    FailAt(parser, code, std::move(reason), parser->input->line, parser->input->col);
}

void EventParse::NotWellFormed(xmlParserCtxt* parser) {
    FailAt(parser, XML_E_SYNTAX, ParserError::Reason(nullptr), 0, 0);
}

void EventParse::FailAt(xmlParserCtxt* parser, HRESULT code, std::string reason, int line, int column) {
    if (m_failure.code == S_OK) {
        Refuse(code, std::move(reason));
        m_failure.line = line;
        m_failure.column = column;
        if (parser->input != nullptr) {
            const auto read = static_cast<std::size_t>(parser->input->cur - parser->input->base);
            m_failure.position = static_cast<LONG>(parser->input->consumed + read);
        }
        NoteSource(line, column);
    }
    xmlStopParser(parser);
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
    std::size_t begin = at > LongestSource ? std::min(at - LongestSource, rest.size()) : 0;
    while (begin < rest.size() && Utf8::IsTrail(rest[begin]))
        ++begin;
    std::size_t end = std::min(begin + 2 * LongestSource, rest.size());
    while (end < rest.size() && Utf8::IsTrail(rest[end]))
        ++end;
    m_failure.source = rest.substr(begin, end - begin);
}

void EventParse::NoteError(void* context, xmlError* error) {
    auto* parser = static_cast<xmlParserCtxt*>(error->ctxt != nullptr ? error->ctxt : context);
    if (ParserError::Matters(*error))
        Of<EventParse>(parser).FailAt(parser, CodeOfParserError(error->code), ParserError::Reason(error),
                                      error->line, error->int2);
}

void EventParse::DocumentType(void* context, const xmlChar*, const xmlChar*, const xmlChar*) {
    Of<EventParse>(context).FailHere(static_cast<xmlParserCtxt*>(context), XML_E_DTD_PROHIBITED,
                                     "A document type declaration (DTD) is not allowed");
}

} // namespace OvPlatform
