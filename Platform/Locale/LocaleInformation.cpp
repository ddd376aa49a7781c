#include "Com/FaultInjection.h"
#include "Locale/LocaleLookup.h"
#include "Locale/LocalePictures.h"
#include "Locale/Utf16.h"

#include <unicode/ulocdata.h>

#include <cstring>
#include <new>
#include <optional>
#include <string>

namespace {

int Fail(DWORD error) {
    SetLastError(error);
    return 0;
}

int Give(std::wstring_view text, LPWSTR buffer, int capacity) {
    const int needed = static_cast<int>(text.size()) + 1;
    if (capacity == 0) return needed;
    if (!OvPlatform::CopyText(text, buffer, static_cast<std::size_t>(capacity)))
        return Fail(ERROR_INSUFFICIENT_BUFFER);
    return needed;
}

std::wstring Text(const icu::Locale& locale, LCTYPE fact) {
    if (fact == LOCALE_SNAME) return OvPlatform::PublishedName(locale);
    return fact == LOCALE_SSHORTDATE ? OvPlatform::ShortDatePicture(locale) : OvPlatform::TimePicture(locale);
}

/// 0: metric, 1: United States.
DWORD MeasurementSystem(const icu::Locale& locale) {
    UErrorCode status = U_ZERO_ERROR;
    const UMeasurementSystem system = ulocdata_getMeasurementSystem(locale.getName(), &status);
    return U_SUCCESS(status) && system == UMS_US ? 1 : 0;
}

/// The published numbers of the paper that is usual in a place: 1 Letter, 5 Legal, 8 A3, 9 A4.
DWORD PaperSize(const icu::Locale& locale) {
    UErrorCode status = U_ZERO_ERROR;
    int32_t height = 0;
    int32_t width = 0;
    ulocdata_getPaperSize(locale.getName(), &height, &width, &status);
    constexpr int32_t letterHeight = 279;
    return U_SUCCESS(status) && height == letterHeight ? 1 : 9;
}

} // namespace

int GetLocaleInfoEx(LPCWSTR localeName, LCTYPE type, LPWSTR data, int capacity) {
    if (OvPlatform::FaultPointHit()) return 0;
    if (capacity < 0 || (capacity > 0 && data == nullptr)) return Fail(ERROR_INVALID_PARAMETER);
    try {
        const std::optional<icu::Locale> locale = OvPlatform::FindLocale(localeName);
        if (!locale) return Fail(ERROR_INVALID_PARAMETER);
        const LCTYPE fact = type & ~(LOCALE_NOUSEROVERRIDE | LOCALE_RETURN_NUMBER);
        if (fact == LOCALE_SNAME || fact == LOCALE_SSHORTDATE || fact == LOCALE_STIMEFORMAT) {
            if ((type & LOCALE_RETURN_NUMBER) != 0) return Fail(ERROR_INVALID_FLAGS);
            return Give(Text(*locale, fact), data, capacity);
        }
        if (fact != LOCALE_IMEASURE && fact != LOCALE_IPAPERSIZE) return Fail(ERROR_INVALID_FLAGS);
        const DWORD number = fact == LOCALE_IMEASURE ? MeasurementSystem(*locale) : PaperSize(*locale);
        if ((type & LOCALE_RETURN_NUMBER) == 0) return Give(std::to_wstring(number), data, capacity);
        constexpr int unitsOfNumber = (sizeof(DWORD) + sizeof(WCHAR) - 1) / sizeof(WCHAR);
        if (capacity == 0) return unitsOfNumber;
        if (capacity < unitsOfNumber) return Fail(ERROR_INSUFFICIENT_BUFFER);
        std::memcpy(data, &number, sizeof(number));
        return unitsOfNumber;
    } catch (const std::bad_alloc&) {
        return Fail(ERROR_OUTOFMEMORY);
    }
}

int GetUserDefaultLocaleName(LPWSTR name, int capacity) {
    if (OvPlatform::FaultPointHit()) return 0;
    if (name == nullptr || capacity <= 0) return Fail(ERROR_INVALID_PARAMETER);
    try {
        return Give(OvPlatform::PublishedName(icu::Locale::getDefault()), name, capacity);
    } catch (const std::bad_alloc&) {
        return Fail(ERROR_OUTOFMEMORY);
    }
}

LANGID GetUserDefaultUILanguage() {
    constexpr LANGID unitedStates = MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US);
    // One that fails has no way to say so.
    if (OvPlatform::FaultPointHit()) return unitedStates;
    // "zh-Hans" names no place, and is the language of one all the same.
    icu::Locale user = icu::Locale::getDefault();
    UErrorCode status = U_ZERO_ERROR;
    user.addLikelySubtags(status);
    // Without the variant: a process without a locale has English of the United States.
    const auto language = static_cast<LANGID>(icu::Locale(user.getLanguage(), user.getCountry()).getLCID());
    constexpr LANGID firstWithoutLanguage = 0x1000;
    if (PRIMARYLANGID(language) == LANG_NEUTRAL || PRIMARYLANGID(language) == LANG_INVARIANT ||
        language == firstWithoutLanguage)
        return unitedStates;
    if (SUBLANGID(language) == SUBLANG_NEUTRAL) return MAKELANGID(PRIMARYLANGID(language), SUBLANG_DEFAULT);
    return language;
}
