#pragma once

#include "Com/PlatformExport.h"

#include <windows.h>

#include <string>

namespace OvPlatform {

/// A handle that stands for a user, as a pipeline hands one to its filters; close it with CloseHandle. While
/// it is on a thread, GetUserNameW there gives this user. Throws std::bad_alloc.
OV_PLATFORM_API HANDLE CreateUserToken(const std::wstring& userName);

/// What SetThreadToken put on the calling thread; null for nothing.
OV_PLATFORM_API HANDLE ThreadToken() noexcept;

} // namespace OvPlatform
