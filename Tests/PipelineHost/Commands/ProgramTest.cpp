// The program itself, in a process of its own: what a captured stream cannot show.
#include "Support/EnvironmentVariable.h"
#include "Support/Rows.h"
#include "Support/SampleJob.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <chrono>

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::UnorderedElementsAre;

namespace {

const std::string passThrough = OV_BINARY_DIR "/lib/libPassThrough.so";
const std::string misbehaves = OV_BINARY_DIR "/lib/libMisbehaves.so";

std::string Value(const char* variable) {
    const char* const value = std::getenv(variable);
    return value != nullptr ? value : "";
}

// ov-pipeline with its error stream on a pipe or a terminal. Killed at the end if it still runs.
class Program {
public:
    enum class Errors { Pipe, Terminal };
    using Preparation = void (*)(); // of the process, before it becomes the program

    Program(
        std::vector<std::string> arguments, const std::filesystem::path& folder, Errors kind = Errors::Pipe,
        Preparation prepare = [] {}) {
        int childEnd = -1;
        if (kind == Errors::Pipe) {
            int ends[2] = {-1, -1};
            if (pipe(ends) != 0) throw std::runtime_error("no pipe");
            m_errors = ends[0];
            childEnd = ends[1];
        } else {
            m_errors = posix_openpt(O_RDWR | O_NOCTTY);
            if (m_errors < 0 || grantpt(m_errors) != 0 || unlockpt(m_errors) != 0)
                throw std::runtime_error("no terminal");
            childEnd = open(ptsname(m_errors), O_RDWR | O_NOCTTY);
        }
        const std::string program = OV_BINARY_DIR "/bin/ov-pipeline";
        std::vector<char*> list{const_cast<char*>(program.c_str())};
        for (std::string& argument : arguments)
            list.push_back(argument.data());
        list.push_back(nullptr);
        m_process = fork();
        if (m_process == 0) {
            dup2(open("/dev/null", O_WRONLY), STDOUT_FILENO);
            dup2(childEnd, STDERR_FILENO);
            close(childEnd);
            prepare();
            if (chdir(folder.c_str()) == 0) execv(program.c_str(), list.data());
            _exit(127);
        }
        close(childEnd);
    }
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;
    ~Program() {
        if (m_process > 0) {
            kill(m_process, SIGKILL);
            waitpid(m_process, nullptr, 0);
        }
        close(m_errors);
    }

    // Reads the error stream until the words come; false if they do not within that time.
    bool WaitFor(const std::string& words, std::chrono::milliseconds longest = std::chrono::seconds(20)) {
        const auto end = std::chrono::steady_clock::now() + longest;
        while (m_said.find(words) == std::string::npos)
            if (std::chrono::steady_clock::now() > end || !ReadSome(100)) return false;
        return true;
    }
    void Signal(int signal) const { kill(m_process, signal); }
    // The exit code; -1 if the program did not come to its own end.
    int Finish() {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
        while (std::chrono::steady_clock::now() < end && ReadSome(100)) {
        }
        int status = 0;
        if (std::chrono::steady_clock::now() >= end) kill(m_process, SIGKILL);
        waitpid(m_process, &status, 0);
        m_process = -1;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    const std::string& Said() const { return m_said; }

private:
    // False at the end of the stream.
    bool ReadSome(int milliseconds) {
        pollfd ready{m_errors, POLLIN, 0};
        if (poll(&ready, 1, milliseconds) == 0) return true;
        char chunk[1000];
        const ssize_t size = read(m_errors, chunk, sizeof chunk);
        if (size > 0) m_said.append(chunk, static_cast<std::size_t>(size));
        return size > 0;
    }

    pid_t m_process = -1;
    int m_errors = -1;
    std::string m_said;
};

class ProgramTest : public testing::Test {
protected:
    void SetUp() override { SampleJob().Write(m_folder / "job.xps"); }
    TemporaryFolder m_folder;
};

// What comes by the input stream, a pipe or a file.
TEST_F(ProgramTest, TakesAJobFromTheInputStream) {
    std::filesystem::create_directory(m_folder / "out");
    const std::string job = m_folder / "job.xps";
    const EnvironmentVariable name("OV_TEST_JOB", job);
    const auto pipe = [] { dup2(popen("cat \"$OV_TEST_JOB\"", "r")->_fileno, STDIN_FILENO); };
    const auto file = [] { dup2(open(Value("OV_TEST_JOB").c_str(), O_RDONLY), STDIN_FILENO); };
    const auto nothing = [] { dup2(open("/dev/null", O_RDONLY), STDIN_FILENO); };
    // Of a file that somebody has read a part of, the rest.
    m_folder.Write("out/behind.xps", "read" + TemporaryFolder::Read(job));
    const auto rest = [] {
        const std::string behind = Value("OV_TEST_JOB") + "/../out/behind.xps";
        dup2(open(std::filesystem::path(behind).lexically_normal().c_str(), O_RDONLY), STDIN_FILENO);
        lseek(STDIN_FILENO, 4, SEEK_SET);
    };
    for (const Program::Preparation prepare :
         {Program::Preparation(pipe), Program::Preparation(file), Program::Preparation(rest)}) {
        Program run({"run", "-q", "-o", "out/job.xps", "-"}, m_folder.Path(), Program::Errors::Pipe, prepare);
        EXPECT_EQ(0, run.Finish()) << run.Said();
        const std::string page = "Documents/1/Pages/2.fpage";
        EXPECT_EQ(ReadZip(job).at(page), ReadZip(m_folder / "out/job.xps").at(page));
        Program nameless({"run", "-"}, m_folder.Path(), Program::Errors::Pipe, prepare);
        EXPECT_EQ(2, nameless.Finish());
        EXPECT_THAT(nameless.Said(), HasSubstr("-o names the output"));
    }
    Program empty({"parts", "-"}, m_folder.Path(), Program::Errors::Pipe, nothing);
    EXPECT_EQ(3, empty.Finish());
    EXPECT_THAT(empty.Said(), HasSubstr("ov-pipeline: standard input: "));
}

// Whoever ignores how its children end hands that down.
TEST_F(ProgramTest, HearsHowItsJobsEnd) {
    const auto ignores = [] { signal(SIGCHLD, SIG_IGN); };
    Program run({"run", "-q", "job.xps", "none.xps"}, m_folder.Path(), Program::Errors::Pipe, ignores);
    EXPECT_EQ(3, run.Finish());
}

// The first signal reaches all jobs that run, and the ones behind them are not begun.
TEST_F(ProgramTest, CancelsAllJobsOfACall) {
    for (const char* const name : {"b.xps", "c.xps"})
        std::filesystem::copy_file(m_folder / "job.xps", m_folder / name);
    Program program({"run", "--trace", "-j2", "--filter", misbehaves, "job.xps", "b.xps", "c.xps"},
                    m_folder.Path());
    for (int taken = 0; taken < 2; ++taken)
        ASSERT_TRUE(program.WaitFor("Misbehaves: receives the end of the parts")) << program.Said();
    program.Signal(SIGINT);
    EXPECT_EQ(130, program.Finish());
    EXPECT_THAT(program.Said(), HasSubstr("ov-pipeline: cancelled\n"));
    EXPECT_THAT(m_folder.Names(), UnorderedElementsAre("job.xps", "b.xps", "c.xps"));
}

TEST_F(ProgramTest, ExitsWithTheCommandsCode) {
    const std::pair<std::vector<std::string>, int> cases[] = {
        {{"run", "--filter", passThrough, "-o", "out.xps", "job.xps"}, 0},
        {{"run", "--filter", "NoSuchModule", "job.xps"}, 1},
        {{"run"}, 2},
        {{"parts", "none.xps"}, 3},
    };
    for (const auto& [arguments, code] : cases) {
        Program program(arguments, m_folder.Path());
        EXPECT_EQ(code, program.Finish()) << program.Said();
    }
    EXPECT_THAT(m_folder.Names(), UnorderedElementsAre("job.xps", "out.xps"));
}

TEST_F(ProgramTest, FilesOfTheJobDoNotTakeThePlaceOfStreamsThatAreClosed) {
    Program program({"run", "--filter", passThrough, "-o", "out.xps", "job.xps"}, m_folder.Path(),
                    Program::Errors::Pipe, [] { close_range(STDIN_FILENO, STDERR_FILENO, 0); });
    EXPECT_EQ(1, program.Finish()); // the summary cannot be written, and goes nowhere else
    EXPECT_EQ(0, Program({"parts", "out.xps"}, m_folder.Path()).Finish());
}

TEST_F(ProgramTest, AJobGoesIntoTheOutputStreamAlone) {
    static std::string target; // of what becomes of the program's output stream
    const auto intoTarget = [] { dup2(open(target.c_str(), O_WRONLY | O_CREAT, 0600), STDOUT_FILENO); };
    const std::vector<std::string> command{"run", "--filter", passThrough, "-o", "-", "job.xps"};
    target = (m_folder / "streamed.xps").string();
    Program streams(command, m_folder.Path(), Program::Errors::Pipe, intoTarget);
    EXPECT_EQ(0, streams.Finish()) << streams.Said();
    EXPECT_THAT(streams.Said(), HasSubstr("job.xps -> the output stream\n"));
    EXPECT_EQ(
        0, Program({"run", "--filter", passThrough, "-o", "out.xps", "job.xps"}, m_folder.Path()).Finish());
    EXPECT_EQ(TemporaryFolder::Read(target), TemporaryFolder::Read(m_folder / "out.xps"));
    EXPECT_THAT(m_folder.Names(), UnorderedElementsAre("job.xps", "out.xps", "streamed.xps"));

    target = (m_folder / "job.xps").string();
    const std::string job = TemporaryFolder::Read(target);
    EXPECT_EQ(2, Program(command, m_folder.Path(), Program::Errors::Pipe, intoTarget).Finish());
    EXPECT_EQ(TemporaryFolder::Read(target), job);

    target = "/dev/full";
    Program full(command, m_folder.Path(), Program::Errors::Pipe, intoTarget);
    EXPECT_EQ(1, full.Finish());
    EXPECT_THAT(full.Said(), HasSubstr("the output stream: cannot be written"));

    target = "/dev/null";
    const EnvironmentVariable temporary("TMPDIR", (m_folder / "none").c_str());
    Program nowhere(command, m_folder.Path(), Program::Errors::Pipe, intoTarget);
    EXPECT_EQ(1, nowhere.Finish());
    EXPECT_THAT(nowhere.Said(), HasSubstr("the output stream: cannot be written: no folder for temporary"));
}

TEST_F(ProgramTest, AnOutputStreamThatNobodyReadsEndsNoJobButACancelledOne) {
    SampleJob large;
    large.pages = 400; // more than a pipe holds
    large.pageSize = 1000;
    large.Write(m_folder / "job.xps");
    static int ends[2];
    for (const bool isGone : {false, true}) {
        ASSERT_EQ(0, pipe2(ends, O_CLOEXEC));
        if (isGone) close(ends[0]);
        Program program({"run", "--filter", passThrough, "-o", "-", "job.xps"}, m_folder.Path(),
                        Program::Errors::Pipe, [] { dup2(ends[1], STDOUT_FILENO); });
        if (!isGone) {
            EXPECT_FALSE(program.WaitFor("ov-pipeline", std::chrono::milliseconds(700))) << program.Said();
            program.Signal(SIGINT);
        }
        EXPECT_EQ(isGone ? 1 : 130, program.Finish());
        EXPECT_THAT(program.Said(),
                    HasSubstr(isGone ? "the output stream: cannot be written"
                                     : "cancelled; what was written is not the whole output"));
        if (!isGone) close(ends[0]);
        close(ends[1]);
    }
}

TEST_F(ProgramTest, SignalsShutTheFiltersDownAndLeaveNoOutput) {
    for (const int signal : {SIGINT, SIGTERM}) {
        Program program({"run", "--trace", "--filter", passThrough, misbehaves, "-o", "out.xps", "job.xps"},
                        m_folder.Path());
        ASSERT_TRUE(program.WaitFor("Misbehaves: receives the end of the parts")) << program.Said();
        program.Signal(signal);
        EXPECT_EQ(130, program.Finish());
        EXPECT_THAT(program.Said(), HasSubstr("ov-pipeline: job.xps: cancelled; nothing was written\n"));
        EXPECT_THAT(m_folder.Names(), ElementsAre("job.xps"));
    }
}

TEST_F(ProgramTest, ATerminalShowsProgress) {
    Program program({"run", "--filter", misbehaves, "-o", "out.xps", "job.xps"}, m_folder.Path(),
                    Program::Errors::Terminal);
    EXPECT_TRUE(program.WaitFor("2 pages, ")) << program.Said();
    program.Signal(SIGINT);
    EXPECT_EQ(130, program.Finish());
}

TEST_F(ProgramTest, SaysWhichFilterIsWaitedForAndEndsAtTheSecondSignal) {
    const EnvironmentVariable misbehaviour("OV_TEST_MISBEHAVIOUR", "hang");
    Program program({"run", "--trace", "--filter", misbehaves, "-o", "out.xps", "job.xps"}, m_folder.Path());
    ASSERT_TRUE(program.WaitFor("Misbehaves: receives the end of the parts")) << program.Said();
    program.Signal(SIGINT);
    EXPECT_TRUE(
        program.WaitFor("waits for filter Misbehaves (StartOperation); a second Ctrl-C ends the program"))
        << program.Said();
    program.Signal(SIGINT);
    EXPECT_EQ(130, program.Finish());
    EXPECT_THAT(program.Said(), AllOf(HasSubstr("ov-pipeline: ended at once; nothing was written\n"),
                                      Not(HasSubstr("\n\n"))));
    EXPECT_FALSE(std::filesystem::exists(m_folder / "out.xps"));
}

TEST_F(ProgramTest, ASignalThatWasIgnoredStaysIgnored) {
    Program program({"run", "--trace", "--filter", misbehaves, "-o", "out.xps", "job.xps"}, m_folder.Path(),
                    Program::Errors::Pipe, [] { signal(SIGINT, SIG_IGN); });
    ASSERT_TRUE(program.WaitFor("Misbehaves: receives the end of the parts")) << program.Said();
    program.Signal(SIGINT);
    EXPECT_FALSE(program.WaitFor("cancelled", std::chrono::milliseconds(300)));
    program.Signal(SIGTERM);
    EXPECT_EQ(130, program.Finish());
}

TEST_F(ProgramTest, AFilterThatEndsTheProgramIsNamed) {
    const Rows<const char*, int, const char*> cases{
        {"exit", 1, "filter Misbehaves (StartOperation): it has ended the program by exit(); nothing was"},
        {"quick_exit", 1, "filter Misbehaves (StartOperation): it has ended the program by exit()"},
        {"exit elsewhere", 1, "a thread of a filter: it has ended the program by exit()"},
        {"abort", -1, "filter Misbehaves (StartOperation): it aborts the program; nothing was written"},
        {"abort elsewhere", -1,
         "a thread of a filter or of the pipeline: it aborts the program; nothing was"},
    };
    for (const auto& [how, code, words] : cases) {
        const EnvironmentVariable misbehaviour("OV_TEST_MISBEHAVIOUR", how);
        Program program({"run", "--filter", misbehaves, passThrough, "-o", "out.xps", "job.xps"},
                        m_folder.Path());
        EXPECT_EQ(code, program.Finish()) << how << program.Said();
        EXPECT_THAT(program.Said(), HasSubstr(words));
        EXPECT_THAT(m_folder.Names(), ElementsAre("job.xps"));
    }
}

// As another user than root, whom the limit does not bind, and who has no other process.
TEST_F(ProgramTest, WithoutThreadsItSaysWhatItWantedThemFor) {
    std::filesystem::permissions(m_folder.Path(), std::filesystem::perms::all);
    static int limit;
    int failures = 0;
    for (limit = 1; limit < 8; ++limit) {
        Program program({"run", "--filter", passThrough, passThrough, "-o", "out.xps", "job.xps"},
                        m_folder.Path(), Program::Errors::Pipe, [] {
                            const rlimit threads{static_cast<rlim_t>(limit), static_cast<rlim_t>(limit)};
                            if (setrlimit(RLIMIT_NPROC, &threads) != 0 ||
                                (geteuid() == 0 && setuid(static_cast<uid_t>(700000 + getpid())) != 0))
                                _exit(127);
                        });
        const int code = program.Finish();
        if (code == 0) break;
        EXPECT_EQ(1, code);
        EXPECT_THAT(program.Said(), HasSubstr("no thread can be had"));
        EXPECT_THAT(m_folder.Names(), ElementsAre("job.xps"));
        ++failures;
    }
    EXPECT_GT(failures, 0);
}

} // namespace
