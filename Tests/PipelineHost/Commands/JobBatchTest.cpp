// Several jobs in one call.
#include "CommandRun.h"
#include "Commands/JobProcess.h"
#include "Commands/Processors.h"
#include "Support/EnvironmentVariable.h"
#include "Support/SampleJob.h"

#include <gmock/gmock.h>
#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

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

TEST_F(JobBatchTest, ASignalCancelsWhatRunsAndStartsNoOther) {
    // What this process keeps of a job of its own is not for theirs.
    ASSERT_EQ(ExitOk, CommandRun({"run", "-o", "c.xps", "a.xps"}).code);
    const pid_t canceller = fork();
    if (canceller == 0) {
        usleep(300'000);
        kill(getppid(), SIGINT);
        _exit(0);
    }
    const CommandRun result({"run", "-j2", "--filter", misbehaves, "a.xps", "b.xps", "c.xps"});
    waitpid(canceller, nullptr, 0);
    EXPECT_EQ(ExitCancelled, result.code);
    EXPECT_THAT(Lines(result.out), ElementsAre(StartsWith("job "), StartsWith("a.xps  cancelled"),
                                               StartsWith("b.xps  cancelled"),
                                               StartsWith("c.xps  not started"), "0 of 3 jobs done"));
    EXPECT_THAT(result.errors, HasSubstr("ov-pipeline: cancelled"));
    EXPECT_THAT(m_folder.Names(), UnorderedElementsAre("a.xps", "b.xps", "c.xps"));
    EXPECT_EQ(-1, waitpid(-1, nullptr, WNOHANG)) << "a process is left";
}

// A signal that comes before the job takes any, or behind it.
TEST(JobProcessTest, OneThatIsCancelledOutsideOfItsJobSaysSoByItsCode) {
    std::ostringstream lines;
    ShownOutput errors(lines);
    JobProcess process(
        [](ShownOutput& told) {
            told.Line("here");
            pause();
            return JobProcess::Result();
        },
        errors);
    process.Begin();
    while (lines.str().empty() && process.Hear(errors)) {
    }
    kill(process.Process(), SIGINT); // as a terminal sends it to all of them: the first process sees to it
    process.Cancel();
    const int status = process.Await();
    EXPECT_TRUE(WIFEXITED(status));
    EXPECT_EQ(ExitCancelled, WEXITSTATUS(status));
    EXPECT_FALSE(process.Account());
    EXPECT_EQ("here\n", lines.str());
}

// Nobody who cancels the jobs waits for one that has been stopped.
TEST(JobProcessTest, OneThatIsStoppedIsCancelledLikeAnyOther) {
    std::ostringstream lines;
    ShownOutput errors(lines);
    JobProcess process(
        [](ShownOutput&) {
            pause();
            return JobProcess::Result();
        },
        errors);
    process.Begin();
    kill(process.Process(), SIGSTOP);
    ASSERT_EQ(process.Process(), waitpid(process.Process(), nullptr, WUNTRACED));
    process.Cancel();
    pollfd told{process.Descriptor(), POLLIN, 0};
    EXPECT_EQ(1, poll(&told, 1, 5000));
    kill(process.Process(), SIGKILL);
    EXPECT_EQ(ExitCancelled, WEXITSTATUS(process.Await()));
}

// The first process takes signals by a handler, which is no more there for one that was just made.
TEST(JobProcessTest, OneThatIsCancelledAsSoonAsItIsMadeIsCancelled) {
    void (*const before)(int) = signal(SIGTERM, [](int) {});
    std::ostringstream lines;
    ShownOutput errors(lines);
    for (int i = 0; i < 100; ++i) {
        JobProcess process(
            [](ShownOutput&) {
                sleep(1);
                return JobProcess::Result();
            },
            errors);
        process.Begin();
        process.Cancel();
        EXPECT_EQ(ExitCancelled, WEXITSTATUS(process.Await()));
        if (HasFailure()) break;
    }
    signal(SIGTERM, before);
}

// Three processes on the two processors that there are; one of them gets both again.
TEST(ProcessorsTest, ProcessesAreSpreadAndMaySpread) {
    Processors processors;
    if (processors.Count() < 2) GTEST_SKIP() << "one processor";
    std::vector<std::unique_ptr<JobProcess>> waiting;
    std::ostringstream lines;
    ShownOutput errors(lines);
    const auto allowed = [](pid_t process) {
        cpu_set_t set;
        sched_getaffinity(process, sizeof set, &set);
        return set;
    };
    std::map<int, int> users;
    for (std::size_t i = 0; i <= processors.Count(); ++i) {
        waiting.push_back(
            std::make_unique<JobProcess>([](ShownOutput&) { return JobProcess::Result(); }, errors));
        const int processor = processors.Take(waiting.back()->Process());
        const cpu_set_t set = allowed(waiting.back()->Process());
        EXPECT_TRUE(CPU_COUNT(&set) == 1 && CPU_ISSET(processor, &set));
        ++users[processor];
    }
    EXPECT_EQ(processors.Count(), users.size());
    // The first has two; once both are gone, it is the one that fewest are on.
    const int first = users.begin()->first;
    processors.GiveBack(first);
    processors.GiveBack(first);
    EXPECT_EQ(first, processors.Take(waiting[0]->Process()));
    processors.Free(waiting[0]->Process());
    const cpu_set_t all = allowed(waiting[0]->Process());
    EXPECT_EQ(processors.Count(), static_cast<std::size_t>(CPU_COUNT(&all)));
}

} // namespace
