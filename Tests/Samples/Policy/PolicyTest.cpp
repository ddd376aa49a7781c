#include "Support/ConfiguredQueue.h"
#include "Support/PipelineJob.h"

#include <ComSupport/MsSafeCoinit.h>
#include <LowLevelFacilities/WideStrings/CXString.h>
#include <Parts/PartFactory.h>
#include <PrintSchema/PrintTicketXmlDocument.h>
#include <Ticket/EnforcedValue.h>

#include <gtest/gtest.h>

using namespace OvPipeline;

namespace {

constexpr auto sides = "2-SidedPrinting";
constexpr auto nUp = "ImagesPerPage";
constexpr auto identification = "JobIdentification";
constexpr auto sidesFeature = "JobDuplexAllDocumentsContiguously";

std::string In(const std::string& ticket, const char* feature) {
    const PrintTicketXmlDocument document(CXString(ticket.c_str()));
    return std::string(CPString(ReadEnforcedValue(document, *TicketEnforcement::Find(feature))).view());
}

class PolicyTest : public testing::Test {
protected:
    // What becomes of a job on a queue with a configuration of these children.
    ZipItems Run(const ZipItems& job, const std::string& configuration) {
        WriteZip(m_folder / "job.xps", job);
        JobDescription description = MakeJob(m_folder / "job.xps", m_folder / "out.xps",
                                             {ParseFilterArgument(OV_BINARY_DIR "/lib/libPolicy.so")});
        description.queue = Queue(configuration);
        m_outcome = RunJob(std::move(description));
        EXPECT_TRUE(m_outcome.isWritten) << FailureLine(m_outcome);
        return m_outcome.isWritten ? ReadZip(m_folder / "out.xps") : ZipItems();
    }

    static std::shared_ptr<const OvPlatform::QueueFolder> Queue(const std::string& configuration) {
        OvPlatform::QueueDescription queue =
            OvPlatform::QueueFolder::Load(OV_SOURCE_DIR "/Samples/Queues/ColorOffice")->Description();
        const CXString properties(("<p><OrvelQueuePrePostConfiguration><![CDATA[<c>" + configuration +
                                   "</c>]]></OrvelQueuePrePostConfiguration></p>")
                                      .c_str());
        queue.queueProperties[L"OrvelQueueProperties"] = std::wstring(properties.View());
        return std::make_shared<OvPlatform::QueueFolder>(std::move(queue));
    }

    // The ticket that a part is related to; "" if it has none.
    static std::string TicketOf(const ZipItems& package, const std::string& owner,
                                std::string* name = nullptr) {
        const std::size_t slash = owner.rfind('/');
        const auto found =
            package.find(owner.substr(1, slash) + "_rels/" + owner.substr(slash + 1) + ".rels");
        const std::string text = found == package.end() ? "" : found->second;
        const std::size_t type = text.find("/printticket\"");
        if (type == std::string::npos) return "";
        const std::size_t target = text.find("Target=\"", text.rfind('<', type)) + 8;
        const std::string part =
            ResolveReference(owner, text.substr(target, text.find('"', target) - target));
        if (name != nullptr) *name = part;
        return package.at(part.substr(1));
    }
    static std::string JobTicket(const ZipItems& package, std::string* name = nullptr) {
        return TicketOf(package, "/FixedDocSeq.fdseq", name);
    }

    const MsSafeCoInit m_apartment;
    TemporaryFolder m_folder;
    JobOutcome m_outcome;
};

TEST_F(PolicyTest, EnforcedSettingsBecomeTheJobsOwnAndTheOthersStay) {
    SampleJob job;
    job.jobTicket = SampleTicket(sidesFeature, "OneSided");
    job.jobTicket.insert(job.jobTicket.find("</psf:PrintTicket>"),
                         "<psf:Feature name=\"psk:PageOrientation\"><psf:Option "
                         "name=\"psk:Landscape\"/></psf:Feature>");
    job.documentTicket = SampleTicket("DocumentCollate", "Collated");
    job.pageTicket = SampleTicket("PageMediaSize", "ISOA4");
    const std::string configuration = ConfiguredFeature(sides, "TwoSidedAny", "EnforcedDefault") +
                                      ConfiguredFeature(nUp, "4") +
                                      ConfiguredFeature(identification, "PrintIdOnABannerSheet") +
                                      ConfiguredFeature("Staple", "Top", "EnforcedSetting");
    const ZipItems input = job.Items();
    const ZipItems output = Run(input, configuration);
    std::string name;
    const std::string ticket = JobTicket(output, &name);
    EXPECT_EQ(name, "/Metadata/Job_PT.xml"); // in the place of the old one
    EXPECT_EQ(In(ticket, sides), "TwoSidedLongEdge");
    EXPECT_EQ(In(ticket, nUp), "4");
    EXPECT_EQ(In(ticket, identification), "JobIdBannerOn");
    EXPECT_NE(ticket.find("psk:Landscape"), std::string::npos);
    // All else is as it was: tickets of documents and pages have no such settings, and pages look the same.
    for (const auto& [part, bytes] : input) {
        const bool isSeen = part.starts_with("Resources/") && !part.ends_with(".rels");
        EXPECT_TRUE(!(isSeen || part.ends_with(".fpage")) || output.at(part) == bytes) << part;
    }
    EXPECT_EQ(output.at("Documents/1/Metadata/Doc_PT.xml"), job.documentTicket);
    EXPECT_EQ(output.at("Metadata/Page_PT.xml"), input.at("Metadata/Page_PT.xml"));

    // What obeys already goes on as it is.
    const ZipItems again = Run(output, configuration);
    EXPECT_EQ(JobTicket(again), ticket);
    EXPECT_EQ(again.size(), output.size());
}

TEST_F(PolicyTest, JobWithoutTicketGetsOneOnlyIfThereIsSomethingToSay) {
    const SampleJob job;
    std::string name;
    const std::string obeyed = ConfiguredFeature(sides, "OneSided"); // by the printer's default
    const std::string ticket = JobTicket(Run(job.Items(), ConfiguredFeature(nUp, "2") + obeyed), &name);
    EXPECT_TRUE(name.starts_with("/METADATA/Job_PT_")) << name;
    EXPECT_EQ(In(ticket, nUp), "2");
    EXPECT_EQ(ticket.find(sidesFeature), std::string::npos) << "nothing but what has to change";

    for (const std::string& configuration :
         {std::string(), obeyed, ConfiguredFeature(nUp, "1"), ConfiguredFeature(nUp, "4", "Default")})
        EXPECT_EQ(JobTicket(Run(job.Items(), configuration)), "") << configuration;
}

TEST_F(PolicyTest, PartsThatShareTheJobsTicketKeepIt) {
    SampleJob job;
    job.jobTicket = SampleTicket(sidesFeature, "OneSided");
    job.pageTicket = "unused";
    ZipItems items = job.Items();
    items.erase("Metadata/Page_PT.xml");
    for (const char* page : {"1", "2"}) {
        std::string& links = items.at(std::string("Documents/1/Pages/_rels/") + page + ".fpage.rels");
        links.replace(links.find("/Metadata/Page_PT.xml"), 21, "/Metadata/Job_PT.xml");
    }
    const ZipItems output = Run(items, ConfiguredFeature(sides, "TwoSidedShortEdge"));
    EXPECT_EQ(In(JobTicket(output), sides), "TwoSidedShortEdge");
    std::string first;
    std::string second;
    EXPECT_EQ(TicketOf(output, SampleJob::PageName(1, 1), &first), job.jobTicket);
    EXPECT_EQ(TicketOf(output, SampleJob::PageName(1, 2), &second), job.jobTicket);
    EXPECT_EQ(first, second);
    EXPECT_NE(first, "/Metadata/Job_PT.xml");
}

TEST_F(PolicyTest, BrokenConfigurationEnforcesItsHeadAndIsToldOnce) {
    SampleJob job;
    job.jobTicket = SampleTicket(sidesFeature, "OneSided");
    const ZipItems output = Run(job.Items(), ConfiguredFeature(sides, "TwoSidedLongEdge") + "<Foo/>" +
                                                 ConfiguredFeature(nUp, "4"));
    EXPECT_EQ(In(JobTicket(output), sides), "TwoSidedLongEdge");
    EXPECT_EQ(In(JobTicket(output), nUp), "");
    EXPECT_EQ(m_outcome.gotOver.size(), 1u);
}

} // namespace
