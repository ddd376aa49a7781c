#include "Xml/XmlPointer.h"

#include <libxml/encoding.h>
#include <libxml/parser.h>
#include <libxml/tree.h>
#include <libxml/xmlreader.h>
#include <libxml/xmlwriter.h>
#include <libxml/xpath.h>

namespace OvPlatform {

void XmlRelease::operator()(xmlBuffer* buffer) const noexcept { xmlBufferFree(buffer); }

void XmlRelease::operator()(xmlCharEncodingHandler* handler) const noexcept { xmlCharEncCloseFunc(handler); }

void XmlRelease::operator()(xmlDoc* document) const noexcept { xmlFreeDoc(document); }

void XmlRelease::operator()(xmlNs* declaration) const noexcept { xmlFreeNs(declaration); }

void XmlRelease::operator()(xmlParserCtxt* parser) const noexcept {
    xmlFreeDoc(parser->myDoc);
    xmlFreeParserCtxt(parser);
}

void XmlRelease::operator()(xmlTextReader* reader) const noexcept { xmlFreeTextReader(reader); }

void XmlRelease::operator()(xmlTextWriter* writer) const noexcept { xmlFreeTextWriter(writer); }

void XmlRelease::operator()(xmlXPathCompExpr* expression) const noexcept { xmlXPathFreeCompExpr(expression); }

void XmlRelease::operator()(xmlXPathContext* context) const noexcept { xmlXPathFreeContext(context); }

void XmlRelease::operator()(xmlXPathObject* object) const noexcept { xmlXPathFreeObject(object); }

void XmlRelease::operator()(xmlChar* text) const noexcept { xmlFree(text); }

void XmlRelease::operator()(char* text) const noexcept { xmlFree(text); }

} // namespace OvPlatform
