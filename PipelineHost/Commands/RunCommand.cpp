#include "Chain/Pipeline.h"
#include "Commands/Commands.h"
#include "Commands/JobWatch.h"
#include "Commands/StandardOutput.h"
#include "Report/RunSummary.h"

#include <PrintTicket/PrintTicketMerge.h>

#include <algorithm>
#include <chrono>
#include <optional>

namespace OvPipeline {

namespace {

constexpr const char* toStream = "-";

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

// In the current folder, so that a job in a folder of others' does not leave its output there.
std::string DefaultOutput(const std::filesystem::path& job, const std::string& extension) {
    return job.stem().string() + "-printed" + extension;
}

std::uint64_t SizeOf(const std::filesystem::path& file) {
    std::error_code error;
    const auto size = std::filesystem::file_size(file, error);
    return error ? 0 : size;
}

int ReportFailure(const JobFailure& failure, const CommandOptions& options, ShownOutput& errors) {
    errors.Line("ov-pipeline: " + AboutJob(options, failure.Line()));
    return failure.fromInput ? ExitInputRefused : ExitJobFailed;
}

} // namespace

int RunCommand(const CommandOptions& options, ShownOutput& out, ShownOutput& errors) {
    JobDescription job;
    job.file = options.job;
    job.queue = LoadQueue(options);
    job.pipeline = ChosenPipeline(options);
    std::optional<StandardOutput> stream;
    if (options.output == toStream) {
        stream.emplace();
        job.outputStream = stream->Descriptor();
        job.output = "the output stream";
    } else if (options.output.empty()) {
        job.output = DefaultOutput(job.file, job.file.extension().string());
        job.byteOutput = DefaultOutput(job.file, ".prn");
    } else {
        job.output = options.output;
        job.outputIsNamed = true;
    }
    std::error_code error;
    if ((stream && stream->LeadsTo(job.file)) || std::filesystem::equivalent(job.file, job.output, error) ||
        std::filesystem::equivalent(job.file, job.byteOutput, error))
        throw UsageError("the output would take the place of the job " + options.job);

    RunSummary summary;
    summary.job = job.file.string();
    summary.queue = Utf8(job.queue->PrinterName());
    for (const FilterSpec& filter : job.pipeline.filters)
        summary.filters.push_back(filter.name);
    summary.bytesIn = SizeOf(job.file);

    Trace::Writer trace;
    if (options.trace) trace = [&errors](const std::string& line) { errors.Line(line); };
    const auto state = std::make_shared<JobState>(std::move(trace));
    const OvPlatform::MergeCounts before = OvPlatform::PrintTicketMerge::Counts();
    const auto start = std::chrono::steady_clock::now();
    JobOutcome outcome;
    {
        const JobWatch watch(state, !options.trace);
        outcome = Pipeline(std::move(job), state).Run();
    }
    summary.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();

    if (outcome.isCancelled) {
        errors.Line("ov-pipeline: " + options.job + ": cancelled; " +
                    (stream ? "what was written is not the whole output" : "nothing was written"));
        return ExitCancelled;
    }
    if (outcome.failure) return ReportFailure(*outcome.failure, options, errors);

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
    (stream ? errors : out).Lines(summary.Lines());
    std::ranges::for_each(outcome.gotOver, WarnOf(options, errors));
    return ExitOk;
}

} // namespace OvPipeline
