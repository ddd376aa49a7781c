#include "FilterUtilities/PrintSchema/TicketSupport.h"

#include <PrintSchema/PrintTicketQueryBuilder.h>

namespace {

using Step = std::function<void(PrintTicketQueryBuilder&)>;

std::string QueryOf(const PrintTicketQueryBuilder& builder) {
    CComBSTR query;
    EXPECT_EQ(builder.GetQuery(&query), S_OK);
    return TextOf(query);
}

TEST(PrintTicketQueryBuilder, JoinsItsSteps) {
    const struct {
        std::vector<Step> steps;
        const char* query;
    } cases[] = {
        {{}, "(null)"},
        {{[](auto& b) { b.AddFeature(L"psk:", L"PageMediaSize"); }},
         "//f:Feature[@name = \"psk:PageMediaSize\"]"},
        {{[](auto& b) { b.AddFeature(nullptr, L"psk:PageMediaSize"); }, [](auto& b) { b.AddOption(); }},
         "//f:Feature[@name = \"psk:PageMediaSize\"]/f:Option"},
        {{[](auto& b) { b.AddFeature(L"", L"A"); }, [](auto& b) { b.AddFeature(L"p:", L"B"); },
          [](auto& b) { b.AddScoredProperty(L"p:", L"C"); }, [](auto& b) { b.AddValue(); }},
         "//f:Feature[@name = \"A\"]//f:Feature[@name = \"p:B\"]//f:ScoredProperty[@name = \"p:C\"]/f:Value"},
        {{[](auto& b) { b.AddProperty(L"p:", L"A"); }, [](auto& b) { b.AddChildProperty(L"p:", L"B"); },
          [](auto& b) { b.AddChildPropertyValue(L"p:", L"C"); }},
         "//f:Property[@name = \"p:A\"]/f:Property[@name = \"p:B\"]/f:Property[@name = \"p:C\"]/f:Value"},
        {{[](auto& b) { b.AddParameterRef(L"p:", L"A"); }, [](auto& b) { b.AddParameterDef(L"p:", L"B"); },
          [](auto& b) { b.AddParameterInit(L"p:", L"C"); },
          [](auto& b) { b.AddChildOptionName(L"p:", L"D"); }},
         "//f:ParameterRef[@name = \"p:A\"]//f:ParameterDef[@name = \"p:B\"]"
         "//f:ParameterInit[@name = \"p:C\"]/f:Option[@name = \"p:D\"]"},
    };
    for (const auto& expected : cases) {
        PrintTicketQueryBuilder builder(L"f:");
        for (const Step& step : expected.steps)
            step(builder);
        EXPECT_EQ(QueryOf(builder), expected.query);
    }
}

TEST(PrintTicketQueryBuilder, GoesOnFromAQueryAndStartsOver) {
    PrintTicketQueryBuilder builder(L"psf:", L"//here");
    PrintTicketQueryBuilder copy(builder);
    builder.AddOption();
    EXPECT_EQ(QueryOf(builder), "//here/psf:Option");
    EXPECT_EQ(QueryOf(copy), "//here");
    builder.Clear();
    EXPECT_EQ(QueryOf(builder), "(null)");
    builder.AddValue();
    EXPECT_EQ(QueryOf(builder), "/psf:Value");
    copy = builder;
    copy.AddValue();
    EXPECT_EQ(QueryOf(copy), "/psf:Value/psf:Value");
}

TEST(PrintTicketQueryBuilder, NeedsAFrameworkPrefix) {
    for (const wchar_t* prefix : {static_cast<const wchar_t*>(nullptr), L""}) {
        PrintTicketQueryBuilder builder(prefix, L"//here");
        ExpectRaised([&] { builder.AddFeature(L"psk:", L"A"); }, E_FAIL,
                     "PrintTicketQueryBuilder::AddFeature");
        ExpectRaised([&] { builder.AddOption(); }, E_FAIL, "PrintTicketQueryBuilder::AddOption");
        EXPECT_EQ(QueryOf(builder), "//here");
    }
    ExpectRaised([] { PrintTicketQueryBuilder(L"psf:").GetQuery(nullptr); }, E_POINTER,
                 "PrintTicketQueryBuilder::GetQuery");
}

} // namespace
