#include "FilterUtilities/PrintSchema/TicketSupport.h"

#include <PrintSchema/PrintTicketQueryBuilder.h>

namespace {

std::string QueryOf(const PrintTicketQueryBuilder& builder) {
    CComBSTR query;
    EXPECT_EQ(builder.GetQuery(&query), S_OK);
    return TextOf(query);
}

TEST(PrintTicketQueryBuilder, JoinsItsSteps) {
    PrintTicketQueryBuilder properties(L"f:");
    EXPECT_EQ(QueryOf(properties), "(null)");
    properties.AddProperty(L"p:", L"A");
    properties.AddChildProperty(L"p:", L"B");
    properties.AddChildPropertyValue(L"p:", L"C");
    EXPECT_EQ(
        QueryOf(properties),
        "//f:Property[@name = \"p:A\"]/f:Property[@name = \"p:B\"]/f:Property[@name = \"p:C\"]/f:Value");
    PrintTicketQueryBuilder features(L"f:");
    features.AddFeature(nullptr, L"psk:A");
    features.AddFeature(L"p:", L"B");
    features.AddScoredProperty(L"p:", L"C");
    EXPECT_EQ(
        QueryOf(features),
        "//f:Feature[@name = \"psk:A\"]//f:Feature[@name = \"p:B\"]//f:ScoredProperty[@name = \"p:C\"]");
    PrintTicketQueryBuilder parameters(L"f:");
    parameters.AddParameterRef(L"p:", L"A");
    parameters.AddParameterDef(L"p:", L"B");
    parameters.AddParameterInit(L"p:", L"C");
    parameters.AddChildOptionName(L"p:", L"D");
    EXPECT_EQ(QueryOf(parameters), "//f:ParameterRef[@name = \"p:A\"]//f:ParameterDef[@name = \"p:B\"]"
                                   "//f:ParameterInit[@name = \"p:C\"]/f:Option[@name = \"p:D\"]");
}

TEST(PrintTicketQueryBuilder, GoesOnFromAQueryAndStartsOver) {
    PrintTicketQueryBuilder builder(L"psf:", L"//here");
    const PrintTicketQueryBuilder copy(builder);
    builder.AddOption();
    EXPECT_EQ(QueryOf(builder), "//here/psf:Option");
    EXPECT_EQ(QueryOf(copy), "//here");
    builder.Clear();
    EXPECT_EQ(QueryOf(builder), "(null)");
    builder.AddValue();
    EXPECT_EQ(QueryOf(builder), "/psf:Value");
}

TEST(PrintTicketQueryBuilder, NeedsAFrameworkPrefix) {
    PrintTicketQueryBuilder builder(L"", L"//here");
    ExpectRaised([&] { builder.AddFeature(L"psk:", L"A"); }, E_FAIL, "PrintTicketQueryBuilder::AddFeature");
    EXPECT_EQ(QueryOf(builder), "//here");
    ExpectRaised([] { PrintTicketQueryBuilder(L"psf:").GetQuery(nullptr); }, E_POINTER,
                 "PrintTicketQueryBuilder::GetQuery");
}

} // namespace
