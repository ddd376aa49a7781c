#include "HtmlReport/RendererProcess.h"

#include "Common/ChildProgram.h"

#include <string.h>
#include <sys/wait.h>

#include <chrono>
#include <system_error>
#include <thread>

namespace OvPipeline {

namespace {

constexpr std::uint64_t largestFile = std::uint64_t{1} << 30;
constexpr std::uint64_t mostMemory = std::uint64_t{4} << 30;
constexpr auto patience = std::chrono::milliseconds(2); // between two looks

std::string Words(int status) {
    if (WIFSIGNALED(status)) return std::string("it was ended by a signal: ") + strsignal(WTERMSIG(status));
    const int code = WEXITSTATUS(status);
    if (code == 0) return {};
    return code == ChildProgram::cannotRun ? "it cannot be run"
                                           : "it ended with code " + std::to_string(code);
}

} // namespace

std::string RendererProcess::Run(const std::filesystem::path& program,
                                 const std::vector<std::string>& arguments,
                                 const std::filesystem::path& folder, double seconds) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::duration<double>(seconds);
    try {
        ChildProgram renderer({program, arguments, folder, {}, largestFile, mostMemory});
        while (!renderer.HasEnded()) {
            if (std::chrono::steady_clock::now() > end) return "it took too long";
            std::this_thread::sleep_for(patience);
        }
        return Words(renderer.Finish());
    } catch (const std::system_error& error) {
        return error.what();
    }
}

} // namespace OvPipeline
