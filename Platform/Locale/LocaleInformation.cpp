#include "Com/FaultInjection.h"
#include "Locale/Utf16.h"

#include <unicode/locid.h>
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

/// A locale by its published name, "de-DE"; nothing if the name is no name.
std::optional<icu::Locale> FindLocale(LPCWSTR name) {
    if (name == nullptr || std::wstring_view(name) == LOCALE_NAME_SYSTEM_DEFAULT)
        return icu::Locale::getDefault();
    if (*name == 0) return icu::Locale::getRoot();
    UErrorCode status = U_ZERO_ERROR;
    icu::Locale locale = icu::Locale::forLanguageTag(OvPlatform::ToUtf8(name), status);
    if (U_FAILURE(status) || locale.isBogus()) return std::nullopt;
    return locale;
}

std::wstring Name(const icu::Locale& locale) {
    UErrorCode status = U_ZERO_ERROR;
    // Without the variant: a process without a locale has English of the United States.
    const icu::Locale plain(locale.getLanguage(), locale.getCountry());
    const std::string tag = plain.toLanguageTag<std::string>(status);
    return U_SUCCESS(status) && tag != "und" ? OvPlatform::FromUtf8(tag) : std::wstring();
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
        const std::optional<icu::Locale> locale = FindLocale(localeName);
        if (!locale) return Fail(ERROR_INVALID_PARAMETER);
        const LCTYPE fact = type & ~(LOCALE_NOUSEROVERRIDE | LOCALE_RETURN_NUMBER);
        if (fact == LOCALE_SNAME) return Give(Name(*locale), data, capacity);
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
        return Give(Name(icu::Locale::getDefault()), name, capacity);
    } catch (const std::bad_alloc&) {
        return Fail(ERROR_OUTOFMEMORY);
    }
}
