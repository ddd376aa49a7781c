// The program itself, in a process of its own: what a captured stream cannot show.
#include <Support/SampleJob.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <thread>

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::UnorderedElementsAre;

namespace {

const std::string PassThrough = OV_BINARY_DIR "/lib/libPassThrough.so";
const std::string WaitsForShutdown = OV_BINARY_DIR "/lib/libWaitsForShutdown.so";

// ov-pipeline with its error stream on a pipe or a terminal. Killed at the end if it still runs.
class Program {
public:
    enum class Errors { Pipe, Terminal };

    Program(std::vector<std::string> arguments, const std::filesystem::path& folder,
            Errors kind = Errors::Pipe) {
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

    // Reads the error stream until the words come; false if they do not within 20 seconds.
    bool WaitFor(const std::string& words) {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
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

TEST_F(ProgramTest, ExitsWithTheCommandsCode) {
    const std::pair<std::vector<std::string>, int> cases[] = {
        {{"run", "--filter", PassThrough, "-o", "out.xps", "job.xps"}, 0},
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

TEST_F(ProgramTest, SignalsShutTheFiltersDownAndLeaveNoOutput) {
    for (const int signal : {SIGINT, SIGTERM}) {
        Program program(
            {"run", "--trace", "--filter", PassThrough, WaitsForShutdown, "-o", "out.xps", "job.xps"},
            m_folder.Path());
        ASSERT_TRUE(program.WaitFor("WaitsForShutdown: receives the end of the parts")) << program.Said();
        program.Signal(signal);
        EXPECT_EQ(130, program.Finish());
        EXPECT_THAT(program.Said(), HasSubstr("ov-pipeline: job.xps: cancelled; nothing was written\n"));
        EXPECT_THAT(m_folder.Names(), ElementsAre("job.xps"));
    }
}

TEST_F(ProgramTest, ATerminalShowsProgress) {
    Program program({"run", "--filter", WaitsForShutdown, "-o", "out.xps", "job.xps"}, m_folder.Path(),
                    Program::Errors::Terminal);
    EXPECT_TRUE(program.WaitFor("2 pages, ")) << program.Said();
    program.Signal(SIGINT);
    EXPECT_EQ(130, program.Finish());
}

} // namespace
