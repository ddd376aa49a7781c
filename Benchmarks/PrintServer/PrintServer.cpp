// From the start of a filter of the print server to the first byte that it writes, for a job of one page:
// ovtoprinter beside the filters of the server that do as much with the same page, gstopdf (PostScript to
// PDF) and pdftops (PDF to PostScript). At most 1.5 times the faster of the two.
#include "Limits.h"
#include "MeasuredCommand.h"
#include "Support/TemporaryFolder.h"

#include <fcntl.h>
#include <signal.h>

#include <cstdlib>
#include <filesystem>

namespace {

constexpr int rounds = 15;
const std::string serverFilters = "/usr/lib/cups/filter/";

struct Filter {
    std::string program;
    std::string job;
    std::vector<double> seconds = {};

    void Run() {
        std::string words[] = {program, "1", "anna", "Title", "1", "", job};
        char* arguments[8] = {};
        for (std::size_t i = 0; i < std::size(words); ++i)
            arguments[i] = words[i].data();
        int ends[2];
        if (pipe2(ends, O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
        std::fflush(nullptr);
        const auto start = std::chrono::steady_clock::now();
        const pid_t child = fork();
        if (child == 0) {
            const int nothing = open("/dev/null", O_RDWR | O_CLOEXEC);
            dup2(nothing, STDIN_FILENO);
            dup2(ends[1], STDOUT_FILENO);
            dup2(nothing, STDERR_FILENO);
            execv(arguments[0], arguments);
            _exit(127);
        }
        close(ends[1]);
        char chunk[4096];
        const bool hasByte = read(ends[0], chunk, 1) == 1;
        const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
        while (read(ends[0], chunk, sizeof chunk) > 0) {
        }
        close(ends[0]);
        int status = 0;
        waitpid(child, &status, 0);
        if (!hasByte || !WIFEXITED(status) || WEXITSTATUS(status) != 0)
            throw std::runtime_error(program + " fails for " + job);
        seconds.push_back(elapsed.count());
    }
    double Median() const { return MeasuredCommand::Median(seconds); }
};

const std::string sample = OV_SOURCE_DIR "/Samples/Jobs/sample.ps";

std::string Make(const TemporaryFolder& folder, const char* device, const char* name) {
    MeasuredCommand().Run({"/usr/bin/gs", "-q", "-dSAFER", "-dBATCH", "-dNOPAUSE", "-dLastPage=1",
                           std::string("-sDEVICE=") + device, "-sOutputFile=" + (folder / name).string(),
                           sample});
    return folder / name;
}

} // namespace

int main() {
    try {
        for (const char* const peer : {"gstopdf", "pdftops"})
            if (!std::filesystem::exists(serverFilters + peer)) {
                std::printf("there is no %s: the package cups-filters is not installed\n", peer);
                return 0;
            }
        const TemporaryFolder folder;
        setenv("OV_QUEUE", OV_SOURCE_DIR "/Samples/Queues/ColorOffice", 1);
        setenv("CUPS_SERVERROOT", "/etc/cups", 1);
        setenv("CUPS_SERVERBIN", "/usr/lib/cups", 1);
        Filter own{OV_BINARY_DIR "/bin/ovtoprinter", Make(folder, "xpswrite", "page.xps")};
        Filter ownPdf{own.program, Make(folder, "pdfwrite", "page.pdf")};
        Filter toPdf{serverFilters + "gstopdf", Make(folder, "ps2write", "page.ps")};
        Filter toPostScript{serverFilters + "pdftops", ownPdf.job};
        for (int round = 0; round < rounds; ++round)
            for (Filter* filter : {&own, &toPdf, &ownPdf, &toPostScript})
                filter->Run();
        const double peer = std::min(toPdf.Median(), toPostScript.Median());
        std::printf(
            "to the first byte: ovtoprinter of XPS %.3f s, of PDF %.3f s; gstopdf %.3f s, pdftops %.3f s\n",
            own.Median(), ownPdf.Median(), toPdf.Median(), toPostScript.Median());
        std::printf("ovtoprinter of PDF beside the faster one: %.2f\n", ownPdf.Median() / peer);
        Limits::Report("first byte of ovtoprinter beside gstopdf or pdftops", own.Median() / peer, 1.5);
        return Limits::Conclude();
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "PrintServer: %s\n", failure.what());
        return 1;
    }
}
