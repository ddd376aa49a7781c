#pragma once

#include "Com/PlatformExport.h"
#include "Xml/XmlPointer.h"
#include "Xml/XmlString.h"

#include <libxml/tree.h>

#include <string_view>

namespace OvPlatform {

/// Namespace declarations in force at one element: the parser searches them one by one, for every element.
inline constexpr int maxDeclarations = 256;

/// Parses the bytes of a Print Schema document: UTF-8 or UTF-16, with or without a byte-order mark, the
/// declared encoding in agreement with the bytes, no document type. Throws SchemaFormatError.
OV_PLATFORM_API XmlDocument ParseSchemaXml(std::string_view bytes);

bool IsElement(const xmlNode* node, const char* space);
xmlNode* FirstElement(const xmlNode* parent, const char* space);
xmlNode* NextElement(const xmlNode* element, const char* space);

} // namespace OvPlatform
