#include "FilterUtilities/PrintSchema/TicketSupport.h"
#include "Support/Growth.h"

#include <PrintSchema/DomDocumentCache.h>

namespace {

std::string PrivateFeature(std::size_t i) { return Feature("p:F" + std::to_string(i), "p:O"); }

// Private features in one private feature; the outer one goes first.
std::string NestedFeatures(std::size_t n) {
    return "<psf:Feature name='p:Outer'>" + Times(n, PrivateFeature) + "</psf:Feature>";
}

// Private features within one another, as deep as a document may be.
std::string DeepFeatures(std::size_t n) {
    constexpr std::size_t deep = 128;
    return Times(n / deep, [&](std::size_t) {
        return Times(deep, [](std::size_t) { return std::string("<psf:Feature name='p:F'>"); }) +
               Times(deep, [](std::size_t) { return std::string("</psf:Feature>"); });
    });
}

std::string Bytes(const std::string& content) { return Ticket(content, Declare("p", PrivateUri())); }

// An operation on a ticket of n items that is there.
GrowthMaker On(std::string (*content)(std::size_t), std::function<void(OpenTicket&)> operate) {
    return [=](std::size_t n) {
        auto ticket = std::make_shared<OpenTicket>(Bytes(content(n)));
        return [ticket, operate] { operate(*ticket); };
    };
}

std::string Features(std::size_t n) { return Times(n, PrivateFeature); }
std::string Properties(std::size_t n) {
    return Times(n,
                 [](std::size_t) { return "<psf:Property name='psk:P'>" + Value("1") + "</psf:Property>"; });
}

void DeletePrivate(OpenTicket& ticket) {
    EXPECT_EQ(S_OK, ticket.DeletePrivateFeatures(PrintSchema::USER_KEYWORDS_URI));
}

const GrowthCase cases[] = {
    {"ReadsFeaturesAndRenamesThem",
     [](std::size_t n) { return [bytes = Bytes(Features(n))] { OpenTicket ticket(bytes); }; }},
    {"LooksForAFeature", On(Features,
                            [](OpenTicket& ticket) {
                                EXPECT_NE(S_OK, ticket.FeaturePresent(L"Absent", true, nullptr));
                                XmlOf(ticket);
                            })},
    {"DeletesFeatures", On(Features, DeletePrivate)},
    {"DeletesFeaturesInAFeature", On(NestedFeatures, DeletePrivate)},
    {"DeletesFeaturesWithinOneAnother", On(DeepFeatures, DeletePrivate)},
    {"DeletesProperties",
     On(Properties, [](OpenTicket& ticket) { ticket.DeletePropertyNodesIfExist(L"psk:", L"P"); })},
    {"CopiesDocuments", On(Features, [](OpenTicket& ticket) { const OpenTicket copy(ticket); })},
    {"KeepsDocuments",
     [](std::size_t n) {
         CComPtr<IXMLDOMDocument2> document;
         EXPECT_EQ(S_OK, CreateIXMLDOMDocumentFromIStream(StreamOf(Ticket("")), &document));
         return [document, n] {
             DomDocumentCache cache;
             for (std::size_t i = 0; i < n; ++i) {
                 const CXString key(std::to_wstring(i).c_str());
                 EXPECT_EQ(S_OK, cache.AddPrintSchemaDomToCache(key, document));
                 CComPtr<IXMLDOMDocument2> copy;
                 EXPECT_EQ(S_OK, cache.TryGetPrintSchemaDomFromCache(key, &copy));
             }
         };
     }},
};

class DocumentGrowth : public testing::TestWithParam<GrowthCase> {};

TEST_P(DocumentGrowth, IsLinear) { ExpectLinearGrowth(GetParam()); }

INSTANTIATE_TEST_SUITE_P(, DocumentGrowth, testing::ValuesIn(cases), GrowthName);

} // namespace
