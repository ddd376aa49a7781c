#include "Support/EnvironmentVariable.h"
#include "Support/MemoryStreams.h"
#include "Support/Rows.h"
#include "Support/SkipOnWindows.h"

#include <Com/FaultInjection.h>
#include <ComSupport/MsFilterTypes.h>
#include <ComSupport/MsSafeCoinit.h>
#include <LowLevelFacilities/Failures/CPComException.h>

#include <gtest/gtest.h>

#include <climits>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <regex>
#include <string>
#include <thread>

namespace {

HRESULT ResultOf(const std::function<void()>& body) {
    try {
        body();
        return S_OK;
    } catch (const CPComException& failure) {
        return failure.GetHresult();
    }
}

TEST(MsSafeVariant, ReleasesWhatItHolds) {
    const auto object = MakeFake<MemoryReadStream>("");
    {
        MsSafeVariant value;
        EXPECT_EQ(value.vt, VT_EMPTY);
        value.vt = VT_UNKNOWN;
        value.punkVal = object;
        object->AddRef();
    }
    EXPECT_EQ(object->References(), 1u);
}

TEST(MsSafeHGlobal, HandsItsBlockOverToTheStream) {
    MsSafeHGlobal block(GMEM_FIXED, 5);
    {
        const auto lock = block.Lock();
        ASSERT_NE(lock->GetAddress(), nullptr);
        std::memcpy(lock->GetAddress(), "bytes", 5);
    }
    const CComPtr<IStream> stream = block.ConvertToIStream();
    EXPECT_EQ(static_cast<void*>(block), nullptr);
    EXPECT_EQ(ReadAll(stream), "bytes");

    // There is no block left, so a second stream gets a fresh one.
    EXPECT_EQ(ReadAll(block.ConvertToIStream()), "");
}

TEST(MsSafeHGlobal, ReportsWhatThePlatformRefuses) {
    const OvPlatform::FaultInjectionScope noBlock(1);
    EXPECT_EQ(ResultOf([] { MsSafeHGlobal block(GMEM_FIXED, 5); }), E_OUTOFMEMORY);

    OvPlatform::FaultInjection::Reset();
    MsSafeHGlobal block(GMEM_FIXED, 5);
    const OvPlatform::FaultInjectionScope noStream(1, E_ACCESSDENIED);
    EXPECT_EQ(ResultOf([&] { block.ConvertToIStream(); }), E_ACCESSDENIED);
    EXPECT_NE(static_cast<void*>(block), nullptr); // still ours
}

TEST(MsHGlobalLock, UnlocksAndReportsTheLastErrorOfAFailingLock) {
    SetLastError(0);
    if (!IsWine()) { // which says nothing of a lock of nothing
        EXPECT_TRUE(FAILED(ResultOf([] { MsHGlobalLock lock(nullptr); })));
    }
    MsSafeHGlobal movable(GMEM_MOVEABLE, 5);
    {
        const auto lock = movable.Lock();
        EXPECT_EQ(GlobalFlags(movable) & GMEM_LOCKCOUNT, 1u);
    }
    EXPECT_EQ(GlobalFlags(movable) & GMEM_LOCKCOUNT, 0u);

    // Without a last error there is nothing to throw.
    const OvPlatform::FaultInjectionScope noLock(1, static_cast<HRESULT>(0x80070000));
    EXPECT_EQ(movable.Lock()->GetAddress(), nullptr);
}

TEST(MsSafeCoInit, ReportsAnApartmentThatItCannotEnter) {
    const OvPlatform::FaultInjectionScope noApartment(1, E_OUTOFMEMORY);
    EXPECT_EQ(ResultOf([] { const MsSafeCoInit apartment; }), E_OUTOFMEMORY);
}

TEST(MsSafeCoInit, OwesItsApartmentOnlyWhereItEnteredOne) {
    std::thread([] {
        {
            const MsSafeCoInit outer;
            const MsSafeCoInit inner;
        }
        // The thread has left, so that it may enter an apartment of the other kind.
        ASSERT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_OK);
        { const MsSafeCoInit guest; }
        // Had the guest left the apartment, this would be the thread's first entry again.
        EXPECT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_FALSE);
        CoUninitialize();
        CoUninitialize();
    }).join();
}

TEST(HresultHelpers, LastErrorAndGdiStatusBecomeHresults) {
    const Rows<DWORD, HRESULT> lastErrors{
        {0, S_OK},
        {5, E_ACCESSDENIED},
        {0x12345, static_cast<HRESULT>(0x80072345)},
        {0x80040003, static_cast<HRESULT>(0x80040003)},
    };
    for (const auto& [lastError, expected] : lastErrors) {
        SetLastError(lastError);
        EXPECT_EQ(GetLastErrorAsHResult(), expected) << lastError;
        EXPECT_EQ(GetGDIStatusErrorAsHResult(Gdiplus::Win32Error), expected) << lastError;
    }
    const Rows<Gdiplus::Status, HRESULT> cases{
        {Gdiplus::Ok, S_OK},
        {Gdiplus::ObjectBusy, E_PENDING},
        {Gdiplus::InsufficientBuffer, E_OUTOFMEMORY},
        {Gdiplus::FileNotFound, HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND)},
        {Gdiplus::AccessDenied, E_ACCESSDENIED},
        {static_cast<Gdiplus::Status>(1), E_FAIL},
        {Gdiplus::ProfileNotFound, E_FAIL},
    };
    for (const auto& [status, expected] : cases)
        EXPECT_EQ(GetGDIStatusErrorAsHResult(status), expected) << status;
}

TEST(XGenerateRandomGuidAsString, GivesBareUpperCaseGuids) {
    const CPString first(XGenerateRandomGuidAsString());
    EXPECT_TRUE(
        std::regex_match(std::string(first.view()), std::regex("[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}")))
        << first;
    EXPECT_FALSE(first == CPString(XGenerateRandomGuidAsString()));
    const OvPlatform::FaultInjectionScope noGuid(1);
    EXPECT_TRUE(XGenerateRandomGuidAsString().IsEmpty());
}

int Narrow(ULONG maxChars, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const int result = RealDebugMessage(maxChars, format, arguments);
    va_end(arguments);
    return result;
}

int Wide(ULONG maxChars, const wchar_t* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const int result = RealDebugMessageW(maxChars, format, arguments);
    va_end(arguments);
    return result;
}

TEST(DebugMessages, SucceedOnlyWithTextThatFits) {
    const Rows<ULONG, int> cases{{0, 0}, {5, 0}, {6, 1}, {static_cast<ULONG>(INT_MAX), 0}, {0xFFFFFFFF, 0}};
    for (const auto& [maxChars, expected] : cases) {
        EXPECT_EQ(Narrow(maxChars, "ab%d", 123), expected) << maxChars;
        EXPECT_EQ(Wide(maxChars, L"ab%d", 123), expected) << maxChars;
    }
    EXPECT_EQ(Narrow(10, nullptr), 0);
    EXPECT_EQ(Wide(10, nullptr), 0);
}

TEST(DebugMessages, WriteWhatFitsToTheDebugOutput) {
    SkipOnWindows("Only a debugger sees the debug output.");
    const EnvironmentVariable shown("OV_DEBUG_OUTPUT", "1");
    testing::internal::CaptureStderr();
    Narrow(100, "<%s %d>", "narrow", 1);
    Wide(100, L"<%s %S %5.2s|%hs|%c%ls|%I64d %%>", L"wide", "narrow", L"cut", "small", L'c', L"ell", 5LL);
    Narrow(4, "%s", "truncated");
    Wide(4, L"%s", L"TRUNCATED");
    const std::string output = testing::internal::GetCapturedStderr();
    EXPECT_EQ(output, "<narrow 1><wide narrow    cu|small|cell|5 %>truTRU");
}

} // namespace
