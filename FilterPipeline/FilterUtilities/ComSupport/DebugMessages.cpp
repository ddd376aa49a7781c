#include "ComSupport/DebugMessages.h"

#include <wchar.h>

#include <climits>
#include <cstddef>
#include <cstdio>
#include <memory>

namespace {

// Formats with the runtime's function into maxChars characters and hands them to the debug output as they
// are.
template <typename Char, typename Format, typename Output>
int DebugMessage(ULONG maxChars, const Char* format, Format&& formatText, Output&& output) {
    if (!format || maxChars == 0) return 0;
    if (maxChars >= static_cast<ULONG>(INT_MAX)) {
        const Char empty = 0;
        output(&empty);
        return 0;
    }
    // Not cleared: the room may be large, and the text short.
    const auto buffer = std::make_unique_for_overwrite<Char[]>(std::size_t{maxChars} + 1);
    buffer[0] = 0;
    const int written = formatText(buffer.get(), std::size_t{maxChars});
    buffer[maxChars - 1] = 0;
    output(buffer.get());
    return written >= 0 && static_cast<ULONG>(written) < maxChars ? 1 : 0;
}

} // namespace

int DbgPrint(const char*, ...) { return 0; }

void TraceFailedHRESULT(HRESULT hr, const char* file, int line, const wchar_t* function) {
    DbgPrint("Failed HRESULT (0x%x) at %s:%d (%S)", static_cast<unsigned>(hr), file, line, function);
}

int RealDebugMessage(ULONG maxChars, const char* format, va_list arguments) {
    return DebugMessage(
        maxChars, format,
        [&](char* buffer, std::size_t room) { return std::vsnprintf(buffer, room, format, arguments); },
        [](const char* text) { OutputDebugStringA(text); });
}

int RealDebugMessageW(ULONG maxChars, const wchar_t* format, va_list arguments) {
    return DebugMessage(
        maxChars, format,
        [&](wchar_t* buffer, std::size_t room) { return _vsnwprintf(buffer, room, format, arguments); },
        [](const wchar_t* text) { OutputDebugStringW(text); });
}
