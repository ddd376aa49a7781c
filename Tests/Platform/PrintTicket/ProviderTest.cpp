#include "Platform/PrintTicket/TicketFixture.h"
#include "Support/InApartment.h"
#include "Support/MemoryStreams.h"

#include <Com/FaultInjection.h>
#include <Spooler/QueueRegistry.h>

#include <atlcomcli.h>
#include <gtest/gtest.h>
#include <msxml6.h>
#include <prntvpt.h>

#include <thread>

using namespace OvPlatform;
using namespace TicketFixture;

namespace {

constexpr wchar_t printer[] = L"Ticket Test";

CComPtr<IStream> Stream(const std::string& bytes, std::size_t position = 0) {
    CComPtr<IStream> stream;
    EXPECT_EQ(CreateStreamOnHGlobal(nullptr, TRUE, &stream), S_OK);
    EXPECT_EQ(stream->Write(bytes.data(), static_cast<ULONG>(bytes.size()), nullptr), S_OK);
    LARGE_INTEGER start{};
    start.QuadPart = static_cast<LONGLONG>(position);
    EXPECT_EQ(stream->Seek(start, STREAM_SEEK_SET, nullptr), S_OK);
    return stream;
}

std::uint64_t Position(IStream* stream) {
    ULARGE_INTEGER position{};
    EXPECT_EQ(stream->Seek({}, STREAM_SEEK_CUR, &position), S_OK);
    return position.QuadPart;
}

class Provider : public InApartment<> {
protected:
    void SetUp() override {
        QueueRegistry::Add(Queue());
        ASSERT_EQ(PTOpenProvider(printer, 1, &m_provider), S_OK);
    }
    void TearDown() override {
        EXPECT_EQ(PTCloseProvider(m_provider), S_OK);
        QueueRegistry::Clear();
    }

    HRESULT Merge(IStream* base, IStream* delta, IStream* result, BSTR* error = nullptr,
                  EPrintTicketScope scope = kPTJobScope) {
        return PTMergeAndValidatePrintTicket(m_provider, base, delta, scope, result, error);
    }

    static constexpr HRESULT noConflict = static_cast<HRESULT>(S_PT_NO_CONFLICT);
    HPTPROVIDER m_provider = nullptr;
};

// The text that a failure came with, which is the caller's to free.
std::wstring Taken(BSTR error) {
    const std::wstring text = error == nullptr ? L"none" : error;
    SysFreeString(error);
    return text;
}

TEST_F(Provider, OpensVersionOneOnly) {
    constexpr HRESULT noVersion = static_cast<HRESULT>(0x80040001);
    DWORD version = 0;
    EXPECT_EQ(PTQuerySchemaVersionSupport(printer, &version), S_OK);
    EXPECT_EQ(version, 1u);
    HPTPROVIDER provider = nullptr;
    EXPECT_EQ(PTOpenProvider(printer, 0, &provider), E_INVALIDARG);
    EXPECT_EQ(PTOpenProvider(printer, 2, &provider), noVersion);
    EXPECT_EQ(PTOpenProviderEx(printer, 1, 1, &provider, nullptr), E_INVALIDARG);
    version = 0;
    EXPECT_EQ(PTOpenProviderEx(printer, 7, 0, &provider, &version), S_OK);
    EXPECT_EQ(version, 1u);
    EXPECT_EQ(PTCloseProvider(provider), S_OK);

    const HRESULT noPrinter = HRESULT_FROM_WIN32(ERROR_INVALID_PRINTER_NAME);
    EXPECT_EQ(PTQuerySchemaVersionSupport(L"Nowhere", &version), noPrinter);
    EXPECT_EQ(PTOpenProvider(L"Nowhere", 1, &provider), noPrinter);
    EXPECT_EQ(PTOpenProviderEx(L"Nowhere", 1, 1, &provider, &version), noPrinter);
}

TEST_F(Provider, IsKnownToItsThreadOnly) {
    HPTPROVIDER other = nullptr;
    ASSERT_EQ(PTOpenProvider(printer, 1, &other), S_OK);
    EXPECT_EQ(PTCloseProvider(other), S_OK);
    EXPECT_EQ(PTCloseProvider(other), E_HANDLE);
    EXPECT_EQ(PTCloseProvider(nullptr), E_HANDLE);

    CComPtr<IStream> result = Stream("");
    std::thread([&] {
        EXPECT_EQ(PTCloseProvider(m_provider), E_HANDLE);
        EXPECT_EQ(Merge(Stream(Ticket("")), nullptr, result), E_HANDLE);
        EXPECT_EQ(PTGetPrintCapabilities(m_provider, nullptr, result, nullptr), E_HANDLE);
    }).join();
    EXPECT_EQ(Merge(Stream(Ticket("")), nullptr, result), noConflict);
}

// What a handle holds on to is the queue, so that tells whether it is open.
TEST(ProviderHandles, LeaveNothingBehindWhereTheyAreClosedOnAnotherThread) {
    std::shared_ptr<const QueueFolder> queue = Queue();
    QueueRegistry::Add(queue);
    const auto open = [] {
        HPTPROVIDER provider = nullptr;
        EXPECT_EQ(PTOpenProvider(printer, 1, &provider), S_OK);
        return provider;
    };
    const auto onAnotherThread = [](const auto& work) { std::thread(work).join(); };
    const long closed = queue.use_count();

    HPTPROVIDER provider = nullptr;
    onAnotherThread([&] { provider = open(); });
    EXPECT_EQ(queue.use_count(), closed) << "its thread has ended";
    EXPECT_EQ(PTCloseProvider(provider), E_HANDLE);

    HPTPROVIDER last = open();
    const long one = queue.use_count();
    for (int i = 0; i < 10; ++i) {
        const HPTPROVIDER own = open();
        onAnotherThread([&] { EXPECT_EQ(PTCloseProvider(own), E_HANDLE); });
    }
    EXPECT_EQ(PTCloseProvider(last), S_OK) << "nobody let go of this one";
    last = open();
    EXPECT_EQ(queue.use_count(), one);
    EXPECT_EQ(PTCloseProvider(last), S_OK);
    EXPECT_EQ(queue.use_count(), closed);
    QueueRegistry::Clear();
}

TEST_F(Provider, ReadsFromWhereStreamsStandAndLeavesTheResultAtItsEnd) {
    const std::string junk = "not XML";
    const auto base = Stream(junk + Ticket(Feature("PageOrientation", "Landscape")), junk.size());
    const auto delta = Stream(junk + Ticket(Parameter("JobCopiesAllDocuments", "1000")), junk.size());
    const auto result = Stream("head", 4);

    const MergeCounts counts = PrintTicketMerge::Counts();
    BSTR error = SysAllocString(L"left over"); // the caller's own, overwritten
    const BSTR before = error;
    EXPECT_EQ(Merge(base, delta, result, &error), static_cast<HRESULT>(S_PT_CONFLICT_RESOLVED));
    EXPECT_EQ(error, nullptr);
    SysFreeString(before);
    const std::uint64_t end = Position(result);
    const std::string written = ReadAll(result);
    EXPECT_EQ(end, written.size());
    EXPECT_TRUE(written.starts_with("head<?xml"));
    EXPECT_EQ(PrintTicketMerge::Counts().merges, counts.merges + 1);
    EXPECT_EQ(PrintTicketMerge::Counts().conflictsResolved, counts.conflictsResolved + 1);
    EXPECT_EQ(EffectiveOf(written, "PageOrientation"), "Landscape");
}

TEST_F(Provider, TakesDomDocumentsAsStreams) {
    const std::string ticket = Ticket(Feature("PageOrientation", "Landscape"));
    CComPtr<IXMLDOMDocument2> base, result;
    ASSERT_EQ(base.CoCreateInstance(__uuidof(DOMDocument60)), S_OK);
    ASSERT_EQ(result.CoCreateInstance(__uuidof(DOMDocument60)), S_OK);
    VARIANT_BOOL loaded = VARIANT_FALSE;
    ASSERT_EQ(base->loadXML(CComBSTR(std::wstring(ticket.begin(), ticket.end()).c_str()), &loaded), S_OK);
    EXPECT_EQ(Merge(CComQIPtr<IStream>(base.p), nullptr, CComQIPtr<IStream>(result.p)), noConflict);
    CComBSTR xml;
    ASSERT_EQ(result->get_xml(&xml), S_OK);
    EXPECT_NE(std::wstring(xml).find(L"psk:Landscape"), std::wstring::npos);
}

TEST_F(Provider, GivesCodeAndTextForABadInputAndStaysUsable) {
    const CComPtr<IStream> result = Stream("");
    BSTR error = nullptr;
    EXPECT_EQ(Merge(Stream("<x/>"), Stream(Ticket("")), result, &error),
              static_cast<HRESULT>(E_PRINTTICKET_FORMAT));
    EXPECT_TRUE(Taken(error).starts_with(L"the base ticket: line 1, /x: "));
    EXPECT_EQ(Merge(Stream(Ticket("")), Stream("<x/>"), result),
              static_cast<HRESULT>(E_DELTA_PRINTTICKET_FORMAT));
    EXPECT_EQ(Position(result), 0u);
    EXPECT_EQ(Merge(nullptr, nullptr, result), E_INVALIDARG);
    EXPECT_EQ(Merge(Stream(Ticket("")), nullptr, result, nullptr, static_cast<EPrintTicketScope>(3)),
              E_INVALIDARG);
    EXPECT_EQ(Merge(Stream(Ticket("")), nullptr, result, nullptr, kPTPageScope), noConflict);

    // What is wrong with a queue is said when it is needed.
    QueueRegistry::Add(Queue("<x/>"));
    HPTPROVIDER broken = nullptr;
    ASSERT_EQ(PTOpenProvider(printer, 1, &broken), S_OK);
    EXPECT_EQ(PTGetPrintCapabilities(broken, nullptr, result, &error),
              static_cast<HRESULT>(E_PRINTCAPABILITIES_FORMAT));
    EXPECT_TRUE(Taken(error).starts_with(L"the queue's capabilities: "));
    EXPECT_EQ(PTCloseProvider(broken), S_OK);
}

TEST_F(Provider, PassesOnAFailingPlatformCall) {
    const CComPtr<IStream> base = Stream(Ticket("")), result = Stream("");
    const auto run = [&] {
        const HRESULT seek = base->Seek({}, STREAM_SEEK_SET, nullptr);
        return FAILED(seek) ? seek : Merge(base, nullptr, result);
    };
    FaultInjection::CountCalls();
    ASSERT_EQ(run(), noConflict);
    const LONG calls = FaultInjection::CallCount();
    ASSERT_GT(calls, 2);
    for (LONG call = 1; call <= calls; ++call) {
        const FaultInjectionScope fault(call, STG_E_ACCESSDENIED);
        EXPECT_EQ(run(), STG_E_ACCESSDENIED) << call;
    }
}

} // namespace
