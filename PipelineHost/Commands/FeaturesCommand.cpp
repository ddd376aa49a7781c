#include "Commands/Commands.h"
#include "Commands/FeatureReport.h"
#include "Commands/JobLevel.h"
#include "Common/HostError.h"
#include "Common/Text.h"
#include "Source/PackageSource.h"

#include "Spooler/QueuePropertyBag.h"
#include "Spooler/QueueRegistry.h"

#include <ComSupport/MsSafeCoinit.h>
#include <DeviceDescription/OrvelDriverPropertyBag.h>
#include <EmbeddedSettings/PrintTicketAttributeBytesReaderWriter.h>
#include <LowLevelFacilities/CPException.h>
#include <PropertyBags/NativeComPrinterPropertyBagAccess.h>
#include <SystemServices/User.h>
#include <TicketAccess/NativeComPrintTicketAccess.h>

namespace OvPipeline {

namespace {

class NoDisplayHelp : public IAttributeBytesDebugDisplayHelper {
public:
    [[nodiscard]] std::unique_ptr<IAttributeBytesDebugDisplayHelper> Clone() const override {
        return std::make_unique<NoDisplayHelp>();
    }
};

// The words of an exception, without the name of its class.
std::string Words(const CPException& error) {
    const std::string words = error.what();
    constexpr std::string_view ClassEnd = "Exception: ";
    const std::size_t end = words.starts_with("CP") ? words.find(ClassEnd) : std::string::npos;
    return end == std::string::npos ? words : words.substr(end + ClassEnd.size());
}

// What the user has to look into where the device capabilities are wrong.
std::filesystem::path FileOfDevice(const OvPlatform::QueueFolder& queue) {
    const auto device = queue.DriverProperties().find(OrvelDriverPropertyBag::deviceCapabilitiesPropertyName);
    if (device != queue.DriverProperties().end())
        if (const auto* stream = std::get_if<OvPlatform::QueueStream>(&device->second);
            stream && !stream->file.empty())
            return stream->file;
    return queue.Folder();
}

OvlSharedPtr<SimpleOcapParser> ReadDevice(const OvPlatform::QueueFolder& queue) {
    CComPtr<IPrinterPropertyBag> properties;
    if (const HRESULT hr = OvPlatform::QueuePropertyBag::Create(
            queue.DriverProperties(), OvPlatform::QueuePropertyBag::Access::ReadOnly, &properties);
        FAILED(hr))
        throw HostError(hr, {}, "the queue's driver properties cannot be read");
    NativeComPrinterPropertyBagAccess bag(
        *properties, NativeComPrinterPropertyBagAccess::AssertionPolicyBagIsHeldElsewhere);
    try {
        return OrvelDriverPropertyBag(bag).GetSimpleOcapParser();
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

FeatureReport Report(const CommandOptions& options, const OvPlatform::QueueFolder& queue,
                     const LevelParts& parts) {
    PrintTicketManager manager;
    PrintTicketXmlDocument ticket(MergeLevel(manager, queue, parts));
    const auto capabilities = PrintCapabilitiesXmlDocument::CreatePrintCapabilitiesXmlDocument(
        queue.PrinterName().c_str(), nullptr);
    if (!capabilities) throw HostError(E_FAIL, {}, "the queue gives no print capabilities");
    NativeComPrintTicketAccess ticketAccess(ticket, *capabilities);
    const OvlSharedPtr<SimpleOcapParser> device = ReadDevice(queue);
    PrintTicketAttributeBytesReaderWriter attributeBytes(&ticket, NoDisplayHelp(), false);
    CheckAttributeBytes(attributeBytes, options.job);

    CXString mediaSize;
    Dimension width;
    Dimension height;
    ticketAccess.GetCurrentValueMediaSizeFeature(L"PageMediaSize", mediaSize, width, height);
    CXString user;
    CXString domain;
    User::GetCurrentUserName(user);
    User::GetCurrentUsersDomain(domain);
    const CXString document(Wide(std::filesystem::path(options.job).filename().string()));
    const DataModelLessFeatureAccess access(document, user, domain, nullptr, width, height, *device,
                                            ticketAccess, attributeBytes);
    return {access, *device};
}

} // namespace

int FeaturesCommand(const CommandOptions& options, ShownOutput& out) {
    const auto queue = LoadQueue(options);
    OvPlatform::QueueRegistry::Add(queue);
    const SharedContext context = OpenJobPackage(options.job, std::make_shared<JobState>());
    const LevelParts parts = FindLevel(options, context);
    ExplainLevel(queue, parts); // It has words for a ticket that cannot be merged.
    const MsSafeCoInit apartment;
    const FeatureReport report = Report(options, *queue, parts);
    if (options.json)
        out.Json(report.AsJson());
    else
        out.Text(report.AsTable());
    return ExitOk;
}

} // namespace OvPipeline
