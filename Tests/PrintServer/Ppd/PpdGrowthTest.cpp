#include "PrintServer/QueueWith.h"
#include "Support/Growth.h"
#include "Support/InApartment.h"

#include <Ppd/PpdText.h>

using namespace OvPrintServer;

namespace {

// The printer has n ways to staple, and none of them for one of its papers.
std::function<void()> Describing(std::size_t n) {
    const auto name = [](std::size_t i) { return "psk:Growth" + std::to_string(i); };
    const auto queue =
        QueueWith(OfferedFeatureText("psk:JobStapleAllDocuments",
                                     Times(n, [&](std::size_t i) { return OfferedOptionText(name(i)); })) +
                  "<qc:Constraint xmlns:qc=\"urn:ov-platform:queue-constraints:1\"><qc:Choice "
                  "feature=\"psk:JobStapleAllDocuments\" "
                  "options=\"" +
                  Times(n, [&](std::size_t i) { return name(i) + " "; }) +
                  "\"/><qc:Choice feature=\"psk:PageMediaSize\" options=\"psk:ISOA4\"/></qc:Constraint>");
    return [offer = std::make_shared<QueueOffer>(queue)] {
        const std::string ppd = PpdText(*offer, {"/queues/one", {}});
        EXPECT_NE(ppd.find("*Stapling Growth1/"), std::string::npos);
        EXPECT_NE(ppd.find("*UIConstraints: *Stapling Growth1 *PageSize A4"), std::string::npos);
    };
}

const GrowthCase cases[] = {{"DescribesManyOptions", Describing, 40'000}};

class PpdGrowth : public InApartment<testing::TestWithParam<GrowthCase>> {};
TEST_P(PpdGrowth, IsInProportion) { ExpectLinearGrowth(GetParam()); }
INSTANTIATE_TEST_SUITE_P(, PpdGrowth, testing::ValuesIn(cases), GrowthName);

} // namespace
