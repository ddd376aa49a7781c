#include "Job/PdfConverter.h"

#include <Common/ChildProgram.h>
#include <Common/ProgramPath.h>

#include <sys/wait.h>

#include <chrono>
#include <fstream>
#include <optional>
#include <string>
#include <thread>

namespace OvPrintServer {

namespace {

// The converter leaves out pages without a mark, and a sheet's back would become its front: each gets one,
// white and beside the paper.
constexpr const char* marksEachPage =
    "<</EndPage{exch pop dup 2 lt{gsave initgraphics 1 setgray newpath -9 -9 moveto -8 -9 lineto stroke "
    "grestore}if 2 ne}>>setpagedevice";
constexpr auto betweenLooks = std::chrono::milliseconds(5);
constexpr auto patience = std::chrono::seconds(2); // with one that was asked to end

// The watch asks it to end; one that does not is ended.
int RunWatched(const OvPipeline::ChildProgram::Call& call, CancelWatch& watch) {
    OvPipeline::ChildProgram converter(call);
    watch.SetChild(converter.Process());
    std::optional<std::chrono::steady_clock::time_point> asked;
    for (; !converter.HasEnded(); std::this_thread::sleep_for(betweenLooks)) {
        if (!watch.IsCancelled()) continue;
        if (!asked) asked = std::chrono::steady_clock::now();
        if (std::chrono::steady_clock::now() - *asked > patience) break;
    }
    watch.SetChild(0);
    return converter.Finish();
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
    std::string output =
        std::filesystem::absolute(xps).string(); // a percent sign would begin the number of a page
    for (std::size_t at = 0; (at = output.find('%', at)) != std::string::npos; at += 2)
        output.insert(at, 1, '%');
    const std::filesystem::path words = std::filesystem::absolute(folder / "converter-words");
    const OvPipeline::ChildProgram::Call call{program,
                                              {"-q", "-dSAFER", "-dBATCH", "-dNOPAUSE", "-sDEVICE=xpswrite",
                                               "-sOutputFile=" + output, "-c", marksEachPage, "-f",
                                               std::filesystem::absolute(pdf).string()},
                                              std::filesystem::absolute(folder),
                                              words,
                                              {},
                                              {}};
    const int status = RunWatched(call, watch);
    if (watch.IsCancelled()) return;
    if (WIFEXITED(status) && WEXITSTATUS(status) == 0 && std::filesystem::exists(xps)) return;
    const std::string said = FirstLine(words);
    throw ConversionError("the PDF document cannot be made XPS: Ghostscript " +
                          (said.empty() ? std::string("ended without a word") : "says " + said));
}

} // namespace OvPrintServer
