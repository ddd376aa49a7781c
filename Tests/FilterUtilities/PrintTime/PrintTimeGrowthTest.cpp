#include "Support/FakePrinterPropertyBag.h"
#include "Support/Growth.h"
#include "Support/InApartment.h"

#include <PrintTime/PrintTimeUiHelper.h>

namespace {

// A queue whose device settings have so many items before the one that is asked for.
GrowthMaker Settings(Item item) {
    return [=](std::size_t n) {
        const std::string settings = Times(n, item) +
                                     "<odrv-device-secure-print-only>secure-print-only-enabled"
                                     "</odrv-device-secure-print-only>";
        const auto bag = MakeFake<FakePrinterPropertyBag>();
        const std::string document = "<q><OrvelDeviceSettings><![CDATA[<OrvelDeviceSettings>" + settings +
                                     "</OrvelDeviceSettings>]]></OrvelDeviceSettings></q>";
        bag->SetString(CComBSTR(L"OrvelQueueProperties"),
                       CComBSTR(std::wstring(document.begin(), document.end()).c_str()));
        return [bag] { EXPECT_TRUE(PrintTimeUiHelper::IsSecurePrintOnlyEnabled(bag)); };
    };
}

const GrowthCase cases[] = {
    {"LooksPastManySettings", Settings([](std::size_t i) { return "<s>" + std::to_string(i) + "</s>"; })},
    {"LooksPastTextAndNamespaces",
     Settings([](std::size_t i) { return "text <p:s xmlns:p='urn:" + std::to_string(i) + "'/><!-- -->"; })},
};

class PrintTimeGrowth : public InApartment<testing::TestWithParam<GrowthCase>> {};

TEST_P(PrintTimeGrowth, IsLinear) { ExpectLinearGrowth(GetParam()); }

INSTANTIATE_TEST_SUITE_P(, PrintTimeGrowth, testing::ValuesIn(cases), GrowthName);

} // namespace
