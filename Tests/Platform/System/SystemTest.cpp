#include "Support/EnvironmentVariable.h"
#include "Support/Rows.h"

#include <Com/FaultInjection.h>
#include <System/UserToken.h>

#include <windows.h>
#include <gtest/gtest.h>
#include <versionhelpers.h>

#include <cstdlib>
#include <ctime>
#include <string>
#include <thread>

namespace {

std::wstring UserName() {
    wchar_t name[256];
    DWORD size = 256;
    EXPECT_TRUE(GetUserNameW(name, &size));
    EXPECT_EQ(wcslen(name) + 1, size);
    return name;
}

TEST(ThreadToken, StandsOnItsThreadUntilItIsTakenOff) {
    HANDLE token = OvPlatform::CreateUserToken(L"alice");
    HANDLE opened = nullptr;
    EXPECT_FALSE(OpenThreadToken(GetCurrentThread(), TOKEN_QUERY, TRUE, &opened));
    EXPECT_EQ(static_cast<DWORD>(ERROR_NO_TOKEN), GetLastError());

    const std::wstring own = UserName();
    ASSERT_TRUE(SetThreadToken(nullptr, token));
    EXPECT_EQ(token, OvPlatform::ThreadToken());
    EXPECT_EQ(L"alice", UserName());
    std::thread([&] {
        EXPECT_EQ(nullptr, OvPlatform::ThreadToken());
        EXPECT_EQ(own, UserName());
    }).join();

    EXPECT_TRUE(CloseHandle(token));
    EXPECT_FALSE(CloseHandle(token));
    ASSERT_TRUE(OpenThreadToken(GetCurrentThread(), TOKEN_QUERY, TRUE, &opened))
        << "the thread keeps the token";
    EXPECT_TRUE(RevertToSelf());
    EXPECT_EQ(own, UserName());
    EXPECT_TRUE(ImpersonateLoggedOnUser(opened));
    EXPECT_EQ(L"alice", UserName());
    EXPECT_TRUE(SetThreadToken(nullptr, nullptr));
    EXPECT_EQ(nullptr, OvPlatform::ThreadToken());
    CloseHandle(opened);

    OvPlatform::FaultInjectionScope fault(1, E_ACCESSDENIED);
    EXPECT_FALSE(SetThreadToken(nullptr, reinterpret_cast<HANDLE>(0x1234)));
    EXPECT_EQ(static_cast<DWORD>(ERROR_ACCESS_DENIED), GetLastError());
}

TEST(Names, AreNotCutShort) {
    DWORD size = 1;
    wchar_t unit = L'?';
    EXPECT_FALSE(GetUserNameW(&unit, &size));
    EXPECT_EQ(static_cast<DWORD>(ERROR_INSUFFICIENT_BUFFER), GetLastError());
    EXPECT_EQ(UserName().size() + 1, size);

    DWORD needed = 0;
    EXPECT_FALSE(GetComputerNameExW(ComputerNameDnsFullyQualified, nullptr, &needed));
    EXPECT_EQ(static_cast<DWORD>(ERROR_MORE_DATA), GetLastError());
    std::wstring name(needed, L'?');
    size = needed;
    ASSERT_TRUE(GetComputerNameExW(ComputerNameDnsFullyQualified, name.data(), &size));
    EXPECT_EQ(needed - 1, size);
    EXPECT_EQ(size, wcslen(name.c_str()));
}

TEST(Version, IsComparedFieldByField) {
    EXPECT_TRUE(IsWindows10OrGreater());
    EXPECT_TRUE(IsWindowsVersionOrGreater(6, 3, 9));
    EXPECT_FALSE(IsWindowsVersionOrGreater(10, 1, 0));
}

TEST(CriticalSection, IsEnteredAgainByItsOwnerOnly) {
    CRITICAL_SECTION section;
    InitializeCriticalSection(&section);
    EnterCriticalSection(&section);
    EXPECT_TRUE(TryEnterCriticalSection(&section));
    LeaveCriticalSection(&section);
    std::thread([&] { EXPECT_FALSE(TryEnterCriticalSection(&section)); }).join();
    LeaveCriticalSection(&section);
    std::thread([&] { EXPECT_TRUE(TryEnterCriticalSection(&section)); }).join();
}

TEST(Modules, AreLoadedByPathAndTellWhatIsWrong) {
    const auto load = [](const std::string& path) {
        return LoadLibraryW(std::wstring(path.begin(), path.end()).c_str());
    };
    EXPECT_EQ(nullptr, load("/no/such/module.so"));
    EXPECT_EQ(static_cast<DWORD>(ERROR_MOD_NOT_FOUND), GetLastError());
    EXPECT_EQ(nullptr, load(OV_SOURCE_DIR "/CMakeLists.txt"));
    EXPECT_EQ(static_cast<DWORD>(ERROR_BAD_EXE_FORMAT), GetLastError());

    HMODULE module = load(OV_BINARY_DIR "/lib/libov-Platform.so");
    EXPECT_EQ(reinterpret_cast<void*>(&SysStringLen),
              reinterpret_cast<void*>(GetProcAddress(module, "SysStringLen")));
    EXPECT_EQ(nullptr, GetProcAddress(module, "NoSuchFunction"));
    EXPECT_EQ(static_cast<DWORD>(ERROR_PROC_NOT_FOUND), GetLastError());
    wchar_t name[1024];
    EXPECT_LT(0u, GetModuleFileNameW(module, name, 1024));
    EXPECT_NE(std::wstring::npos, std::wstring(name).find(L"libov-Platform.so"));
    EXPECT_EQ(5u, GetModuleFileNameW(module, name, 5));
    EXPECT_EQ(4u, wcslen(name));
    EXPECT_TRUE(FreeLibrary(module));
}

TEST(Files, AreCreatedReadSoughtAndDeleted) {
    wchar_t folder[512];
    ASSERT_NE(0u, GetTempPathW(512, folder));
    const std::wstring path = std::wstring(folder) + L"ov-\u00E4-" + std::to_wstring(GetCurrentProcessId());
    const auto create = [](const std::wstring& name, DWORD how) {
        return CreateFileW(name.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, how, FILE_ATTRIBUTE_NORMAL,
                           nullptr);
    };
    HANDLE file = create(path, CREATE_NEW);
    EXPECT_EQ(INVALID_HANDLE_VALUE, create(path, CREATE_NEW));
    EXPECT_EQ(static_cast<DWORD>(ERROR_FILE_EXISTS), GetLastError());
    DWORD count = 0;
    EXPECT_TRUE(WriteFile(file, "content", 7, &count, nullptr));
    LARGE_INTEGER position{};
    position.QuadPart = 3;
    EXPECT_TRUE(SetFilePointerEx(file, position, nullptr, FILE_BEGIN));
    char bytes[10] = {};
    EXPECT_TRUE(ReadFile(file, bytes, 10, &count, nullptr));
    EXPECT_STREQ("tent", bytes);
    EXPECT_TRUE(CloseHandle(file));
    EXPECT_FALSE(ReadFile(file, bytes, 10, &count, nullptr));
    EXPECT_TRUE(DeleteFileW(path.c_str()));
    EXPECT_FALSE(DeleteFileW(path.c_str()));
    EXPECT_EQ(static_cast<DWORD>(ERROR_FILE_NOT_FOUND), GetLastError());
    EXPECT_EQ(INVALID_HANDLE_VALUE, create(path + L"/x", OPEN_EXISTING));
    EXPECT_EQ(static_cast<DWORD>(ERROR_PATH_NOT_FOUND), GetLastError());
}

std::string Text(const SYSTEMTIME& time) {
    char text[64];
    std::snprintf(text, sizeof(text), "%04d-%02d-%02d %02d:%02d:%02d.%03d %d", time.wYear, time.wMonth,
                  time.wDay, time.wHour, time.wMinute, time.wSecond, time.wMilliseconds, time.wDayOfWeek);
    return text;
}

TEST(Time, ConvertsBetweenItsForms) {
    const Rows<SYSTEMTIME, ULONGLONG> cases{
        {{1601, 1, 1, 1, 0, 0, 0, 0}, 0},
        {{1970, 1, 4, 1, 0, 0, 0, 0}, 116444736000000000ULL},
        {{2000, 2, 2, 29, 23, 59, 59, 999}, 125963423999990000ULL},
    };
    for (const auto& [time, ticks] : cases) {
        FILETIME fileTime{};
        ASSERT_TRUE(SystemTimeToFileTime(&time, &fileTime));
        EXPECT_EQ(ticks, static_cast<ULONGLONG>(fileTime.dwHighDateTime) << 32 | fileTime.dwLowDateTime);
        SYSTEMTIME back{};
        ASSERT_TRUE(FileTimeToSystemTime(&fileTime, &back));
        EXPECT_EQ(Text(time), Text(back));
    }
    const SYSTEMTIME impossible[] = {
        {1600, 1, 0, 1, 0, 0, 0, 0}, {2001, 2, 0, 29, 0, 0, 0, 0}, {2001, 1, 0, 1, 24, 0, 0, 0}};
    FILETIME ignored;
    for (const SYSTEMTIME& time : impossible)
        EXPECT_FALSE(SystemTimeToFileTime(&time, &ignored));
    const FILETIME tooLate = {0xFFFFFFFF, 0x7FFFFFFF};
    SYSTEMTIME unused;
    EXPECT_FALSE(FileTimeToSystemTime(&tooLate, &unused));
}

TEST(Time, FollowsTheRulesOfAZone) {
    // Central Europe: last Sunday of March at 2 to last Sunday of October at 3.
    TIME_ZONE_INFORMATION zone{};
    zone.Bias = -60;
    zone.StandardDate = {0, 10, 0, 5, 3, 0, 0, 0};
    zone.DaylightDate = {0, 3, 0, 5, 2, 0, 0, 0};
    zone.DaylightBias = -60;
    const Rows<SYSTEMTIME, const char*> cases{
        {{2024, 3, 0, 31, 0, 59, 59, 0}, "2024-03-31 01:59:59.000 0"},
        {{2024, 3, 0, 31, 1, 0, 0, 0}, "2024-03-31 03:00:00.000 0"},
        {{2024, 10, 0, 27, 1, 0, 0, 0}, "2024-10-27 02:00:00.000 0"},
        {{2023, 12, 0, 31, 23, 30, 0, 0}, "2024-01-01 00:30:00.000 1"},
    };
    for (const auto& [utc, wantedLocal] : cases) {
        SYSTEMTIME local{};
        ASSERT_TRUE(SystemTimeToTzSpecificLocalTime(&zone, &utc, &local));
        EXPECT_EQ(wantedLocal, Text(local));
    }
    // South of the equator, and the way back.
    TIME_ZONE_INFORMATION south{};
    south.Bias = -600;
    south.StandardDate = {0, 4, 0, 1, 3, 0, 0, 0};
    south.DaylightDate = {0, 10, 0, 1, 2, 0, 0, 0};
    south.DaylightBias = -60;
    const SYSTEMTIME summer = {2024, 1, 1, 15, 1, 0, 0, 0};
    SYSTEMTIME local{}, back{};
    ASSERT_TRUE(SystemTimeToTzSpecificLocalTime(&south, &summer, &local));
    ASSERT_TRUE(TzSpecificLocalTimeToSystemTime(&south, &local, &back));
    EXPECT_EQ("2024-01-15 12:00:00.000 1, 2024-01-15 01:00:00.000 1", Text(local) + ", " + Text(back));
}

TEST(Time, UsesTheSystemsZoneOfThatMoment) {
    const EnvironmentVariable zone("TZ", "CET-1CEST,M3.5.0,M10.5.0/3");
    const SYSTEMTIME winter = {2024, 1, 1, 15, 12, 0, 0, 0};
    const SYSTEMTIME summer = {2024, 7, 1, 15, 12, 0, 0, 0};
    SYSTEMTIME local{};
    ASSERT_TRUE(SystemTimeToTzSpecificLocalTime(nullptr, &winter, &local));
    EXPECT_EQ(13, local.wHour);
    ASSERT_TRUE(SystemTimeToTzSpecificLocalTime(nullptr, &summer, &local));
    EXPECT_EQ(14, local.wHour);
    ASSERT_TRUE(TzSpecificLocalTimeToSystemTime(nullptr, &local, &local));
    EXPECT_EQ(12, local.wHour);
}

TEST(DebugOutput, IsWrittenOnlyWhenItIsWanted) {
    unsetenv("OV_DEBUG_OUTPUT");
    testing::internal::CaptureStderr();
    OutputDebugStringW(L"silent");
    {
        const EnvironmentVariable wanted("OV_DEBUG_OUTPUT", "1");
        OutputDebugStringW(L"h\u00E4\n");
        OutputDebugStringA("narrow\n");
        OutputDebugStringW(nullptr);
    }
    EXPECT_EQ(IDOK, MessageBoxW(nullptr, L"text", L"caption", MB_OK | MB_ICONERROR));
    EXPECT_EQ(IDIGNORE, MessageBoxA(nullptr, "text", "caption", MB_ABORTRETRYIGNORE | MB_TASKMODAL));
    EXPECT_EQ("h\xC3\xA4\nnarrow\ncaption: text\ncaption: text\n", testing::internal::GetCapturedStderr());
}

} // namespace
