#include "Commands/Commands.h"
#include "Commands/FeatureReport.h"
#include "Commands/JobAtDevice.h"

#include <ComSupport/MsSafeCoinit.h>

#include <algorithm>

namespace OvPipeline {

int FeaturesCommand(const CommandOptions& options, ShownOutput& out, ShownOutput& errors) {
    const auto queue = LoadQueue(options);
    const LevelParts parts = OpenLevel(options);
    const MsSafeCoInit apartment;
    const Warner warn = WarnOf(options, errors);
    JobAtDevice job(options.job.name, queue, parts, warn);
    const FeatureReport report(job.Settings());
    std::ranges::for_each(job.Troubles(), warn);
    if (options.json)
        out.Json(report.AsJson());
    else
        out.Text(report.AsTable(out.Width()));
    return ExitOk;
}

} // namespace OvPipeline
