#include "HtmlReport/PagePictures.h"

#include "Common/ProgramPath.h"
#include "Common/Text.h"
#include "HtmlReport/JobOutline.h"
#include "HtmlReport/RendererProcess.h"
#include "Source/PackageSource.h"

#include <unistd.h>

#include <algorithm>
#include <chrono>
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

// The number of each document's last page, counted through the package.
std::vector<std::uint64_t> LastPages(const std::filesystem::path& package) {
    CComPtr<PackageSource> source;
    source.Attach(new PackageSource(OpenJobPackage(package, std::make_shared<JobState>())));
    std::vector<std::uint64_t> last;
    while (const CComPtr<IUnknown> part = source->Next()) {
        if (CComQIPtr<IFixedDocument>(part)) last.emplace_back();
        if (!last.empty()) last.back() = source->PageNumber();
    }
    return last;
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
    std::string trouble;
    if (const std::filesystem::path mutool = ProgramPath("mutool"); !mutool.empty()) {
        drawn.program = "MuPDF";
        trouble = RendererProcess::Run(
            mutool,
            {"draw", "-q", "-F", "png", "-w", pictureWidth, "-o", "page-%d.png", job, RangesOf(pages)},
            Folder(), mostSeconds);
        for (const std::uint64_t page : pages)
            drawn.pictures.push_back(Take("page-" + std::to_string(page) + ".png"));
    } else if (const std::filesystem::path xpstopng = ProgramPath("xpstopng"); !xpstopng.empty()) {
        drawn.program = "libgxps";
        trouble = DrawByDocument(xpstopng, job, LastPages(package), pages, drawn.pictures);
    } else {
        drawn.remark = "none: neither mutool nor xpstopng is installed";
        return drawn;
    }
    Tell(drawn, trouble);
    return drawn;
}

std::string PagePictures::DrawByDocument(const std::filesystem::path& program, const std::string& job,
                                         const std::vector<std::uint64_t>& lastPages,
                                         const std::vector<std::uint64_t>& pages,
                                         std::vector<std::string>& pictures) const {
    using Seconds = std::chrono::duration<double>;
    const auto end = std::chrono::steady_clock::now() + Seconds(mostSeconds);
    std::string trouble;
    auto page = pages.begin();
    for (std::uint64_t document = 1, before = 0; document <= lastPages.size(); ++document) {
        const std::uint64_t last = lastPages[document - 1];
        const auto next = std::upper_bound(page, pages.end(), last);
        const std::string prefix = "document-" + std::to_string(document);
        if (page != next) {
            const std::string told = RendererProcess::Run(
                program,
                {"-r", resolution, "-d", std::to_string(document), "-f", std::to_string(*page - before), "-l",
                 std::to_string(*std::prev(next) - before), job, prefix},
                Folder(), Seconds(end - std::chrono::steady_clock::now()).count());
            if (trouble.empty()) trouble = told;
        }
        const std::size_t digits = std::to_string(last - before).size();
        for (; page != next; ++page) {
            const std::string number = std::to_string(*page - before);
            std::string name = prefix + "-";
            name.append(digits - number.size(), '0').append(number).append(".png");
            pictures.push_back(Take(name));
        }
        before = last;
    }
    return trouble;
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
