#include "LowLevelFacilities/Failures/ThrowComException.h"

#include "LowLevelFacilities/Failures/CPComException.h"

#include <string>
#include <utility>

void ThrowComException(HRESULT hr, std::string_view detail, const std::source_location& location) {
    const DWORD lastError = GetLastError();
    const DebugContextReference context = OperationScope::PlaceOf(location);
    std::string message = "CPComException: ";
    message += detail.empty() ? std::string_view(context.function()) : detail;
    SetLastError(lastError);
    if (CPException::allowForExceptionDebug("CPComException", message, lastError, context)) {
        CPException::SafeDebugBreak();
    }
    throw CPComException(std::move(message), lastError, context, hr);
}

void ThrowComException(HRESULT hr, const char* function, std::string_view detail,
                       const std::source_location& location) {
    const OperationScope operation(function);
    ThrowComException(hr, detail, location);
}
