// What acts on the calling thread: its apartment, its token, its user.

#include "Support/EnvironmentVariable.h"
#include "Support/Rows.h"
#include "Support/SkipOnWindows.h"

#include <Com/FaultInjection.h>
#include <LowLevelFacilities/Failures/CPComException.h>
#include <System/UserToken.h>
#include <SystemServices/OperatingSystem.h>
#include <SystemServices/SafeCoInitialize.h>
#include <SystemServices/SetThreadTokenWrapper.h>
#include <SystemServices/User.h>

#include <gtest/gtest.h>
#include <objbase.h>

#include <cstdlib>

namespace {

TEST(SafeCoInitialize, LeavesTheApartmentThatItEntered) {
    {
        SafeCoInitialize outer;
        EXPECT_TRUE(outer.TryInitializeCom(COINIT_APARTMENTTHREADED, false));
        EXPECT_TRUE(outer.TryInitializeCom(COINIT_APARTMENTTHREADED, false)); // owes one, not two
        SafeCoInitialize otherMode;
        EXPECT_FALSE(otherMode.TryInitializeCom(COINIT_MULTITHREADED, true));
        EXPECT_TRUE(otherMode.TryInitializeCom(COINIT_MULTITHREADED, false)); // stays in the other one
    }
    // The thread is free again for another mode.
    ASSERT_EQ(S_OK, CoInitializeEx(nullptr, COINIT_MULTITHREADED));
    CoUninitialize();
    const OvPlatform::FaultInjectionScope fault(1);
    EXPECT_FALSE(SafeCoInitialize().TryInitializeCom(COINIT_MULTITHREADED, false));
}

TEST(SetThreadTokenWrapper, ActsAsTheUserForItsLife) {
    CXString before;
    ASSERT_TRUE(User::GetCurrentUserName(before));
    const HANDLE token = OvPlatform::CreateUserToken(L"j\u00E4ger");
    {
        const SetThreadTokenWrapper asUser(token);
        CXString name;
        EXPECT_TRUE(User::GetCurrentUserName(name));
        EXPECT_EQ(L"j\u00E4ger", name);
        SetLastError(4);
    }
    EXPECT_EQ(4u, GetLastError());
    EXPECT_EQ(nullptr, OvPlatform::ThreadToken());
    CXString after;
    EXPECT_TRUE(User::GetCurrentUserName(after));
    EXPECT_EQ(before, after);
    CloseHandle(token);
}

TEST(SetThreadTokenWrapper, ThrowsWhenTheThreadCannotTakeTheToken) {
    EXPECT_THROW(SetThreadTokenWrapper(INVALID_HANDLE_VALUE), CPComException);
}

TEST(User, HasADomainOrSaysThatItCannotBeTold) {
    CXString domain;
    CXString name;
    ASSERT_TRUE(User::GetCurrentUsersDomain(domain));
    EXPECT_EQ(-1, domain.Find(L'\\'));
    for (const LONG call : {1, 2, 3}) {
        const OvPlatform::FaultInjectionScope fault(call, E_ACCESSDENIED);
        name = L"stale";
        if (!User::GetCurrentUserName(name)) {
            EXPECT_TRUE(name.IsEmpty()) << call;
        }
    }
}

TEST(OperatingSystem, KnowsItself) {
    EXPECT_FALSE(OperatingSystem::GetFullComputerName().IsBlank());
    const OvPlatform::FaultInjectionScope fault(1);
    EXPECT_TRUE(OperatingSystem::GetFullComputerName().IsEmpty());
}

TEST(OperatingSystemDeathTest, KnowsThePaperOfItsUser) {
    SkipOnWindows("The paper follows from what the user has set.");
    // A process reads its locale once, so each is asked in a process of its own.
    testing::GTEST_FLAG(death_test_style) = "threadsafe";
    for (const auto& [locale, isEnglish] :
         Rows<const char*, bool>{{"en_US.UTF-8", true}, {"de_DE.UTF-8", false}}) {
        const EnvironmentVariable variable("LC_ALL", locale);
        EXPECT_EXIT(std::exit(OperatingSystem::UseEnglishPaperSizes() ? 1 : 0),
                    testing::ExitedWithCode(isEnglish ? 1 : 0), "")
            << locale;
    }
}

} // namespace
