// The render filter as a user runs it: the stream that comes out of a job, and what an interpreter makes of
// it.
#include "PipelineHost/Commands/CommandRun.h"
#include "Samples/DeviceStream/DrawnJob.h"
#include "Samples/DeviceStream/PageImages.h"
#include "Samples/DeviceStream/PjlGrammar.h"
#include "Support/Growth.h"
#include "Support/Rows.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>

using namespace OvPipeline;
using testing::AllOf;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

const std::string exitLanguage = "\x1B%-12345X";
const std::string pagesStart = "@PJL ENTER LANGUAGE=POSTSCRIPT\n%!PS-Adobe-3.0\n";

class DeviceStreamTest : public InOwnFolder {
protected:
    // A queue like the sample's, of another family or none.
    void MakeQueue(const std::string& family, bool hasProductData = true) {
        std::filesystem::copy(OV_SOURCE_DIR "/Samples/Queues/ColorOffice", "queue");
        std::filesystem::permissions("queue/queue.xml", std::filesystem::perms::owner_all);
        std::string xml = TemporaryFolder::Read("queue/queue.xml");
        const std::string property = "<String name=\"DeviceFamily\">Kestrel</String>";
        xml.replace(xml.find(property), property.size(),
                    family.empty() ? "" : "<String name=\"DeviceFamily\">" + family + "</String>");
        const std::string data = "<Stream name=\"ProductData\" file=\"product-data.xml\"/>";
        if (!hasProductData) xml.replace(xml.find(data), data.size(), "");
        std::ofstream("queue/queue.xml") << xml;
        m_queue = "queue";
    }

    CommandRun Run(const std::string& job, const std::string& module = "DeviceStream") {
        CommandRun run({"run", "--queue", m_queue, "--filter", OV_BINARY_DIR "/lib/lib" + module + ".so",
                        "-o", "out.prn", job});
        m_stream = TemporaryFolder::Read("out.prn");
        return run;
    }

    std::string Header() const { return m_stream.substr(0, m_stream.find("%!PS-Adobe")); }
    std::string PostScript() const {
        const std::size_t start = m_stream.find("%!PS-Adobe");
        return m_stream.substr(start, m_stream.rfind("%%EOF\n") + 6 - start);
    }
    // Of a page, from 1, its commands before the picture.
    std::string PageSetup(int page) const {
        const std::string number = std::to_string(page);
        const std::size_t start = m_stream.find("%%Page: " + number + " " + number + "\n%%BeginPageSetup\n");
        return m_stream.substr(start, m_stream.find("%%EndPageSetup", start) - start);
    }

    std::string m_queue = OV_SOURCE_DIR "/Samples/Queues/ColorOffice";
    std::string m_stream;
};

TEST_F(DeviceStreamTest, IsImagedAsTheRendererDrawsThePages) {
    DrawnJob().Write("job.xps");
    const CommandRun run = Run("job.xps");
    ASSERT_EQ(run.code, ExitOk) << run.errors;
    std::ofstream("pages.ps", std::ios::binary) << PostScript();
    const auto drawn = RendererImages("job.xps");
    const auto imaged = InterpreterImages("pages.ps", m_folder.Path());
    ASSERT_EQ(drawn.size(), 3u);
    ASSERT_EQ(imaged.size(), drawn.size());
    for (std::size_t page = 0; page < drawn.size(); ++page)
        EXPECT_LT(imaged[page].GreatestDifference(drawn[page]), 40) << "page " << page + 1;
}

TEST_F(DeviceStreamTest, StandsInOneFrameForEachFamily) {
    struct Family {
        std::string name;
        std::string start;
        std::string end;
    };
    const std::string end = "%%EOF\n" + exitLanguage;
    const std::string endOfJob = end + "@PJL EOJ\n" + exitLanguage;
    const Family families[] = {
        {"Kestrel", exitLanguage + "@PJL COMMENT OVLbegin\n", end},
        {"harrier", exitLanguage + "@PJL JOB NAME = ", endOfJob},
        {"Osprey", exitLanguage + "@PJL COMMENT OVLbegin\n", end},
        {"Merlin", exitLanguage + "@PJL COMMENT NORMAL PRINT\n@PJL JOB NAME = ", endOfJob},
        {"LowEndPS", exitLanguage + "@PJL JOB\n", endOfJob},
    };
    DrawnJob{.pages = {{}, {}}}.Write("job.xps");
    for (const Family& family : families) {
        SCOPED_TRACE(family.name);
        std::filesystem::remove_all("queue");
        MakeQueue(family.name);
        const CommandRun run = Run("job.xps");
        ASSERT_EQ(run.code, ExitOk) << run.errors;
        EXPECT_THAT(m_stream, AllOf(StartsWith(family.start), Not(HasSubstr(exitLanguage + exitLanguage)),
                                    HasSubstr("%%Pages: 2\n"), EndsWith(family.end)));
        EXPECT_THAT(Header(), EndsWith("@PJL ENTER LANGUAGE=POSTSCRIPT\n"));
        EXPECT_EQ(run.errors, "");
    }
}

TEST_F(DeviceStreamTest, ChangesTheSheetWhereATicketDoes) {
    MakeQueue("Kestrel", false);
    DrawnJob{.pages = {{},
                       {.ticket = SampleTicket("PageMediaSize", "ISOA3")},
                       {.ticket = SampleTicket("PageMediaType", "CardStock")},
                       {.ticket = SampleTicket("PageMediaType", "CardStock")},
                       {}},
             .jobTicket = SampleTicket("JobInputBin", "Manual")}
        .Write("job.xps");
    const CommandRun run = Run("job.xps");
    ASSERT_EQ(run.code, ExitOk) << run.errors;
    EXPECT_THAT(PageSetup(1), AllOf(HasSubstr("\t/PageSize [595 842]\n"), HasSubstr("*PageSize A4\n"),
                                    HasSubstr("\t/MediaType (stationery)\n"),
                                    HasSubstr("\t(Manual) orvel$MediaInputTray\n")));
    EXPECT_THAT(PageSetup(2), AllOf(HasSubstr("\t/PageSize [842 1191]\n"), Not(HasSubstr("/MediaType"))));
    EXPECT_THAT(PageSetup(3),
                AllOf(HasSubstr("\t/PageSize [595 842]\n"), HasSubstr("\t/MediaType (cardstock)\n")));
    EXPECT_THAT(PageSetup(4), Not(HasSubstr("setpagedevice"))) << "the same sheet as before";
    EXPECT_THAT(PageSetup(5), AllOf(HasSubstr("\t/MediaType (stationery)\n"), Not(HasSubstr("/PageSize"))));
}

// What concerns the job as a whole stands in no ticket of a document or page, and holds for all of them.
TEST_F(DeviceStreamTest, PrintsOnTheSidesThatTheJobSays) {
    const std::pair<const char*, const char*> cases[] = {
        {"OneSided", "\t/Duplex true /Tumble false\n"}, // the queue's administrator wants two
        {"TwoSidedLongEdge", "\t/Duplex true /Tumble false\n"},
        {"TwoSidedShortEdge", "\t/Duplex true /Tumble true\n"}};
    for (const auto& [option, command] : cases) {
        DrawnJob{.pages = {{}, {.ticket = SampleTicket("PageMediaSize", "ISOA3")}},
                 .jobTicket = SampleTicket("JobDuplexAllDocumentsContiguously", option)}
            .Write("job.xps");
        const CommandRun run = Run("job.xps");
        ASSERT_EQ(run.code, ExitOk) << run.errors;
        EXPECT_THAT(PageSetup(1), HasSubstr(command));
        EXPECT_THAT(PageSetup(2), Not(HasSubstr("/Duplex"))) << "as on the page before";
    }
}

// With product data, single values are tried by the product's commands. A sheet for a page that lies on its
// side is turned with it, and a page that was made for another sheet than the printer's own keeps its size.
TEST_F(DeviceStreamTest, FitsTheSheetToThePage) {
    DrawnJob{.pages = {{.width = 1123, .height = 794},
                       {.width = 600, .height = 800},
                       {.width = 600, .height = 800, .ticket = SampleTicket("PageMediaSize", "ISOA4")}}}
        .Write("job.xps");
    const CommandRun run = Run("job.xps");
    ASSERT_EQ(run.code, ExitOk) << run.errors;
    EXPECT_THAT(PageSetup(1),
                AllOf(HasSubstr("\t/PageSize [842 595]\n"),
                      HasSubstr("featurebegin{ << /MediaInputTray (automatic) >> setpagedevice }")));
    EXPECT_THAT(PageSetup(2), HasSubstr("\t/PageSize [450 600]\n"));
    EXPECT_THAT(PageSetup(3), HasSubstr("\t/PageSize [595 842]\n"))
        << "asked for, though it is the printer's own";
    EXPECT_THAT(run.errors, HasSubstr("warning: pages have another size than the printer's own paper"));
}

TEST_F(DeviceStreamTest, WarnsOfWhatTheStreamLeavesToTheDevice) {
    DrawnJob job{.pages = {{}}};
    job.jobTicket = SampleTicket("JobNUpAllDocumentsContiguously", "None");
    const std::string copies =
        R"(<psf:ParameterInit name="psk:JobCopiesAllDocuments"><psf:Value xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance")"
        R"( xmlns:xsd="http://www.w3.org/2001/XMLSchema" xsi:type="xsd:integer">3</psf:Value></psf:ParameterInit>)";
    job.jobTicket.insert(job.jobTicket.find("</psf:PrintTicket>"), copies);
    job.Write("job.xps");
    const CommandRun run = Run("job.xps");
    EXPECT_EQ(run.code, ExitOk);
    EXPECT_THAT(Lines(run.errors), ElementsAre(HasSubstr("warning: the job asks for 3 copies")));
}

TEST_F(DeviceStreamTest, LetsNoTitleBringACommand) {
    const std::string job = "a\r\n@PJL SET X=\"1\"\x1B%-12345X) showpage (\xE6\x97\xA5\xE6\x9C\xAC.xps";
    const std::string title = "a  @PJL SET X= 1  %-12345X  showpage  \xE6\x97\xA5\xE6\x9C\xAC.xps";
    DrawnJob{.pages = {{}}}.Write(job);
    const CommandRun run = Run(job);
    ASSERT_EQ(run.code, ExitOk) << run.errors;
    std::vector<std::string> names;
    for (const std::string& line : Lines(Header()))
        if (line.find("showpage") != std::string::npos) names.push_back(line);
    EXPECT_THAT(names, ElementsAre("@PJL COMMENT OID_ATT_JOB_NAME \"" + title + "\";"));
    EXPECT_THAT(m_stream, HasSubstr("\n%%Title: (" + title + ")\n"));
    EXPECT_THAT(run.errors, HasSubstr("warning: FEAT_JOB_NAME holds characters that would end a command"));
    const std::string header = Header();

    DrawnJob{.pages = {{}}}.Write("job.xps");
    ASSERT_EQ(Run("job.xps").code, ExitOk);
    EXPECT_EQ(Lines(header).size(), Lines(Header()).size());
}

TEST_F(DeviceStreamTest, RefusesWhatItCannotServe) {
    struct Refused {
        std::string name;
        std::string family;
        std::string module;
        std::string words;
    };
    static const Refused rows[] = {
        {"pages in another language", "MerlinPCL6", "DeviceStream",
         "devices of the family MerlinPCL6 take no PostScript"},
        {"an unknown family", "Falcon", "DeviceStream", "the queue's DeviceFamily, \"Falcon\", is none"},
        {"a queue without family", "", "DeviceStream", "the queue does not say its device's family"},
        {"a system without renderer", "Kestrel", "DeviceStreamWithoutRenderer", "libgxps"},
    };
    DrawnJob().Write("job.xps");
    for (const Refused& row : rows) {
        SCOPED_TRACE(row.name);
        std::filesystem::remove_all("queue");
        MakeQueue(row.family);
        const CommandRun run = Run("job.xps", row.module);
        EXPECT_EQ(run.code, ExitJobFailed);
        EXPECT_THAT(run.errors, HasSubstr(row.words));
        EXPECT_FALSE(std::filesystem::exists("out.prn"));
    }
}

// What libgxps would end the program over is met before it.
TEST_F(DeviceStreamTest, FailsForAPageThatCannotBeImaged) {
    struct Damage {
        std::string part;
        std::string what;
        std::string with;
        std::string words; // none: it is imaged
    };
    const std::string font = std::string(SampleJob::fontName).substr(1);
    const std::string page = "Documents/1/Pages/1.fpage";
    const std::string figures = "60,300 L 300,300";
    const Damage rows[] = {
        {font, "", "no font at all, but long enough to be obfuscated", "the page cannot be imaged"},
        {page, figures, "60,NaN L 300,300", "the page cannot be imaged"},
        {page, figures, "60,300 - L 300,300", "the page cannot be imaged"},
        {page, figures, "60,300 &#x4e; 300,300", "the page cannot be imaged"},
        {page, figures, "60,300 L 3e2,3.0E+2&#xA;-.5,+1.", ""},
        {page, "\"Page 1\"", "'Clip=\"NaN\" Data=x'", ""},
        {page, "\"1123\"", "\"1e9\"", "the page is larger than any sheet"},
        {page, "\"1123\"", "\"INF\"", "the page is larger than any sheet"},
    };
    for (const Damage& row : rows) {
        SCOPED_TRACE(row.with);
        std::filesystem::remove("out.prn");
        ZipItems items = DrawnJob{.pages = {{}}}.Items();
        std::string& content = items[row.part];
        const std::size_t place = content.find(row.what);
        content.replace(place, row.what.empty() ? content.size() : row.what.size(), row.with);
        WriteZip("job.xps", items);
        const CommandRun run = Run("job.xps");
        EXPECT_EQ(run.code, row.words.empty() ? ExitOk : ExitJobFailed) << run.errors;
        EXPECT_THAT(run.errors, AllOf(HasSubstr(row.words), Not(HasSubstr("WARNING"))));
        EXPECT_EQ(std::filesystem::exists("out.prn"), row.words.empty());
    }
}

TEST_F(DeviceStreamTest, TakesManyProfilesOutOfAPage) {
    ExpectLinearGrowth({"Profiles", [this](std::size_t n) {
                            ZipItems items = DrawnJob{.pages = {{}}}.Items();
                            std::string& markup = items["Documents/1/Pages/1.fpage"];
                            const std::string profiles = Times(
                                n, [](std::size_t) { return std::string("{ColorConvertedBitmap a b}"); });
                            markup.insert(markup.find("<Path"), "<!--" + profiles + "-->");
                            WriteZip("job.xps", items);
                            return [this] { EXPECT_EQ(Run("job.xps").code, ExitOk); };
                        }});
}

} // namespace
