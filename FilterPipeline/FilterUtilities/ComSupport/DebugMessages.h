#pragma once

#include "ComSupport/FilterUtilitiesExport.h"

#include <windows.h>

#include <cstdarg>

/// The debug-print hook. Prints nothing and gives 0.
OV_FILTER_UTILITIES_API int DbgPrint(const char* format, ...);

/// Tells the debug-print hook of a failing HRESULT and its place.
OV_FILTER_UTILITIES_API void TraceFailedHRESULT(HRESULT hr, const char* file, int line,
                                                const wchar_t* function);

/// Formats a text of less than maxChars characters and writes it to the debug output. Gives 1, or 0 if the
/// text was cut off to fit, or if format is null or maxChars 0 or INT_MAX and above. In a wide format "%s" is
/// wide and "%S" narrow. Throws std::bad_alloc for want of room.
OV_FILTER_UTILITIES_API int RealDebugMessage(ULONG maxChars, const char* format, va_list arguments);
OV_FILTER_UTILITIES_API int RealDebugMessageW(ULONG maxChars, const wchar_t* format, va_list arguments);
