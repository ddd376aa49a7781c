#include "Support/Growth.h"
#include "Support/TemporaryFolder.h"

#include <Spooler/QueueFolder.h>

using namespace OvPlatform;

namespace {

GrowthMaker Folder(const char* section, Item item) {
    return [=](std::size_t n) {
        auto folder = std::make_shared<TemporaryFolder>();
        folder->Write("ticket.xml", "<PrintTicket/>");
        folder->Write("capabilities.xml", "<PrintCapabilities/>");
        folder->Write("queue.xml",
                      "<Queue version=\"1\"><Printer name=\"P\" port=\"LPT1:\" driver=\"D\"/>"
                      "<DefaultTicket file=\"ticket.xml\"/><Capabilities file=\"capabilities.xml\"/><" +
                          std::string(section) + ">" + Times(n, item) + "</" + section + "></Queue>");
        return [folder] { QueueFolder::Load(folder->Path()); };
    };
}

const GrowthCase cases[] = {
    {"LoadsManyProperties",
     Folder("DriverProperties",
            [](std::size_t i) { return "<String name=\"n" + std::to_string(i) + "\">text</String>\n"; }),
     1'000},
    {"LoadsManyJobs",
     Folder("Jobs",
            [](std::size_t i) {
                return "<Job id=\"" + std::to_string(i + 1) + "\" document=\"d\" user=\"u\"/>\n";
            }),
     2'500},
};

class QueueFolderGrowth : public testing::TestWithParam<GrowthCase> {};

TEST_P(QueueFolderGrowth, IsLinear) { ExpectLinearGrowth(GetParam()); }

INSTANTIATE_TEST_SUITE_P(, QueueFolderGrowth, testing::ValuesIn(cases), GrowthName);

} // namespace
