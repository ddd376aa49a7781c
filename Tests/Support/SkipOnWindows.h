#pragma once

// A test that cannot run on a platform says so by these: from there on it is skipped, with the reason. On the
// thread of the test.

#include <gtest/gtest.h>

#if defined(_WIN32)

#include <windows.h>

/// Where the platform is Windows' own and not the one that stands for it elsewhere.
[[noreturn]] inline void SkipOnWindows(const char* reason) {
    GTEST_MESSAGE_AT_(__FILE__, __LINE__, reason, testing::TestPartResult::kSkip);
    // The framework takes it for the end of a test that has said why.
    throw testing::AssertionException({testing::TestPartResult::kSkip, __FILE__, __LINE__, reason});
}

/// Whether this is Wine, which does not all that Windows does.
inline bool IsWine() { return GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr; }
inline void SkipUnderWine(const char* reason) {
    if (IsWine()) SkipOnWindows(reason);
}

#else

inline void SkipOnWindows(const char*) {}
constexpr bool IsWine() { return false; }
inline void SkipUnderWine(const char*) {}

#endif
