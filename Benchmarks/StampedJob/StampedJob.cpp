// What stamping costs: a job of 1,000 pages with one text on each through the filter Stamp, beside the same
// job through PassThrough, each in a process of its own (at most 1.5 of it); and the memory that Stamp needs
// for 100 and for 4,000 pages, and for a page of 50 KB and one of 50 MB (flat).
#include "Limits.h"
#include "MeasuredCommand.h"
#include "PipelineRun/LargeJob.h"
#include "Support/SampleJob.h"

#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

namespace fs = std::filesystem;

namespace {

constexpr auto sampleQueue = OV_SOURCE_DIR "/Samples/Queues/ColorOffice";
constexpr int rounds = 5;

// A queue whose jobs all get one text.
void MakeQueue(const fs::path& folder) {
    fs::copy(sampleQueue, folder);
    const fs::path file = folder / "default-ticket.xml";
    fs::permissions(file, fs::perms::owner_all);
    std::ifstream in(file);
    std::string ticket((std::istreambuf_iterator<char>(in)), {});
    const std::string end = "&lt;/OrvelPublicDocSettings&gt;";
    const std::size_t place = ticket.find(end);
    if (place == std::string::npos) throw std::runtime_error("the sample queue has no document settings");
    std::string settings = "<annotation-col-api><annotation-element-col-api><e><type-api>type-text</type-api>"
                           "<text-api>Draft of a report</text-api><font-name-api>DejaVu Sans</font-name-api>"
                           "</e></annotation-element-col-api></annotation-col-api>";
    for (std::size_t at = 0; (at = settings.find('<', at)) != std::string::npos;)
        settings.replace(at, 1, "&lt;");
    std::ofstream(file) << ticket.insert(place, settings);
}

class Comparison {
public:
    Comparison() {
        fs::create_directories(m_scratch);
        MakeQueue(m_scratch / "queue");
    }
    ~Comparison() { fs::remove_all(m_scratch); }
    Comparison(const Comparison&) = delete;
    Comparison& operator=(const Comparison&) = delete;

    void CompareTimes() {
        WriteLargeJob(Job(), 1000);
        MeasuredCommand passThrough;
        MeasuredCommand stamp;
        for (int round = 0; round < rounds; ++round) {
            Run(passThrough, "PassThrough");
            Run(stamp, "Stamp");
        }
        const auto ratio = [](const std::vector<double>& one, const std::vector<double>& other) {
            return MeasuredCommand::Median(one) / MeasuredCommand::Median(other);
        };
        std::printf("1,000 pages: PassThrough %.2f s, Stamp %.2f s: by CPU time %.2f\n",
                    MeasuredCommand::Median(passThrough.seconds), MeasuredCommand::Median(stamp.seconds),
                    ratio(stamp.processorSeconds, passThrough.processorSeconds));
        Limits::Report("1,000 pages, a text stamped on each, beside PassThrough",
                       ratio(stamp.seconds, passThrough.seconds), 1.5);
    }

    void CompareMemory() {
        for (const std::size_t pages : {std::size_t{100}, std::size_t{4000}}) {
            WriteLargeJob(Job(), pages);
            std::printf("%zu pages: peak %.1f MB\n", pages, Peak());
        }
        for (const std::size_t kilobytes : {std::size_t{50}, std::size_t{50'000}}) {
            WriteLongPage(kilobytes * 1000);
            std::printf("a page of %zu KB: peak %.1f MB\n", kilobytes, Peak());
        }
    }

private:
    void WriteLongPage(std::size_t bytes) const {
        SampleJob job;
        job.pages = 1;
        ZipItems items = job.Items();
        std::string& page = items.at(SampleJob::PageName(1, 1).substr(1));
        std::string content;
        while (content.size() < bytes)
            content += "<Path Fill=\"#102030\" Data=\"M 1,2 L 3,4 L 5,6 Z\"/>\n";
        page.insert(page.rfind("</"), content);
        WriteZip(Job(), items);
    }
    fs::path Job() const { return m_scratch / "job.xps"; }
    void Run(MeasuredCommand& command, const char* filter) const {
        const std::string binaries = OV_BINARY_DIR;
        command.Run({binaries + "/bin/ov-pipeline", "run", "--queue", m_scratch / "queue", "--filter",
                     binaries + "/lib/lib" + filter + ".so", "-o", m_scratch / "run.xps", Job()});
    }
    double Peak() const {
        MeasuredCommand stamp;
        Run(stamp, "Stamp");
        return stamp.peakMegabytes;
    }

    const fs::path m_scratch = fs::temp_directory_path() / ("ov-bench-" + std::to_string(getpid()));
};

} // namespace

int main() {
    try {
        Comparison comparison;
        comparison.CompareTimes();
        comparison.CompareMemory();
        return Limits::Conclude();
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "StampedJob: %s\n", failure.what());
        return 1;
    }
}
