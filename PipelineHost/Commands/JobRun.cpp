#include "Commands/JobRun.h"

#include "Chain/Pipeline.h"
#include "Commands/JobWatch.h"
#include "Commands/JobWishesOf.h"
#include "Commands/KeptInputs.h"
#include "Commands/StandardOutput.h"
#include "Commands/Trouble.h"

#include <PrintTicket/PrintTicketMerge.h>

#include <time.h>

#include <chrono>
#include <optional>

namespace OvPipeline {

namespace {

PipelineSpec ChosenPipeline(const CommandOptions& options) {
    if (!options.config.empty()) return ReadPipelineConfiguration(options.config);
    PipelineSpec pipeline;
    for (const std::string& filter : options.filters) {
        try {
            pipeline.filters.push_back(ParseFilterArgument(filter));
        } catch (const HostError& error) { // not a valid class id
            throw UsageError(error.what());
        }
    }
    return pipeline;
}

// Of the process.
double ProcessorSeconds() {
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

// Not beside the job, so that one in a folder of others' does not leave its output there.
std::string DefaultOutput(const std::filesystem::path& job, const std::string& extension) {
    return job.stem().string() + "-printed" + extension;
}

std::uint64_t SizeOf(const std::filesystem::path& file) {
    std::error_code error;
    const auto size = std::filesystem::file_size(file, error);
    return error ? 0 : size;
}

void NameOutput(JobDescription& job, const CommandOptions& options, const std::filesystem::path& folder,
                std::optional<StandardOutput>& stream) {
    if (options.output == standardStream) {
        stream.emplace();
        job.outputStream = stream->Descriptor();
        job.output = "the output stream";
    } else if (!options.output.empty()) {
        job.output = options.output;
        job.outputIsNamed = true;
    } else if (job.file.path != job.file.name) {
        throw UsageError("what comes by the input stream has no name: -o names the output");
    } else {
        job.output = folder / DefaultOutput(job.file.path, job.file.path.extension().string());
        job.byteOutput = folder / DefaultOutput(job.file.path, ".prn");
    }
    if (stream && stream->LeadsTo(job.file.path))
        throw UsageError("the output would take the place of the job " + job.file.name);
    KeepInputs(options, "the output", job.output);
    KeepInputs(options, "the output", job.byteOutput);
}

} // namespace

RunSummary JobRun::Run(ShownOutput& errors) const {
    RunSummary summary;
    summary.job = m_options.job.name;
    try {
        RunInto(summary, errors);
    } catch (...) {
        const Trouble trouble = Trouble::Caught(m_options);
        summary.exitCode = trouble.code;
        summary.trouble = trouble.line;
    }
    return summary;
}

void JobRun::RunInto(RunSummary& summary, ShownOutput& errors) const {
    JobDescription job;
    job.file = m_options.job;
    job.queue = m_queue;
    job.title = m_options.title;
    job.user = m_options.user;
    job.wishes = WishesOf(m_options);
    job.pipeline = ChosenPipeline(m_options);
    std::optional<StandardOutput> stream;
    NameOutput(job, m_options, m_folder, stream);

    summary.queue = Utf8(m_queue->PrinterName());
    for (const FilterSpec& filter : job.pipeline.filters)
        summary.filters.push_back(filter.name);
    summary.bytesIn = SizeOf(job.file.path);

    Trace::Writer trace;
    if (m_options.trace) trace = [&errors](const std::string& line) { errors.Line(line); };
    const auto state = std::make_shared<JobState>(std::move(trace));
    const OvPlatform::MergeCounts before = OvPlatform::PrintTicketMerge::Counts();
    const auto start = std::chrono::steady_clock::now();
    const double processorStart = ProcessorSeconds();
    JobOutcome outcome;
    {
        const JobWatch watch(state, m_progress == Progress::Shown && !m_options.trace && !m_options.quiet);
        outcome = Pipeline(std::move(job), state).Run();
    }
    summary.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();

    summary.processorSeconds = ProcessorSeconds() - processorStart;
    for (const FilterOutcome& filter : outcome.filters)
        if (filter.wasStarted)
            summary.times.push_back({filter.name, filter.seconds, filter.processorSeconds});

    if (outcome.isCancelled) {
        summary.exitCode = ExitCancelled;
        summary.trouble = m_options.job.name + ": cancelled; " +
                          (stream ? "what was written is not the whole output" : "nothing was written");
        return;
    }
    if (outcome.failure) {
        summary.exitCode = outcome.failure->fromInput ? ExitInputRefused : ExitJobFailed;
        summary.trouble = AboutJob(m_options, outcome.failure->Line());
        return;
    }
    summary.isPackage = outcome.outputKind == EndKind::XpsParts;
    summary.output = outcome.output.string();
    const JobCounters& counters = state->Counters();
    const OvPlatform::MergeCounts after = OvPlatform::PrintTicketMerge::Counts();
    summary.partsRead = counters.parts;
    summary.partsWritten = counters.partsWritten;
    summary.pagesRead = counters.pages;
    summary.pagesWritten = counters.pagesWritten;
    summary.leftOut = outcome.leftOut;
    summary.ticketsAsked = counters.ticketsAsked;
    summary.merges = after.merges - before.merges;
    summary.conflictsResolved = after.conflictsResolved - before.conflictsResolved;
    summary.bytesOut = outcome.outputSize;
    summary.warnings = outcome.gotOver;
}

} // namespace OvPipeline
