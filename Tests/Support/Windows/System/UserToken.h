#pragma once

// Stands in for the header of that name where the platform is Windows' own: a test that makes a user is
// skipped from there on.

#include "Support/SkipOnWindows.h"

#include <windows.h>

#include <string>

namespace OvPlatform {

inline HANDLE CreateUserToken(const std::wstring&) {
    SkipOnWindows("Users cannot be made up on this platform.");
}
inline HANDLE ThreadToken() { return nullptr; }

} // namespace OvPlatform
