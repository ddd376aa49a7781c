#include "Xml/StartTag.h"

#include <algorithm>

namespace OvPlatform {

namespace {

constexpr std::string_view blanks = " \t\r\n";

} // namespace

StartTag::StartTag(std::string_view tag) noexcept
    : m_rest(tag.substr(std::min(tag.find_first_of(blanks), tag.size()))) {}

StartTag StartTag::Before(const xmlParserInput& input) noexcept {
    // A start tag holds no other '<' than the one that begins it.
    const xmlChar* begin = input.cur;
    while (begin > input.base && *(begin - 1) != '<')
        --begin;
    return StartTag({reinterpret_cast<const char*>(begin), static_cast<std::size_t>(input.cur - begin)});
}

std::string_view StartTag::NextName() noexcept {
    while (true) {
        const std::size_t begin = m_rest.find_first_not_of(" \t\r\n/");
        if (begin == std::string_view::npos) return {};
        const std::size_t end = m_rest.find_first_of(" \t\r\n=", begin);
        const std::size_t quote = m_rest.find_first_of("\"'", end);
        if (quote == std::string_view::npos) return {};
        const std::size_t close = m_rest.find(m_rest[quote], quote + 1);
        if (close == std::string_view::npos) return {};
        const std::string_view name = m_rest.substr(begin, end - begin);
        m_rest.remove_prefix(close + 1);
        if (name != "xmlns:xml") return name;
    }
}

} // namespace OvPlatform
