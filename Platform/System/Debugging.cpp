#include "Locale/ShownText.h"
#include "Locale/Utf16.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <new>
#include <string>

namespace {

bool DebugOutputIsWanted() {
    const char* wanted = std::getenv("OV_DEBUG_OUTPUT");
    return wanted != nullptr && *wanted != '\0';
}

std::string Narrow(LPCWSTR text) noexcept {
    try {
        return text != nullptr ? OvPlatform::ToUtf8(text) : std::string();
    } catch (const std::bad_alloc&) {
        return {};
    }
}

/// On the error stream, where the lines are those of whoever asks, and no more acts on a terminal.
void Print(std::string_view text) {
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        std::fputs(OvPlatform::Shown(text.substr(0, end)).c_str(), stderr);
        if (end != std::string_view::npos) std::fputc('\n', stderr);
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
}

/// The answer that goes on: there is nobody to press a button.
int Answer(UINT style) {
    switch (style & MB_TYPEMASK) {
    case MB_ABORTRETRYIGNORE:
        return IDIGNORE;
    case MB_YESNO:
        return IDNO;
    case MB_OKCANCEL:
    case MB_YESNOCANCEL:
    case MB_RETRYCANCEL:
        return IDCANCEL;
    default:
        return IDOK;
    }
}

} // namespace

void OutputDebugStringA(LPCSTR text) {
    if (text == nullptr || !DebugOutputIsWanted()) return;
    Print(text);
}

void OutputDebugStringW(LPCWSTR text) {
    if (text == nullptr || !DebugOutputIsWanted()) return;
    Print(Narrow(text));
}

int MessageBoxA(HWND, LPCSTR text, LPCSTR caption, UINT style) {
    Print(caption != nullptr ? caption : "Error");
    Print(": ");
    Print(text != nullptr ? text : "");
    Print("\n");
    return Answer(style);
}

int MessageBoxW(HWND window, LPCWSTR text, LPCWSTR caption, UINT style) {
    return MessageBoxA(window, Narrow(text).c_str(), caption != nullptr ? Narrow(caption).c_str() : nullptr,
                       style);
}

BOOL IsDebuggerPresent() {
    std::ifstream status("/proc/self/status");
    for (std::string key; status >> key;) {
        if (key != "TracerPid:") continue;
        int tracer = 0;
        status >> tracer;
        return tracer != 0;
    }
    return FALSE;
}

void DebugBreak() { std::raise(SIGTRAP); }
