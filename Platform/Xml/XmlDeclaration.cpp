#include "Xml/XmlDeclaration.h"

#include <algorithm>
#include <array>

namespace OvPlatform {

namespace {

constexpr std::string_view blanks = " \t\r\n";

bool IsDigit(char c) noexcept { return c >= '0' && c <= '9'; }
bool IsLetter(char c) noexcept { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

bool IsVersion(std::string_view value) {
    return value.size() > 2 && value.starts_with("1.") &&
           std::all_of(value.begin() + 2, value.end(), IsDigit);
}

bool IsEncodingName(std::string_view value) {
    return !value.empty() && IsLetter(value.front()) && std::all_of(value.begin(), value.end(), [](char c) {
        return IsLetter(c) || IsDigit(c) || c == '.' || c == '-' || c == '_';
    });
}

bool IsYesOrNo(std::string_view value) { return value == "yes" || value == "no"; }

struct Item {
    std::string_view name;
    std::string XmlDeclaration::*value;
    bool (*allows)(std::string_view value);
};

/// In the order in which a declaration has them.
constexpr std::array<Item, 3> items = {{
    {"version", &XmlDeclaration::version, IsVersion},
    {"encoding", &XmlDeclaration::encoding, IsEncodingName},
    {"standalone", &XmlDeclaration::standalone, IsYesOrNo},
}};

void SkipBlanks(std::string_view& text) {
    text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
}

bool Skip(std::string_view& text, std::string_view word) {
    if (!text.starts_with(word)) return false;
    text.remove_prefix(word.size());
    return true;
}

bool EqualNoCase(std::string_view left, std::string_view right) noexcept {
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [&](char a, char b) { return lower(a) == lower(b); });
}

} // namespace

std::string XmlDeclaration::Data() const {
    std::string data;
    for (const Item& item : items) {
        const std::string& value = this->*item.value;
        if (value.empty()) continue;
        if (!data.empty()) data += ' ';
        data.append(item.name).append("=\"").append(value).append("\"");
    }
    return data;
}

std::optional<XmlDeclaration> XmlDeclaration::FromData(std::string_view data) {
    XmlDeclaration declaration;
    SkipBlanks(data);
    for (const Item& item : items) {
        if (!Skip(data, item.name)) continue;
        SkipBlanks(data);
        if (!Skip(data, "=")) return std::nullopt;
        SkipBlanks(data);
        if (data.empty() || (data.front() != '"' && data.front() != '\'')) return std::nullopt;
        const std::size_t end = data.find(data.front(), 1);
        if (end == std::string_view::npos) return std::nullopt;
        const std::string_view value = data.substr(1, end - 1);
        if (!item.allows(value)) return std::nullopt;
        declaration.*item.value = value;
        data.remove_prefix(end + 1);
        SkipBlanks(data);
    }
    if (!data.empty() || declaration.version.empty()) return std::nullopt;
    return declaration;
}

std::optional<XmlDeclaration> XmlDeclaration::FromDocument(std::string_view text) {
    if (!Skip(text, "<?xml") || text.empty() || blanks.find(text.front()) == std::string_view::npos)
        return std::nullopt;
    const std::size_t end = text.find("?>");
    return end == std::string_view::npos ? std::nullopt : FromData(text.substr(0, end));
}

bool XmlDeclaration::IsReserved(std::string_view target) noexcept {
    return target != "xml" && EqualNoCase(target, "xml");
}

bool XmlDeclaration::Is(const xmlNode* node) noexcept {
    return node->type == XML_PI_NODE && xmlStrEqual(node->name, reinterpret_cast<const xmlChar*>("xml"));
}

TextEncoding ClassifyEncoding(std::string_view name) noexcept {
    if (name.empty() || EqualNoCase(name, "UTF-8") || EqualNoCase(name, "UTF8")) return TextEncoding::Utf8;
    for (std::string_view utf16 : {"UTF-16", "UTF-16LE", "UTF-16BE", "ISO-10646-UCS-2", "UCS-2"})
        if (EqualNoCase(name, utf16)) return TextEncoding::Utf16;
    return TextEncoding::Other;
}

} // namespace OvPlatform
