#include "LowLevelFacilities/Formatter/InternalOrvelCPFormatSpecification.h"

#include "LowLevelFacilities/Failures/CPExceptionInvalidArgument.h"
#include "LowLevelFacilities/Failures/ThrowFailure.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <string>

namespace InternalOrvelCP {

namespace {

constexpr const char* flagCharacters = "-+ #0";
constexpr const char* lengthCharacters = "hlLqjztw";
constexpr const char* integralLetters = "diouxX";
constexpr const char* floatingLetters = "fFeEgGaA";
constexpr const char* otherLetters = "cCsSp";

bool isOneOf(char character, const char* set) noexcept {
    return character != '\0' && std::strchr(set, character) != nullptr;
}

bool isDigit(char character) noexcept { return character >= '0' && character <= '9'; }

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
    for (; isDigit(*at); ++at) {
        number = number * 10 + (*at - '0');
        if (number > FormatSpecification::maxCount)
            refuse("the width or precision is too large", specification);
    }
    return number;
}

} // namespace

const char* FormatSpecification::parseAfterFirstPercentCharacter(const char* text) {
    *this = FormatSpecification{};
    const char* at = text;
    while (isOneOf(*at, flagCharacters))
        ++at;
    m_containsAsterisk = skipCount(at, text) < 0;
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
        while (isOneOf(*at, lengthCharacters))
            ++at;
    }
    m_shortness = static_cast<int>(std::count(lengthModifier, at, 'h'));
    m_isLong = std::find(lengthModifier, at, 'l') != at || std::find(lengthModifier, at, 'w') != at;
    if (*at == '\0') refuse("the last format specifier is incomplete", text);
    if (!isOneOf(*at, integralLetters) && !isOneOf(*at, floatingLetters) && !isOneOf(*at, otherLetters)) {
        refuse("unknown format specifier character", text);
    }
    ++at;
    const auto length = static_cast<std::size_t>(at - text);
    if (length >= maxLength) refuse("the format specifier is too long", text);
    std::memcpy(m_text + 1, text, length);
    m_length = 1 + length;
    m_text[m_length] = '\0';
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

bool FormatSpecification::isIntegral() const noexcept { return isOneOf(conversion(), integralLetters); }

bool FormatSpecification::isFloating() const noexcept { return isOneOf(conversion(), floatingLetters); }

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
