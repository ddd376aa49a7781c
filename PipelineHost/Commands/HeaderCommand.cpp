#include "Commands/Commands.h"
#include "Commands/HeaderReport.h"
#include "Common/Text.h"

#include <ComSupport/MsSafeCoinit.h>
#include <DeviceControl/CreatorName.h>
#include <Spooler/QueueFolderError.h>

#include <set>

namespace OvPipeline {

namespace {

std::string FamilyNames() {
    std::string names;
    for (const DeviceFamily& family : DeviceFamilies())
        names += (names.empty() ? "" : ", ") + std::string(family.name);
    return names;
}

const DeviceFamily& NamedFamily(const std::string& name) {
    if (const DeviceFamily* const family = FindDeviceFamily(name)) return *family;
    throw UsageError("--family names \"" + name + "\", which is none of " + FamilyNames());
}

const DeviceFamily& FamilyOfQueue(const JobAtDevice& job, const OvPlatform::QueueFolder& queue) {
    CXString property;
    job.Properties().GetPrinterPropertyBagString(deviceFamilyPropertyName, property);
    if (property.IsEmpty())
        throw UsageError("which family? The queue does not say; --family names one of " + FamilyNames());
    const std::string name = Utf8(property.View());
    if (const DeviceFamily* const family = FindDeviceFamily(name)) return *family;
    throw OvPlatform::QueueFolderError(queue.Folder(), "the driver property DeviceFamily is \"" + name +
                                                           "\", which is none of " + FamilyNames());
}

std::vector<const DeviceFamily*> ChosenFamilies(const CommandOptions& options, const JobAtDevice& job,
                                                const OvPlatform::QueueFolder& queue) {
    std::vector<const DeviceFamily*> chosen;
    if (options.all) {
        for (const DeviceFamily& family : DeviceFamilies())
            chosen.push_back(&family);
        return chosen;
    }
    return {options.family.empty() ? &FamilyOfQueue(job, queue) : &NamedFamily(options.family)};
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
    for (const DeviceFamily* const family : ChosenFamilies(options, job, *queue)) {
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
