#include "Commands/Commands.h"
#include "Commands/FamilyChoice.h"
#include "Commands/HeaderReport.h"

#include <ComSupport/MsSafeCoinit.h>
#include <DeviceControl/CreatorName.h>

#include <set>

namespace OvPipeline {

namespace {

std::vector<const DeviceFamily*> ChosenFamilies(const CommandOptions& options,
                                                const OvPlatform::QueueFolder& queue) {
    std::vector<const DeviceFamily*> chosen;
    if (options.all) {
        for (const DeviceFamily& family : DeviceFamilies())
            chosen.push_back(&family);
        return chosen;
    }
    if (!options.family.empty()) return {&NamedFamily(options.family)};
    if (const DeviceFamily* const family = FamilyOfQueue(queue)) return {family};
    throw UsageError("which family? The queue does not say; --family names one of " + FamilyNames());
}

} // namespace

int HeaderCommand(const CommandOptions& options, ShownOutput& out, ShownOutput& errors) {
    const auto queue = LoadQueue(options);
    const LevelParts parts = OpenLevel(options);
    const MsSafeCoInit apartment;
    JobAtDevice job(options.job.name, queue, parts, WarnOf(options, errors));
    CreatorName::FillIn(job.Settings().Features());

    std::set<std::string> warned;
    const auto warn = [&, tell = WarnOf(options, errors)](const std::string& what) {
        if (warned.insert(what).second) tell(CommandSafeFeatureAccess::Warning(what));
    };
    std::vector<FamilyHeader> headers;
    for (const DeviceFamily* const family : ChosenFamilies(options, *queue)) {
        headers.emplace_back(job, *family, warn);
        if (options.why) headers.back().FindCauses(job);
    }
    const HeaderReport report(headers, options.why);
    if (options.json)
        out.Json(report.AsJson());
    else
        out.Lines(options.all && !options.why ? report.AsComparison() : report.AsLines());
    return ExitOk;
}

} // namespace OvPipeline
