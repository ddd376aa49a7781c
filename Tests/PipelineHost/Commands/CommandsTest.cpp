// The program's commands in this process, on captured streams.
#include "PipelineHost/Commands/CommandRun.h"
#include "Support/EnvironmentVariable.h"
#include "Support/Rows.h"
#include "Support/SampleJob.h"
#include "Support/TicketText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <regex>
#include <sstream>

using namespace OvPipeline;
using testing::AllOf;
using testing::ContainsRegex;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::MatchesRegex;
using testing::Not;
using testing::StartsWith;
using testing::UnorderedElementsAre;

namespace {

const std::string passThrough = OV_BINARY_DIR "/lib/libPassThrough.so";
const std::string pageList = OV_BINARY_DIR "/lib/libPageList.so";
const std::string streamCopy = OV_BINARY_DIR "/lib/libStreamCopy.so";
const std::string sampleQueue = OV_SOURCE_DIR "/Samples/Queues/ColorOffice";

class CommandsTest : public InOwnFolder {
protected:
    // A failure is one line on the error stream and nothing else.
    static void ExpectRefusal(const CommandRun& result, int code, const std::string& words) {
        EXPECT_EQ(code, result.code) << result.errors;
        EXPECT_EQ("", result.out);
        EXPECT_THAT(Lines(result.errors), ElementsAre(StartsWith("ov-pipeline: ")));
        EXPECT_THAT(result.errors, HasSubstr(words));
    }
};

TEST_F(CommandsTest, HelpAndVersionGoToTheOutput) {
    const std::pair<std::vector<std::string>, const char*> cases[] = {
        {{"--help"}, "Exit codes:\n  0    done"},
        {{"run", "--help"}, "--trace"},
        {{"ticket", "job.xps", "-h"}, "--explain"},
        {{"--version"}, "ov-pipeline "},
    };
    for (const auto& [arguments, words] : cases) {
        const CommandRun result(arguments);
        EXPECT_EQ(ExitOk, result.code);
        EXPECT_THAT(result.out, HasSubstr(words));
        EXPECT_EQ("", result.errors);
    }
}

TEST_F(CommandsTest, WrongUsageIsOneLineAndItsOwnExitCode) {
    SampleJob().Write("job.xps");
    const std::pair<std::vector<std::string>, const char*> cases[] = {
        {{}, "which command"},
        {{"print", "job.xps"}, "there is no command print"},
        {{"run"}, "which job? ov-pipeline run wants an XPS file"},
        {{"parts", "job.xps", "other.XPS"}, "one job at a time: job.xps or other.XPS?"},
        {{"run", "job.xps", "folder/job.XPS"}, "folder/job.XPS and job.xps would have one output"},
        {{"run", "-o", "-", "job.xps", "other.xps"}, "-o - goes with one job alone"},
        {{"run", "-o", "nowhere", "job.xps", "other.xps"}, "names the folder"},
        {{"run", "job.xps", "-"}, "- goes without other jobs"},
        {{"run", "--jobs", "257", "job.xps"}, "--jobs goes up to 256"},
        {{"run", "--copies", "1000000000", "job.xps"}, "--copies goes up to 999999999"},
        {{"features", "--pages", "1", "--document", "1", "job.xps"},
         "--pages excludes --page and --document"},
        {{"prats", "job.xps"}, "there is no command prats; is it parts?"},
        {{"run", "--pgaes=2", "job.xps"}, "has no option --pgaes; is it --pages?"},
        {{"run", "--trace=yes", "job.xps"}, "--trace takes no value"},
        {{"run", "--pages=3-2", "job.xps"}, "--pages: the range 3-2 ends before it begins"},
        {{"run", "--pages", "1,,2", "job.xps"}, "--pages: \"\" is neither a page nor a range"},
        {{"run", "--filter", passThrough + ",{no-id}", "job.xps"}, "\"{no-id}\" is no class id"},
        {{"run", "--explain", "job.xps"}, "ov-pipeline run has no option --explain"},
        {{"run", "job.xps", "-o"}, "-o wants a value"},
        {{"run", "job.xps", "--filter", ""}, "--filter is given an empty value"},
        {{"run", "-o", "a.xps", "--output", "b.xps", "job.xps"}, "--output is given twice"},
        {{"run", "--config", "a.xml", "--filter", "b", "job.xps"}, "exclude each other"},
        {{"ticket", "job.xps", "--page", "0"}, "--page wants a number from 1, not \"0\""},
        {{"ticket", "job.xps", "--page", "3"}, "the job has 2 pages; there is no page 3"},
        {{"ticket", "job.xps", "--document", "2"}, "the job has 1 document; there is no document 2"},
        {{"run", "-o", "../" + m_folder.Path().filename().string() + "/job.xps", "job.xps"},
         "the output would take the place of the job job.xps"},
    };
    for (const auto& [arguments, words] : cases) {
        const CommandRun result(arguments);
        ExpectRefusal(result, ExitUsage, words);
        EXPECT_THAT(result.errors, HasSubstr("(see ov-pipeline --help)"));
    }
    EXPECT_THAT(m_folder.Names(), ElementsAre("job.xps"));
}

TEST_F(CommandsTest, NoOutputTakesThePlaceOfATicketOrAConfiguration) {
    SampleJob().Write("job.xps");
    const std::string ticket = TicketText("");
    m_folder.Write("t.xml", ticket);
    const std::string configuration =
        TemporaryFolder::Read(OV_SOURCE_DIR "/Samples/Pipelines/pass-through.xml");
    m_folder.Write("c.xml", configuration);
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"run", "--ticket", "t.xml", "--filter", passThrough, "-o", "./t.xml"},
          {"run", "--config", "c.xml", "-o", "c.xml"},
          {"report", "--no-pictures", "--ticket", "t.xml", "-o", "t.xml"}}) {
        std::vector<std::string> whole = arguments;
        whole.emplace_back("job.xps");
        ExpectRefusal(CommandRun(whole), ExitUsage, "would take the place of the ");
    }
    EXPECT_EQ(ticket, TemporaryFolder::Read("t.xml"));
    EXPECT_EQ(configuration, TemporaryFolder::Read("c.xml"));
}

TEST_F(CommandsTest, RunSumsUpWhatItDidAndWhatDidNotReachTheOutput) {
    SampleJob job;
    job.documents = 2;
    job.pages = 3;
    job.jobTicket = SampleTicket("PageOrientation", "Landscape");
    job.pageTicket = SampleTicket("PageMediaType", "NoSuchPaper");
    ZipItems items = job.Items();
    std::string& types = items["[Content_Types].xml"];
    types.insert(types.find("<Default"),
                 "<Default Extension=\"sigs\" "
                 "ContentType=\"application/vnd.openxmlformats-package.digital-signature-origin\"/>");
    items["origin.sigs"] = "x";
    WriteZip("job.xps", items);
    const CommandRun result({"run", "--filter", passThrough, passThrough, "job.xps", "-o", "out.xps"});
    ASSERT_EQ(ExitOk, result.code) << result.errors;
    EXPECT_EQ("", result.errors);
    // To the first filter go the package and its core properties, the sequence, and for each document:
    // itself, its structure, pages. Written are the sequence, the documents with their structure, the pages,
    // four resources, two tickets, and the package's own two. Tickets are merged for each filter: the job's,
    // and the pages' one for each of the two documents; it is known already for all but their first.
    EXPECT_THAT(
        Lines(result.out),
        ElementsAre(
            "job.xps -> out.xps", "  queue     Color Office", "  filters   PassThrough -> PassThrough",
            "  parts     13 to the first filter, 19 written", "  pages     6 read, 6 written",
            "  left out  6 story fragments parts (/Documents/1/Pages/1.frag, "
            "/Documents/1/Pages/2.frag, /Documents/1/Pages/3.frag, ...), 1 signature part (/origin.sigs)",
            "  tickets   6 merges made, 8 saved by the cache; 4 conflicts resolved",
            MatchesRegex("  bytes     [0-9.]+ KB in, [0-9.]+ KB out"),
            MatchesRegex("  time      [0-9]+\\.[0-9][0-9] s, [0-9]+ pages/s")));
    // Of bytes, nobody knows what is in them.
    EXPECT_THAT(CommandRun({"run", "--filter", pageList, "-o", "out.txt", "job.xps"}).out,
                AllOf(HasSubstr("\n  pages     6 read\n"), testing::Not(HasSubstr("left out"))));
}

TEST_F(CommandsTest, RunNamesTheOutputAfterTheJobByWhatComesOut) {
    std::filesystem::create_directory("jobs");
    SampleJob().Write("jobs/letter.oxps");
    EXPECT_EQ(ExitOk, CommandRun({"run", "jobs/letter.oxps"}).code);
    EXPECT_EQ(ExitOk, CommandRun({"run", "--filter", pageList, streamCopy, "jobs/letter.oxps"}).code);
    EXPECT_THAT(m_folder.Names(), UnorderedElementsAre("jobs", "letter-printed.oxps", "letter-printed.prn"));
    // Which of the two comes is known late: neither may be the job itself.
    SampleJob().Write("own.xps");
    std::filesystem::create_hard_link("own.xps", "own-printed.prn");
    ExpectRefusal(CommandRun({"run", "--filter", pageList, "own.xps"}), ExitUsage, "would take the place");
    EXPECT_EQ(2u, Lines(TemporaryFolder::Read("letter-printed.prn")).size());
    EXPECT_TRUE(ReadZip("letter-printed.oxps").contains("Documents/1/Pages/2.fpage"));
}

TEST_F(CommandsTest, AFilterLearnsWhatTheJobIsCalledAndAsksFor) {
    SampleJob().Write("job.xps");
    const std::string summary = OV_BINARY_DIR "/lib/libJobSummary.so";
    EXPECT_EQ(ExitOk, CommandRun({"run", "--filter", summary, "-o", "out.txt", "job.xps"}).code);
    EXPECT_THAT(TemporaryFolder::Read("out.txt"),
                testing::MatchesRegex("job.xps of .+, copies: 1, booklet: no\n"));
    // As the user wants it.
    EXPECT_EQ(ExitOk, CommandRun({"run", "--filter", summary, "-o", "out.txt", "--title", "A letter",
                                  "--user=anna", "--copies", "3", "job.xps"})
                          .code);
    EXPECT_EQ("A letter of anna, copies: 3, booklet: no\n", TemporaryFolder::Read("out.txt"));
    std::ofstream("ticket.xml") << SampleTicket("PageOrientation", "Landscape");
    EXPECT_THAT(
        CommandRun({"ticket", "--explain", "--ticket", "ticket.xml", "--copies", "3", "job.xps"}).out,
        AllOf(HasSubstr("psk:Landscape"), testing::ContainsRegex("psk:JobCopiesAllDocuments +3 +job")));
}

TEST_F(CommandsTest, PagesThatShareATicketPartHaveTheSettingsOfTheirOwnDocument) {
    SampleJob job;
    job.documents = 2;
    job.pages = 1;
    job.documentTicket = SampleTicket("PageOrientation", "Landscape");
    job.pageTicket = SampleTicket("PageMediaSize", "NorthAmericaLetter");
    ZipItems items = job.Items();
    items["Documents/2/Metadata/Doc_PT.xml"] = SampleTicket("PageOrientation", "Portrait");
    WriteZip("job.xps", items);
    ASSERT_EQ(ExitOk,
              CommandRun({"run", "--filter", passThrough, pageList, "-o", "out.txt", "job.xps"}).code);
    EXPECT_EQ("page 1: NorthAmericaLetter, Landscape\npage 2: NorthAmericaLetter, Portrait\n",
              TemporaryFolder::Read("out.txt"));
}

TEST_F(CommandsTest, RunTakesAPipelineConfigurationAndLooksForModulesInTheNamedFolders) {
    SampleJob().Write("job.xps");
    const std::string config = OV_SOURCE_DIR "/Samples/Pipelines/page-list.xml";
    const EnvironmentVariable folders("OV_FILTERS", "/nonexistent:" OV_BINARY_DIR "/lib");
    const CommandRun result({"run", "--config", config, "-o", "out.txt", "job.xps"});
    ASSERT_EQ(ExitOk, result.code) << result.errors;
    EXPECT_THAT(result.out, HasSubstr("filters   Pass-through -> Page list -> Stream copy"));
    EXPECT_EQ(2u, Lines(TemporaryFolder::Read("out.txt")).size());
}

TEST_F(CommandsTest, AFailedRunNamesFilterPartAndResultAndLeavesAnOldOutputAlone) {
    SampleJob job;
    job.pageTicket = "<psf:PrintTicket";
    job.Write("job.xps");
    std::ofstream("out.xps") << "old";
    const CommandRun result({"run", "--filter", passThrough, "-o", "out.xps", "job.xps"});
    ExpectRefusal(result, ExitJobFailed,
                  "ov-pipeline: job.xps: filter PassThrough at /Metadata/Page_PT.xml: ");
    EXPECT_THAT(result.errors, HasSubstr(": 0x80040005 E_DELTA_PRINTTICKET_FORMAT (the part's print ticket "
                                         "is no valid Print Ticket)\n"));
    EXPECT_EQ("old", TemporaryFolder::Read("out.xps"));
    EXPECT_THAT(m_folder.Names(), UnorderedElementsAre("job.xps", "out.xps"));
}

TEST_F(CommandsTest, RefusedInputsHaveTheirOwnExitCodeWhateverTheCommand) {
    std::ofstream("text.xps") << "no zip";
    ZipItems items = SampleJob().Items();
    items.erase("Documents/1/Pages/1.fpage");
    WriteZip("pageless.xps", items);
    ASSERT_EQ(0, mkfifo("pipe", 0600)); // nobody is going to write there
    ExpectRefusal(CommandRun({"run", "--filter", streamCopy, "-o", "out", "pipe"}), ExitInputRefused,
                  "cannot read pipe: this is not a file");
    const std::pair<const char*, const char*> jobs[] = {
        {"none.xps", "none.xps: there is no such file: 0x80070002 ERROR_FILE_NOT_FOUND"},
        {"pipe", "pipe: this is not a file: 0x80070005"},
        {"text.xps", "text.xps: this is no package: it is not a zip archive: 0x80511002"},
        {"pageless.xps", "pageless.xps: /Documents/1/FixedDoc.fdoc names the page Pages/1.fpage, which the "
                         "package does not hold: 0x8052010b"}};
    const std::vector<std::string> commands[] = {
        {"run", "--filter", passThrough, "-o", "out.xps"}, {"parts"}, {"ticket", "--page", "1"}};
    for (std::vector<std::string> arguments : commands)
        for (const auto& [job, words] : jobs) {
            arguments.emplace_back(job);
            const CommandRun result(arguments); // which may have shown some parts by then
            EXPECT_EQ(ExitInputRefused, result.code) << result.errors;
            EXPECT_THAT(Lines(result.errors), ElementsAre(HasSubstr(std::string("ov-pipeline: ") + words)));
            arguments.pop_back();
        }
    EXPECT_THAT(m_folder.Names(), UnorderedElementsAre("text.xps", "pageless.xps", "pipe"));

    // Of a ticket beside the job, it is the ticket that is named.
    SampleJob().Write("job.xps");
    for (const auto& [ticket, words] : {std::pair{"none.xml", "none.xml: there is no such file: 0x80070002"},
                                        {"text.xps", "text.xps: the ticket: line 1"}})
        for (const char* const command : {"run", "features"})
            ExpectRefusal(CommandRun({command, "--ticket", ticket, "job.xps"}), ExitInputRefused,
                          std::string("ov-pipeline: ") + words);
}

TEST_F(CommandsTest, ChainsAndOutputsThatCannotBeFailTheJob) {
    SampleJob().Write("job.xps");
    std::filesystem::create_directory("folder");
    ASSERT_EQ(0, mkfifo("pipe", 0600));
    const std::pair<std::vector<std::string>, const char*> cases[] = {
        {{"--filter", "NoSuchModule"},
         "there is no module NoSuchModule; looked for NoSuchModule, NoSuchModule.so, libNoSuchModule.so in "},
        {{"--filter", "none/Module.dll"},
         "looked for Module.dll, Module.so, libModule.so in none: 0x8007007e"},
        {{"--config", "none.xml"}, "ov-pipeline: cannot read none.xml: No such file or directory"},
        {{"--config", "pipe"}, "ov-pipeline: cannot read pipe: this is not a file"},
        {{"--config", "job.xps"}, "ov-pipeline: job.xps line 1: "},
        {{"-o", "folder"}, "the output: folder: this is a folder, not a file to be replaced: 0x80070005"},
        {{"--filter", pageList, "-o", "pipe"}, "pipe: this is no file that can be replaced"},
        {{"-o", "none/out.xps"}, "none/out.xps: cannot be written"},
        {{"--filter", pageList, "-o", "none/out.txt"}, "none/out.txt: cannot be written"},
    };
    for (const auto& [options, words] : cases) {
        std::vector<std::string> arguments{"run", "job.xps"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        ExpectRefusal(CommandRun(arguments), ExitJobFailed, words);
    }
    EXPECT_THAT(m_folder.Names(), UnorderedElementsAre("job.xps", "folder", "pipe"));
}

TEST_F(CommandsTest, BadQueueFoldersAreRefusedBeforeTheJob) {
    SampleJob().Write("job.xps");
    const std::pair<const char*, const char*> cases[] = {
        {"queue.xml", "queue/queue.xml: the file is missing"},
        {"default-ticket.xml", "ov-pipeline: queue: the queue's default ticket: line 1"},
        {"capabilities.xml", "ov-pipeline: queue: the queue's capabilities: line 1"},
    };
    for (const auto& [damaged, words] : cases) {
        std::filesystem::remove_all("queue");
        std::filesystem::copy(sampleQueue, "queue");
        std::filesystem::permissions("queue", std::filesystem::perms::owner_all);
        std::filesystem::remove(std::filesystem::path("queue") / damaged);
        if (std::string(damaged) != "queue.xml") std::ofstream(std::string("queue/") + damaged) << "<a";
        ExpectRefusal(CommandRun({"run", "--queue", "queue", "-o", "out.xps", "job.xps"}), ExitInputRefused,
                      words);
        ExpectRefusal(CommandRun({"ticket", "--queue", "queue", "job.xps"}), ExitInputRefused, words);
    }
    EXPECT_FALSE(std::filesystem::exists("out.xps"));
}

TEST_F(CommandsTest, TraceTellsEveryPartAndStepInOrder) {
    SampleJob job;
    job.pages = 1;
    job.hasExtras = false;
    job.Write("job.xps");
    const CommandRun result({"run", "--trace", "--filter", passThrough, "-o", "out.xps", "job.xps"});
    ASSERT_EQ(ExitOk, result.code);
    // The filter and the output work at the same time: the order is that of each.
    std::map<std::string, std::vector<std::string>> steps;
    for (const std::string& line : Lines(result.errors)) {
        const std::size_t colon = line.find(": ");
        ASSERT_NE(std::string::npos, colon) << line;
        steps[line.substr(0, colon)].push_back(line.substr(colon + 2));
    }
    const std::string document = "/Documents/1/FixedDoc.fdoc";
    const std::string page = "/Documents/1/Pages/1.fpage";
    const std::vector<std::string>& filter = steps["PassThrough"];
    const auto place = [&](const std::string& step) {
        return std::find(filter.begin(), filter.end(), step) - filter.begin();
    };
    ASSERT_LT(place("sends page " + page), static_cast<std::ptrdiff_t>(filter.size()));
    EXPECT_LT(place("receives page " + page), place("sends page " + page));
    EXPECT_EQ("is initialised", filter.front());
    EXPECT_EQ("is done", filter.back());
    EXPECT_LT(place("receives the end of the parts"), place("closes its output"));
    EXPECT_THAT(steps["output"],
                ElementsAre("writes " + std::string(SampleJob::fontName), "writes /Resources/Picture.png",
                            "writes /Resources/Brushes.dict", "writes /Resources/Pattern.jpg",
                            "writes " + page, "writes " + document, "writes /FixedDocSeq.fdseq"));
}

TEST_F(CommandsTest, TicketMergesTheLevels) {
    SampleJob job;
    job.documents = 2;
    job.jobTicket = SampleTicket("PageOrientation", "Landscape");
    job.documentTicket = SampleTicket("DocumentCollate", "Uncollated");
    job.pageTicket = SampleTicket("PageOutputColor", "Monochrome");
    job.Write("job.xps");
    const Rows<std::vector<std::string>, bool, bool> levels{
        {{}, false, false},
        {{"--document", "2"}, true, false},
        {{"--document", "2", "--page", "2"}, false, true}, // a page's ticket has nothing of documents
        {{"--page", "4"}, false, true}};
    for (const auto& [level, isOfDocument, isOfPage] : levels) {
        std::vector<std::string> arguments{"ticket", "job.xps"};
        arguments.insert(arguments.end(), level.begin(), level.end());
        const CommandRun ticket(arguments);
        ASSERT_EQ(ExitOk, ticket.code) << ticket.errors;
        EXPECT_THAT(ticket.out, HasSubstr("\"psk:Landscape\""));
        EXPECT_EQ(isOfDocument, ticket.out.find("\"psk:Uncollated\"") != std::string::npos);
        EXPECT_EQ(isOfPage, ticket.out.find("\"psk:Monochrome\"") != std::string::npos);
    }
    ExpectRefusal(CommandRun({"ticket", "job.xps", "--document", "2", "--page", "3"}), ExitUsage,
                  "the document has 2 pages; there is no page 3");
    EXPECT_THAT(CommandRun({"ticket", "job.xps", "--page", "3", "--explain"}).out,
                AllOf(ContainsRegex("psk:PageOrientation +psk:Landscape +job\n"),
                      ContainsRegex("psk:PageOutputColor +psk:Monochrome +page\n")));
}

TEST_F(CommandsTest, PartsShowsTheTreeWithSizesAndTickets) {
    SampleJob job;
    job.hasExtras = false;
    job.jobTicket = "<job/>";
    job.pageTicket = "<page/>";
    ZipItems items = job.Items();
    items["Resources/Unused.png"] = "unused";
    WriteZip("job.xps", items);
    const CommandRun result({"parts", "job.xps"});
    ASSERT_EQ(ExitOk, result.code) << result.errors;
    // Of the sizes, one of bytes that the test knows.
    EXPECT_THAT(result.out, HasSubstr("  image /Resources/Picture.png  12 bytes\n"));
    const std::string font = SampleJob::fontName;
    EXPECT_THAT(
        Lines(std::regex_replace(result.out, std::regex("  [0-9.]+ (bytes|KB)"), "")),
        ElementsAre(
            "job.xps  XPS, 11 parts", "document sequence /FixedDocSeq.fdseq",
            "  print ticket /Metadata/Job_PT.xml", "  document 1 /Documents/1/FixedDoc.fdoc",
            "    page 1 /Documents/1/Pages/1.fpage  816 x 1056", "      print ticket /Metadata/Page_PT.xml",
            "      font " + font, "      image /Resources/Picture.png",
            "      resource dictionary /Resources/Brushes.dict", "        image /Resources/Pattern.jpg",
            "    page 2 /Documents/1/Pages/2.fpage  816 x 1056",
            "      print ticket /Metadata/Page_PT.xml  (shown before)",
            "      font " + font + "  (shown before)", "      image /Resources/Picture.png  (shown before)",
            "      resource dictionary /Resources/Brushes.dict  (shown before)",
            "        image /Resources/Pattern.jpg  (shown before)",
            "image /Resources/Unused.png  (no page relates to it)", "2 pages"));
}

// What a terminal would act on, in every place that a job, a queue or the user can put it.
TEST_F(CommandsTest, NoCommandPassesOnWhatActsOnATerminal) {
    const std::string hostile = "\u009b2J\u202eabc\u2028\x7f\u200b";
    const std::string breaking = "8&#10;9 pages&#13;" + hostile;
    SampleJob job;
    job.pages = 1;
    job.jobTicket = SampleTicket("PageOrientation", "Landscape");
    const std::string value =
        " xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" xmlns:xsd=\"http://www.w3.org/"
        "2001/XMLSchema\"><psf:Value xsi:type=\"xsd:string\">";
    job.jobTicket.insert(job.jobTicket.rfind("</"),
                         "<psf:Property name=\"psk:JobName\"" + value + breaking + std::string(100'000, 'x') +
                             "</psf:Value></psf:Property><!-- " + hostile + " -->");
    ZipItems items = job.Items();
    const auto replace = [&](const std::string& item, const std::string& from, const std::string& to) {
        std::string& text = items[item];
        ASSERT_NE(std::string::npos, text.find(from));
        text.replace(text.find(from), from.size(), to);
    };
    const std::string document = "Documents/1/FixedDoc.fdoc";
    replace(document, "Width=\"816\"", "Width=\"" + breaking + "\"");
    const std::string jobName = "job" + hostile + "\n\xff.xps";
    WriteZip(jobName, items);
    replace(document, "Pages/1.fpage", "Pages/" + breaking + std::string(200'000, 'n'));
    WriteZip("damaged.xps", items);
    items[document] = "<" + hostile + "\n";
    WriteZip("markup.xps", items);
    std::ofstream("pipeline.xml") << "<Filters><Filter dll=\"" << passThrough << "\" name=\"" << breaking
                                  << R"(" clsid="{6a1f0f3e-0d0c-4c7e-9b52-1e5a7730c101}">)"
                                  << R"(<Input guid="{b8cf8530-5562-47c4-ab67-b1f69ecf961e}"/>)"
                                  << R"(<Output guid="{4368d8a2-4181-4a9f-b295-3d9a38bb9ba0}"/>)"
                                  << "</Filter></Filters>";

    const std::vector<std::vector<std::string>> commands{
        {"run", "--trace", "--config", "pipeline.xml", "-o", "out" + hostile + ".xps"},
        {"run", "--filter", "No" + hostile, "-o", "out.xps"},
        {"run", "--queue", hostile},
        {"ticket", "--page", "1"},
        {"ticket", "--page", "1", "--explain"},
        {"features", "--page", "1", "--json"},
        {"settings", "--page", "1"},
        {"parts"},
        {"translate", hostile},
        {hostile}};
    int succeeded = 0;
    for (const std::vector<std::string>& command : commands)
        for (const std::string& name : {jobName, std::string("damaged.xps"), std::string("markup.xps")}) {
            std::vector<std::string> arguments = command;
            arguments.push_back(name);
            const CommandRun result(arguments);
            succeeded += result.code == ExitOk;
            const std::string said = result.out + result.errors;
            for (const char* piece : {"\u009b", "\u202e", "\u2028", "\x7f", "\u200b", "\xff"})
                EXPECT_EQ(std::string::npos, said.find(piece)) << command[0] << ": " << said;
            if (result.code != ExitOk) {
                const std::vector<std::string> lines = Lines(result.errors);
                ASSERT_FALSE(lines.empty()) << command[0];
                EXPECT_THAT(lines.back(), StartsWith("ov-pipeline: "));
                EXPECT_TRUE(lines.size() == 1 || command[1] == "--trace") << result.errors;
            }
            if (command[0] == "ticket" && command.back() != "--explain")
                continue; // data has lines of its own
            EXPECT_EQ(std::string::npos, said.find("\n9 pages"));
            for (const std::string& line : Lines(said))
                EXPECT_LT(line.size(), 1400u) << command[0];
        }
    EXPECT_EQ(6, succeeded);
}

TEST_F(CommandsTest, AnOutputStreamThatCannotBeWrittenIsAFailure) {
    SampleJob().Write("job.xps");
    std::ostream nowhere(nullptr);
    std::ostringstream errors;
    ShownOutput shownNowhere(nowhere);
    ShownOutput shownErrors(errors);
    EXPECT_EQ(ExitJobFailed, RunProgram({"parts", "job.xps"}, shownNowhere, shownErrors));
    EXPECT_EQ("ov-pipeline: what was to be printed cannot be written\n", errors.str());
}

// But header, whose business is what the device gets.
TEST_F(CommandsTest, NoReportShowsAPassword) {
    const std::string passwords[] = {"80731942", "55667788"};
    const auto ticket = [](const std::string& password) {
        return R"(<psf:PrintTicket version="1"
 xmlns:psf="http://schemas.microsoft.com/windows/2003/08/printing/printschemaframework"
 xmlns:psk="http://schemas.microsoft.com/windows/2003/08/printing/printschemakeywords"
 xmlns:psk11="http://schemas.microsoft.com/windows/2013/05/printing/printschemakeywordsv11"
 xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance" xmlns:xsd="http://www.w3.org/2001/XMLSchema">
<psf:Feature name="psk11:JobPasscode"><psf:Option name="psk:On"/></psf:Feature>
<psf:ParameterInit name="psk11:JobPasscodeString"><psf:Value xsi:type="xsd:string">)" +
               password + R"(</psf:Value></psf:ParameterInit>
<psf:ParameterInit name="psk:JobPasscodeString"><psf:Value xsi:type="xsd:string">)" +
               password + R"(</psf:Value></psf:ParameterInit></psf:PrintTicket>)";
    };
    SampleJob().Write("job.xps");
    for (const std::string& password : passwords) {
        std::ofstream(password[0] == '8' ? "a.xml" : "b.xml") << ticket(password);
        std::ofstream(password[0] == '8' ? "a.prn" : "b.prn")
            << "\x1B%-12345X@PJL XJOBPASSWORD = " << password << "\r\n@PJL COMMENT OID_ATT_JOB_PASSWORD \""
            << password << "\";\n@PJL ENTER LANGUAGE=POSTSCRIPT\n%!PS-Adobe-3.0\n%%EOF\n\x1B%-12345X";
    }
    const std::pair<std::vector<std::string>, const char*> reports[] = {
        {{"ticket", "--explain", "job.xps"}, "JobPasscodeString "},
        {{"ticket", "--explain", "--json", "job.xps"}, "JobPasscodeString\""},
        {{"features", "job.xps"}, "FEAT_JOB_PASSWORD"},
        {{"report", "--family", "Kestrel", "--no-pictures", "-o", "out.html", "job.xps"},
         "OID_ATT_JOB_PASSWORD "},
        {{"report", "--family", "Harrier", "--no-pictures", "-o", "out.html", "job.xps"}, "XJOBPASSWORD ="}};
    for (auto [arguments, words] : reports) {
        arguments.insert(arguments.end(), {"--ticket", "a.xml"});
        const CommandRun result(arguments);
        EXPECT_EQ(ExitOk, result.code) << result.errors;
        const std::string told = arguments[0] == "report" ? TemporaryFolder::Read("out.html") : result.out;
        EXPECT_TRUE(told.find(words) != std::string::npos && told.find("(hidden)") != std::string::npos)
            << words;
        EXPECT_TRUE((told + result.errors).find(passwords[0]) == std::string::npos) << words;
    }
    for (const char* const ending : {"xml", "prn"}) {
        const CommandRun result({"diff", std::string("a.") + ending, std::string("b.") + ending});
        EXPECT_THAT(result.out, AllOf(HasSubstr("(hidden) -> (hidden)"), HasSubstr("2 differences"),
                                      Not(HasSubstr(passwords[0])), Not(HasSubstr(passwords[1]))));
    }
}

} // namespace
