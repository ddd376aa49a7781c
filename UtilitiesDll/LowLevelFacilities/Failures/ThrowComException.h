#pragma once

// The one form in which the libraries throw a failing HRESULT.

#include "LowLevelFacilities/Failures/OperationScope.h"
#include "LowLevelFacilities/UtilitiesExport.h"

#include <windows.h>

#include <source_location>
#include <string_view>

/// Throws CPComException with hr, the thread's last error and the place of the call, under the name of the
/// operation that the thread is in (OperationScope.h). detail, where there is one, says what went wrong; the
/// message of the exception reads "CPComException: " and the detail, or the name of the operation without
/// one. The last error is the same before and after. Stops in a debugger if the exception family is told to.
[[noreturn]] OV_UTILITIES_API void
ThrowComException(HRESULT hr, std::string_view detail = {},
                  const std::source_location& location = std::source_location::current());

/// As ThrowComException if hr is a failure; otherwise does nothing.
inline void ThrowIfFailed(HRESULT hr, std::string_view detail = {},
                          const std::source_location& location = std::source_location::current()) {
    if (FAILED(hr)) ThrowComException(hr, detail, location);
}

/// ThrowComException for callers that have no scope, as an operation of that name.
[[noreturn]] OV_UTILITIES_API void ThrowComException(HRESULT hr, const char* function,
                                                     std::string_view detail,
                                                     const std::source_location& location);
