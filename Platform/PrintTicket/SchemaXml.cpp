#include "PrintTicket/SchemaXml.h"

#include "PrintTicket/SchemaFormatError.h"
#include "Xml/DocumentBound.h"
#include "Xml/ParserError.h"

#include <libxml/parser.h>
#include <libxml/parserInternals.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <utility>

namespace OvPlatform {
namespace {

// What parsing notices that the parser itself allows.
struct Refused {
    bool documentType = false;
    int declarationsLine = 0; // where there are too many
};

bool IsUtf16(std::string_view bytes) {
    using namespace std::string_view_literals;
    return bytes.starts_with("\xFF\xFE"sv) || bytes.starts_with("\xFE\xFF"sv) || bytes.starts_with("<\0"sv) ||
           bytes.starts_with("\0<"sv);
}

// A document type could bring in entities; parsing ends before any of it is read.
void RefuseDocumentType(void* context, const xmlChar*, const xmlChar*, const xmlChar*) {
    auto* parser = static_cast<xmlParserCtxt*>(context);
    static_cast<Refused*>(parser->_private)->documentType = true;
    xmlStopParser(parser);
}

void StartElement(void* context, const xmlChar* local, const xmlChar* prefix, const xmlChar* space,
                  int namespaceCount, const xmlChar** namespaces, int attributeCount, int defaultedCount,
                  const xmlChar** attributes) {
    auto* parser = static_cast<xmlParserCtxt*>(context);
    if (parser->nsNr / 2 > maxDeclarations) { // prefix and name each
        static_cast<Refused*>(parser->_private)->declarationsLine = parser->input->line;
        return xmlStopParser(parser);
    }
    xmlSAX2StartElementNs(context, local, prefix, space, namespaceCount, namespaces, attributeCount,
                          defaultedCount, attributes);
}

std::string LastProblem(xmlParserCtxt* parser) {
    const xmlError* error = xmlCtxtGetLastError(parser);
    if (!error || !error->message) return "not well-formed XML";
    const std::string text = ParserError::Reason(error);
    const std::string place =
        "line " + std::to_string(error->line) + ", column " + std::to_string(error->int2) + ": ";
    switch (error->code) {
    case XML_ERR_DOCUMENT_EMPTY:
        return place + "there is no XML here";
    case XML_ERR_INTERNAL_ERROR:
    case XML_ERR_NO_MEMORY:
        return place + "too large or too deeply nested: " + text; // the parser's bounds
    default:
        return place + "not well-formed: " + text;
    }
}

// The parser's time grows with the square of the attributes of one element, so that a start tag has to end in
// time.
constexpr std::size_t chunkSize = 16u << 10;
constexpr std::size_t maxStartTag = 64u << 10;

void Feed(xmlParserCtxt* parser, std::string_view bytes) {
    do {
        const std::string_view chunk = bytes.substr(0, chunkSize);
        bytes.remove_prefix(chunk.size());
        xmlParseChunk(parser, chunk.data(), static_cast<int>(chunk.size()), bytes.empty());
        const xmlParserInput* input = parser->input;
        if (!input || bytes.empty()) continue;
        const auto waiting = static_cast<std::size_t>(input->end - input->cur);
        if (waiting > maxStartTag && parser->instate == XML_PARSER_START_TAG)
            throw SchemaFormatError("line " + std::to_string(input->line) + ": the start tag is too long");
    } while (!bytes.empty() && parser->wellFormed);
}

void CheckEncoding(std::string_view bytes, const xmlDoc* document) {
    const std::string declared(View(document->encoding));
    if (declared.empty()) return;
    const bool says8 = strcasecmp(declared.c_str(), "UTF-8") == 0;
    const bool says16 = strncasecmp(declared.c_str(), "UTF-16", 6) == 0;
    if (!says8 && !says16)
        throw SchemaFormatError("line 1: the encoding is '" + declared +
                                "' where only UTF-8 and UTF-16 are allowed");
    if (says16 != IsUtf16(bytes))
        throw SchemaFormatError("line 1: the encoding '" + declared + "' is declared, but the text is in " +
                                (says16 ? "UTF-8" : "UTF-16"));
}

} // namespace

XmlDocument ParseSchemaXml(std::string_view bytes) {
    if (bytes.empty()) throw SchemaFormatError("the document is empty");
    if (bytes.size() > mostDocumentBytes) throw SchemaFormatError("the document is too large");

    // The first bytes go in with the parser, so that it sees what the text is encoded in.
    const auto head = static_cast<int>((std::min)(bytes.size(), std::size_t{4}));
    const XmlPointer<xmlParserCtxt> parser(
        xmlCreatePushParserCtxt(nullptr, nullptr, bytes.data(), head, nullptr));
    if (!parser) throw std::bad_alloc();
    Refused refused;
    parser->_private = &refused;
    parser->sax->internalSubset = RefuseDocumentType;
    parser->sax->startElementNs = StartElement;
    parser->sax->serror = [](void*, xmlError*) {}; // kept in the parser; nothing goes to the console
    xmlCtxtUseOptions(parser.get(), XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING |
                                        XML_PARSE_NOCDATA | XML_PARSE_BIG_LINES | XML_PARSE_COMPACT);
    Feed(parser.get(), bytes.substr(static_cast<std::size_t>(head)));
    XmlDocument document(std::exchange(parser->myDoc, nullptr));
    if (refused.documentType) throw SchemaFormatError("a document type (DTD) is not allowed");
    if (refused.declarationsLine != 0)
        throw SchemaFormatError("line " + std::to_string(refused.declarationsLine) + ": more than " +
                                std::to_string(maxDeclarations) + " namespace declarations are in force");
    // An undeclared prefix, or a text too long to keep, leaves a document that libxml2 calls well-formed.
    const xmlError* error = xmlCtxtGetLastError(parser.get());
    if (!document || !parser->wellFormed || (error && error->level >= XML_ERR_ERROR))
        throw SchemaFormatError(LastProblem(parser.get()));
    CheckEncoding(bytes, document.get());
    return document;
}

bool IsElement(const xmlNode* node, const char* space) {
    return node->type == XML_ELEMENT_NODE && node->ns && node->ns->href &&
           std::strcmp(reinterpret_cast<const char*>(node->ns->href), space) == 0;
}

xmlNode* FirstElement(const xmlNode* parent, const char* space) {
    xmlNode* child = parent->children;
    while (child && !IsElement(child, space))
        child = child->next;
    return child;
}

xmlNode* NextElement(const xmlNode* element, const char* space) {
    xmlNode* next = element->next;
    while (next && !IsElement(next, space))
        next = next->next;
    return next;
}

} // namespace OvPlatform
