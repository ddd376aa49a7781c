// ov-pipeline run with the pass-through filter against a raw copy of the same package, each in a process of
// its own. Three figures count: the ratio to the raw copy (at most 1.6), pages per second at 4,000 pages
// against 250 (at least 0.9), and peak memory at 4,000 pages against 400 (at most 10 MB more).
#include "LargeJob.h"
#include "MeasuredCommand.h"
#include "RawCopy.h"

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

constexpr int rounds = 5;

int Compare(const std::string& self) {
    const fs::path scratch = fs::temp_directory_path() / ("ov-bench-" + std::to_string(getpid()));
    fs::create_directories(scratch);
    const std::string binaries = OV_BINARY_DIR;
    std::map<std::size_t, MeasuredCommand> pipeline;
    std::printf("%8s %12s %12s %8s %12s %12s %10s\n", "pages", "raw copy s", "pipeline s", "ratio",
                "CPU ratio", "pages/s", "peak MB");
    for (const std::size_t pages : {250u, 400u, 1000u, 4000u}) {
        const std::string job = scratch / (std::to_string(pages) + ".xps");
        WriteLargeJob(job, pages);
        MeasuredCommand raw;
        MeasuredCommand& run = pipeline[pages];
        for (int round = 0; round < rounds; ++round) {
            raw.Run({self, "--raw-copy", job, scratch / "raw.xps"});
            run.Run({binaries + "/bin/ov-pipeline", "run", "--queue",
                     std::string(OV_SOURCE_DIR) + "/Samples/Queues/ColorOffice", "--filter",
                     binaries + "/lib/libPassThrough.so", "-o", scratch / "run.xps", job});
        }
        const double seconds = MeasuredCommand::Median(run.seconds);
        std::printf(
            "%8zu %12.3f %12.3f %8.2f %12.2f %12.0f %10.1f\n", pages, MeasuredCommand::Median(raw.seconds),
            seconds, seconds / MeasuredCommand::Median(raw.seconds),
            MeasuredCommand::Median(run.processorSeconds) / MeasuredCommand::Median(raw.processorSeconds),
            static_cast<double>(pages) / seconds, run.peakMegabytes);
    }
    fs::remove_all(scratch);
    const auto rate = [&](std::size_t pages, std::vector<double> MeasuredCommand::*times) {
        return static_cast<double>(pages) / MeasuredCommand::Median(pipeline[pages].*times);
    };
    std::printf("pages/s, 4,000 against 250: %.2f (limit 0.90 or more; by CPU time %.2f)\n",
                rate(4000, &MeasuredCommand::seconds) / rate(250, &MeasuredCommand::seconds),
                rate(4000, &MeasuredCommand::processorSeconds) /
                    rate(250, &MeasuredCommand::processorSeconds));
    std::printf("peak memory, 4,000 against 400: %+.1f MB (limit +10)\n",
                pipeline[4000].peakMegabytes - pipeline[400].peakMegabytes);
    return 0;
}

} // namespace

int main(int count, char** arguments) {
    try {
        if (count == 4 && std::string(arguments[1]) == "--raw-copy") {
            CopyArchive(arguments[2], arguments[3]);
            return 0;
        }
        if (count == 3 && std::string(arguments[1]) == "--make-job") { // a large job to try things on
            WriteLargeJob("job.xps", std::strtoul(arguments[2], nullptr, 10));
            return 0;
        }
        return Compare(fs::read_symlink("/proc/self/exe"));
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "bench.PipelineRun: %s\n", failure.what());
        return 1;
    }
}
