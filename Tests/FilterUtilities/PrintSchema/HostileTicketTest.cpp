// Tickets that somebody else made, with malice or by accident, and platforms that fail at any moment.

#include "TicketSupport.h"

#include <ComSupport/ThrowHresult.h>
#include <PrintSchema/DomDocumentCache.h>

#include "Com/FaultInjection.h"

#include <chrono>

namespace {

std::string Repeated(const std::string& text, int count) {
    std::string all;
    all.reserve(text.size() * static_cast<std::size_t>(count));
    for (int index = 0; index < count; ++index)
        all += text;
    return all;
}

double SecondsOf(const std::function<void()>& operation) {
    const auto start = std::chrono::steady_clock::now();
    operation();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

// What a filter does with a ticket; every result is as good as the other.
void Use(PrintTicketXmlDocument& ticket) {
    CComBSTR option;
    CComBSTR prefix;
    CXString text;
    int number = 0;
    ticket.GetFeatureOption(L"psk:", L"PageMediaSize", &option, &prefix);
    ticket.GetScoredPropertyValue(L"PageMediaSize", true, L"MediaSizeWidth", &number);
    ticket.GetStringParameterInitValue(L"psk:", L"Copies", text);
    ticket.SetFeatureOption(L"PageMediaSize", true, L"ISOA5", true);
    ticket.SetScoredPropertyValue(L"PageMediaSize", true, L"MediaSizeWidth", 148000);
    ticket.AppendIntegerParameterInit(L"psk:", L"Copies", 2);
    ticket.AddOrReplaceOcptParameterInit(L"<a/>");
    ticket.DeleteFeatureNodeIfADuplicateExists(L"psk:", L"PageMediaSize");
    ticket.DeletePrivateFeatures(PrintSchema::USER_KEYWORDS_URI);
}

TEST(HostileTicket, LargeOnesTakeTimeInProportion) {
    const struct {
        const char* what;
        std::string xml;
    } cases[] = {
        {"100,000 features",
         Ticket(Repeated(Feature("my:A", "my:B"), 100000) + Feature("psk:PageMediaSize", "psk:ISOA4"),
                Declare("my", PrivateUri()))},
        {"10 MB of one value",
         Ticket(Feature("psk:PageMediaSize", "psk:ISOA4") + "<psf:ParameterInit name='psk:Copies'>" +
                Value(std::string(10 << 20, 'x')) + "</psf:ParameterInit>")},
        {"10,000 declarations",
         [] {
             std::string declarations;
             for (int index = 0; index < 10000; ++index)
                 declarations += Declare("p" + std::to_string(index), "urn:" + std::to_string(index));
             return Ticket(Repeated(Feature("p1:A", "p2:B"), 1000), declarations);
         }()},
    };
    for (const auto& hostile : cases) {
        SCOPED_TRACE(hostile.what);
        const double seconds = SecondsOf([&] {
            ResultOf([&] {
                OpenTicket ticket(hostile.xml);
                Use(ticket);
                CComPtr<IXMLDOMDocument2> copy;
                return CreateCopyOfIXMLDOMDocument(ticket.GetDomDocPtr(), &copy);
            });
        });
        // Generous, for sanitizers on a busy machine; what grows with the square takes minutes.
        EXPECT_LT(seconds, 60);
    }
}

TEST(HostileTicket, DeepOnesAreReadOrRefusedButNeverOverflow) {
    for (const int depth : {10, 200, 5000, 200000}) {
        const std::string xml = Ticket(Repeated("<psf:Feature name='psk:PageMediaSize'>", depth) +
                                       Repeated("</psf:Feature>", depth));
        const HRESULT hr = ResultOf([&] {
            OpenTicket ticket(xml);
            Use(ticket);
            return S_OK;
        });
        EXPECT_TRUE(hr == S_OK || hr == E_FAIL) << depth;
        if (depth <= 200) {
            EXPECT_EQ(hr, S_OK) << depth;
        }
    }
}

TEST(HostileTicket, NamesAreTextAndNotQueries) {
    OpenTicket ticket(Ticket(Feature("psk:A", "psk:B")));
    CComBSTR option;
    // Nothing is escaped: this is a broken query and reported as one.
    EXPECT_EQ(ResultOf([&] { return ticket.GetFeatureOption(L"psk:", L"A\"", &option, nullptr); }), E_FAIL);
    EXPECT_EQ(ticket.GetFeatureOption(L"psk:", L"'", &option, nullptr), elementNotFound);
}

TEST(HostileTicket, EveryFailureOfThePlatformIsRaisedOrReturned) {
    const std::string xml =
        Ticket(Feature("psk:PageMediaSize", "psk:ISOA4", ScoredProperty("psk:MediaSizeWidth", Value("1"))) +
                   Feature("my:A", "my:B") + Feature("psk:PageMediaSize", "psk:ISOA4"),
               Declare("my", PrivateUri()));
    const CComPtr<IStream> stream = StreamOf(xml);
    std::string outcome;
    const auto job = [&] {
        outcome.clear();
        PrintTicketXmlDocument ticket(stream.p);
        Use(ticket);
        ByteBuffer bytes(10);
        ThrowIfFailed(ticket.AddOrReplacePageOrvelCompleteDocSettingsInPrintTicket(bytes), "job");
        ThrowIfFailed(ticket.GetOrvelCompleteDocSettingsFromPrintTicket(bytes), "job");
        DomDocumentCache cache;
        ThrowIfFailed(cache.AddPrintSchemaDomToCache(L"a", ticket.GetDomDocPtr()), "job");
        CComBSTR text;
        ThrowIfFailed(ticket.get_xml(&text), "job");
        outcome = TextOf(text);
        return S_OK;
    };
    ASSERT_EQ(ResultOf(job), S_OK);
    const std::string undisturbed = outcome;
    LONG calls = 0;
    for (LONG number = 1;; ++number, ++calls) {
        const OvPlatform::FaultInjectionScope scope(number, E_ACCESSDENIED);
        HRESULT hr = S_OK;
        ASSERT_NO_THROW(hr = ResultOf(job)) << "call " << number;
        // Some calls only look for something better; without them the outcome is the same.
        if (hr == S_OK) {
            EXPECT_EQ(outcome, undisturbed) << "call " << number;
        }
        if (!OvPlatform::FaultInjection::HasFailed()) break;
        EXPECT_TRUE(hr == S_OK || FAILED(hr)) << "call " << number << " gave " << std::hex << hr;
    }
    EXPECT_GT(calls, 200);
}

} // namespace
