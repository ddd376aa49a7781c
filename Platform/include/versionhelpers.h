#pragma once

#include <winbase.h>

/// Whether the platform's interfaces are at least of this version.
inline BOOL IsWindowsVersionOrGreater(WORD major, WORD minor, WORD servicePack) {
    OSVERSIONINFOEXW version{};
    version.dwOSVersionInfoSize = sizeof(version);
    version.dwMajorVersion = major;
    version.dwMinorVersion = minor;
    version.wServicePackMajor = servicePack;
    const ULONGLONG mask =
        VerSetConditionMask(VerSetConditionMask(VerSetConditionMask(0, VER_MAJORVERSION, VER_GREATER_EQUAL),
                                                VER_MINORVERSION, VER_GREATER_EQUAL),
                            VER_SERVICEPACKMAJOR, VER_GREATER_EQUAL);
    return VerifyVersionInfoW(&version, VER_MAJORVERSION | VER_MINORVERSION | VER_SERVICEPACKMAJOR, mask) !=
           FALSE;
}
inline BOOL IsWindows7OrGreater() { return IsWindowsVersionOrGreater(6, 1, 0); }
inline BOOL IsWindows8OrGreater() { return IsWindowsVersionOrGreater(6, 2, 0); }
inline BOOL IsWindows10OrGreater() { return IsWindowsVersionOrGreater(10, 0, 0); }
