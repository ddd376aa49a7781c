#include "Locale/LocaleLookup.h"

#include "Locale/UserLocale.h"
#include "Locale/Utf16.h"

#include <string>
#include <string_view>

namespace OvPlatform {

std::optional<icu::Locale> FindLocale(LPCWSTR name) {
    if (name == nullptr || std::wstring_view(name) == LOCALE_NAME_SYSTEM_DEFAULT)
        return icu::Locale::getDefault();
    if (*name == 0) return icu::Locale::getRoot();
    UErrorCode status = U_ZERO_ERROR;
    icu::Locale locale = icu::Locale::forLanguageTag(ToUtf8(name), status);
    if (U_FAILURE(status) || locale.isBogus()) return std::nullopt;
    return locale;
}

std::wstring PublishedName(const icu::Locale& locale) {
    UErrorCode status = U_ZERO_ERROR;
    // Without the variant: a process without a locale has English of the United States.
    const icu::Locale plain(locale.getLanguage(), locale.getCountry());
    const std::string tag = plain.toLanguageTag<std::string>(status);
    return U_SUCCESS(status) && tag != "und" ? FromUtf8(tag) : std::wstring();
}

UserLocale::UserLocale(LPCWSTR name) : m_before(icu::Locale::getDefault().getName()) {
    if (const std::optional<icu::Locale> locale = FindLocale(name)) {
        UErrorCode status = U_ZERO_ERROR;
        icu::Locale::setDefault(*locale, status);
    }
}

UserLocale::~UserLocale() {
    UErrorCode status = U_ZERO_ERROR;
    icu::Locale::setDefault(icu::Locale(m_before.c_str()), status);
}

} // namespace OvPlatform
