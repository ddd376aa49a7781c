#include "Spooler/QueueFolder.h"

#include "Spooler/QueueFolderReader.h"

#include <algorithm>

namespace OvPlatform {

namespace {

std::string Place(const std::filesystem::path& file, long line) {
    return line > 0 ? file.string() + ":" + std::to_string(line) : file.string();
}

} // namespace

QueueFolderError::QueueFolderError(const std::filesystem::path& file, long line, const std::string& problem)
    : std::runtime_error(Place(file, line) + ": " + problem) {}

std::shared_ptr<const QueueFolder> QueueFolder::Load(const std::filesystem::path& folder) {
    return std::make_shared<QueueFolder>(ReadQueueFolder(folder), folder);
}

QueueFolder::QueueFolder(QueueDescription description, std::filesystem::path folder)
    : m_description(std::move(description)), m_folder(std::move(folder)) {}

std::shared_ptr<const QueueFolder> QueueFolder::WithJob(QueueJob job) const {
    QueueDescription altered = m_description;
    std::erase_if(altered.jobs, [&](const QueueJob& other) { return other.id == job.id; });
    altered.jobs.push_back(std::move(job));
    const auto queue = std::make_shared<QueueFolder>(std::move(altered), m_folder);
    queue->m_documentsOwner = m_documentsOwner;
    return queue;
}

const QueueJob* QueueFolder::FindJob(std::uint32_t id) const {
    const auto found =
        std::find_if(Jobs().begin(), Jobs().end(), [&](const QueueJob& job) { return job.id == id; });
    return found == Jobs().end() ? nullptr : &*found;
}

} // namespace OvPlatform
