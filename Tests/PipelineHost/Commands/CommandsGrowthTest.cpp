#include "Support/Growth.h"

#include <Commands/ReportedSettings.h>

using namespace OvPipeline;

namespace {

std::string Name(std::size_t n, const char* prefix) { return prefix + std::to_string(n); }

// As an explanation asks of each setting where it came from, at levels with prefixes of their own.
std::function<void()> Asking(std::size_t n) {
    OvPlatform::MergeReport report;
    for (std::size_t i = 0; i < n; ++i)
        report.settings.push_back(
            {Name(i, "psk:Job"), false, "psk:One", OvPlatform::SettingOrigin::Delta, {}, {}});
    return [report, n] {
        const ReportedSettings settings(report);
        for (std::size_t i = 0; i < n; ++i)
            EXPECT_TRUE(settings.Find(Name(i, "psk:Job")) == settings.Find(Name(i, "other:Job")) &&
                        settings.IsAskedFor(Name(i, "Job")));
        EXPECT_EQ(nullptr, settings.Find("psk:Jo"));
    };
}

const GrowthCase cases[] = {{"AsksForManySettings", Asking}};

class CommandsGrowth : public testing::TestWithParam<GrowthCase> {};
TEST_P(CommandsGrowth, IsInProportion) { ExpectLinearGrowth(GetParam()); }
INSTANTIATE_TEST_SUITE_P(, CommandsGrowth, testing::ValuesIn(cases), GrowthName);

} // namespace
