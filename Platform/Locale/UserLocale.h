#pragma once

#include "Com/PlatformExport.h"

#include <windows.h>

#include <string>

namespace OvPlatform {

/// The locale that the whole process takes for the user's, under its published name ("de-DE"), for the life
/// of this object; without one it is what the environment says (LC_ALL, LC_MESSAGES, LANG) when it is first
/// asked for. An unknown name is that of no locale: the user's stays. Not while another thread asks for
/// locales.
class OV_PLATFORM_API UserLocale {
public:
    explicit UserLocale(LPCWSTR name);
    UserLocale(const UserLocale&) = delete;
    UserLocale& operator=(const UserLocale&) = delete;
    ~UserLocale();

private:
    std::string m_before;
};

} // namespace OvPlatform
