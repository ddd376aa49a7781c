#pragma once

#include <unicode/locid.h>

#include <string>

namespace OvPlatform {

// The pictures by which a locale shows dates and times, in the published letters. They are the Unicode
// library's, with what users of the platform expect: the year in full ("yyyy") where the library's short date
// has two digits, AM and PM parted by a blank, no marks of direction and no era. For some locales the
// published tables still say otherwise: "dd-MM-yyyy" in Danish, "d-M-yyyy" in Dutch, "yyyy-MM-dd" in Korean
// and in Canadian English, "dd/MM/yyyy" in Spanish, "HH:mm:ss" in Canadian French, "tt hh:mm:ss" in Taiwan.

/// "M/d/yyyy"
std::wstring ShortDatePicture(const icu::Locale& locale);
/// "dddd, MMMM d, yyyy"
std::wstring LongDatePicture(const icu::Locale& locale);
/// "h:mm:ss tt"
std::wstring TimePicture(const icu::Locale& locale);

} // namespace OvPlatform
