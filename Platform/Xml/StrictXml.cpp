#include "Xml/StrictXml.h"

#include "Xml/AttributeBound.h"
#include "Xml/DocumentBound.h"
#include "Xml/ParserError.h"
#include "Xml/XmlString.h"

#include <libxml/parser.h>
#include <libxml/parserInternals.h>

#include <new>

namespace OvPlatform {

namespace {

// Where a document type declaration was met.
struct DtdMark {
    bool met = false;
    long line = 0;
};

void RefuseDtd(void* context, const xmlChar*, const xmlChar*, const xmlChar*) {
    auto* parser = static_cast<xmlParserCtxt*>(context);
    auto* mark = static_cast<DtdMark*>(parser->_private);
    mark->met = true;
    if (parser->input) mark->line = parser->input->line;
    xmlStopParser(parser);
}

} // namespace

XmlDocument ParseStrictXml(std::string_view bytes) {
    if (bytes.empty()) throw StrictXmlError(0, "the document is empty");
    if (bytes.size() > mostDocumentBytes) throw StrictXmlError(0, "the document is too large");
    if (!AttributeBound::PassesWhole(bytes))
        throw StrictXmlError(0, "elements have more attributes and declarations than are allowed");
    const XmlPointer<xmlParserCtxt> parser(xmlNewParserCtxt());
    if (!parser) throw std::bad_alloc();
    DtdMark dtd;
    parser->_private = &dtd;
    parser->sax->internalSubset = RefuseDtd;
    XmlDocument document(
        xmlCtxtReadMemory(parser.get(), bytes.data(), static_cast<int>(bytes.size()), nullptr, nullptr,
                          XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING | XML_PARSE_NOCDATA));
    if (dtd.met) throw StrictXmlError(dtd.line, "document type declarations are not allowed");
    if (!document || !parser->wellFormed) {
        if (parser->lastError.code == XML_ERR_NO_MEMORY) throw std::bad_alloc();
        throw StrictXmlError(parser->lastError.line, ParserError::FirstLine(&parser->lastError));
    }
    return document;
}

std::string_view LocalName(const xmlNode* node) { return View(node->name); }

std::string_view NamespaceOf(const xmlNode* node) {
    return node->ns ? View(node->ns->href) : std::string_view();
}

std::string_view NamespaceOf(const xmlAttr* attribute) {
    return attribute->ns ? View(attribute->ns->href) : std::string_view();
}

bool GetAttribute(const xmlNode* element, const char* name, std::string& value) {
    const XmlPointer<xmlChar> text(xmlGetNoNsProp(element, AsXml(name)));
    if (text) value = View(text.get());
    return text != nullptr;
}

} // namespace OvPlatform
