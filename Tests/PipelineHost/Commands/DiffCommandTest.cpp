// Two files compared, as the program shows it.
#include "PipelineHost/Commands/CommandRun.h"
#include "Support/Rows.h"
#include "Support/SampleJob.h"

#include <gmock/gmock.h>

using namespace OvPipeline;
using testing::AllOf;
using testing::ContainsRegex;
using testing::HasSubstr;
using testing::Not;

namespace {

class DiffCommandTest : public InOwnFolder {
protected:
    DiffCommandTest() {
        m_folder.Write("a.xml", SampleTicket("PageMediaSize", "ISOA4"));
        m_folder.Write("b.xml", SampleTicket("PageMediaSize", "ISOA3"));
        m_folder.Write("wide.xml", Wide(SampleTicket("PageMediaSize", "ISOA4")));
        m_folder.Write("a.prn", "\x1B%-12345X@PJL SET COPIES=1\n@PJL ENTER LANGUAGE=POSTSCRIPT\n%!\n");
        m_folder.Write("b.prn", "@PJL SET COPIES=1\n@PJL ENTER LANGUAGE=POSTSCRIPT\n%!\n%%CreationDate: x\n");
        SampleJob().Write("a.xps");
        SampleJob ticketed;
        ticketed.jobTicket = SampleTicket("A", "B");
        ticketed.Write("b.xps");
    }

    static std::string Wide(const std::string& text) {
        std::string units = "\xFF\xFE";
        for (const char c : text.substr(text.find("?>") + 2))
            units.append(1, c).append(1, '\0');
        return units;
    }
};

TEST_F(DiffCommandTest, SaysByItsExitCodeWhetherFilesDiffer) {
    const Rows<std::vector<std::string>, int, const char*> rows{
        {{"a.xml", "a.xml"}, 0, "no difference between the two print tickets\n"},
        {{"a.xml", "wide.xml"}, 0, "no difference"},
        {{"a.xml", "b.xml"}, 1, "settings\n  psk:PageMediaSize: psk:ISOA4 -> psk:ISOA3\n\n1 difference\n"},
        {{"a.prn", "a.prn"}, 0, "device streams\n"},
        {{"a.prn", "b.prn"}, 1, "comments\n  CreationDate: only in B: x (a time)\n"},
        {{"a.prn", "b.prn", "--ignore-times"}, 0, "A: a.prn\nB: b.prn\nno difference"},
        {{"a.xps", "a.xps"}, 0, "packages\n"},
        {{"a.xps", "b.xps"}, 1, "job ticket\n  ticket: only in B: /Metadata/Job_PT.xml\n"},
    };
    for (auto [arguments, code, words] : rows) {
        arguments.insert(arguments.begin(), "diff");
        const CommandRun run(arguments);
        EXPECT_EQ(code, run.code) << words;
        EXPECT_THAT(run.out, HasSubstr(words));
        EXPECT_EQ("", run.errors);
    }
}

TEST_F(DiffCommandTest, RefusesInOneLine) {
    m_folder.Write("damaged.xml", "<PrintTicket");
    m_folder.Write("damaged.xps", "PK\3\4 but no more");
    m_folder.Write("empty.xps", "PK\5\6" + std::string(18, '\0'));
    m_folder.Write("text.txt", "text");
    const Rows<std::vector<std::string>, int, const char*> rows{
        {{}, ExitUsage, "which pair of files? ov-pipeline diff wants two of one kind"},
        {{"a.xml"}, ExitUsage, "which pair of files?"},
        {{"a.xml", "b.xml", "c.xml"}, ExitUsage, "one pair of files at a time: b.xml or c.xml?"},
        {{"a.xml", "a.xps"}, ExitUsage, "a.xml is a print ticket, a.xps a package: only two of one kind"},
        {{"a.xml", "nowhere"}, ExitInputRefused, "ov-pipeline: nowhere: there is no such file"},
        {{".", "a.xml"}, ExitInputRefused, "ov-pipeline: .: this is no file"},
        {{"a.xml", "text.txt"}, ExitInputRefused, "text.txt: this is no print ticket, no package and no"},
        {{"a.xml", "damaged.xml"}, ExitInputRefused, "ov-pipeline: damaged.xml: line 1"},
        {{"damaged.xps", "a.xps"}, ExitInputRefused, "ov-pipeline: damaged.xps: the package is cut short"},
        {{"empty.xps", "a.xps"}, ExitInputRefused, "ov-pipeline: empty.xps: "},
        {{"empty.xps", "a.xml"}, ExitUsage, "empty.xps is a package, a.xml a print ticket"},
    };
    for (auto [arguments, code, words] : rows) {
        arguments.insert(arguments.begin(), "diff");
        const CommandRun run(arguments);
        EXPECT_EQ(code, run.code) << words;
        EXPECT_EQ("", run.out);
        EXPECT_THAT(run.errors, HasSubstr(words));
        EXPECT_EQ(1u, Lines(run.errors).size()) << run.errors;
    }
}

TEST_F(DiffCommandTest, PagesThatDifferAlikeStandAsOne) {
    const auto job = [](const char* option) {
        SampleJob made;
        made.pages = 5;
        made.pageTicket = SampleTicket("PageOrientation", option);
        return made;
    };
    job("Portrait").Write("a.xps");
    job("Landscape").Write("b.xps");
    const CommandRun run({"diff", "a.xps", "b.xps"});
    EXPECT_THAT(run.out,
                HasSubstr("\ndocument 1, pages 1 to 5, ticket\n  psk:PageOrientation: psk:Portrait -> "
                          "psk:Landscape\n\n5 differences\n"));
    const CommandRun json({"diff", "a.xps", "b.xps", "--json"});
    EXPECT_EQ(1, json.code);
    EXPECT_THAT(json.out,
                AllOf(HasSubstr("\"kind\": \"package\""), HasSubstr("\"equal\": false"),
                      HasSubstr("\"count\": 5"), HasSubstr("\"name\": \"document 1, page 5, ticket\""),
                      ContainsRegex("\"change\": \"changed\",\n *\"what\": \"psk:PageOrientation\",\n "
                                    "*\"a\": \"psk:Portrait\"")));
}

TEST_F(DiffCommandTest, ShowsWhatComesFromOutsideSafely) {
    const std::string evil = "\xc2\x9b\u202e\n\x1b[2J";
    m_folder.Write("a.prn", "%!\n%%Title: " + evil + "\n");
    m_folder.Write("b.prn", "%!\n%%Title: plain\n%%" + evil + ": x\n");
    for (const auto& arguments :
         {std::vector<std::string>{"diff", "a.prn", "b.prn"}, {"diff", "a.prn", "b.prn", "--json"}}) {
        const CommandRun run(arguments);
        EXPECT_EQ(1, run.code) << run.errors;
        EXPECT_THAT(run.out,
                    AllOf(Not(HasSubstr("\xc2\x9b")), Not(HasSubstr("\u202e")), Not(HasSubstr("\x1b"))));
    }
}

} // namespace
