// ov-pipeline run with the pass-through filter against a raw copy of the same package, each in a process of
// its own. Three figures count: the ratio to the raw copy (at most 1.6), pages per second at 4,000 pages
// against 250 (at least 0.9), and peak memory at 4,000 pages against 400 (at most 10 MB more).
#include "LargeJob.h"
#include "RawCopy.h"

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
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

// One command, run in several rounds; the medians count, since the machine may have other work.
struct Measured {
    std::vector<double> seconds;
    std::vector<double> processorSeconds;
    double peakMegabytes = 0;
};

double Median(std::vector<double> values) {
    std::nth_element(values.begin(), values.begin() + rounds / 2, values.end());
    return values[rounds / 2];
}

double Seconds(const timeval& time) {
    return static_cast<double>(time.tv_sec) + 1e-6 * static_cast<double>(time.tv_usec);
}

void RunOnce(const std::vector<std::string>& command, Measured& measured) {
    std::vector<char*> arguments;
    arguments.reserve(command.size() + 1);
    for (const std::string& part : command)
        arguments.push_back(const_cast<char*>(part.c_str()));
    arguments.push_back(nullptr);

    std::fflush(nullptr); // lest the child prints it again
    const auto start = std::chrono::steady_clock::now();
    const pid_t child = fork();
    if (child == 0) {
        if (!std::freopen("/dev/null", "w", stdout)) _exit(126);
        execv(arguments[0], arguments.data());
        _exit(127);
    }
    int status = 0;
    rusage usage{};
    if (child < 0 || wait4(child, &status, 0, &usage) != child || !WIFEXITED(status) ||
        WEXITSTATUS(status) != 0)
        throw std::runtime_error("failed: " + command[0] + " " + command[1]);
    const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
    measured.seconds.push_back(elapsed.count());
    measured.processorSeconds.push_back(Seconds(usage.ru_utime) + Seconds(usage.ru_stime));
    measured.peakMegabytes = std::max(measured.peakMegabytes, static_cast<double>(usage.ru_maxrss) / 1024);
}

int Compare(const std::string& self) {
    const fs::path scratch = fs::temp_directory_path() / ("ov-bench-" + std::to_string(getpid()));
    fs::create_directories(scratch);
    const std::string binaries = OV_BINARY_DIR;
    std::map<std::size_t, Measured> pipeline;
    std::printf("%8s %12s %12s %8s %12s %12s %10s\n", "pages", "raw copy s", "pipeline s", "ratio",
                "CPU ratio", "pages/s", "peak MB");
    for (const std::size_t pages : {250u, 400u, 1000u, 4000u}) {
        const std::string job = scratch / (std::to_string(pages) + ".xps");
        WriteLargeJob(job, pages);
        Measured raw;
        Measured& run = pipeline[pages];
        for (int round = 0; round < rounds; ++round) {
            RunOnce({self, "--raw-copy", job, scratch / "raw.xps"}, raw);
            RunOnce({binaries + "/bin/ov-pipeline", "run", "--queue",
                     std::string(OV_SOURCE_DIR) + "/Samples/Queues/ColorOffice", "--filter",
                     binaries + "/lib/libPassThrough.so", "-o", scratch / "run.xps", job},
                    run);
        }
        const double seconds = Median(run.seconds);
        std::printf("%8zu %12.3f %12.3f %8.2f %12.2f %12.0f %10.1f\n", pages, Median(raw.seconds), seconds,
                    seconds / Median(raw.seconds),
                    Median(run.processorSeconds) / Median(raw.processorSeconds),
                    static_cast<double>(pages) / seconds, run.peakMegabytes);
    }
    fs::remove_all(scratch);
    const auto rate = [&](std::size_t pages, std::vector<double> Measured::*times) {
        return static_cast<double>(pages) / Median(pipeline[pages].*times);
    };
    std::printf("pages/s, 4,000 against 250: %.2f (limit 0.90 or more; by CPU time %.2f)\n",
                rate(4000, &Measured::seconds) / rate(250, &Measured::seconds),
                rate(4000, &Measured::processorSeconds) / rate(250, &Measured::processorSeconds));
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
