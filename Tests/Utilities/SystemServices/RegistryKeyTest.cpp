#include "Support/Rows.h"
#include "Support/ScratchRegistry.h"
#include "Support/SkipOnWindows.h"

#include <SystemServices/RegistryKey.h>

#include <gtest/gtest.h>

#include <optional>

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
    ScratchRegistry m_registry;
};

TEST_F(RegistryValues, ReadAsBooleansWithADefault) {
    const DWORD zero = 0;
    const DWORD high = 0x01000000;
    const ULONGLONG longHigh = 1ull << 63;
    const std::size_t unit = sizeof(WCHAR);
    // The value, or nothing: the default.
    const Rows<const wchar_t*, DWORD, const void*, std::size_t, std::optional<bool>> rows{
        {L"Zero", REG_DWORD, &zero, sizeof zero, false},
        {L"High", REG_DWORD, &high, sizeof high, true},
        {L"Long", REG_QWORD, &longHigh, sizeof longHigh, true},
        {L"One", REG_SZ, L" 1 ", 4 * unit, true},
        {L"True", REG_EXPAND_SZ, L"TRUE", 5 * unit, true},
        {L"No", REG_SZ, L"no", 3 * unit, false},
        {L"Unended", REG_SZ, L"true", 4 * unit, true},
        {L"Nothing", REG_SZ, nullptr, 0, false},
        {L"Binary", REG_BINARY, &high, sizeof high, {}}};
    for (const auto& [name, type, data, size, value] : rows)
        Set(name, type, data, size);
    CXString error(L"stale");
    const auto key = RegistryKey::CreateRegistryKey(HKEY_LOCAL_MACHINE, keyPath, KEY_READ, error, false);
    ASSERT_TRUE(key) << error;
    EXPECT_TRUE(error.IsEmpty());
    for (const bool otherwise : {false, true}) {
        for (const auto& [name, type, data, size, value] : rows)
            EXPECT_EQ(value.value_or(otherwise), key->GetBooleanValue(name, otherwise)) << CXString(name);
        EXPECT_EQ(otherwise, key->GetBooleanValue(L"Missing", otherwise));
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
    // The system's own words, which Wine has in its own.
    EXPECT_EQ(IsWine() ? L"File not found. (error 2)"
                       : L"The system cannot find the file specified. (error 2)",
              error);
    EXPECT_TRUE(
        RegistryKey::CreateRegistryKey(HKEY_LOCAL_MACHINE, keyPath, KEY_READ | KEY_WRITE, error, true));
    EXPECT_TRUE(error.IsEmpty());
    EXPECT_TRUE(RegistryKey::CreateRegistryKey(HKEY_LOCAL_MACHINE, keyPath, KEY_READ, error, false));
}

} // namespace
