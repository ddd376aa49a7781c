#pragma once

#include <windows.h>

#if defined(_WIN32)

#include <string>

/// HKEY_LOCAL_MACHINE is empty, and what is written there gone at the end.
class ScratchRegistry {
public:
    ScratchRegistry() {
        HKEY key = nullptr;
        RegCreateKeyExW(HKEY_CURRENT_USER, m_path.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE,
                        KEY_ALL_ACCESS, nullptr, &key, nullptr);
        RegOverridePredefKey(HKEY_LOCAL_MACHINE, key);
        RegCloseKey(key);
    }
    ScratchRegistry(const ScratchRegistry&) = delete;
    ScratchRegistry& operator=(const ScratchRegistry&) = delete;
    ~ScratchRegistry() {
        RegOverridePredefKey(HKEY_LOCAL_MACHINE, nullptr);
        RegDeleteTreeW(HKEY_CURRENT_USER, m_path.c_str());
    }

private:
    std::wstring m_path = L"SOFTWARE\\ov-test-" + std::to_wstring(GetCurrentProcessId());
};

#else

#include "Support/EnvironmentVariable.h"
#include "Support/TemporaryFolder.h"

/// The registry is empty, and what is written there gone at the end.
class ScratchRegistry {
    TemporaryFolder m_folder;
    EnvironmentVariable m_variable{"OV_REGISTRY", (m_folder / "registry").string()};
};

#endif
