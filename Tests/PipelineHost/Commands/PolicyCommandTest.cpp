// What an administrator's configuration does, by the program's command in this process.
#include "PipelineHost/Commands/CommandRun.h"
#include "Support/Rows.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>

using namespace OvPipeline;
using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

const std::string queues = OV_SOURCE_DIR "/Samples/Queues/";

class PolicyCommandTest : public InOwnFolder {
protected:
    static CommandRun Run(const std::string& configuration, std::vector<std::string> options = {}) {
        std::ofstream("c.xml", std::ios::binary) << configuration;
        options.insert(options.begin(), {"policy", "c.xml"});
        return CommandRun(options);
    }
    // Without the widths of columns.
    static std::vector<std::string> Cells(std::string text) {
        const auto isSecond = [](char left, char right) { return left == ' ' && right == ' '; };
        text.erase(std::unique(text.begin(), text.end(), isSecond), text.end());
        return Lines(text);
    }
    static std::string Setting(const std::string& name, const std::string& setting) {
        return "<Feature Name='" + name + "'>" + setting + "</Feature>";
    }
};

TEST_F(PolicyCommandTest, EachFeatureSaysWhatItDoes) {
    const std::string guard = "FEAT_DEV_CONFIGURE_JOB_TYPE_";
    const Rows<const char*, const char*, std::string> features{
        {"2-SidedPrinting", "<Setting Name='TwoSidedAny' Behavior='EnforcedDefault'/>",
         "FEAT_SIDES_IMAGED TwoSidedAny (VAL_SIDES_TWO_SIDED_ANY) EnforcedDefault tickets: option of "
         "psk:JobDuplexAllDocumentsContiguously becomes psk:TwoSidedLongEdge where it is psk:OneSided "
         "(SetChildNodeOptionAttributeValue)"},
        {"2-SidedPrinting", "<Setting Name='OneSided' Behavior='EnforcedDefault'/>",
         "FEAT_SIDES_IMAGED OneSided (VAL_SIDES_ONE_SIDED) EnforcedDefault nothing as EnforcedDefault"},
        {"ImagesPerPage", "<Setting Name='4' Behavior=''/>",
         "FEAT_PAGE_LAYOUT 4 (VAL_PAGE_LAYOUT_NUP_4) EnforcedSetting tickets: PagesPerSheet of "
         "psk:JobNUpAllDocumentsContiguously becomes 4 (SetScoredPropertyValue)"},
        {"ImagesPerPage", "<Setting Name='5'/>",
         "FEAT_PAGE_LAYOUT 5 EnforcedSetting nothing: it has no such value"},
        {"JobIdentification", "<UID/>", "FEAT_JOB_IDENTIFICATION - - nothing: it has no setting"},
        {"FaxJobType", "<Setting Name='no'/>",
         guard + "FAX no EnforcedSetting job types: VAL_JOB_TYPE_FAX_DEPRECATED is not printed as such"},
        {"ProofPrintJobType", "<Setting Name='T'/>",
         guard + "PROOF_PRINT T EnforcedSetting job types: VAL_JOB_TYPE_PROOF_PRINT, "
                 "VAL_JOB_TYPE_PROOF_PRINT_WITH_JOB_NAME may be printed"},
        {"SecurePrintOnly", "<Setting Name='Enabled'/>",
         "FEAT_DEV_SECURE_PRINT_ONLY Enabled (VAL_SECURE_PRINT_ONLY_ENABLED) EnforcedSetting "
         "job types: every job becomes VAL_JOB_TYPE_SECURE_PRINT"},
        {"JobType", "<Setting Name='HoldJobType'/>",
         "FEAT_JOB_TYPE HoldJobType (VAL_JOB_TYPE_HOLD) EnforcedSetting job types: every job becomes "
         "VAL_JOB_TYPE_HOLD, if that may be printed"},
        {"Staple", "<Setting Name='None' Behavior='Default'/>",
         "FEAT_FINISHING_STAPLE None (VAL_FINISHING_NO_STAPLE) Default known, but enforced nowhere"},
        {"Nobody", "<Setting Name='x'/>", "- - - unknown: skipped"},
    };
    for (const auto& [name, setting, words] : features) {
        const CommandRun run = Run("<c>" + Setting(name, setting) + "</c>");
        EXPECT_EQ(ExitOk, run.code) << run.errors;
        EXPECT_THAT(Cells(run.out), Contains(std::string(name) + " " + words));
    }
}

TEST_F(PolicyCommandTest, AFaultSaysWhereReadingStoppedAndWhatIsLost) {
    const std::string staple = Setting("Staple", "<Setting Name='None'/>");
    const CommandRun noXml = Run("<c>" + staple + "\n\x1b[1m</c>");
    EXPECT_EQ(noXml.code, ExitJobFailed);
    EXPECT_THAT(noXml.errors, AllOf(StartsWith("ov-pipeline: c.xml: line 2: "),
                                    HasSubstr("; nothing of it is enforced\n")));

    const CommandRun broken =
        Run("<c>\n" + staple + staple + "\n<Foo/>" + Setting("Color", "") + "<Bar/></c>");
    EXPECT_EQ(broken.code, ExitJobFailed);
    EXPECT_THAT(Cells(broken.out),
                ElementsAre(StartsWith("configuration name"), StartsWith("Staple FEAT_FINISHING_STAPLE"),
                            "Staple - - - repeated: the first of that name counts",
                            "<Foo> - - - reading stopped here",
                            "Color - - - lost: it stands behind the fault",
                            "<Bar> - - - lost: it stands behind the fault", "",
                            "0 features enforced in tickets, 0 about types of jobs, 1 enforced nowhere, "
                            "0 unknown"));
    EXPECT_EQ(broken.errors,
              "ov-pipeline: c.xml: line 3: Encountered <Foo> element when expecting a <Feature> element; "
              "what was read before holds, 2 elements behind it lost\n");
    const CommandRun json = Run("<c>\n<Foo/>" + staple + "</c>", {"--json"});
    EXPECT_EQ(json.code, ExitJobFailed);
    EXPECT_THAT(json.out, AllOf(HasSubstr("\"effect\": \"faulty\""), HasSubstr("\"line\": 2"),
                                HasSubstr("\"lostFeatures\": 1"), HasSubstr("\"isXml\": true")));
}

TEST_F(PolicyCommandTest, AFileMayBeInUtf16AndIsOtherwiseRefusedInALine) {
    std::string little = "\xFF\xFE", big = "\xFE\xFF";
    for (const char c : std::string("<c>") + Setting("Nobody", "<Setting Name='x'/>") + "</c>") {
        little += std::string(1, c) + '\0';
        big += '\0' + std::string(1, c);
    }
    for (const std::string& utf16 : {little, big})
        EXPECT_THAT(Cells(Run(utf16).out), Contains("Nobody - - - unknown: skipped"));
    EXPECT_EQ(Run("\xEF\xBB\xBF<c/>").code, ExitOk);
    EXPECT_EQ(Run("").code, ExitOk);
    for (const char* const otherText : {"<c><Feature Name='\xE4'/></c>", "\xFF\xFE<", "\xFE\xFF\xD8<"}) {
        const CommandRun run = Run(otherText);
        EXPECT_EQ(run.code, ExitInputRefused);
        EXPECT_THAT(run.errors, HasSubstr("this is no text in UTF-8"));
    }
    const Rows<std::vector<std::string>, int, const char*> refusals{
        {{"policy", "missing.xml"}, ExitInputRefused, "there is no such file"},
        {{"policy", "."}, ExitInputRefused, "this is no file"},
        {{"policy", "--queue", "missing"}, ExitInputRefused, "missing"},
        {{"policy", "a.xml", "b.xml"}, ExitUsage, "one configuration at a time: a.xml or b.xml?"},
        {{"policy", "a.xml", "--queue", "q"}, ExitUsage, "a file and --queue exclude each other"},
    };
    for (const auto& [arguments, code, words] : refusals) {
        const CommandRun run(arguments);
        EXPECT_EQ(run.code, code);
        EXPECT_THAT(run.errors, HasSubstr(words));
        EXPECT_EQ(run.out, "");
    }
}

TEST_F(PolicyCommandTest, TheSampleQueuesShowAPolicyAndABrokenOne) {
    const CommandRun color({"policy", "--queue", queues + "ColorOffice", "--json"});
    EXPECT_EQ(color.code, ExitOk) << color.errors;
    EXPECT_THAT(color.out, AllOf(HasSubstr("\"setter\": \"SetScoredPropertyValue\""),
                                 HasSubstr("\"onlyOver\": \"psk:OneSided\""),
                                 HasSubstr("\"written\": \"ok:JobIdPrintFirstPage\""),
                                 HasSubstr("\"effect\": \"unknown\""), HasSubstr("\"fault\": null")));
    EXPECT_EQ(CommandRun({"policy", "--json"}).out, color.out) << "the queue of those who name none";
    const CommandRun mono({"policy", "--queue", queues + "MonoOffice"});
    EXPECT_EQ(mono.code, ExitJobFailed);
    EXPECT_THAT(mono.out, HasSubstr("2 features enforced in tickets"));
    EXPECT_EQ(mono.errors, "ov-pipeline: the queue's configuration: line 6: Invalid Behavior attribute value "
                           "'enforcedSetting'; what was read before holds, 2 elements behind it lost\n");

    // Settings that cannot be read hide the configuration.
    std::filesystem::copy(queues + "MonoOffice", "queue");
    std::filesystem::remove("queue/queue-properties.xml");
    std::ofstream("queue/queue-properties.xml") << "<q>";
    const CommandRun damaged({"policy", "--queue", "queue"});
    EXPECT_EQ(damaged.code, ExitJobFailed);
    EXPECT_THAT(damaged.errors,
                AllOf(HasSubstr("OrvelQueueProperties: "), HasSubstr("no configuration is enforced")));
}

} // namespace
