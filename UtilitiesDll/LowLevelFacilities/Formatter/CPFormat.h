#pragma once

#include "LowLevelFacilities/Formatter/InternalOrvelCP.h"
#include "LowLevelFacilities/Strings/CPString.h"

#include <string>

/// The everyday face of the typed formatter: the text as a value, at the cost of its own allocation. A
/// mistake in format or arguments is reported and never thrown; the result is then what was formatted so far.
/// Only std::bad_alloc for the result itself can leave.
template <typename... Arguments>
[[nodiscard]] std::string FormatStdString(const char* format, const Arguments&... arguments) {
    InternalOrvelCP::FormatBuffer buffer;
    InternalOrvelCP::safeFormatWorker(buffer, format, arguments...);
    return buffer.takeText();
}

template <typename... Arguments>
[[nodiscard]] CPString FormatCPString(const char* format, const Arguments&... arguments) {
    return CPString{FormatStdString(format, arguments...)};
}
