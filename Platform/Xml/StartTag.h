#pragma once

#include <libxml/parser.h>

#include <string_view>

namespace OvPlatform {

/// The text of a start tag, for the order of what stands in it.
class StartTag {
public:
    /// `tag` without angle brackets.
    explicit StartTag(std::string_view tag) noexcept;

    /// The one at whose end a parser stands.
    static StartTag Before(const xmlParserInput& input) noexcept;

    /// The names of attributes and declarations, one after the other; empty at the end. A declaration of the
    /// prefix xml is passed over, as the parser does.
    std::string_view NextName() noexcept;

    static bool IsDeclaration(std::string_view name) noexcept {
        return name == "xmlns" || name.starts_with("xmlns:");
    }

private:
    std::string_view m_rest;
};

} // namespace OvPlatform
