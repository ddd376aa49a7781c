#include "LowLevelFacilities/Formatter/InternalOrvelCPFormatSpecification.h"

#include "LowLevelFacilities/Failures/CPExceptionInvalidArgument.h"
#include "LowLevelFacilities/Failures/ThrowFailure.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>
#include <string>
#include <string_view>

namespace InternalOrvelCP {

namespace {

enum CharacterUse : unsigned char {
    Flag = 1,
    Digit = 2,
    Length = 4,
    Integral = 8,
    Floating = 16,
    OtherLetter = 32
};

constexpr unsigned char letter = Integral | Floating | OtherLetter;

constexpr std::array<unsigned char, 256> uses = [] {
    std::array<unsigned char, 256> table{};
    const auto add = [&table](std::string_view characters, CharacterUse use) {
        for (const char character : characters)
            table[static_cast<unsigned char>(character)] |= use;
    };
    add("-+ #0", Flag);
    add("0123456789", Digit);
    add("hlLqjztw", Length);
    add("diouxX", Integral);
    add("fFeEgGaA", Floating);
    add("cCsSp", OtherLetter);
    return table;
}();

bool isOf(char character, unsigned char wanted) noexcept {
    return (uses[static_cast<unsigned char>(character)] & wanted) != 0;
}

[[noreturn]] void refuse(const char* what, const char* specification) {
    const OperationScope operation("InternalOrvelCP::FormatSpecification::parseAfterFirstPercentCharacter");
    ThrowFailure<CPExceptionInvalidArgument>(
        [&] { return std::string("Invalid format string: ") + what + ", %" + specification; });
}

/// Moves behind digits or one asterisk. The number is -1 for an asterisk, 0 if nothing stands there.
int skipCount(const char*& at, const char* specification) {
    if (*at == '*') {
        ++at;
        return -1;
    }
    int number = 0;
    for (; isOf(*at, Digit); ++at) {
        number = number * 10 + (*at - '0');
        if (number > FormatSpecification::maxCount)
            refuse("the width or precision is too large", specification);
    }
    return number;
}

} // namespace

void FormatSpecification::takeText(const char* text, std::size_t length) noexcept {
    std::memcpy(m_text + 1, text, length);
    m_length = 1 + length;
    m_text[m_length] = '\0';
    m_kind = isOf(conversion(), Integral)   ? Kind::Integral
             : isOf(conversion(), Floating) ? Kind::Floating
                                            : Kind::Other;
}

const char* FormatSpecification::parseAfterFirstPercentCharacter(const char* text) {
    *this = FormatSpecification{};
    if (isOf(*text, letter)) { // as most are
        takeText(text, 1);
        return text + 1;
    }
    const char* at = text;
    while (isOf(*at, Flag))
        ++at;
    m_width = skipCount(at, text);
    m_containsAsterisk = m_width < 0;
    m_precisionAt = 1 + static_cast<std::size_t>(at - text);
    if (*at == '.') {
        ++at;
        m_precision = skipCount(at, text);
        m_containsAsterisk = m_containsAsterisk || m_precision < 0;
    }
    const char* const lengthModifier = at;
    if (at[0] == 'I') {
        ++at;
        if ((at[0] == '6' && at[1] == '4') || (at[0] == '3' && at[1] == '2')) at += 2;
    } else {
        while (isOf(*at, Length))
            ++at;
    }
    m_shortness = static_cast<int>(std::count(lengthModifier, at, 'h'));
    m_isLong = std::find(lengthModifier, at, 'l') != at || std::find(lengthModifier, at, 'w') != at;
    if (*at == '\0') refuse("the last format specifier is incomplete", text);
    if (!isOf(*at, letter)) refuse("unknown format specifier character", text);
    ++at;
    const auto length = static_cast<std::size_t>(at - text);
    if (length >= maxLength) refuse("the format specifier is too long", text);
    takeText(text, length);
    m_lengthModifierAt = 1 + static_cast<std::size_t>(lengthModifier - text);
    return at;
}

void FormatSpecification::convertWideCharFormatSpecifierCharacterToMultibyteSpecifier() noexcept {
    const char letter = conversion();
    if (letter != 'S' && letter != 's' && letter != 'C' && letter != 'c') return;
    const bool isText = letter == 'S' || letter == 's';
    m_text[m_lengthModifierAt] = isText ? 's' : 'c';
    m_length = m_lengthModifierAt + 1;
    m_text[m_length] = '\0';
}

std::optional<FormatSpecification::Padding> FormatSpecification::onlyPadding() const noexcept {
    Padding padding;
    for (const char* at = m_text + 1; isOf(*at, Flag); ++at) {
        if (*at != '-' && *at != '0') return {};
        (*at == '-' ? padding.isLeft : padding.hasZeros) = true;
    }
    padding.width = m_width;
    return padding;
}

FormatSpecification::CrtSpecification
FormatSpecification::forCrt(const char* lengthAndLetter) const noexcept {
    CrtSpecification result;
    std::memcpy(result.text, m_text, m_lengthModifierAt);
    std::strcpy(result.text + m_lengthModifierAt, lengthAndLetter);
    return result;
}

FormatSpecification::CrtSpecification FormatSpecification::forCrtText(std::size_t bytes) const noexcept {
    CrtSpecification result;
    std::memcpy(result.text, m_text, m_precisionAt);
    char* at = result.text + m_precisionAt;
    *at++ = '.';
    at = std::to_chars(at, result.text + sizeof result.text - 2, bytes).ptr;
    *at++ = 's';
    *at = '\0';
    return result;
}

} // namespace InternalOrvelCP
