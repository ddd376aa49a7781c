#pragma once

#include "LowLevelFacilities/Failures/CPException.h"
#include "LowLevelFacilities/Failures/LastErrorKeeper.h"
#include "LowLevelFacilities/Failures/OperationScope.h"

#include <source_location>
#include <string>
#include <utility>

/// Throws a failure of the CPException family, other than that of an HRESULT (ThrowComException.h): with the
/// message that buildMessage gives (a std::string or a const char*), the thread's last error and the place.
/// The last error is the same before and after. Stops in a debugger if the exception family is told to.
template <typename Failure, typename BuildMessage>
[[noreturn]] void ThrowFailureAt(const DebugContextReference& context, BuildMessage buildMessage) {
    const unsigned int lastError = LastErrorKeeper::current();
    Failure failure(buildMessage(), lastError, context);
    const bool mayStop = CPException::allowForExceptionDebug(
        failure.getExceptionType().c_str(), failure.getExceptionMessage(), lastError, context);
    LastErrorKeeper::set(lastError);
    if (mayStop) CPException::SafeDebugBreak();
    throw failure;
}

/// From the place of the call, under the name of the operation that the thread is in (OperationScope.h).
template <typename Failure, typename BuildMessage>
[[noreturn]] void ThrowFailure(BuildMessage buildMessage,
                               const std::source_location& location = std::source_location::current()) {
    ThrowFailureAt<Failure>(OperationScope::PlaceOf(location), std::move(buildMessage));
}
