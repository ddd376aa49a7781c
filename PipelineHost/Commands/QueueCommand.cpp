#include "Commands/Commands.h"
#include "Commands/QueueReport.h"
#include "Report/FilterWords.h"

#include <ComSupport/MsSafeCoinit.h>

namespace OvPipeline {

int QueueCommand(const CommandOptions& options, ShownOutput& out, ShownOutput& errors) {
    const auto queue = LoadQueue(options);
    const MsSafeCoInit apartment;
    const FilterWords words;
    FilterWords::Forget();
    const QueueReport report(*queue);
    if (options.json)
        out.Json(report.AsJson());
    else
        out.Text(report.AsText(out.Width()));
    const std::string trouble = FilterWords::First();
    if (trouble.empty()) return ExitOk;
    errors.Line("ov-pipeline: " + options.queue + ": the queue's settings cannot be read: " + trouble);
    return ExitJobFailed;
}

} // namespace OvPipeline
