#include "LowLevelFacilities/ThrowComException.h"

#include "LowLevelFacilities/CPComException.h"

#include <string>
#include <utility>

void ThrowComException(HRESULT hr, const char* function, std::string_view detail,
                       const std::source_location& location) {
    const DWORD lastError = GetLastError();
    std::string message = "CPComException: ";
    message += detail.empty() ? std::string_view(function) : detail;
    SetLastError(lastError);
    const DebugContextReference context(location.file_name(), static_cast<int>(location.line()), function);
    if (CPException::allowForExceptionDebug("CPComException", message, lastError, context)) {
        CPException::SafeDebugBreak();
    }
    throw CPComException(std::move(message), lastError, context, hr);
}
