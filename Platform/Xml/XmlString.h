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

/// The text without blanks, as XML has them, at its ends.
constexpr std::string_view Trimmed(std::string_view text) noexcept {
    constexpr std::string_view blanks = " \t\r\n";
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

} // namespace OvPlatform
