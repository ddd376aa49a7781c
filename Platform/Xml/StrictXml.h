#pragma once

#include "Com/PlatformExport.h"
#include "Xml/XmlPointer.h"

#include <libxml/tree.h>

#include <stdexcept>
#include <string>
#include <string_view>

namespace OvPlatform {

/// XML that was refused. what() is one line without the place; Line() counts from 1, 0 where unknown.
class OV_PLATFORM_API StrictXmlError : public std::runtime_error {
public:
    StrictXmlError(long line, const std::string& problem) : std::runtime_error(problem), m_line(line) {}
    long Line() const { return m_line; }

private:
    long m_line;
};

/// Parses a whole document: no DTD, no network, the depth and sizes bounded as libxml2 does by default.
/// Throws StrictXmlError.
OV_PLATFORM_API XmlDocument ParseStrictXml(std::string_view bytes);

// The name of an element or attribute without its prefix, and its namespace ("" for none).
OV_PLATFORM_API std::string_view LocalName(const xmlNode* node);
std::string_view NamespaceOf(const xmlNode* node);
std::string_view NamespaceOf(const xmlAttr* attribute);

/// The value of an attribute without a namespace. False where it is absent.
OV_PLATFORM_API bool GetAttribute(const xmlNode* element, const char* name, std::string& value);

} // namespace OvPlatform
