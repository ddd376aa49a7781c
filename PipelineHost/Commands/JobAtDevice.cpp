#include "Commands/JobAtDevice.h"

#include "Commands/QueueConfiguration.h"
#include "Common/HostError.h"
#include "Common/Text.h"

#include <LowLevelFacilities/Failures/CPException.h>
#include <Spooler/QueueRegistry.h>
#include <SystemServices/User.h>

#include <algorithm>

namespace OvPipeline {

namespace {

// The job of the library, not that of the pipeline.
using Description = ::JobDescription;

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

Description DescribeJob(const std::string& file) {
    Description job;
    job.documentName = CXString(Wide(std::filesystem::path(file).filename().string()));
    User::GetCurrentUserName(job.userName);
    User::GetCurrentUsersDomain(job.userDomainName);
    return job;
}

} // namespace

void CheckDevice(const OrvelDriverPropertyBag& driver, const OvPlatform::QueueFolder& queue) {
    try {
        // Damage shows when they are read.
        static_cast<void>(driver.GetSimpleOcapParser());
    } catch (const CPException& error) {
        throw OvPlatform::QueueFolderError(FileOfDevice(queue), Words(error));
    }
}

void CheckAttributeBytes(const PrintTicketAttributeBytesReaderWriter& attributeBytes,
                         const std::string& input) {
    try {
        static_cast<void>(attributeBytes.IsAttributeBytesListEmpty());
    } catch (const CPException& error) {
        throw InputError(HRESULT_FROM_WIN32(ERROR_INVALID_DATA), input,
                         std::string("the driver's settings in the ticket cannot be read: ") + Words(error));
    }
}

JobAtDevice::JobAtDevice(const std::string& job, const std::shared_ptr<const OvPlatform::QueueFolder>& queue,
                         const LevelParts& parts, const Warner& warn) {
    OvPlatform::QueueRegistry::Add(queue);
    m_words.emplace();
    m_merge.emplace(m_manager, queue);
    const EPrintTicketScope level = m_merge->Merge(parts);
    std::ranges::for_each(m_words->Heard(), warn);
    FilterWords::ForgetAll();
    m_properties = BagOf(queue->DriverProperties());
    m_access = std::make_unique<NativeComPrinterPropertyBagAccess>(
        *m_properties, NativeComPrinterPropertyBagAccess::AssertionPolicyBagIsHeldElsewhere);
    m_driver = std::make_unique<OrvelDriverPropertyBag>(*m_access);
    CheckDevice(*m_driver, *queue);
    m_settings = std::make_unique<JobSettings>(m_manager, level, *m_driver, DescribeJob(job));
    CheckAttributeBytes(m_settings->AttributeBytes(), job);
}

} // namespace OvPipeline
