#pragma once

#include "Com/PlatformExport.h"
#include "Spooler/QueueDescription.h"
#include "Spooler/QueueFolderError.h"

#include <filesystem>
#include <memory>

namespace OvPlatform {

/// One printer with its queue, as docs/formats/queue-folder.md describes it: read whole, then never changed,
/// so it may be shared between threads.
class OV_PLATFORM_API QueueFolder {
public:
    /// The name of the file in the folder that describes the queue.
    static constexpr const char* descriptionFile = "queue.xml";

    /// Reads folder/queue.xml and the documents it names. Throws QueueFolderError.
    static std::shared_ptr<const QueueFolder> Load(const std::filesystem::path& folder);

    /// A queue that was not read from a folder, or one read and then altered.
    explicit QueueFolder(QueueDescription description, std::filesystem::path folder = {});

    /// The same queue with one job more, at the end; a job of the same id is replaced.
    std::shared_ptr<const QueueFolder> WithJob(QueueJob job) const;

    const std::filesystem::path& Folder() const { return m_folder; }
    const QueueDescription& Description() const { return m_description; }

    const std::wstring& PrinterName() const { return m_description.printerName; }
    const std::wstring& PortName() const { return m_description.portName; }
    const std::wstring& DriverName() const { return m_description.driverName; }

    // The bytes of the default ticket and of the Print Capabilities document. Never empty for a loaded
    // folder.
    const std::string& DefaultTicket() const { return m_description.defaultTicket; }
    const std::string& Capabilities() const { return m_description.capabilities; }
    /// Shared by queues of which one was made of the other, so that what was worked out of these documents
    /// for one serves all.
    const std::shared_ptr<const void>& DocumentsOwner() const { return m_documentsOwner; }

    const QueueValues& DriverProperties() const { return m_description.driverProperties; }
    const QueueValues& QueueProperties() const { return m_description.queueProperties; }

    const std::vector<QueueJob>& Jobs() const { return m_description.jobs; }
    /// Null if there is none of that id.
    const QueueJob* FindJob(std::uint32_t id) const;

private:
    QueueDescription m_description;
    std::filesystem::path m_folder;
    std::shared_ptr<const void> m_documentsOwner = std::make_shared<char>();
};

} // namespace OvPlatform
