#include "Commands/Commands.h"
#include "Commands/JobBatch.h"
#include "Commands/JobRun.h"

#include <algorithm>

namespace OvPipeline {

int RunCommand(const CommandOptions& options, ShownOutput& out, ShownOutput& errors) {
    const auto queue = LoadQueue(options);
    if (options.operands.size() > 1) return JobBatch(options, queue).Run(out, errors);

    const RunSummary summary = JobRun(options, queue, JobRun::Progress::Shown).Run(errors);
    // Beside the output itself, if that goes to the output stream.
    ShownOutput& told = options.output == standardStream ? errors : out;
    if (options.json) {
        JsonText json;
        json.BeginObject().Key("jobs").BeginArray().Whole(summary.AsJson().Result()).EndArray().EndObject();
        told.Json(json);
    }
    if (summary.exitCode != ExitOk) {
        errors.Line("ov-pipeline: " + summary.trouble);
        return summary.exitCode;
    }
    if (!options.json && !options.quiet) told.Lines(summary.Lines());
    std::ranges::for_each(summary.warnings, WarnOf(options, errors));
    return ExitOk;
}

} // namespace OvPipeline
