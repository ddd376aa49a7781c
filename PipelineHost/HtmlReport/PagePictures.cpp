#include "HtmlReport/PagePictures.h"

#include "Common/ProgramPath.h"
#include "Common/Text.h"
#include "HtmlReport/JobOutline.h"
#include "HtmlReport/RendererProcess.h"

#include <unistd.h>

#include <fstream>
#include <iterator>
#include <string_view>

namespace OvPipeline {

namespace {

constexpr double mostSeconds = 60; // for all pages of a job
constexpr std::uintmax_t largestPicture = 8u << 20;
constexpr const char* pictureWidth = "600"; // dots
constexpr const char* resolution = "72";    // dots an inch, where no width can be asked for
constexpr std::string_view pngStart = "\x89PNG\r\n\x1a\n";
constexpr std::string_view postScriptStart = "%!PS-Adobe";
constexpr std::string_view pjlEnd = "\x1b%-12345X";

// Another process has other descriptors.
std::filesystem::path AsOthersSeeIt(const std::filesystem::path& file) {
    constexpr std::string_view own = "/proc/self/";
    const std::string name = std::filesystem::absolute(file).string();
    return name.starts_with(own) ? "/proc/" + std::to_string(getpid()) + "/" + name.substr(own.size()) : name;
}

void Tell(DrawnPages& drawn, const std::string& trouble) {
    std::size_t count = 0;
    for (const std::string& picture : drawn.pictures)
        if (!picture.empty()) ++count;
    drawn.remark = Counted(count, "page") + " drawn by " + drawn.program;
    if (!trouble.empty()) drawn.remark += ", then " + trouble;
}

// The PostScript of a device's stream: the lines from its first to the end of the job, but for those of PJL.
bool CutPjl(const std::filesystem::path& stream, const std::filesystem::path& cut) {
    std::ifstream in(stream, std::ios::binary);
    std::ofstream out(cut, std::ios::binary);
    bool isInside = false;
    bool hasAny = false;
    for (std::string line; std::getline(in, line);) {
        if (!isInside && line.starts_with(postScriptStart)) isInside = hasAny = true;
        if (isInside && line.starts_with(pjlEnd)) isInside = false;
        if (isInside && !line.starts_with('\x1b')) out << line << '\n';
    }
    return hasAny && out.flush();
}

} // namespace

bool PagePictures::CanDrawStreams() { return !ProgramPath("gs").empty(); }

std::string PagePictures::Take(const std::string& name) const {
    const std::filesystem::path file = Folder() / name;
    std::error_code error;
    if (!std::filesystem::is_regular_file(std::filesystem::symlink_status(file, error)) ||
        std::filesystem::file_size(file, error) > largestPicture)
        return {};
    std::ifstream stream(file, std::ios::binary);
    std::string bytes{std::istreambuf_iterator<char>(stream), {}};
    std::filesystem::remove(file, error);
    return bytes.starts_with(pngStart) ? bytes : std::string();
}

DrawnPages PagePictures::OfPackage(const std::filesystem::path& package,
                                   const std::vector<std::uint64_t>& pages) const {
    DrawnPages drawn;
    const std::string job = "job.xps"; // the programs tell files by the ends of their names
    std::error_code error;
    std::filesystem::remove(Folder() / job, error);
    std::filesystem::create_symlink(AsOthersSeeIt(package), Folder() / job);
    std::filesystem::path program = ProgramPath("mutool");
    std::string trouble;
    std::string prefix = "page-";
    std::size_t digits = 0;
    if (!program.empty()) {
        drawn.program = "MuPDF";
        trouble = RendererProcess::Run(
            program,
            {"draw", "-q", "-F", "png", "-w", pictureWidth, "-o", "page-%d.png", job, RangesOf(pages)},
            Folder(), mostSeconds);
    } else if (program = ProgramPath("xpstopng"); !program.empty()) {
        drawn.program = "libgxps";
        trouble = RendererProcess::Run(program,
                                       {"-r", resolution, "-f", std::to_string(pages.front()), "-l",
                                        std::to_string(pages.back()), job, "page"},
                                       Folder(), mostSeconds);
        // Its names have as many digits as the document's last page.
        for (const auto& entry : std::filesystem::directory_iterator(Folder())) {
            const std::string name = entry.path().filename().string();
            if (name.starts_with(prefix)) digits = name.size() - prefix.size() - std::string(".png").size();
        }
    } else {
        drawn.remark = "none: neither mutool nor xpstopng is installed";
        return drawn;
    }
    for (const std::uint64_t page : pages) {
        std::string number = std::to_string(page);
        if (number.size() < digits) number.insert(0, digits - number.size(), '0');
        drawn.pictures.push_back(Take(prefix + number + ".png"));
    }
    Tell(drawn, trouble);
    return drawn;
}

DrawnPages PagePictures::OfStream(const std::filesystem::path& stream) const {
    DrawnPages drawn;
    const std::filesystem::path program = ProgramPath("gs");
    if (program.empty()) {
        drawn.remark = "none: gs is not installed";
        return drawn;
    }
    const std::string pages = "pages.ps";
    if (!CutPjl(stream, Folder() / pages)) {
        drawn.remark = "none: the output is no PostScript";
        return drawn;
    }
    drawn.program = "Ghostscript";
    const std::string trouble = RendererProcess::Run(
        program,
        {"-q", "-dSAFER", "-dBATCH", "-dNOPAUSE", "-sDEVICE=png16m", std::string("-r") + resolution,
         "-dTextAlphaBits=4", "-dGraphicsAlphaBits=4", "-sOutputFile=sheet-%d.png", pages},
        Folder(), mostSeconds);
    for (std::uint64_t sheet = 1;; ++sheet) {
        const std::string name = "sheet-" + std::to_string(sheet) + ".png";
        if (!std::filesystem::exists(Folder() / name)) break;
        drawn.pictures.push_back(Take(name));
    }
    Tell(drawn, trouble);
    return drawn;
}

} // namespace OvPipeline
