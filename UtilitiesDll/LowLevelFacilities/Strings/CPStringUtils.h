#pragma once

#include "LowLevelFacilities/Strings/CPString.h"
#include "LowLevelFacilities/UtilitiesExport.h"

#include <cstddef>
#include <string>

namespace InternalOrvelCP {
template <std::size_t areaSize>
class FormatStringBuffer;
}

/// Conversions between UTF-16 in wchar_t units and UTF-8. A null pointer is the empty text; what is
/// ill-formed becomes U+FFFD, as utf8coder.h has it.
namespace CPStringUtils {

OV_UTILITIES_API CPString narrow(const wchar_t* text);
OV_UTILITIES_API std::string narrowToStdString(const wchar_t* text);
/// Takes exactly length units, zeros included.
OV_UTILITIES_API std::string narrowToStdString(const wchar_t* text, std::size_t length);
/// Appends without allocating as long as the text fits into the buffer's area.
OV_UTILITIES_API void narrowAndAppend(InternalOrvelCP::FormatStringBuffer<1024>& destination,
                                      const wchar_t* text);
/// Takes exactly length units, zeros included.
OV_UTILITIES_API void narrowAndAppend(InternalOrvelCP::FormatStringBuffer<1024>& destination,
                                      const wchar_t* text, std::size_t length);
OV_UTILITIES_API std::wstring widenTo_wstring(const CPString& text);
OV_UTILITIES_API std::wstring widenTo_wstring(const char* text, std::size_t length);

} // namespace CPStringUtils
