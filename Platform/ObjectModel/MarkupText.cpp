#include "ObjectModel/MarkupText.h"

#include "Xml/XmlEscape.h"

#include <utf8coder.h>

#include <array>
#include <charconv>

namespace OvPlatform {

namespace {

constexpr std::string_view blanks = " \t\r\n";

struct NamedReference {
    std::string_view name;
    char character;
};
constexpr std::array references = {NamedReference{"amp", '&'}, NamedReference{"lt", '<'},
                                   NamedReference{"gt", '>'}, NamedReference{"quot", '"'},
                                   NamedReference{"apos", '\''}};

// What stands between '&' and ';'.
void AppendReference(std::string& text, std::string_view reference) {
    if (!reference.starts_with('#')) {
        for (const NamedReference& named : references)
            if (named.name == reference) text.push_back(named.character);
        return;
    }
    const bool isHex = reference.starts_with("#x");
    const std::string_view digits = reference.substr(isHex ? 2 : 1);
    std::uint32_t number = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), number, isHex ? 16 : 10);
    char bytes[Utf8::MostBytes];
    text.append(bytes, Utf8::Encode(static_cast<char32_t>(number), bytes));
}

} // namespace

RawAttributes::RawAttributes(std::string_view tag) noexcept
    : m_tag(tag), m_at(tag.find_first_of(" \t\r\n/>", 1)) {
    if (m_at == std::string_view::npos) m_at = tag.size();
    m_name = tag.empty() ? tag : tag.substr(1, m_at - 1);
}

bool RawAttributes::Next(Item& item) noexcept {
    const std::size_t begin = m_tag.find_first_not_of(blanks, m_at);
    if (begin == std::string_view::npos || m_tag[begin] == '>' || m_tag[begin] == '/') return false;
    const std::size_t nameEnd = m_tag.find_first_of(" \t\r\n=", begin);
    const std::size_t quote = m_tag.find_first_of("\"'", nameEnd);
    if (quote == std::string_view::npos) return false;
    const std::size_t close = m_tag.find(m_tag[quote], quote + 1);
    if (close == std::string_view::npos) return false;
    item.begin = begin;
    item.end = m_at = close + 1;
    item.name = m_tag.substr(begin, nameEnd - begin);
    item.valueBegin = quote + 1;
    item.value = m_tag.substr(quote + 1, close - quote - 1);
    return true;
}

std::string WithPrefix(std::string_view prefix, std::string_view name) {
    std::string whole(prefix);
    if (!prefix.empty()) whole += ':';
    return whole += name;
}

std::string UnescapeAttribute(std::string_view raw) {
    if (raw.find_first_of("&\t\r\n") == std::string_view::npos) return std::string(raw);
    std::string text;
    text.reserve(raw.size());
    for (std::size_t at = 0; at < raw.size(); ++at) {
        const char c = raw[at];
        const std::size_t end = c == '&' ? raw.find(';', at) : std::string_view::npos;
        if (end != std::string_view::npos) {
            AppendReference(text, raw.substr(at + 1, end - at - 1));
            at = end;
        } else if (c == '\r' && at + 1 < raw.size() && raw[at + 1] == '\n') {
            continue; // the two are one line end
        } else {
            text.push_back(blanks.find(c) != std::string_view::npos ? ' ' : c);
        }
    }
    return text;
}

std::string EscapeAttribute(std::string_view text) {
    std::string escaped;
    escaped.reserve(text.size());
    AppendXml(escaped, text, XmlPlace::Attribute);
    return escaped;
}

} // namespace OvPlatform
