#include "Commands/Commands.h"
#include "Commands/FeatureReport.h"
#include "Commands/JobAtDevice.h"
#include "Source/PackageSource.h"

#include <ComSupport/MsSafeCoinit.h>

namespace OvPipeline {

int FeaturesCommand(const CommandOptions& options, ShownOutput& out, ShownOutput& errors) {
    const auto queue = LoadQueue(options);
    const SharedContext context = OpenJobPackage(options.job, std::make_shared<JobState>());
    const LevelParts parts = FindLevel(options, context);
    const MsSafeCoInit apartment;
    JobAtDevice job(options.job, queue, parts, WarnOf(options, errors));
    const FeatureReport report(job.Settings());
    if (options.json)
        out.Json(report.AsJson());
    else
        out.Text(report.AsTable());
    return ExitOk;
}

} // namespace OvPipeline
