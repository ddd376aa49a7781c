#include "Platform/PrintTicket/TicketFixture.h"

#include <Com/FaultInjection.h>
#include <Spooler/QueueRegistry.h>

#include <atlcomcli.h>
#include <gtest/gtest.h>
#include <msxml6.h>
#include <objbase.h>
#include <prntvpt.h>

#include <thread>

using namespace OvPlatform;
using namespace TicketFixture;

namespace {

constexpr wchar_t Printer[] = L"Ticket Test";

CComPtr<IStream> Stream(const std::string& bytes) {
    CComPtr<IStream> stream;
    EXPECT_EQ(CreateStreamOnHGlobal(nullptr, TRUE, &stream), S_OK);
    EXPECT_EQ(stream->Write(bytes.data(), static_cast<ULONG>(bytes.size()), nullptr), S_OK);
    LARGE_INTEGER start{};
    EXPECT_EQ(stream->Seek(start, STREAM_SEEK_SET, nullptr), S_OK);
    return stream;
}

std::uint64_t Position(IStream* stream) {
    LARGE_INTEGER here{};
    ULARGE_INTEGER position{};
    EXPECT_EQ(stream->Seek(here, STREAM_SEEK_CUR, &position), S_OK);
    return position.QuadPart;
}

std::string All(IStream* stream) {
    LARGE_INTEGER start{};
    EXPECT_EQ(stream->Seek(start, STREAM_SEEK_SET, nullptr), S_OK);
    std::string bytes(1 << 20, '\0');
    ULONG count = 0;
    EXPECT_GE(stream->Read(bytes.data(), static_cast<ULONG>(bytes.size()), &count), S_OK);
    return bytes.substr(0, count);
}

class Provider : public testing::Test {
protected:
    void SetUp() override {
        QueueRegistry::Add(Queue());
        ASSERT_EQ(PTOpenProvider(Printer, 1, &m_provider), S_OK);
    }
    void TearDown() override {
        EXPECT_EQ(PTCloseProvider(m_provider), S_OK);
        QueueRegistry::Clear();
    }

    HPTPROVIDER m_provider = nullptr;
};

TEST_F(Provider, OpensVersionOneOnly) {
    constexpr HRESULT NoVersion = static_cast<HRESULT>(0x80040001);
    DWORD version = 0;
    EXPECT_EQ(PTQuerySchemaVersionSupport(Printer, &version), S_OK);
    EXPECT_EQ(version, 1u);
    HPTPROVIDER provider = nullptr;
    EXPECT_EQ(PTOpenProvider(Printer, 0, &provider), E_INVALIDARG);
    EXPECT_EQ(PTOpenProvider(Printer, 2, &provider), NoVersion);
    EXPECT_EQ(PTOpenProviderEx(Printer, 0, 1, &provider, &version), E_INVALIDARG);
    EXPECT_EQ(PTOpenProviderEx(Printer, 1, 1, &provider, nullptr), E_INVALIDARG);
    version = 0;
    EXPECT_EQ(PTOpenProviderEx(Printer, 7, 0, &provider, &version), S_OK);
    EXPECT_EQ(version, 1u);
    EXPECT_EQ(PTCloseProvider(provider), S_OK);

    const HRESULT noPrinter = HRESULT_FROM_WIN32(ERROR_INVALID_PRINTER_NAME);
    EXPECT_EQ(PTQuerySchemaVersionSupport(L"Nowhere", &version), noPrinter);
    EXPECT_EQ(PTOpenProvider(L"Nowhere", 1, &provider), noPrinter);
    EXPECT_EQ(PTOpenProviderEx(L"Nowhere", 1, 1, &provider, &version), noPrinter);
}

TEST_F(Provider, IsKnownToItsThreadOnly) {
    HPTPROVIDER other = nullptr;
    ASSERT_EQ(PTOpenProvider(Printer, 1, &other), S_OK);
    EXPECT_EQ(PTCloseProvider(other), S_OK);
    EXPECT_EQ(PTCloseProvider(other), E_HANDLE);
    EXPECT_EQ(PTCloseProvider(nullptr), E_HANDLE);

    CComPtr<IStream> result = Stream("");
    std::thread([&] {
        EXPECT_EQ(PTCloseProvider(m_provider), E_HANDLE);
        EXPECT_EQ(PTMergeAndValidatePrintTicket(m_provider, Stream(Ticket("")), nullptr, kPTJobScope, result,
                                                nullptr),
                  E_HANDLE);
        EXPECT_EQ(PTGetPrintCapabilities(m_provider, nullptr, result, nullptr), E_HANDLE);
    }).join();
    EXPECT_EQ(
        PTMergeAndValidatePrintTicket(m_provider, Stream(Ticket("")), nullptr, kPTJobScope, result, nullptr),
        static_cast<HRESULT>(S_PT_NO_CONFLICT));
}

// What a handle holds on to is the queue, so that tells whether it is open.
TEST(ProviderHandles, LeaveNothingBehindWhereTheyAreClosedOnAnotherThread) {
    std::shared_ptr<const QueueFolder> queue = Queue();
    QueueRegistry::Add(queue);
    const auto open = [] {
        HPTPROVIDER provider = nullptr;
        EXPECT_EQ(PTOpenProvider(Printer, 1, &provider), S_OK);
        return provider;
    };
    const auto onAnotherThread = [](const auto& work) { std::thread(work).join(); };
    const long closed = queue.use_count();

    HPTPROVIDER provider = nullptr;
    onAnotherThread([&] { provider = open(); });
    EXPECT_EQ(queue.use_count(), closed) << "its thread has ended";
    EXPECT_EQ(PTCloseProvider(provider), E_HANDLE);

    const auto openAndCloseElsewhere = [&] {
        const HPTPROVIDER own = open();
        onAnotherThread([&] { EXPECT_EQ(PTCloseProvider(own), E_HANDLE); });
    };
    HPTPROVIDER last = open();
    const long one = queue.use_count();
    for (int i = 0; i < 100; ++i)
        openAndCloseElsewhere();
    EXPECT_EQ(PTCloseProvider(last), S_OK) << "nobody let go of this one";
    last = open();
    EXPECT_EQ(queue.use_count(), one);
    EXPECT_EQ(PTCloseProvider(last), S_OK);
    EXPECT_EQ(queue.use_count(), closed);
    QueueRegistry::Clear();
}

TEST_F(Provider, ReadsFromWhereStreamsStandAndLeavesTheResultAtItsEnd) {
    const std::string junk = "not XML";
    const CComPtr<IStream> base = Stream(junk + Ticket(Feature("PageOrientation", "Landscape")));
    const CComPtr<IStream> delta = Stream(junk + Ticket(Parameter("JobCopiesAllDocuments", "1000")));
    LARGE_INTEGER offset{};
    offset.QuadPart = static_cast<LONGLONG>(junk.size());
    base->Seek(offset, STREAM_SEEK_SET, nullptr);
    delta->Seek(offset, STREAM_SEEK_SET, nullptr);
    const CComPtr<IStream> result = Stream("");
    result->Write("head", 4, nullptr);

    const MergeCounts counts = PrintTicketMerge::Counts();
    BSTR error = SysAllocString(L"left over"); // the caller's own, overwritten
    const BSTR before = error;
    EXPECT_EQ(PTMergeAndValidatePrintTicket(m_provider, base, delta, kPTJobScope, result, &error),
              static_cast<HRESULT>(S_PT_CONFLICT_RESOLVED));
    EXPECT_EQ(error, nullptr);
    SysFreeString(before);
    const std::uint64_t end = Position(result);
    const std::string written = All(result);
    EXPECT_EQ(end, written.size());
    EXPECT_TRUE(written.starts_with("head<?xml"));
    EXPECT_EQ(PrintTicketMerge::Counts().merges, counts.merges + 1);
    EXPECT_EQ(PrintTicketMerge::Counts().conflictsResolved, counts.conflictsResolved + 1);
    EXPECT_EQ(EffectiveOf(written, "PageOrientation"), "Landscape");
}

TEST_F(Provider, TakesDomDocumentsAsStreams) {
    ASSERT_GE(CoInitializeEx(nullptr, COINIT_MULTITHREADED), S_OK);
    const auto document = [](const std::wstring& xml) {
        CComPtr<IXMLDOMDocument2> dom;
        EXPECT_EQ(dom.CoCreateInstance(__uuidof(DOMDocument60)), S_OK);
        VARIANT_BOOL loaded = VARIANT_FALSE;
        if (!xml.empty()) {
            EXPECT_EQ(dom->loadXML(CComBSTR(xml.c_str()), &loaded), S_OK);
        }
        return dom;
    };
    const std::string ascii = Ticket(Feature("PageOrientation", "Landscape"));
    CComPtr<IXMLDOMDocument2> base = document(std::wstring(ascii.begin(), ascii.end())),
                              result = document(L"");
    CComPtr<IStream> from, to;
    ASSERT_EQ(base->QueryInterface(__uuidof(IStream), reinterpret_cast<void**>(&from)), S_OK);
    ASSERT_EQ(result->QueryInterface(__uuidof(IStream), reinterpret_cast<void**>(&to)), S_OK);
    EXPECT_EQ(PTMergeAndValidatePrintTicket(m_provider, from, nullptr, kPTPageScope, to, nullptr),
              static_cast<HRESULT>(S_PT_NO_CONFLICT));
    from.Release();
    to.Release();
    CComBSTR xml;
    ASSERT_EQ(result->get_xml(&xml), S_OK);
    EXPECT_NE(std::wstring(xml).find(L"psk:Landscape"), std::wstring::npos);
    base.Release();
    result.Release();
    CoUninitialize();
}

TEST_F(Provider, GivesCodeAndTextForABadInputAndStaysUsable) {
    const CComPtr<IStream> result = Stream("");
    BSTR error = nullptr;
    EXPECT_EQ(PTMergeAndValidatePrintTicket(m_provider, Stream("<x/>"), Stream(Ticket("")), kPTJobScope,
                                            result, &error),
              static_cast<HRESULT>(E_PRINTTICKET_FORMAT));
    ASSERT_NE(error, nullptr);
    EXPECT_TRUE(std::wstring(error).starts_with(L"the base ticket: line 1, /x: "));
    SysFreeString(error);
    EXPECT_EQ(PTMergeAndValidatePrintTicket(m_provider, Stream(Ticket("")), Stream("<x/>"), kPTJobScope,
                                            result, nullptr),
              static_cast<HRESULT>(E_DELTA_PRINTTICKET_FORMAT));
    EXPECT_EQ(Position(result), 0u);
    EXPECT_EQ(PTMergeAndValidatePrintTicket(m_provider, nullptr, nullptr, kPTJobScope, result, nullptr),
              E_INVALIDARG);
    EXPECT_EQ(PTMergeAndValidatePrintTicket(m_provider, Stream(Ticket("")), nullptr,
                                            static_cast<EPrintTicketScope>(3), result, nullptr),
              E_INVALIDARG);
    EXPECT_EQ(
        PTMergeAndValidatePrintTicket(m_provider, Stream(Ticket("")), nullptr, kPTPageScope, result, nullptr),
        static_cast<HRESULT>(S_PT_NO_CONFLICT));
}

TEST_F(Provider, SaysWhatIsWrongWithAQueueWhenItIsNeeded) {
    QueueRegistry::Add(Queue("<x/>"));
    HPTPROVIDER broken = nullptr;
    ASSERT_EQ(PTOpenProvider(Printer, 1, &broken), S_OK);
    const CComPtr<IStream> result = Stream("");
    BSTR error = nullptr;
    EXPECT_EQ(PTGetPrintCapabilities(broken, nullptr, result, &error),
              static_cast<HRESULT>(E_PRINTCAPABILITIES_FORMAT));
    ASSERT_NE(error, nullptr);
    EXPECT_TRUE(std::wstring(error).starts_with(L"the queue's capabilities: "));
    SysFreeString(error);
    EXPECT_EQ(PTCloseProvider(broken), S_OK);
}

TEST_F(Provider, PassesOnAFailingPlatformCall) {
    const CComPtr<IStream> base = Stream(Ticket("")), result = Stream("");
    const auto run = [&] {
        LARGE_INTEGER start{};
        const HRESULT seek = base->Seek(start, STREAM_SEEK_SET, nullptr);
        return FAILED(seek)
                   ? seek
                   : PTMergeAndValidatePrintTicket(m_provider, base, nullptr, kPTJobScope, result, nullptr);
    };
    FaultInjection::CountCalls();
    ASSERT_EQ(run(), static_cast<HRESULT>(S_PT_NO_CONFLICT));
    const LONG calls = FaultInjection::CallCount();
    ASSERT_GT(calls, 2);
    for (LONG call = 1; call <= calls; ++call) {
        const FaultInjectionScope fault(call, STG_E_ACCESSDENIED);
        EXPECT_EQ(run(), STG_E_ACCESSDENIED) << call;
    }
}

} // namespace
