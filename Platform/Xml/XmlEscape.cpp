#include "Xml/XmlEscape.h"

#include <array>
#include <cstddef>

namespace OvPlatform {
namespace {

struct EscapeRow {
    char character;
    std::string_view inContent; // empty: as it is
    std::string_view inAttribute;
};
constexpr EscapeRow escapes[] = {
    {'&', "&amp;", "&amp;"}, {'<', "&lt;", "&lt;"}, {'>', "&gt;", "&gt;"}, {'\r', "&#13;", "&#13;"},
    {'"', "", "&quot;"},     {'\t', "", "&#9;"},    {'\n', "", "&#10;"},
};

// Of each byte its row, counted from 1.
constexpr std::array<unsigned char, 256> rowOf = [] {
    std::array<unsigned char, 256> rows{};
    unsigned char row = 0;
    for (const EscapeRow& escape : escapes)
        rows[static_cast<unsigned char>(escape.character)] = ++row;
    return rows;
}();

} // namespace

void AppendXml(std::string& target, std::string_view text, XmlPlace place, std::string_view lineFeed) {
    std::size_t begin = 0;
    for (std::size_t index = 0; index < text.size(); ++index) {
        const unsigned char row = rowOf[static_cast<unsigned char>(text[index])];
        if (row == 0) continue;
        const EscapeRow& found = escapes[row - 1];
        const bool isAttribute = place == XmlPlace::Attribute;
        const std::string_view escape = isAttribute               ? found.inAttribute
                                        : found.character == '\n' ? lineFeed
                                                                  : found.inContent;
        if (escape.empty()) continue;
        target.append(text, begin, index - begin).append(escape);
        begin = index + 1;
    }
    target.append(text, begin, text.size() - begin);
}

} // namespace OvPlatform
