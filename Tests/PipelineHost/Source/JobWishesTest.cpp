#include "Support/PipelineJob.h"

#include <PrintTicket/PrintTicketError.h>
#include <Source/OverlaidTicket.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace OvPipeline;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace {

TEST(PageRanges, HoldTheirPagesInWhateverOrderTheyAreNamed) {
    const PageRanges ranges("9,2-5,3-4,4-6,20-");
    std::vector<unsigned> pages;
    for (unsigned page = 1; page < 23; ++page)
        if (ranges.Contain(page)) pages.push_back(page);
    EXPECT_THAT(pages, ElementsAre(2, 3, 4, 5, 6, 9, 20, 21, 22));
    EXPECT_TRUE(PageRanges().Contain(7));
    for (const char* const text :
         {"", "0", "1-0", "5-2", "1,", ",1", "-3", "a", "1-2-3", "1 ", "99999999999999999999"})
        EXPECT_THROW(PageRanges{text}, std::invalid_argument) << text;
}

class JobWishesTest : public testing::Test {
protected:
    JobOutcome Print(const SampleJob& job, JobWishes wishes) {
        job.Write(m_folder / "job.xps");
        JobDescription description = MakeJob(m_folder / "job.xps", m_folder / "out.xps", {});
        description.wishes = std::move(wishes);
        return RunJob(std::move(description));
    }
    ZipItems Output() { return ReadZip(m_folder / "out.xps"); }
    static std::vector<std::string> NamesWith(const ZipItems& items, const std::string& word) {
        std::vector<std::string> names;
        for (const auto& [name, bytes] : items)
            if (name.find(word) != std::string::npos && name.find("_rels") == std::string::npos)
                names.push_back(name);
        return names;
    }

    TemporaryFolder m_folder;
};

TEST_F(JobWishesTest, OnlyTheWantedPagesGoOnWithTheirDocumentsAndResources) {
    SampleJob job;
    job.documents = 3;
    job.pages = 2;
    job.documentTicket = SampleTicket("PageOrientation", "Landscape");
    ZipItems items = job.Items();
    // A picture that only a page uses that is left out.
    items["Resources/Other.png"] = "\x89PNG other";
    items["Documents/1/Pages/_rels/1.fpage.rels"] =
        SampleJob::Relationships({{job.Base() + "/required-resource", "/Resources/Other.png"}});
    WriteZip(m_folder / "job.xps", items);
    JobDescription description = MakeJob(m_folder / "job.xps", m_folder / "out.xps", {});
    description.wishes.pages = PageRanges("2,5-");
    ASSERT_TRUE(RunJob(std::move(description)).isWritten);
    const ZipItems output = Output();
    EXPECT_THAT(
        NamesWith(output, ".fpage"),
        ElementsAre("Documents/1/Pages/2.fpage", "Documents/3/Pages/1.fpage", "Documents/3/Pages/2.fpage"));
    EXPECT_THAT(NamesWith(output, "Doc_PT"),
                ElementsAre("Documents/1/Metadata/Doc_PT.xml", "Documents/3/Metadata/Doc_PT.xml"));
    EXPECT_THAT(NamesWith(output, ".png"), ElementsAre("Resources/Picture.png"));
    EXPECT_THAT(output.at("FixedDocSeq.fdseq"), Not(HasSubstr("Documents/2")));
}

TEST_F(JobWishesTest, AJobWithoutAWantedPageIsRefused) {
    JobWishes wishes;
    wishes.pages = PageRanges("3-9");
    const JobOutcome outcome = Print(SampleJob(), std::move(wishes));
    ASSERT_TRUE(outcome.failure);
    EXPECT_TRUE(outcome.failure->fromInput);
    EXPECT_THAT(outcome.failure->Line(), HasSubstr("the job has 2 pages, and none of them is among 3-9"));
}

TEST_F(JobWishesTest, ATicketHoldsOverAllLevelsAndTheOutputSaysSo) {
    const auto overlay =
        std::make_shared<OvPlatform::TicketOverlay>(SampleTicket("PageOrientation", "Landscape"));
    SampleJob job;
    const std::string other = SampleTicket("PageOutputColor", "Grayscale");
    for (const std::string& ticket : {std::string(), other, SampleTicket("PageOrientation", "Portrait")}) {
        job.jobTicket = ticket;
        job.documentTicket = SampleTicket("PageOrientation", "Portrait");
        job.pageTicket = job.documentTicket;
        JobWishes wishes;
        wishes.ticket = overlay;
        ASSERT_TRUE(Print(job, std::move(wishes)).isWritten);
        ZipItems output = Output();
        EXPECT_THAT(output["Metadata/Job_PT.xml"], AllOf(HasSubstr("Landscape"), Not(HasSubstr("Portrait"))));
        EXPECT_EQ(ticket == other, output["Metadata/Job_PT.xml"].find("Grayscale") != std::string::npos);
        EXPECT_THAT(output["Metadata/Page_PT.xml"], Not(HasSubstr("PageOrientation")));
        EXPECT_THAT(output["Documents/1/Metadata/Doc_PT.xml"], Not(HasSubstr("PageOrientation")));
        EXPECT_THAT(NamesWith(output, "_PT_"), IsEmpty());
    }
}

// One part as the ticket of the job and of its pages becomes two.
TEST_F(JobWishesTest, ATicketPartOfTwoLevelsIsToldApart) {
    SampleJob job;
    job.pageTicket = SampleTicket("PageOrientation", "Portrait");
    ZipItems items = job.Items();
    items["_rels/FixedDocSeq.fdseq.rels"] =
        SampleJob::Relationships({{job.Base() + "/printticket", "Metadata/Page_PT.xml"}});
    WriteZip(m_folder / "job.xps", items);
    JobDescription description = MakeJob(m_folder / "job.xps", m_folder / "out.xps", {});
    description.wishes.ticket =
        std::make_shared<OvPlatform::TicketOverlay>(SampleTicket("PageOrientation", "Landscape"));
    ASSERT_TRUE(RunJob(std::move(description)).isWritten);
    ZipItems output = Output();
    EXPECT_THAT(output["Metadata/Page_PT.xml"], HasSubstr("Landscape"));
    EXPECT_THAT(output["Metadata/Page_PT_2.xml"], Not(HasSubstr("PageOrientation")));
    for (const char* const page : {"1", "2"})
        EXPECT_THAT(output["Documents/1/Pages/_rels/" + std::string(page) + ".fpage.rels"],
                    HasSubstr("Page_PT_2.xml"));
}

TEST_F(JobWishesTest, ADamagedTicketOfTheJobIsItsFaultAndOneBelowIsLeftToTheFilters) {
    const auto overlay =
        std::make_shared<OvPlatform::TicketOverlay>(SampleTicket("PageOrientation", "Landscape"));
    SampleJob job;
    job.pageTicket = "<broken";
    JobWishes wishes;
    wishes.ticket = overlay;
    ASSERT_TRUE(Print(job, wishes).isWritten);
    EXPECT_EQ("<broken", Output().at("Metadata/Page_PT.xml"));
    job.jobTicket = "<broken";
    const JobOutcome outcome = Print(job, wishes);
    ASSERT_TRUE(outcome.failure);
    EXPECT_TRUE(outcome.failure->fromInput);
    EXPECT_THAT(outcome.failure->Line(), HasSubstr("/Metadata/Job_PT.xml"));
}

TEST_F(JobWishesTest, AFilterOfBytesHasNoneToObey) {
    SampleJob().Write(m_folder / "job.xps");
    const FilterSpec copy =
        Filter("copy", [](const FilterEnv&) { return S_OK; }, {EndKind::Bytes, EndKind::Bytes});
    JobDescription description = MakeJob(m_folder / "job.xps", m_folder / "out.prn", {copy});
    description.wishes.pages = PageRanges("1");
    const JobOutcome outcome = RunJob(std::move(description));
    ASSERT_TRUE(outcome.failure);
    EXPECT_THAT(outcome.failure->Line(), HasSubstr("the first filter reads bytes"));
}

} // namespace
