#include "Commands/Commands.h"
#include "Commands/HeaderReport.h"
#include "Common/Text.h"
#include "Source/PackageSource.h"

#include <ComSupport/MsSafeCoinit.h>
#include <DeviceControl/CreatorName.h>

#include <set>

namespace OvPipeline {

namespace {

std::string FamilyNames() {
    std::string names;
    for (const DeviceFamily& family : DeviceFamilies())
        names += (names.empty() ? "" : ", ") + std::string(family.name);
    return names;
}

const DeviceFamily& Find(const std::string& name, const std::string& who) {
    const DeviceFamily* const family = FindDeviceFamily(name);
    if (family == nullptr)
        throw UsageError(who + " names the family \"" + name + "\", which is none of " + FamilyNames());
    return *family;
}

std::vector<const DeviceFamily*> ChosenFamilies(const CommandOptions& options, const JobAtDevice& job) {
    std::vector<const DeviceFamily*> chosen;
    if (options.all) {
        for (const DeviceFamily& family : DeviceFamilies())
            chosen.push_back(&family);
        return chosen;
    }
    if (!options.family.empty()) return {&Find(options.family, "--family")};
    CXString name;
    job.Properties().GetPrinterPropertyBagString(deviceFamilyPropertyName, name);
    if (name.IsEmpty())
        throw UsageError("which family? The queue does not say; --family names one of " + FamilyNames());
    return {&Find(Utf8(name.View()), "the queue")};
}

} // namespace

int HeaderCommand(const CommandOptions& options, ShownOutput& out, ShownOutput& errors) {
    const auto queue = LoadQueue(options);
    const SharedContext context = OpenJobPackage(options.job, std::make_shared<JobState>());
    const LevelParts parts = FindLevel(options, context);
    const MsSafeCoInit apartment;
    JobAtDevice job(options.job, queue, parts);
    CreatorName::FillIn(job.Settings().Features());

    std::set<std::string> warned;
    const auto warn = [&](const std::string& what) {
        if (warned.insert(what).second)
            errors.Line("ov-pipeline: " + options.job + ": warning: " + what +
                        " holds characters that would end a command of the device; here they are blanks");
    };
    std::vector<FamilyHeader> headers;
    for (const DeviceFamily* const family : ChosenFamilies(options, job)) {
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
