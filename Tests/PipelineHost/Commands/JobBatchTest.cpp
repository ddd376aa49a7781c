// Several jobs in one call.
#include "CommandRun.h"
#include "Support/EnvironmentVariable.h"
#include "Support/SampleJob.h"

#include <gmock/gmock.h>

using namespace OvPipeline;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;
using testing::UnorderedElementsAre;

namespace {

const std::string passThrough = OV_BINARY_DIR "/lib/libPassThrough.so";
const std::string misbehaves = OV_BINARY_DIR "/lib/libMisbehaves.so";

class JobBatchTest : public InOwnFolder {
protected:
    JobBatchTest() {
        for (const char* const name : {"a.xps", "b.xps", "c.xps"})
            SampleJob().Write(name);
    }
    static std::size_t Count(const std::string& text, const std::string& word) {
        std::size_t count = 0;
        for (std::size_t at = text.find(word); at != std::string::npos; at = text.find(word, at + 1))
            ++count;
        return count;
    }
};

TEST_F(JobBatchTest, EachJobHasItsOwnOutputAndAPlaceInTheTable) {
    std::filesystem::create_directory("out");
    const auto outputs = [] {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator("out"))
            names.push_back(entry.path().filename().string());
        return names;
    };
    for (const char* const atATime : {"1", "2", "7"}) {
        const CommandRun result(
            {"run", "--filter", passThrough, "--jobs", atATime, "-o", "out", "a.xps", "b.xps", "c.xps"});
        EXPECT_EQ(ExitOk, result.code) << result.errors;
        EXPECT_THAT(Lines(result.out),
                    ElementsAre(StartsWith("job "),
                                AllOf(StartsWith("a.xps  done"), HasSubstr("out/a-printed.xps")),
                                StartsWith("b.xps  done"), StartsWith("c.xps  done"), "3 of 3 jobs done"));
        EXPECT_EQ("", result.errors);
        EXPECT_THAT(outputs(), UnorderedElementsAre("a-printed.xps", "b-printed.xps", "c-printed.xps"));
    }
}

TEST_F(JobBatchTest, AJobThatFailsTakesNoOtherWithIt) {
    std::ofstream("b.xps") << "no package";
    const CommandRun refused({"run", "a.xps", "b.xps", "missing.xps"});
    EXPECT_EQ(ExitInputRefused, refused.code);
    EXPECT_THAT(Lines(refused.errors),
                ElementsAre(StartsWith("ov-pipeline: b.xps: "), StartsWith("ov-pipeline: missing.xps: ")));
    EXPECT_THAT(refused.out, AllOf(HasSubstr("1 of 3 jobs done"), HasSubstr("b.xps        refused")));
    EXPECT_THAT(m_folder.Names(), UnorderedElementsAre("a.xps", "b.xps", "c.xps", "a-printed.xps"));

    // Refused and failed: the codes do not agree.
    const EnvironmentVariable misbehaviour("OV_TEST_MISBEHAVIOUR", "exit");
    const CommandRun mixed({"run", "--filter", misbehaves, "--json", "--", "b.xps", "c.xps"});
    EXPECT_EQ(ExitJobFailed, mixed.code);
    EXPECT_EQ(1u, Count(mixed.out, R"("state": "refused")"));
    EXPECT_EQ(1u, Count(mixed.out, R"("state": "failed")"));
    EXPECT_EQ(2u, Count(mixed.out, R"("trouble": ")"));
}

TEST_F(JobBatchTest, AProcessThatCrashesIsAJobThatFailed) {
    const std::pair<const char*, const char*> cases[] = {{"abort", "was ended by signal 6"},
                                                         {"kill", "was ended by signal 9"},
                                                         {"_exit", "has ended before the job did"}};
    for (const auto& [how, words] : cases) {
        const EnvironmentVariable misbehaviour("OV_TEST_MISBEHAVIOUR", how);
        const CommandRun result({"run", "-j2", "--filter", misbehaves, "a.xps", "b.xps"});
        EXPECT_EQ(ExitJobFailed, result.code);
        EXPECT_THAT(result.errors, AllOf(HasSubstr("ov-pipeline: a.xps: its process " + std::string(words)),
                                         HasSubstr("ov-pipeline: b.xps: its process " + std::string(words))));
        EXPECT_THAT(result.out, HasSubstr("0 of 2 jobs done"));
        EXPECT_THAT(m_folder.Names(), UnorderedElementsAre("a.xps", "b.xps", "c.xps"));
    }
}

TEST_F(JobBatchTest, QuietSaysOnlyWhatFailed) {
    std::ofstream("b.xps") << "no package";
    for (const auto& [jobs, lines] : {std::pair<const char*, std::size_t>{"c.xps", 0}, {"b.xps", 1}}) {
        const CommandRun result({"run", "--quiet", "a.xps", jobs});
        EXPECT_EQ("", result.out);
        EXPECT_EQ(lines, Lines(result.errors).size()) << result.errors;
    }
}

} // namespace
