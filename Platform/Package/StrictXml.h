#pragma once

#include <libxml/tree.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

namespace OvPlatform {

// XML that was refused. what() is one line without the place; Line() counts from 1, 0 where unknown.
class StrictXmlError : public std::runtime_error {
public:
    StrictXmlError(long line, const std::string& problem) : std::runtime_error(problem), m_line(line) {}
    long Line() const { return m_line; }

private:
    long m_line;
};

struct XmlDocumentDeleter {
    void operator()(xmlDoc* document) const { xmlFreeDoc(document); }
};
using XmlDocument = std::unique_ptr<xmlDoc, XmlDocumentDeleter>;

// Parses a whole document: no DTD, no network, the depth and sizes bounded as libxml2 does by default. Throws
// StrictXmlError.
XmlDocument ParseStrictXml(std::string_view bytes);

// The name of an element or attribute without its prefix, and its namespace ("" for none).
std::string_view LocalName(const xmlNode* node);
std::string_view NamespaceOf(const xmlNode* node);
std::string_view NamespaceOf(const xmlAttr* attribute);

// The value of an attribute without a namespace. False where it is absent.
bool GetAttribute(const xmlNode* element, const char* name, std::string& value);

} // namespace OvPlatform
