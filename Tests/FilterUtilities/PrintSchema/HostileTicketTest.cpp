// Tickets that somebody else made, with malice or by accident.

#include "FilterUtilities/PrintSchema/TicketSupport.h"
#include "Support/Growth.h"

#include <PrintSchema/DomDocumentCache.h>

namespace {

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

GrowthMaker Using(const Item& content, const Item& declarations) {
    return [=](std::size_t n) {
        const std::string size = Feature("psk:PageMediaSize", "psk:ISOA4");
        return [xml = Ticket(content(n) + size, Declare("my", PrivateUri()) + declarations(n))] {
            ResultOf([&] {
                OpenTicket ticket(xml);
                Use(ticket);
                CComPtr<IXMLDOMDocument2> copy;
                return CreateCopyOfIXMLDOMDocument(ticket.GetDomDocPtr(), &copy);
            });
        };
    };
}

TEST(HostileTicket, LargeOnesTakeTimeInProportion) {
    const Item none = [](std::size_t) { return std::string(); };
    const GrowthCase cases[] = {
        {"one value", Using(
                          [](std::size_t n) {
                              return "<psf:ParameterInit name='psk:Copies'>" +
                                     Value(std::string(n * 100, 'x')) + "</psf:ParameterInit>";
                          },
                          none)},
        {"declarations", Using(none,
                               [](std::size_t n) {
                                   return Times(n, [](std::size_t i) {
                                       return Declare("p" + std::to_string(i), "urn:" + std::to_string(i));
                                   });
                               })},
    };
    for (const GrowthCase& hostile : cases)
        ExpectLinearGrowth(hostile);
}

TEST(HostileTicket, DeepOnesAreReadOrRefusedButNeverOverflow) {
    for (const std::size_t depth : {10, 200, 5000, 200000}) {
        const std::string xml = Ticket(
            Times(depth, [](std::size_t) { return std::string("<psf:Feature name='psk:PageMediaSize'>"); }) +
            Times(depth, [](std::size_t) { return std::string("</psf:Feature>"); }));
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
    EXPECT_EQ(ticket.GetFeatureOption(L"psk:", L"'", &option, nullptr), E_ELEMENT_NOT_FOUND);
}

} // namespace
