#include "Commands/Commands.h"
#include "Commands/FeatureReport.h"
#include "Commands/JobAtDevice.h"
#include "Commands/LevelReports.h"

#include <ComSupport/MsSafeCoinit.h>

#include <algorithm>

namespace OvPipeline {

int FeaturesCommand(const CommandOptions& options, ShownOutput& out, ShownOutput& errors) {
    const auto queue = LoadQueue(options);
    const MsSafeCoInit apartment;
    const Warner warn = WarnOf(options, errors);
    LevelReports(options, out).Write([&](const LevelParts& parts, std::uint64_t) {
        JobAtDevice job(options.job.name, queue, parts, warn);
        FeatureReport report(job.Settings());
        std::ranges::for_each(job.Troubles(), warn);
        return report;
    });
    return ExitOk;
}

} // namespace OvPipeline
