#pragma once

// Stands in for the header of that name where the platform is Windows' own: a test that needs another user's
// locale is skipped from there on.

#include "Support/SkipOnWindows.h"

#include <windows.h>

namespace OvPlatform {

class UserLocale {
public:
    explicit UserLocale(LPCWSTR) { SkipOnWindows("The user's locale is not a test's to change."); }
};

} // namespace OvPlatform
