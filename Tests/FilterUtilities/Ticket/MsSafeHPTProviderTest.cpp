#include "Support/FakePrinterPropertyBag.h"
#include "Support/FilterJob.h"
#include "Support/TicketText.h"

#include <ComSupport/MsSafeCoinit.h>
#include <LowLevelFacilities/Failures/CPComException.h>
#include <System/UserToken.h>
#include <Ticket/MsSafeHPTProvider.h>

#include <gtest/gtest.h>

#include <functional>
#include <string>

namespace {

struct MsSafeHPTProviderTest : testing::Test {
    const MsSafeCoInit apartment;
    SampleQueue queue;

    static CComPtr<IStream> StreamOf(const std::string& text) {
        CComPtr<IStream> stream;
        EXPECT_EQ(CreateStreamOnHGlobal(nullptr, TRUE, &stream), S_OK);
        EXPECT_EQ(stream->Write(text.data(), static_cast<ULONG>(text.size()), nullptr), S_OK);
        EXPECT_EQ(stream->Seek(LARGE_INTEGER{}, STREAM_SEEK_SET, nullptr), S_OK);
        return stream;
    }

    // The result and the text of what is thrown.
    static std::pair<HRESULT, std::string> FailureOf(const std::function<void()>& body) {
        try {
            body();
            return {S_OK, ""};
        } catch (const CPComException& failure) {
            return {failure.GetHresult(), failure.getExceptionMessage()};
        }
    }
};

TEST_F(MsSafeHPTProviderTest, MergesValidatesAndDescribes) {
    MsSafeHPTProvider provider(SampleQueue::name, nullptr);
    auto result = StreamOf("");
    provider.PTMergeAndValidatePrintTicket_throws(
        StreamOf(queue.DefaultTicket()), StreamOf(TicketText(Choice("psk:PageOrientation", "psk:Landscape"))),
        kPTPageScope, result);
    const std::string merged = ReadAll(result);
    EXPECT_NE(merged.find("psk:Landscape"), std::string::npos);
    EXPECT_EQ(merged.find("psk:Portrait"), std::string::npos);
    EXPECT_EQ(merged.find("psk:JobInputBin"), std::string::npos); // beyond the scope

    auto capabilities = StreamOf("");
    provider.PTGetPrintCapabilities_throws(nullptr, capabilities, nullptr);
    EXPECT_NE(ReadAll(capabilities).find("PrintCapabilities"), std::string::npos);
}

TEST_F(MsSafeHPTProviderTest, FailureTellsTheProvidersOwnWordsAndDoesNotBreakIt) {
    MsSafeHPTProvider provider(SampleQueue::name, nullptr);
    auto result = StreamOf("");
    const auto merge = [&](const CComPtr<IStream>& base, const CComPtr<IStream>& delta) {
        return FailureOf(
            [&] { provider.PTMergeAndValidatePrintTicket_throws(base, delta, kPTJobScope, result); });
    };
    const auto badDelta = merge(StreamOf(queue.DefaultTicket()), StreamOf("<nothing/>"));
    EXPECT_EQ(badDelta.first, static_cast<HRESULT>(E_DELTA_PRINTTICKET_FORMAT));
    EXPECT_TRUE(badDelta.second.starts_with("CPComException: Error details: ")) << badDelta.second;
    EXPECT_EQ(badDelta.second.find("(None)"), std::string::npos);

    EXPECT_EQ(merge(StreamOf("no xml"), nullptr).first, static_cast<HRESULT>(E_PRINTTICKET_FORMAT));

    const auto noBase = merge(nullptr, nullptr); // the provider has nothing to say of that
    EXPECT_TRUE(FAILED(noBase.first));
    EXPECT_EQ(noBase.second, "CPComException: Error details: (None).");

    auto capabilities = StreamOf("");
    EXPECT_TRUE(FAILED(FailureOf([&] {
                           provider.PTGetPrintCapabilities_throws(StreamOf("<nothing/>"), capabilities,
                                                                  nullptr);
                       }).first));

    EXPECT_EQ(merge(StreamOf(queue.DefaultTicket()), nullptr).first, S_OK);
}

// A stream that remembers as whom it was written to.
class WitnessStream : public FakePropertyStream {
public:
    WitnessStream() : FakePropertyStream(std::make_shared<std::string>(), Trouble::None) {}

    HANDLE token = nullptr;
    HRESULT writeResult = S_OK;

    HRESULT STDMETHODCALLTYPE Write(const void* bytes, ULONG count, ULONG* written) override {
        token = OvPlatform::ThreadToken();
        return FAILED(writeResult) ? writeResult : FakePropertyStream::Write(bytes, count, written);
    }
};

TEST_F(MsSafeHPTProviderTest, WorksAsTheUserAndStopsToAlsoAfterAFailure) {
    const HANDLE token = OvPlatform::CreateUserToken(L"ada");
    {
        MsSafeHPTProvider provider(SampleQueue::name, token);
        EXPECT_EQ(OvPlatform::ThreadToken(), nullptr);
        using Operation = std::function<void(CComPtr<IStream>&)>;
        for (const Operation& operation :
             {Operation([&](CComPtr<IStream>& out) {
                  provider.PTMergeAndValidatePrintTicket_throws(StreamOf(queue.DefaultTicket()), nullptr,
                                                                kPTJobScope, out);
              }),
              Operation([&](CComPtr<IStream>& out) {
                  provider.PTGetPrintCapabilities_throws(nullptr, out, nullptr);
              })}) {
            for (const HRESULT writeResult : {S_OK, E_ACCESSDENIED}) {
                const auto witness = MakeFake<WitnessStream>();
                witness->writeResult = writeResult;
                CComPtr<IStream> stream(witness);
                EXPECT_EQ(FailureOf([&] { operation(stream); }).first, writeResult);
                EXPECT_EQ(witness->token, token);
                EXPECT_EQ(OvPlatform::ThreadToken(), nullptr);
            }
        }
    }
    CloseHandle(token);
    EXPECT_EQ(FailureOf([] { MsSafeHPTProvider provider(SampleQueue::name, INVALID_HANDLE_VALUE); }).first,
              HRESULT_FROM_WIN32(ERROR_INVALID_HANDLE));
    const auto failure = FailureOf([] { MsSafeHPTProvider provider(L"No such printer", nullptr); });
    EXPECT_EQ(failure.first, HRESULT_FROM_WIN32(ERROR_INVALID_PRINTER_NAME));
    EXPECT_EQ(failure.second, "CPComException: MsSafeHPTProvider::MsSafeHPTProvider");
}

} // namespace
