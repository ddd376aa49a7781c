#include "Locale/LocalePictures.h"

#include <unicode/smpdtfmt.h>

#include <algorithm>
#include <memory>
#include <new>
#include <string_view>

namespace OvPlatform {
namespace {

bool IsInvariant(const icu::Locale& locale) { return locale == icu::Locale::getRoot(); }
bool IsLetter(char16_t unit) { return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z'); }
bool IsMarkOfDirection(char16_t unit) { return unit == 0x200e || unit == 0x200f || unit == 0x061c; }
bool IsBlank(char16_t unit) { return unit == u' ' || unit == 0x00a0 || unit == 0x2009 || unit == 0x202f; }

/// How often the unit at `start` stands there in a row.
std::size_t RunLength(std::u16string_view text, std::size_t start) {
    const std::size_t end = text.find_first_not_of(text[start], start);
    return (end == std::u16string_view::npos ? text.size() : end) - start;
}

/// The published field for a run of one of the library's letters; empty for what pictures do not have.
std::wstring Field(char16_t letter, std::size_t length) {
    const auto atMost = [length](std::size_t most, wchar_t unit) {
        return std::wstring((std::min)(length, most), unit);
    };
    switch (letter) {
    case u'y':
    case u'u':
    case u'r':
        return L"yyyy";
    case u'M':
    case u'L':
        return atMost(4, L'M');
    case u'd':
        return atMost(2, L'd');
    case u'E':
    case u'c':
        return length >= 4 ? L"dddd" : L"ddd";
    case u'h':
    case u'K':
        return atMost(2, L'h');
    case u'H':
    case u'k':
        return atMost(2, L'H');
    case u'm':
        return atMost(2, L'm');
    case u's':
        return atMost(2, L's');
    case u'a':
    case u'b':
    case u'B':
        return L"tt";
    default:
        return {};
    }
}

void TrimBlanks(std::wstring& picture) {
    picture.erase(picture.find_last_not_of(L' ') + 1);
    picture.erase(0, picture.find_first_not_of(L' '));
}

std::wstring ToPicture(std::u16string_view pattern) {
    std::wstring picture;
    bool isQuoted = false;
    for (std::size_t at = 0; at < pattern.size();) {
        const char16_t unit = pattern[at];
        if (unit == u'\'') isQuoted = !isQuoted;
        if (!isQuoted && IsLetter(unit)) {
            const std::size_t length = RunLength(pattern, at);
            if (picture.ends_with(L"tt")) picture += L' ';
            picture += Field(unit, length);
            at += length;
            continue;
        }
        if (!IsMarkOfDirection(unit)) picture += IsBlank(unit) ? L' ' : static_cast<wchar_t>(unit);
        ++at;
    }
    TrimBlanks(picture); // an era stood at the end
    return picture;
}

std::wstring PictureOf(std::unique_ptr<icu::DateFormat> format) {
    // Every formatter of a locale is made of a pattern; where memory is out there is none.
    const auto* const byPattern = dynamic_cast<const icu::SimpleDateFormat*>(format.get());
    if (byPattern == nullptr) throw std::bad_alloc();
    icu::UnicodeString pattern;
    byPattern->toPattern(pattern);
    return ToPicture({pattern.getBuffer(), static_cast<std::size_t>(pattern.length())});
}

std::wstring DatePicture(const icu::Locale& locale, icu::DateFormat::EStyle style) {
    return PictureOf(std::unique_ptr<icu::DateFormat>(icu::DateFormat::createDateInstance(style, locale)));
}

} // namespace

std::wstring ShortDatePicture(const icu::Locale& locale) {
    return IsInvariant(locale) ? L"MM/dd/yyyy" : DatePicture(locale, icu::DateFormat::kShort);
}

std::wstring LongDatePicture(const icu::Locale& locale) {
    return IsInvariant(locale) ? L"dddd, dd MMMM yyyy" : DatePicture(locale, icu::DateFormat::kFull);
}

std::wstring TimePicture(const icu::Locale& locale) {
    if (IsInvariant(locale)) return L"HH:mm:ss";
    return PictureOf(std::unique_ptr<icu::DateFormat>(
        icu::DateFormat::createTimeInstance(icu::DateFormat::kMedium, locale)));
}

} // namespace OvPlatform
