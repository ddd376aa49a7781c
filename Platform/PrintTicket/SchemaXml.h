#pragma once

#include <libxml/tree.h>

#include <memory>
#include <string_view>

namespace OvPlatform {

struct XmlDocDeleter {
    void operator()(xmlDoc* document) const { xmlFreeDoc(document); }
};
using XmlDocPtr = std::unique_ptr<xmlDoc, XmlDocDeleter>;

// Namespace declarations in force at one element: the parser searches them one by one, for every element.
inline constexpr int MaxDeclarations = 256;

// Parses the bytes of a Print Schema document: UTF-8 or UTF-16, with or without a byte-order mark, the
// declared encoding in agreement with the bytes, no document type. Throws SchemaFormatError.
XmlDocPtr ParseSchemaXml(std::string_view bytes);

// libxml2's strings as the standard library's; null gives an empty view.
inline std::string_view ViewOf(const xmlChar* text) {
    return text ? std::string_view(reinterpret_cast<const char*>(text)) : std::string_view();
}
inline const xmlChar* XmlText(const char* text) { return reinterpret_cast<const xmlChar*>(text); }

bool IsElement(const xmlNode* node, const char* space);
xmlNode* FirstElement(const xmlNode* parent, const char* space);
xmlNode* NextElement(const xmlNode* element, const char* space);

} // namespace OvPlatform
