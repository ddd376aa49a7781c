#include "Job/PdfConverter.h"

#include <Common/ProgramEnvironment.h>
#include <Common/ProgramPath.h>

#include <fcntl.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <fstream>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace OvPrintServer {

namespace {

constexpr int cannotRun = 127;
// The converter leaves out pages without a mark, and a sheet's back would become its front: each gets one,
// white and beside the paper.
constexpr const char* marksEachPage =
    "<</EndPage{exch pop dup 2 lt{gsave initgraphics 1 setgray newpath -9 -9 moveto -8 -9 lineto stroke "
    "grestore}if 2 ne}>>setpagedevice";
constexpr auto betweenLooks = std::chrono::milliseconds(5);
constexpr auto patience = std::chrono::seconds(2); // with one that was asked to end

std::vector<char*> Pointers(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 1);
    for (std::string& text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

// Between fork and exec: nothing but calls of the system.
[[noreturn]] void BecomeConverter(const char* program, char* const* arguments, char* const* environment,
                                  const char* words) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    setpgid(0, 0); // so that what it starts ends with it
    signal(SIGTERM, SIG_DFL);
    signal(SIGINT, SIG_DFL);
    signal(SIGPIPE, SIG_DFL);
    const int nothing = open("/dev/null", O_RDONLY);
    const int said = open(words, O_WRONLY | O_CREAT | O_TRUNC, 0600);
    if (nothing < 0 || said < 0) _exit(cannotRun);
    dup2(nothing, STDIN_FILENO);
    dup2(said, STDOUT_FILENO);
    dup2(said, STDERR_FILENO);
    close_range(STDERR_FILENO + 1, ~0U, 0);
    execve(program, arguments, environment);
    _exit(cannotRun);
}

// Until it is waited for, its number is not given to another process or group: none but it and what it has
// started gets a signal.
int WaitFor(pid_t child, CancelWatch& watch) {
    setpgid(child, child); // whoever of the two comes first
    watch.SetChild(child);
    std::optional<std::chrono::steady_clock::time_point> asked;
    for (siginfo_t ended{};; std::this_thread::sleep_for(betweenLooks)) {
        const int failed = waitid(P_PID, static_cast<id_t>(child), &ended, WEXITED | WNOWAIT | WNOHANG);
        if (ended.si_pid == child || (failed < 0 && errno != EINTR)) break;
        if (!watch.IsCancelled()) continue;
        if (!asked) asked = std::chrono::steady_clock::now();
        if (std::chrono::steady_clock::now() - *asked > patience) kill(-child, SIGKILL);
    }
    watch.SetChild(0);
    kill(-child, SIGKILL); // what it has left
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    return status;
}

std::string FirstLine(const std::filesystem::path& file) {
    std::ifstream stream(file);
    std::string line;
    while (line.empty() && std::getline(stream, line)) {
    }
    return line;
}

} // namespace

void ConvertPdf(const std::filesystem::path& pdf, const std::filesystem::path& xps,
                const std::filesystem::path& folder, CancelWatch& watch) {
    const std::filesystem::path program = OvPipeline::ProgramPath("gs");
    if (program.empty())
        throw ConversionError(
            "the job is a PDF document, and nothing here makes XPS of it: install Ghostscript "
            "(the package ghostscript), or send XPS",
            true);
    std::string output = xps.string(); // a percent sign would begin the number of a page
    for (std::size_t at = 0; (at = output.find('%', at)) != std::string::npos; at += 2)
        output.insert(at, 1, '%');
    std::vector<std::string> arguments{program.string(),
                                       "-q",
                                       "-dSAFER",
                                       "-dBATCH",
                                       "-dNOPAUSE",
                                       "-sDEVICE=xpswrite",
                                       "-sOutputFile=" + output,
                                       "-c",
                                       marksEachPage,
                                       "-f",
                                       std::filesystem::absolute(pdf).string()};
    const OvPipeline::ProgramEnvironment environment(folder);
    const std::vector<char*> argumentPointers = Pointers(arguments);
    const std::string words = (folder / "converter-words").string();

    const pid_t child = fork();
    if (child < 0) throw ConversionError("the converter cannot be started");
    if (child == 0)
        BecomeConverter(program.c_str(), argumentPointers.data(), environment.Pointers(), words.c_str());
    const int status = WaitFor(child, watch);
    if (watch.IsCancelled()) return;
    if (WIFEXITED(status) && WEXITSTATUS(status) == 0 && std::filesystem::exists(xps)) return;
    const std::string said = FirstLine(words);
    throw ConversionError("the PDF document cannot be made XPS: Ghostscript " +
                          (said.empty() ? std::string("ended without a word") : "says " + said));
}

} // namespace OvPrintServer
