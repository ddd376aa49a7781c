#include "LowLevelFacilities/Failures/OperationScope.h"

const char*& OperationScope::current() noexcept {
    thread_local const char* name = nullptr;
    return name;
}

DebugContextReference OperationScope::PlaceOf(const std::source_location& location) noexcept {
    const char* const name = current();
    return {location.file_name(), static_cast<int>(location.line()),
            name == nullptr ? location.function_name() : name};
}
