#include "Support/EnvironmentVariable.h"
#include "Support/Rows.h"
#include "Support/TemporaryFolder.h"

#include <SystemServices/RegistryKey.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>

namespace {

const wchar_t* const keyPath = L"SOFTWARE\\Example\\Configuration";

class RegistryValues : public testing::Test {
protected:
    static void Set(const wchar_t* name, DWORD type, const void* data, std::size_t size) {
        HKEY key = nullptr;
        ASSERT_EQ(ERROR_SUCCESS, RegCreateKeyExW(HKEY_LOCAL_MACHINE, keyPath, 0, nullptr, 0, KEY_WRITE,
                                                 nullptr, &key, nullptr));
        EXPECT_EQ(ERROR_SUCCESS, RegSetValueExW(key, name, 0, type, static_cast<const BYTE*>(data),
                                                static_cast<DWORD>(size)));
        RegCloseKey(key);
    }

private:
    TemporaryFolder m_folder;
    EnvironmentVariable m_variable{"OV_REGISTRY", (m_folder / "registry").string()};
};

TEST_F(RegistryValues, ReadAsBooleansWithADefault) {
    const auto setText = [](const wchar_t* name, const std::wstring& text) {
        Set(name, REG_SZ, text.c_str(), (text.size() + 1) * sizeof(WCHAR));
    };
    const DWORD zero = 0;
    const DWORD high = 0x01000000;
    const ULONGLONG longHigh = 1ull << 63;
    Set(L"Zero", REG_DWORD, &zero, sizeof zero);
    Set(L"High", REG_DWORD, &high, sizeof high);
    setText(L"One", L" 1 ");
    setText(L"True", L"TRUE");
    setText(L"No", L"no");
    setText(L"Empty", L"");
    Set(L"Unended", REG_SZ, L"true", 4 * sizeof(WCHAR));
    Set(L"Nothing", REG_SZ, nullptr, 0);
    Set(L"Expanded", REG_EXPAND_SZ, L"true", 5 * sizeof(WCHAR));
    Set(L"Long", REG_QWORD, &longHigh, sizeof longHigh);
    Set(L"Binary", REG_BINARY, &high, sizeof high);

    CXString error(L"stale");
    const auto key = RegistryKey::CreateRegistryKey(HKEY_LOCAL_MACHINE, keyPath, KEY_READ, error, false);
    ASSERT_TRUE(key) << error;
    EXPECT_TRUE(error.IsEmpty());
    // value: -1: the default
    for (const auto& [name, value] : Rows<const wchar_t*, int>{{L"Zero", 0},
                                                               {L"High", 1},
                                                               {L"One", 1},
                                                               {L"True", 1},
                                                               {L"No", 0},
                                                               {L"Empty", 0},
                                                               {L"Unended", 1},
                                                               {L"Nothing", 0},
                                                               {L"Expanded", 1},
                                                               {L"Long", 1},
                                                               {L"Binary", -1},
                                                               {L"Missing", -1}}) {
        for (const bool defaultValue : {false, true})
            EXPECT_EQ(value < 0 ? defaultValue : value == 1, key->GetBooleanValue(name, defaultValue))
                << CXString(name);
    }
}

TEST_F(RegistryValues, CloseTheirKeyIfTheyOwnIt) {
    for (const bool isOwned : {false, true}) {
        HKEY key = nullptr;
        ASSERT_EQ(ERROR_SUCCESS, RegCreateKeyExW(HKEY_LOCAL_MACHINE, keyPath, 0, nullptr, 0, KEY_READ,
                                                 nullptr, &key, nullptr));
        { const RegistryKey wrapped(key, isOwned); }
        EXPECT_EQ(isOwned ? ERROR_INVALID_HANDLE : ERROR_SUCCESS, RegCloseKey(key));
    }
}

TEST_F(RegistryValues, SayWhyAKeyDoesNotOpen) {
    CXString error;
    EXPECT_FALSE(RegistryKey::CreateRegistryKey(HKEY_LOCAL_MACHINE, keyPath, KEY_READ, error, false));
    EXPECT_EQ(L"The system cannot find the file specified. (error 2)", error);
    EXPECT_FALSE(RegistryKey::CreateRegistryKey(nullptr, keyPath, KEY_READ, error, false));
    EXPECT_EQ(L"The handle is invalid. (error 6)", error);
    EXPECT_TRUE(
        RegistryKey::CreateRegistryKey(HKEY_LOCAL_MACHINE, keyPath, KEY_READ | KEY_WRITE, error, true));
    EXPECT_TRUE(error.IsEmpty());
    EXPECT_TRUE(RegistryKey::CreateRegistryKey(HKEY_LOCAL_MACHINE, keyPath, KEY_READ, error, false));
}

} // namespace
