#include "Support/ReportRecorder.h"

#include <Tracing/ExecutionContextLifetime.h>

#include <gtest/gtest.h>

#include <thread>

namespace {

std::unique_ptr<ExecutionContextEntry> entry(const char* function, const char* detail,
                                             bool reportOnEntry = false) {
    return std::make_unique<ExecutionContextEntry>(31676u, 256u, "File.cpp", function, 12, reportOnEntry,
                                                   CPString(detail));
}

std::string reported(const char* text) {
    const ReportRecorder recorder;
    DebugUtilities::reportErrorForLowLevelUtilities(text, "caption");
    return recorder.reports().at(0).text;
}

TEST(ExecutionContext, IsCarriedByTheReportsOfItsThreadAndScope) {
    {
        const ExecutionContextLifetime outer(entry("Outer", "job 1"));
        {
            const ExecutionContextLifetime inner(entry("Inner", "page %d"));
            EXPECT_EQ("bad\nin Inner (File.cpp:12), code 31676: page %d\n"
                      "in Outer (File.cpp:12), code 31676: job 1",
                      reported("bad"));
        }
        EXPECT_EQ("bad\nin Outer (File.cpp:12), code 31676: job 1", reported("bad"));
        std::thread([] { EXPECT_EQ("bad", reported("bad")); }).join();
    }
    EXPECT_EQ("bad", reported("bad"));
}

TEST(ExecutionContext, MayEndOutOfOrder) {
    auto outer = std::make_unique<ExecutionContextLifetime>(entry("Outer", "o"));
    const ExecutionContextLifetime inner(entry("Inner", "i"));
    outer.reset();
    EXPECT_EQ("bad\nin Inner (File.cpp:12), code 31676: i", reported("bad"));
}

/// Reports while it is described, as one does whose memory is out.
struct TroubledContext final : ReportContext {
    void describe(std::string& report) const override {
        DebugUtilities::reportErrorForLowLevelUtilities("trouble", "caption");
        report += "described";
    }
};

TEST(ExecutionContext, MayReportWhileItIsDescribed) {
    TroubledContext context;
    DebugUtilities::pushReportContext(context);
    const ReportRecorder recorder;
    for (int round = 0; round < 2; ++round)
        DebugUtilities::reportErrorForLowLevelUtilities("bad", "caption");
    DebugUtilities::popReportContext(context);
    ASSERT_EQ(4u, recorder.reports().size());
    EXPECT_EQ("trouble", recorder.reports()[2].text);
    EXPECT_EQ("bad\ndescribed", recorder.reports()[3].text);
}

TEST(ExecutionContext, ReportsItsEntryIfAsked) {
    const ReportRecorder recorder;
    const ExecutionContextLifetime lifetime(entry("Step", "s", true));
    ASSERT_EQ(1u, recorder.reports().size());
    EXPECT_EQ("Entered.\nin Step (File.cpp:12), code 31676: s", recorder.reports()[0].text);
}

} // namespace
