#include "Locale/ShownText.h"

#include <utf8coder.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <optional>

namespace OvPlatform {

namespace {

struct Range {
    char32_t first;
    char32_t last;
};

// Beyond ASCII, by ascending number: the controls, the format characters (bidirectional ones among them), the
// separators of lines and paragraphs, and the noncharacters of the first plane.
constexpr std::array hidden{
    Range{0x7F, 0x9F},       Range{0xAD, 0xAD},       Range{0x600, 0x605},     Range{0x61C, 0x61C},
    Range{0x6DD, 0x6DD},     Range{0x70F, 0x70F},     Range{0x890, 0x891},     Range{0x8E2, 0x8E2},
    Range{0x180E, 0x180E},   Range{0x200B, 0x200F},   Range{0x2028, 0x202E},   Range{0x2060, 0x206F},
    Range{0xFDD0, 0xFDEF},   Range{0xFEFF, 0xFEFF},   Range{0xFFF9, 0xFFFB},   Range{0x110BD, 0x110BD},
    Range{0x110CD, 0x110CD}, Range{0x13430, 0x1343F}, Range{0x1BCA0, 0x1BCA3}, Range{0x1D173, 0x1D17A},
    Range{0xE0001, 0xE007F},
};

bool IsHidden(char32_t character) {
    if (character < 0x7F) return character < ' ';
    if ((character & 0xFFFE) == 0xFFFE) return true;
    const auto range = std::lower_bound(hidden.begin(), hidden.end(), character,
                                        [](const Range& r, char32_t c) { return r.last < c; });
    return range != hidden.end() && range->first <= character;
}

// One character of a text, or an ill-formed part, whose bytes are shown one by one.
struct Character {
    std::string_view bytes;
    std::optional<char32_t> value;

    bool PassesAsItIs() const { return value && !IsHidden(*value); }
};

Character FirstOf(std::string_view text) {
    const char* next = text.data();
    bool wellFormed = true;
    const char32_t value = Utf8::Decode(next, text.data() + text.size(), wellFormed);
    const std::string_view bytes = text.substr(0, static_cast<std::size_t>(next - text.data()));
    return {bytes, wellFormed ? std::optional(value) : std::nullopt};
}

template <class Take>
void ForEach(std::string_view text, Take&& take) {
    while (!text.empty()) {
        const Character character = FirstOf(text);
        text.remove_prefix(character.bytes.size());
        take(character);
    }
}

std::string Number(const char* format, std::uint32_t number) {
    char text[16];
    const int size = std::snprintf(text, sizeof text, format, number);
    return {text, static_cast<std::size_t>(size)};
}

std::string ShownForm(const Character& character) {
    if (!character.value) {
        std::string shown;
        for (const char byte : character.bytes)
            shown += Number("\\x%02x", static_cast<unsigned char>(byte));
        return shown;
    }
    switch (*character.value) {
    case '\n':
        return "\\n";
    case '\r':
        return "\\r";
    case '\t':
        return "\\t";
    default:
        return Number(*character.value < 0x80      ? "\\x%02x"
                      : *character.value < 0x10000 ? "\\u%04x"
                                                   : "\\U%08x",
                      *character.value);
    }
}

void AddShown(std::string& shown, const Character& character) {
    if (character.PassesAsItIs())
        shown += character.bytes;
    else
        shown += ShownForm(character);
}

std::size_t ShownWidth(const Character& character) {
    return character.PassesAsItIs() ? 1 : ShownForm(character).size();
}

// The beginning and the end of a text whose shown form has so many characters.
std::string Shortened(std::string_view text, std::size_t width, std::size_t bound) {
    const std::size_t head = bound - bound / 3;
    const std::size_t tail = width - bound / 3; // where it begins
    std::string first;
    std::string last;
    std::size_t place = 0;
    std::size_t leftOut = 0;
    ForEach(text, [&](const Character& character) {
        const std::size_t end = place + ShownWidth(character);
        if (end <= head && leftOut == 0)
            AddShown(first, character);
        else if (place >= tail)
            AddShown(last, character);
        else
            ++leftOut;
        place = end;
    });
    return first + "... (" + std::to_string(leftOut) + " more) ..." + last;
}

// Goes through an XML text, which is well-formed, and knows what each character stands in.
class XmlPlace {
public:
    enum class In { Text, Name, Value, CdataSection, Other };

    // What the first character of the rest stands in. Character by character.
    In Of(std::string_view rest) {
        if (!m_end.empty()) {
            const In in = m_in;
            if (rest.starts_with(m_end)) {
                m_in = m_in == In::Value ? In::Name : In::Text;
                m_end = m_in == In::Name ? ">" : "";
            } else if (m_in == In::Name && (rest[0] == '"' || rest[0] == '\'')) {
                m_in = In::Value;
                m_end = rest.substr(0, 1);
            }
            return in;
        }
        if (rest[0] != '<') return In::Text;
        if (rest.starts_with("<!--"))
            Enter(In::Other, "-->");
        else if (rest.starts_with("<![CDATA["))
            Enter(In::CdataSection, "]]>");
        else if (rest.starts_with("<?"))
            Enter(In::Other, "?>");
        else
            Enter(In::Name, ">");
        return m_in;
    }

private:
    void Enter(In in, std::string_view end) {
        m_in = in;
        m_end = end;
    }

    In m_in = In::Text;
    std::string_view m_end; // empty in text
};

void AddShownXml(std::string& shown, const Character& character, XmlPlace::In in) {
    const std::string reference = "&#x" + Number("%x", character.value.value_or(Utf8::Replacement)) + ";";
    switch (in) {
    case XmlPlace::In::Text:
    case XmlPlace::In::Value:
        shown += reference;
        break;
    case XmlPlace::In::CdataSection:
        shown += "]]>" + reference + "<![CDATA[";
        break;
    case XmlPlace::In::Name:
        shown += character.bytes;
        break;
    case XmlPlace::In::Other:
        shown += ShownForm(character);
        break;
    }
}

} // namespace

std::string Shown(std::string_view text, std::size_t bound) {
    std::size_t width = 0;
    if (bound != std::string::npos)
        ForEach(text, [&](const Character& character) { width += ShownWidth(character); });
    if (width > bound) return Shortened(text, width, bound);
    std::string shown;
    shown.reserve(text.size());
    ForEach(text, [&](const Character& character) { AddShown(shown, character); });
    return shown;
}

std::string ShownXml(std::string_view xml) {
    std::string shown;
    shown.reserve(xml.size());
    XmlPlace place;
    while (!xml.empty()) {
        const Character character = FirstOf(xml);
        const XmlPlace::In in = place.Of(xml);
        if (character.PassesAsItIs() || character.value == U'\n' || character.value == U'\t' ||
            xml.starts_with("\r\n"))
            shown += character.bytes;
        else
            AddShownXml(shown, character, in);
        xml.remove_prefix(character.bytes.size());
    }
    return shown;
}

std::string ShownJson(std::string_view text) {
    std::string shown = "\"";
    ForEach(text, [&](const Character& character) {
        const char32_t value = character.value.value_or(Utf8::Replacement);
        if (value == '"' || value == '\\')
            shown += '\\', shown += static_cast<char>(value);
        else if (character.PassesAsItIs())
            shown += character.bytes;
        else if (value < 0x10000)
            shown += Number("\\u%04x", value);
        else
            shown += Number("\\u%04x", 0xD7C0 + (value >> 10)) + Number("\\u%04x", 0xDC00 | (value & 0x3FF));
    });
    return shown += '"';
}

} // namespace OvPlatform
