#include "PathData.h"

#include <charconv>
#include <string>

namespace {

constexpr std::string_view blanks = " \t\r\n";
constexpr std::string_view commands = "FMLHVCQSAZfmlhvcqsaz";

bool IsDigit(char unit) { return unit >= '0' && unit <= '9'; }
bool IsSign(char unit) { return unit == '+' || unit == '-'; }
bool IsLetter(char unit) { return (unit >= 'A' && unit <= 'Z') || (unit >= 'a' && unit <= 'z'); }

// What stands of a pattern "sign, digits, point, digits" at the start; no digits, no number.
std::size_t LengthOfNumber(std::string_view text) {
    std::size_t at = !text.empty() && IsSign(text[0]) ? 1 : 0;
    bool hasDigits = false;
    bool hasPoint = false;
    for (; at < text.size() && (IsDigit(text[at]) || (text[at] == '.' && !hasPoint)); ++at) {
        hasPoint = hasPoint || text[at] == '.';
        hasDigits = hasDigits || IsDigit(text[at]);
    }
    return hasDigits ? at : 0;
}

// Of "e-3" and the like behind a number.
std::size_t LengthOfExponent(std::string_view text) {
    if (text.empty() || (text[0] != 'e' && text[0] != 'E')) return 0;
    std::size_t at = text.size() > 1 && IsSign(text[1]) ? 2 : 1;
    while (at < text.size() && IsDigit(text[at]))
        ++at;
    return IsDigit(text[at - 1]) ? at : 0;
}

// Of a reference to a blank, as writers put it for the end of a line: "&#xA;".
std::size_t LengthOfBlankReference(std::string_view text) {
    const bool isHexadecimal = text.starts_with("&#x");
    if (!isHexadecimal && !text.starts_with("&#")) return 0;
    const char* const digits = text.data() + (isHexadecimal ? 3 : 2);
    unsigned int unit = 0;
    const char* const end = text.data() + text.size();
    const char* const stopped = std::from_chars(digits, end, unit, isHexadecimal ? 16 : 10).ptr;
    const bool isBlank = unit < 0x80 && blanks.find(static_cast<char>(unit)) != std::string_view::npos;
    return isBlank && stopped != end && *stopped == ';' ? static_cast<std::size_t>(stopped - text.data()) + 1
                                                        : 0;
}

// At the start of figures that are not at their end; zero for what must not stand there.
std::size_t LengthOfToken(std::string_view figures) {
    if (const std::size_t number = LengthOfNumber(figures); number != 0)
        return number + LengthOfExponent(figures.substr(number));
    if (figures[0] == '&') return LengthOfBlankReference(figures);
    const bool isCommand = commands.find(figures[0]) != std::string_view::npos;
    return IsSign(figures[0]) || (IsLetter(figures[0]) && !isCommand) ? 0 : 1;
}

bool IsReadable(std::string_view figures) {
    if (figures.starts_with('{')) return true; // the name of a resource
    while (!figures.empty()) {
        const std::size_t length = LengthOfToken(figures);
        if (length == 0) return false;
        figures.remove_prefix(length);
    }
    return true;
}

bool IsNameOfFigures(std::string_view name) { return name == "Data" || name == "Figures" || name == "Clip"; }

// In front of an attribute's sign of equality.
std::string_view NameBefore(std::string_view markup) {
    markup = markup.substr(0, markup.find_last_not_of(blanks) + 1);
    return markup.substr(markup.find_last_of(blanks) + 1);
}

// Of UTF-16 in one byte order or the other; what is not of ASCII becomes a sign that means nothing.
std::string Narrowed(std::string_view markup, std::size_t low) {
    std::string narrow;
    for (std::size_t at = 0; at + 1 < markup.size(); at += 2)
        narrow += markup[at + 1 - low] == '\0' ? markup[at + low] : '?';
    return narrow;
}

} // namespace

bool PathData::AreFiguresReadable(std::string_view markup) {
    if (markup.starts_with("\xFF\xFE")) return AreFiguresReadable(Narrowed(markup, 0));
    if (markup.starts_with("\xFE\xFF")) return AreFiguresReadable(Narrowed(markup, 1));
    for (std::size_t at = 0; (at = markup.find('=', at)) != std::string_view::npos;) {
        const std::string_view name = NameBefore(markup.substr(0, at));
        at = markup.find_first_not_of(blanks, at + 1);
        if (at == std::string_view::npos) break;
        if (markup[at] != '"' && markup[at] != '\'') continue;
        const std::size_t end = markup.find(markup[at], at + 1);
        if (end == std::string_view::npos) break;
        if (IsNameOfFigures(name) && !IsReadable(markup.substr(at + 1, end - at - 1))) return false;
        at = end + 1;
    }
    return true; // what is no markup, the renderer tells
}
