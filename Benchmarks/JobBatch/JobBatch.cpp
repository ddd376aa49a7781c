// Two jobs at a time beside one: 200 small jobs in one call, by the clock. On two cores the throughput is to
// be at least 1.8 times that of one at a time.
#include "Limits.h"
#include "MeasuredCommand.h"
#include "Support/SampleJob.h"
#include "Support/TemporaryFolder.h"

#include <cstdio>
#include <stdexcept>
#include <string>
#include <thread>

namespace {

constexpr int jobs = 200;
constexpr int rounds = 5;

const std::string program = OV_BINARY_DIR "/bin/ov-pipeline";

void Compare(const std::string& filter, const SampleJob& job, const std::string& what) {
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder / "out");
    std::vector<std::string> command{
        program, "run",          "--quiet", "--filter", OV_BINARY_DIR "/lib/lib" + filter + ".so",
        "-o",    folder / "out", "--jobs",  ""};
    const std::size_t place = command.size() - 1;
    for (int number = 0; number < jobs; ++number) {
        const std::filesystem::path file = folder / ("job" + std::to_string(number) + ".xps");
        if (number == 0)
            job.Write(file);
        else
            std::filesystem::copy_file(folder / "job0.xps", file);
        command.push_back(file);
    }
    MeasuredCommand one;
    MeasuredCommand two;
    for (int round = 0; round < rounds; ++round) {
        command[place] = "1";
        one.Run(command);
        command[place] = "2";
        two.Run(command);
    }
    const double ratio = MeasuredCommand::Median(one.seconds) / MeasuredCommand::Median(two.seconds);
    std::printf("%s: one at a time %.2f s (%.2f s of CPU time), two %.2f s: %.2f\n", what.c_str(),
                MeasuredCommand::Median(one.seconds), MeasuredCommand::Median(one.processorSeconds),
                MeasuredCommand::Median(two.seconds), ratio);
    Limits::Report("throughput of --jobs 2 over 200 small jobs, " + what, ratio, 1.8, Bound::AtLeast);
}

} // namespace

int main() {
    try {
        if (std::thread::hardware_concurrency() < 2) {
            std::printf("this machine has one core: two jobs at a time are no faster on it\n");
            return 0;
        }
        SampleJob job;
        job.pages = 1;
        Compare("PassThrough", job, "packages");
        Compare("PageList", job, "bytes");
        return Limits::Conclude();
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "JobBatch: %s\n", failure.what());
        return 1;
    }
}
