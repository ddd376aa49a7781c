#pragma once

#include <libxml/xmlstring.h>

#include <string_view>

namespace OvPlatform {

/// libxml2's strings as the standard library's; null is empty.
inline std::string_view View(const xmlChar* text) noexcept {
    return text == nullptr ? std::string_view() : std::string_view(reinterpret_cast<const char*>(text));
}
inline std::string_view View(const xmlChar* text, int length) noexcept {
    return {reinterpret_cast<const char*>(text), static_cast<std::size_t>(length)};
}
inline const xmlChar* AsXml(const char* text) noexcept { return reinterpret_cast<const xmlChar*>(text); }

} // namespace OvPlatform
