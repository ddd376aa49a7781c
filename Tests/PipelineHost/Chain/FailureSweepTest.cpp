// Lets the n-th platform call of a whole job fail, for n = 1, 2, 3, ...: with the library's filters, so that
// merges, documents and parts are all on the way. A job either fails with a result and leaves nothing, or has
// written every page: filters may do without the job's ticket and without parts that they do not know. Every
// filter that was started has closed its output. Leaks are the address sanitizer's to find.
#include "Support/PipelineJob.h"

#include <Com/FaultInjection.h>
#include <PrintTicket/PrintTicketMerge.h>
#include <Spooler/QueueFolder.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>

using namespace OvPipeline;

namespace {

class FailureSweepTest : public testing::Test {
protected:
    void SetUp() override {
        m_queue = OvPlatform::QueueFolder::Load(OV_SOURCE_DIR "/Samples/Queues/ColorOffice");
        m_tickets.emplace(m_queue);
        SampleJob job;
        job.pages = 2;
        job.jobTicket = SampleTicket("PageOrientation", "Landscape");
        job.documentTicket = SampleTicket("DocumentCollate", "Collated");
        job.pageTicket = SampleTicket("PageMediaSize", "ISOA4");
        job.Write(m_folder / "job.xps");
    }

    JobOutcome Run(const std::vector<FilterSpec>& filters) {
        JobDescription job = MakeJob(m_folder / "job.xps", m_folder / "out", filters);
        job.queue = m_queue;
        return RunJob(std::move(job));
    }

    using IsWhole = bool (*)(const std::filesystem::path&);

    // `step`: of a long job, every so manieth call.
    void Sweep(const std::vector<FilterSpec>& filters, IsWhole isWhole, HRESULT fault, LONG step = 1) {
        OvPlatform::FaultInjection::CountCalls();
        const JobOutcome wholeOutcome = Run(filters);
        ASSERT_TRUE(wholeOutcome.isWritten);
        EXPECT_TRUE(wholeOutcome.gotOver.empty());
        const LONG calls = OvPlatform::FaultInjection::CallCount();
        OvPlatform::FaultInjection::Reset();
        ASSERT_TRUE(isWhole(m_folder / "out"));
        const std::string whole = TemporaryFolder::Read(m_folder / "out");
        std::filesystem::remove(m_folder / "out");
        ASSERT_GT(calls, 100);

        int seen = 0;
        for (LONG number = 1; number <= calls; number += step) {
            SCOPED_TRACE("call " + std::to_string(number));
            JobOutcome outcome;
            {
                const OvPlatform::FaultInjectionScope scope(number, fault);
                outcome = Run(filters);
            }
            EXPECT_FALSE(outcome.isCancelled);
            EXPECT_NE(outcome.isWritten, outcome.failure.has_value());
            if (outcome.failure) {
                ++seen;
                EXPECT_TRUE(FAILED(outcome.failure->result)) << FailureLine(outcome);
                EXPECT_EQ(1u, m_folder.Names().size()) << "nothing but the job is there";
            } else {
                EXPECT_TRUE(isWhole(m_folder / "out"));
                // What a filter did without is told.
                const bool isTold =
                    !outcome.gotOver.empty() || outcome.leftOut.Text() != wholeOutcome.leftOut.Text();
                if (isTold) ++seen;
                EXPECT_TRUE(isTold || TemporaryFolder::Read(m_folder / "out") == whole);
                std::filesystem::remove(m_folder / "out");
            }
            for (const FilterOutcome& filter : outcome.filters)
                EXPECT_EQ(filter.wasStarted, filter.closedOutput)
                    << filter.name << ": " << FailureLine(outcome);
            if (HasFailure()) return; // one is enough to look at
        }
        EXPECT_GT(seen, calls / step / 2) << "a failing call is seen by somebody";
    }

    TemporaryFolder m_folder;
    std::shared_ptr<const OvPlatform::QueueFolder> m_queue;
    std::optional<OvPlatform::PrintTicketMerge> m_tickets; // lest every job reads the queue's documents again
};

FilterSpec Sample(const char* name, FilterEnds ends) {
    FilterSpec spec = ParseFilterArgument(std::string(OV_BINARY_DIR "/lib/lib") + name + ".so");
    spec.ends = ends;
    return spec;
}

bool HasBothPages(const std::filesystem::path& package) {
    return ReadZip(package).contains("Documents/1/Pages/2.fpage");
}

bool HasBothLines(const std::filesystem::path& list) {
    const std::string text = TemporaryFolder::Read(list);
    return std::ranges::count(text, '\n') == 2;
}

TEST_F(FailureSweepTest, AnyFailingCallOfAJobOfPartsIsSurvived) {
    Sweep({Sample("PassThrough", {EndKind::XpsParts, EndKind::XpsParts})}, HasBothPages, E_OUTOFMEMORY);
}

TEST_F(FailureSweepTest, AnyFailingCallOfAJobOfBytesIsSurvived) {
    Sweep({Sample("PageList", {EndKind::XpsParts, EndKind::Bytes}),
           Sample("StreamCopy", {EndKind::Bytes, EndKind::Bytes})},
          HasBothLines, E_FAIL);
}

TEST_F(FailureSweepTest, AnyFailingCallOfAJobWithEnforcedSettingsIsSurvived) {
    OvPlatform::QueueDescription queue = m_queue->Description();
    queue.queueProperties[L"OrvelQueueProperties"] = std::wstring(
        L"<p><OrvelQueuePrePostConfiguration><![CDATA[<c><Feature Name='2-SidedPrinting'><Setting "
        L"Name='TwoSidedAny'/></Feature></c>]]></OrvelQueuePrePostConfiguration></p>");
    // A device of few words, since every job reads them.
    constexpr std::string_view device = "<DeviceCapabilities version='1.0'/>";
    queue.driverProperties[L"DeviceCapabilities"] = OvPlatform::QueueStream{{device.begin(), device.end()}};
    m_queue = std::make_shared<OvPlatform::QueueFolder>(std::move(queue));
    m_tickets.emplace(m_queue);
    Sweep({Sample("Policy", {EndKind::XpsParts, EndKind::XpsParts})}, HasBothPages, E_OUTOFMEMORY);
}

TEST_F(FailureSweepTest, AnyFailingCallOfAStampedJobIsSurvived) {
    OvPlatform::QueueDescription queue = m_queue->Description();
    const std::string end = "&lt;/OrvelPublicDocSettings&gt;";
    std::string settings =
        "<annotation-col-api><annotation-element-col-api><e><type-api>type-text</type-api><text-api>x</"
        "text-api></e><e>"
        "<type-api>type-picture</type-api><text-api>" OV_SOURCE_DIR
        "/Samples/Jobs/seal.bmp</text-api></e></annotation-element-col-api></annotation-col-api>";
    for (std::size_t at = 0; (at = settings.find('<', at)) != std::string::npos;)
        settings.replace(at, 1, "&lt;");
    queue.defaultTicket.insert(queue.defaultTicket.find(end), settings);
    queue.queueProperties.clear();
    m_queue = std::make_shared<OvPlatform::QueueFolder>(std::move(queue));
    m_tickets.emplace(m_queue);
    Sweep({Sample("Stamp", {EndKind::XpsParts, EndKind::XpsParts})}, HasBothPages, E_OUTOFMEMORY, 7);
}

} // namespace
