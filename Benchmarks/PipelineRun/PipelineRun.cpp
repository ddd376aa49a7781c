// ov-pipeline run with the pass-through filter, each run in a process of its own: against a raw copy of the
// same package, a job of very many pages against a usual one, a ticket part on each page against none, and
// how soon a job ends that is cancelled, at whatever moment.
#include "Cancelling.h"
#include "LargeJob.h"
#include "Limits.h"
#include "MeasuredCommand.h"
#include "RawCopy.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

constexpr int rounds = 5;
constexpr int roundsOfMany = 3;
constexpr int moments = 20;
constexpr int momentsUnread = 3;
constexpr std::size_t usual = 4'000;
constexpr std::size_t many = 100'000;

double Rate(std::size_t pages, const std::vector<double>& seconds) {
    return static_cast<double>(pages) / MeasuredCommand::Median(seconds);
}

class Comparison {
public:
    Comparison(std::string self, fs::path scratch) : m_self(std::move(self)), m_scratch(std::move(scratch)) {
        fs::create_directories(m_scratch);
    }
    ~Comparison() { fs::remove_all(m_scratch); }
    Comparison(const Comparison&) = delete;
    Comparison& operator=(const Comparison&) = delete;

    void Run() {
        const std::string job = Job("usual", usual, {}), longJob = Job("many", many, {});
        MeasuredCommand raw, run, longRun;
        for (int round = 0; round < rounds; ++round) {
            raw.Run({m_self, "--raw-copy", job, m_scratch / "raw.xps"});
            run.Run(Pipeline(job));
            if (round < roundsOfMany) longRun.Run(Pipeline(longJob));
        }
        Show("raw copy", usual, raw);
        Show("pass-through", usual, run);
        Show("pass-through", many, longRun);
        Limits::Report("pass-through of 4,000 pages, CPU time of raw copies",
                       MeasuredCommand::Median(run.processorSeconds) /
                           MeasuredCommand::Median(raw.processorSeconds),
                       0.3);
        Limits::Report("pages a second at 100,000 pages, of those at 4,000",
                       Rate(many, longRun.seconds) / Rate(usual, run.seconds), 0.95, Bound::AtLeast);
        Limits::Report("the same by CPU time",
                       Rate(many, longRun.processorSeconds) / Rate(usual, run.processorSeconds), 0.95,
                       Bound::AtLeast);
        Limits::Report("peak memory at 100,000 pages above that at 4,000, in MB",
                       longRun.peakMegabytes - run.peakMegabytes, 24);
        RunTickets();
        Cancel(longJob, MeasuredCommand::Median(longRun.seconds));
    }

private:
    void RunTickets() {
        const std::string none = Job("none", usual, {0, std::numeric_limits<std::size_t>::max()});
        const std::string each = Job("each", usual, {usual, 1});
        MeasuredCommand without, with;
        for (int round = 0; round < rounds; ++round) {
            without.Run(Pipeline(none));
            with.Run(Pipeline(each));
        }
        Show("no page tickets", usual, without);
        Show("a ticket each", usual, with);
        Limits::Report("4,000 pages with a ticket part each, CPU time of those without",
                       MeasuredCommand::Median(with.processorSeconds) /
                           MeasuredCommand::Median(without.processorSeconds),
                       1.3);
        Limits::Report("their peak memory above that of those without, in MB",
                       with.peakMegabytes - without.peakMegabytes, 5);
    }

    void Cancel(const std::string& job, double whole) {
        double longest = 0;
        for (int moment = 0; moment < moments; ++moment)
            longest = std::max(longest, SecondsToEnd(Pipeline(job), whole * (moment + 0.5) / moments, true));
        Limits::Report("from Ctrl-C to the end at 20 moments of 100,000 pages, the longest, in seconds",
                       longest, 0.2);
        longest = 0;
        for (int moment = 1; moment <= momentsUnread; ++moment)
            longest = std::max(longest, SecondsToEnd(Pipeline(job, "-"), 0.5 * moment, false));
        Limits::Report("the same while nobody reads the output stream", longest, 0.2);
    }

    std::string Job(const std::string& name, std::size_t pages, const LargeJobTickets& tickets) const {
        std::string job = m_scratch / (name + ".xps");
        // In another process: a process that begins counts the memory of the one that it comes from.
        MeasuredCommand().Run({m_self, "--make-job", job, std::to_string(pages),
                               std::to_string(tickets.count), std::to_string(tickets.every)});
        return job;
    }

    std::vector<std::string> Pipeline(const std::string& job, const std::string& output = {}) const {
        const std::string binaries = OV_BINARY_DIR;
        return {binaries + "/bin/ov-pipeline",
                "run",
                "--queue",
                std::string(OV_SOURCE_DIR) + "/Samples/Queues/ColorOffice",
                "--filter",
                binaries + "/lib/libPassThrough.so",
                "-o",
                output.empty() ? (m_scratch / "run.xps").string() : output,
                job};
    }

    static void Show(const char* what, std::size_t pages, const MeasuredCommand& command) {
        std::printf("%-16s %8zu pages %8.3f s %8.3f s CPU %10.0f pages/s %8.1f MB\n", what, pages,
                    MeasuredCommand::Median(command.seconds),
                    MeasuredCommand::Median(command.processorSeconds), Rate(pages, command.seconds),
                    command.peakMegabytes);
        std::fflush(stdout);
    }

    std::string m_self;
    fs::path m_scratch;
};

} // namespace

int main(int count, char** arguments) {
    try {
        if (count == 4 && std::string(arguments[1]) == "--raw-copy") {
            CopyArchive(arguments[2], arguments[3]);
            return 0;
        }
        // FILE PAGES [TICKETS EVERY]: also to try things on
        if (count >= 4 && std::string(arguments[1]) == "--make-job") {
            LargeJobTickets tickets;
            if (count == 6)
                tickets = {std::strtoul(arguments[4], nullptr, 10), std::strtoul(arguments[5], nullptr, 10)};
            WriteLargeJob(arguments[2], std::strtoul(arguments[3], nullptr, 10), {}, tickets);
            return 0;
        }
        Comparison(fs::read_symlink("/proc/self/exe"),
                   fs::temp_directory_path() / ("ov-bench-" + std::to_string(getpid())))
            .Run();
        return Limits::Conclude();
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "bench.PipelineRun: %s\n", failure.what());
        return 1;
    }
}
