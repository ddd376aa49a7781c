#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace OvPlatform {

// The text of markup that is known to be well-formed.

/// Goes through the attributes and declarations of a start tag, as they are written.
class RawAttributes {
public:
    struct Item {
        std::size_t begin = 0; ///< in the tag, of the name
        std::size_t end = 0;   ///< behind the closing quote
        std::string_view name; ///< with its prefix
        std::size_t valueBegin = 0;
        std::string_view value; ///< with its references
    };

    /// `tag` from its '<' on; what lies behind its end does no harm.
    explicit RawAttributes(std::string_view tag) noexcept;

    /// Of the element, with its prefix.
    std::string_view ElementName() const noexcept { return m_name; }

    bool Next(Item& item) noexcept;
    /// Where the reading stands: after the last item, behind the last attribute.
    std::size_t Position() const noexcept { return m_at; }

private:
    std::string_view m_tag;
    std::string_view m_name;
    std::size_t m_at;
};

constexpr std::string_view PrefixOf(std::string_view name) noexcept {
    const std::size_t colon = name.find(':');
    return colon == std::string_view::npos ? std::string_view() : name.substr(0, colon);
}
constexpr std::string_view LocalPartOf(std::string_view name) noexcept {
    const std::size_t colon = name.find(':');
    return colon == std::string_view::npos ? name : name.substr(colon + 1);
}
/// The name with a prefix before it; an empty one is none.
std::string WithPrefix(std::string_view prefix, std::string_view name);

/// An attribute's value without its references, white space as a parser gives it.
std::string UnescapeAttribute(std::string_view raw);
/// As the value of an attribute in double quotes.
std::string EscapeAttribute(std::string_view text);

} // namespace OvPlatform
