#include <Com/ClassTable.h>
#include <Com/FaultInjection.h>

#include <atlcomcli.h>
#include <gtest/gtest.h>

#include <functional>
#include <future>
#include <thread>

namespace {

void OnNewThread(const std::function<void()>& work) { std::thread(work).join(); }

TEST(Apartment, IsOfOneKindForAThread) {
    OnNewThread([] {
        EXPECT_EQ(S_OK, CoInitializeEx(nullptr, COINIT_MULTITHREADED));
        EXPECT_EQ(S_FALSE, CoInitializeEx(nullptr, COINIT_MULTITHREADED));
        EXPECT_EQ(RPC_E_CHANGED_MODE, CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED));
        CoUninitialize();
        EXPECT_EQ(RPC_E_CHANGED_MODE, CoInitialize(nullptr)) << "one entry is left";
        CoUninitialize();
        EXPECT_EQ(S_OK, CoInitialize(nullptr));
        CoUninitialize();
        CoUninitialize();
        EXPECT_EQ(S_OK, CoInitializeEx(nullptr, COINIT_MULTITHREADED)) << "an unmatched call does nothing";
        CoUninitialize();
    });
}

// {5d4e9c5a-8a0b-4a27-9d1b-0d7e5f4c2b11}
constexpr CLSID MemoryStreamClass = {
    0x5d4e9c5a, 0x8a0b, 0x4a27, {0x9d, 0x1b, 0x0d, 0x7e, 0x5f, 0x4c, 0x2b, 0x11}};

HRESULT CreateMemoryStream(REFIID iid, void** object) {
    CComPtr<IStream> stream;
    if (HRESULT result = CreateStreamOnHGlobal(nullptr, TRUE, &stream); FAILED(result)) return result;
    return stream->QueryInterface(iid, object);
}

TEST(ClassTable, MakesRegisteredClassesInsideAnApartmentOnly) {
    ASSERT_EQ(S_OK, OvPlatform::RegisterClass(MemoryStreamClass, CreateMemoryStream));
    const auto makeWithoutApartment = [] {
        CComPtr<IStream> stream;
        return stream.CoCreateInstance(MemoryStreamClass);
    };
    OnNewThread([&] {
        EXPECT_EQ(CO_E_NOTINITIALIZED, makeWithoutApartment());
        ASSERT_EQ(S_OK, CoInitialize(nullptr));
        CComPtr<IStream> stream;
        EXPECT_EQ(S_OK, stream.CoCreateInstance(MemoryStreamClass));
        CComPtr<IDispatch> missing;
        EXPECT_EQ(E_NOINTERFACE, missing.CoCreateInstance(MemoryStreamClass));
        EXPECT_EQ(REGDB_E_CLASSNOTREG, missing.CoCreateInstance(__uuidof(IStream)));
        EXPECT_EQ(nullptr, missing.p);
        EXPECT_EQ(CLASS_E_NOAGGREGATION, missing.CoCreateInstance(MemoryStreamClass, stream));
        CoUninitialize();

        // A thread without an apartment is served while the multi-threaded one exists.
        ASSERT_EQ(S_OK, CoInitializeEx(nullptr, COINIT_MULTITHREADED));
        OnNewThread([&] { EXPECT_EQ(S_OK, makeWithoutApartment()); });
        CoUninitialize();
        OnNewThread([&] { EXPECT_EQ(CO_E_NOTINITIALIZED, makeWithoutApartment()); });
    });
}

TEST(ErrorInformation, IsHandedOverOnceAndBelongsToTheThread) {
    CComPtr<ICreateErrorInfo> created;
    ASSERT_EQ(S_OK, CreateErrorInfo(&created));
    wchar_t description[] = L"what went wrong";
    ASSERT_EQ(S_OK, created->SetDescription(description));
    CComPtr<IErrorInfo> information;
    information = created;
    ASSERT_EQ(S_OK, SetErrorInfo(0, information));
    information.Release();
    SetLastError(ERROR_NOT_FOUND);
    OnNewThread([] {
        CComPtr<IErrorInfo> none;
        EXPECT_EQ(S_FALSE, GetErrorInfo(0, &none));
        EXPECT_EQ(0u, GetLastError());
    });
    EXPECT_EQ(static_cast<DWORD>(ERROR_NOT_FOUND), GetLastError());
    ASSERT_EQ(S_OK, GetErrorInfo(0, &information));
    CComBSTR text;
    EXPECT_EQ(S_OK, information->GetDescription(&text));
    EXPECT_TRUE(text == description);
    CComPtr<IErrorInfo> second;
    EXPECT_EQ(S_FALSE, GetErrorInfo(0, &second));
}

TEST(FaultInjection, FailsTheChosenCallAndNoOther) {
    using OvPlatform::FaultInjection;
    GUID guid;
    FaultInjection::FailCall(2, E_ACCESSDENIED);
    EXPECT_EQ(S_OK, CoCreateGuid(&guid));
    EXPECT_FALSE(FaultInjection::HasFailed());
    EXPECT_EQ(E_ACCESSDENIED, CoCreateGuid(&guid));
    EXPECT_EQ(static_cast<DWORD>(ERROR_ACCESS_DENIED), GetLastError());
    EXPECT_TRUE(FaultInjection::HasFailed());
    EXPECT_EQ(S_OK, CoCreateGuid(&guid));
    EXPECT_EQ(3, FaultInjection::CallCount());
    FaultInjection::Reset();
    EXPECT_EQ(S_OK, CoCreateGuid(&guid));
    EXPECT_EQ(3, FaultInjection::CallCount());
}

} // namespace
