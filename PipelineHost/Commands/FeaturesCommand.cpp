#include "Commands/Commands.h"
#include "Commands/FeatureReport.h"
#include "Commands/JobLevel.h"
#include "Common/HostError.h"
#include "Common/Text.h"
#include "Source/PackageSource.h"

#include <ComSupport/MsSafeCoinit.h>
#include <DeviceDescription/OrvelDriverPropertyBag.h>
#include <FeatureAccess/JobSettings.h>
#include <LowLevelFacilities/Failures/CPException.h>
#include <PropertyBags/NativeComPrinterPropertyBagAccess.h>
#include <Spooler/QueuePropertyBag.h>
#include <Spooler/QueueRegistry.h>
#include <SystemServices/User.h>

namespace OvPipeline {

namespace {

// The words of an exception, without the name of its class.
std::string Words(const CPException& error) {
    const std::string words = error.what();
    constexpr std::string_view classEnd = "Exception: ";
    const std::size_t end = words.starts_with("CP") ? words.find(classEnd) : std::string::npos;
    return end == std::string::npos ? words : words.substr(end + classEnd.size());
}

// What the user has to look into where the device capabilities are wrong.
std::filesystem::path FileOfDevice(const OvPlatform::QueueFolder& queue) {
    const auto device = queue.DriverProperties().find(OrvelDriverPropertyBag::deviceCapabilitiesPropertyName);
    if (device != queue.DriverProperties().end())
        if (const auto* stream = std::get_if<OvPlatform::QueueStream>(&device->second);
            stream != nullptr && !stream->file.empty())
            return stream->file;
    return queue.Folder();
}

CComPtr<IPrinterPropertyBag> DriverProperties(const OvPlatform::QueueFolder& queue) {
    CComPtr<IPrinterPropertyBag> properties;
    if (const HRESULT hr = OvPlatform::QueuePropertyBag::Create(
            queue.DriverProperties(), OvPlatform::QueuePropertyBag::Access::ReadOnly, &properties);
        FAILED(hr))
        throw HostError(hr, {}, "the queue's driver properties cannot be read");
    return properties;
}

// Damage of the device capabilities shows when they are read.
void CheckDevice(const OrvelDriverPropertyBag& driver, const OvPlatform::QueueFolder& queue) {
    try {
        static_cast<void>(driver.GetSimpleOcapParser());
    } catch (const CPException& error) {
        throw OvPlatform::QueueFolderError(FileOfDevice(queue), Words(error));
    }
}

// Damage of the driver's settings shows at the first question.
void CheckAttributeBytes(const PrintTicketAttributeBytesReaderWriter& attributeBytes,
                         const std::string& job) {
    try {
        static_cast<void>(attributeBytes.IsAttributeBytesListEmpty());
    } catch (const CPException& error) {
        throw InputError(HRESULT_FROM_WIN32(ERROR_INVALID_DATA), job,
                         std::string("the driver's settings in the ticket cannot be read: ") + Words(error));
    }
}

JobDescription DescribeJob(const std::string& file) {
    JobDescription job;
    job.documentName = CXString(Wide(std::filesystem::path(file).filename().string()));
    User::GetCurrentUserName(job.userName);
    User::GetCurrentUsersDomain(job.userDomainName);
    return job;
}

FeatureReport Report(const CommandOptions& options,
                     const std::shared_ptr<const OvPlatform::QueueFolder>& queue, const LevelParts& parts) {
    PrintTicketManager manager;
    const EPrintTicketScope level = MergeLevel(manager, queue, parts);
    const CComPtr<IPrinterPropertyBag> properties = DriverProperties(*queue);
    NativeComPrinterPropertyBagAccess bag(
        *properties, NativeComPrinterPropertyBagAccess::AssertionPolicyBagIsHeldElsewhere);
    const OrvelDriverPropertyBag driver(bag);
    CheckDevice(driver, *queue);
    JobSettings settings(manager, level, driver, DescribeJob(options.job));
    CheckAttributeBytes(settings.AttributeBytes(), options.job);
    return FeatureReport(settings);
}

} // namespace

int FeaturesCommand(const CommandOptions& options, ShownOutput& out) {
    const auto queue = LoadQueue(options);
    OvPlatform::QueueRegistry::Add(queue);
    const SharedContext context = OpenJobPackage(options.job, std::make_shared<JobState>());
    const LevelParts parts = FindLevel(options, context);
    const MsSafeCoInit apartment;
    const FeatureReport report = Report(options, queue, parts);
    if (options.json)
        out.Json(report.AsJson());
    else
        out.Text(report.AsTable());
    return ExitOk;
}

} // namespace OvPipeline
