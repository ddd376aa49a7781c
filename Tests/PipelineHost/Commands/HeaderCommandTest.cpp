// What a device gets around a job's pages, as the program shows it.
#include "PipelineHost/Commands/CommandRun.h"
#include "Support/SampleJob.h"

#include <Commands/HeaderText.h>
#include <Commands/ShownAnswer.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>

using namespace OvPipeline;
using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

namespace {

TEST(MissingPieces, AreThoseWithoutAPartner) {
    EXPECT_THAT(MissingPieces({"a", "b", "c"}, {"a", "c"}), ElementsAre(1));
    EXPECT_THAT(MissingPieces({"a", "end", "b", "end"}, {"b", "end"}), ElementsAre(0, 1));
    EXPECT_THAT(MissingPieces({"a", "b"}, {"b", "a"}), testing::SizeIs(1));
    EXPECT_THAT(MissingPieces({"a"}, {}), ElementsAre(0));
    EXPECT_THAT(MissingPieces({}, {"a"}), IsEmpty());
    EXPECT_THAT(MissingPieces({"a", "b", "b", "c"}, {"a", "b", "c"}), ElementsAre(2));

    HeaderText::Pieces many(100000, "line"); // no table of all by all
    many[50000] = "other";
    HeaderText::Pieces fewer = many;
    fewer.erase(fewer.begin() + 50000);
    EXPECT_THAT(MissingPieces(many, fewer), ElementsAre(50000));
}

class HeaderCommandTest : public InOwnFolder {
protected:
    void SetUp() override {
        SampleJob job;
        job.jobTicket = SampleTicket("JobDuplexAllDocumentsContiguously", "TwoSidedShortEdge");
        job.Write("job.xps");
    }

    CommandRun Run(std::vector<std::string> arguments, const std::string& job = "job.xps") {
        arguments.insert(arguments.begin(),
                         {"header", job, "--queue", OV_SOURCE_DIR "/Samples/Queues/ColorOffice"});
        return CommandRun(arguments);
    }
    // A queue like the sample's, whose device is of that family, or of none.
    CommandRun RunOnFamily(const std::string& family) {
        std::filesystem::remove_all("queue");
        std::filesystem::copy(OV_SOURCE_DIR "/Samples/Queues/ColorOffice", "queue");
        std::filesystem::permissions("queue/queue.xml", std::filesystem::perms::owner_all);
        std::string xml = TemporaryFolder::Read("queue/queue.xml");
        xml.replace(xml.find(">Kestrel<") + 1, 7, family);
        std::ofstream("queue/queue.xml") << xml;
        return CommandRun({"header", "job.xps", "--queue", "queue"});
    }
    std::string Out(std::vector<std::string> arguments) {
        const CommandRun run = Run(std::move(arguments));
        EXPECT_EQ(run.code, ExitOk) << run.errors;
        return run.out;
    }
    // The line behind the one that holds the text.
    static std::string LineBehind(const std::string& out, const std::string& text) {
        const auto lines = Lines(out);
        for (std::size_t i = 0; i + 1 < lines.size(); ++i)
            if (lines[i].find(text) != std::string::npos) return lines[i + 1];
        return "no line with " + text;
    }
};

TEST_F(HeaderCommandTest, ShowsTheTextsOfAFamily) {
    EXPECT_THAT(Out({}), AllOf(StartsWith("Kestrel\n  PJL header\n    @PJL COMMENT OVLbegin\n"),
                               HasSubstr("\n  set-up\n    featurebegin{\n    %%BeginFeature: *")));
    const std::string ticket = Out({"--family", "lowendpclm"});
    EXPECT_THAT(ticket, AllOf(StartsWith("LowEndPCLm\n  PJL header\n    \\x1b%-12345X@PJL JOB\n"),
                              HasSubstr("\n  page ticket\n    %LexHBP-1.0\n"),
                              HasSubstr("sides: two-sided-short-edge\n"), Not(HasSubstr("<-"))));
    EXPECT_THAT(Out({"--family", "LowEndPS", "--json"}),
                AllOf(HasSubstr("\"family\": \"LowEndPS\""),
                      HasSubstr("\\\"NUP = 1\\\"\\u000d\\u000a@PJL SET"),
                      HasSubstr("\"setupCommands\": \"\"")));
    SampleJob().Write("Microsoft Word - a.xps");
    EXPECT_THAT(Run({}, "Microsoft Word - a.xps").out,
                HasSubstr("  comments\n    %%OvlPrintingApp: winword\n"));
}

TEST_F(HeaderCommandTest, SaysWhyALineStands) {
    const std::string why = Out({"--family", "LowEndPCLm", "--why"});
    EXPECT_EQ(LineBehind(why, "sides: two-sided-short-edge"),
              "      <- FEAT_SIDES_IMAGED = 5422 VAL_SIDES_TWO_SIDED_FLIP_SHORT_EDGE (ticket)");
    EXPECT_EQ(LineBehind(why, "@PJL SET JOBNAME"), "      <- FEAT_JOB_NAME = job.xps (rule)");
    EXPECT_THAT(LineBehind(why, "@PJL SET USERNAME"), StartsWith("      <- the user's name = "));
    EXPECT_EQ(LineBehind(why, "output-bin: auto"), "      <- the family, where nothing else is asked for");
    EXPECT_THAT(Out({"--family", "LowEndPCLm", "--why", "--json"}),
                HasSubstr("\"name\": \"FEAT_SIDES_IMAGED\""));
    const RecordedAnswer size{.question = {FeatureQuestionKind::OutputSize},
                              .value = RecordedAnswer::Size(Dimension(210, Dimension::Millimeter),
                                                            Dimension(297, Dimension::Millimeter)),
                              .isSpecified = true};
    EXPECT_EQ(ShownAnswer::Of(size).Text(), "210 mm by 297 mm");
}

TEST_F(HeaderCommandTest, PutsAllFamiliesSideBySide) {
    const auto lines = Lines(Out({"--all"}));
    EXPECT_EQ(lines[0],
              "Kestrel  Harrier  Osprey  Merlin  MerlinPCL6  LowEndPS  LowEndPCL6  LowEndPCLm  PJL header");
    EXPECT_EQ(lines[1], "x        .        x       .       x           .         .           .           "
                        "@PJL COMMENT OVLbegin");
    EXPECT_THAT(lines,
                Contains("                                                                                "
                         "}featurecleanup"));
    EXPECT_THAT(Out({"--all", "--why"}), AllOf(StartsWith("Kestrel\n"), HasSubstr("\n\nLowEndPCLm\n")));
}

TEST_F(HeaderCommandTest, RefusesWhatItCannotAnswer) {
    EXPECT_THAT(Run({"--family", "Falcon"}).errors, HasSubstr("none of Kestrel, Harrier"));
    EXPECT_EQ(Run({"--family", "Falcon"}).code, ExitUsage);
    EXPECT_EQ(Run({"--family", "Merlin", "--all"}).code, ExitUsage);
    EXPECT_EQ(RunOnFamily("").code, ExitUsage);
    const CommandRun unknown = RunOnFamily("Falcon");
    EXPECT_EQ(unknown.code, ExitInputRefused);
    EXPECT_THAT(unknown.errors, HasSubstr("queue: the driver property DeviceFamily is \"Falcon\", which is"));
    EXPECT_EQ(Run({}, "none.xps").code, ExitInputRefused);
    const std::string help = CommandRun({"header", "--help"}).out;
    for (const DeviceFamily& family : DeviceFamilies())
        EXPECT_THAT(help, HasSubstr(std::string(family.name))) << "the help names what may be asked for";
    SampleJob().Write("a\"b.xps");
    const CommandRun run = Run({"--all"}, "a\"b.xps");
    EXPECT_EQ(run.code, ExitOk);
    EXPECT_THAT(Lines(run.errors), ElementsAre(HasSubstr("warning: FEAT_JOB_NAME holds characters")));
}

} // namespace
