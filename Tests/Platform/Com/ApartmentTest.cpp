#include <Com/FaultInjection.h>

#include <atlcomcli.h>
#include <gtest/gtest.h>
#include <msxml6.h>

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

TEST(ClassTable, MakesClassesInsideAnApartmentOnly) {
    const auto make = [] {
        CComPtr<IXMLDOMDocument> document;
        return document.CoCreateInstance(__uuidof(DOMDocument60));
    };
    OnNewThread([&] {
        EXPECT_EQ(CO_E_NOTINITIALIZED, make());
        ASSERT_EQ(S_OK, CoInitialize(nullptr));
        EXPECT_EQ(S_OK, make());
        CComPtr<IErrorInfo> missing;
        EXPECT_EQ(E_NOINTERFACE, missing.CoCreateInstance(__uuidof(DOMDocument60)));
        EXPECT_EQ(REGDB_E_CLASSNOTREG, missing.CoCreateInstance(__uuidof(IStream)));
        EXPECT_EQ(nullptr, missing.p);
        CComPtr<IStream> outer;
        EXPECT_EQ(S_OK, CreateStreamOnHGlobal(nullptr, TRUE, &outer));
        EXPECT_EQ(CLASS_E_NOAGGREGATION, missing.CoCreateInstance(__uuidof(DOMDocument60), outer));
        CoUninitialize();

        // A thread without an apartment is served while the multi-threaded one exists.
        ASSERT_EQ(S_OK, CoInitializeEx(nullptr, COINIT_MULTITHREADED));
        OnNewThread([&] { EXPECT_EQ(S_OK, make()); });
        CoUninitialize();
        OnNewThread([&] { EXPECT_EQ(CO_E_NOTINITIALIZED, make()); });
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
