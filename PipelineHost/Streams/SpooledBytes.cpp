#include "Streams/SpooledBytes.h"

#include "Common/HostError.h"
#include "Common/TemporaryFiles.h"

#include <System/NamelessFile.h>

#include <unistd.h>
#include <xpsobjectmodel.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <filesystem>
#include <limits>

namespace OvPipeline {

namespace {

int MakeNamelessFile() {
    const std::filesystem::path folder = FolderForTemporaryFiles();
    const int file = OvPlatform::OpenNamelessFile(folder);
    if (file < 0) ThrowNoTemporary(folder);
    return file;
}

void WriteAt(int file, std::uint64_t position, const unsigned char* bytes, std::size_t size) {
    while (size > 0) {
        const ssize_t written = pwrite(file, bytes, size, static_cast<off_t>(position));
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0)
            throw HostError(STG_E_MEDIUMFULL, {},
                            std::string("cannot write a temporary file: ") + std::strerror(errno));
        bytes += written;
        size -= static_cast<std::size_t>(written);
        position += static_cast<std::uint64_t>(written);
    }
}

class WaitingReader final : public ByteReader {
public:
    WaitingReader(std::shared_ptr<const SpooledBytes> bytes, std::shared_ptr<const JobState> job)
        : m_bytes(std::move(bytes)), m_job(std::move(job)) {}

    std::size_t Read(void* buffer, std::size_t size) override {
        if (size == 0 || !m_bytes->WaitBeyond(m_position, *m_job)) return 0;
        const std::size_t read = m_bytes->ReadAt(m_position, buffer, size);
        m_position += read;
        return read;
    }
    void Seek(std::uint64_t position) override { m_position = position; }
    std::uint64_t Position() const override { return m_position; }
    std::uint64_t Size() override {
        m_bytes->WaitBeyond(std::numeric_limits<std::uint64_t>::max(), *m_job);
        return m_bytes->SizeSoFar();
    }
    bool AtEnd() override { return m_bytes->IsComplete() && m_position >= m_bytes->SizeSoFar(); }

private:
    std::shared_ptr<const SpooledBytes> m_bytes;
    std::shared_ptr<const JobState> m_job;
    std::uint64_t m_position = 0;
};

// Far above the index of any part of a package, so that the two kinds of identity never meet.
std::atomic<std::uint64_t> nextIdentity{std::uint64_t{1} << 40};

} // namespace

SpooledBytes::SpooledBytes(std::shared_ptr<const StreamMaker> maker) : m_maker(std::move(maker)) {}

SpooledBytes::~SpooledBytes() {
    if (m_file >= 0) close(m_file);
}

void SpooledBytes::MoveToFile() {
    m_file = MakeNamelessFile();
    WriteAt(m_file, 0, m_memory.data(), m_memory.size());
    m_memory = {};
}

void SpooledBytes::Append(const void* bytes, std::size_t size) {
    {
        const std::lock_guard lock(m_mutex);
        if (m_state != State::Open)
            throw HostError(E_UNEXPECTED, {}, "bytes are written to a stream that has ended");
        const auto* first = static_cast<const unsigned char*>(bytes);
        if (m_file < 0 && m_memory.size() + size > memoryBound) MoveToFile();
        if (m_file >= 0)
            WriteAt(m_file, m_size, first, size);
        else
            m_memory.insert(m_memory.end(), first, first + size);
        m_size += size;
        m_writer = std::this_thread::get_id();
    }
    m_changed.notify_all();
}

void SpooledBytes::End(State state) {
    {
        const std::lock_guard lock(m_mutex);
        if (m_state == State::Open) m_state = state;
    }
    m_changed.notify_all();
}

std::size_t SpooledBytes::ReadAt(std::uint64_t position, void* buffer, std::size_t size) const {
    const std::lock_guard lock(m_mutex);
    if (position >= m_size) return 0;
    size = static_cast<std::size_t>(std::min<std::uint64_t>(size, m_size - position));
    if (m_file < 0) {
        std::memcpy(buffer, m_memory.data() + position, size);
        return size;
    }
    ssize_t read;
    do
        read = pread(m_file, buffer, size, static_cast<off_t>(position));
    while (read < 0 && errno == EINTR);
    if (read <= 0) throw HostError(STG_E_READFAULT, {}, "cannot read a temporary file back");
    return static_cast<std::size_t>(read);
}

std::uint64_t SpooledBytes::SizeSoFar() const {
    const std::lock_guard lock(m_mutex);
    return m_size;
}

bool SpooledBytes::IsComplete() const {
    const std::lock_guard lock(m_mutex);
    return m_state == State::Complete;
}

bool SpooledBytes::WaitBeyond(std::uint64_t position, const JobState& job) const {
    std::unique_lock lock(m_mutex);
    while (m_size <= position && m_state == State::Open) {
        if (m_writer == std::this_thread::get_id())
            throw HostError(E_PENDING, {}, "a stream is read before its own writer has closed it");
        if (job.IsStopping()) throw HostError(job.StopResult(), {}, "the job stops");
        if (!job.IsStarted())
            throw HostError(E_PENDING, {}, "a stream is read to its end before the filters are started");
        if (m_maker && m_maker->IsDone()) ThrowLost("is done and has left the stream open that it wrote");
        // Looks at job and writer now and then, since nothing else wakes a reader whose writer is stuck.
        m_changed.wait_for(lock, std::chrono::milliseconds(50));
    }
    if (m_size > position) return true;
    if (m_state == State::Abandoned) ThrowLost("has given the stream up without closing it");
    return false;
}

void SpooledBytes::ThrowLost(const char* how) const {
    throw HostError(XPS_E_MISSING_PART_STREAM, {},
                    (m_maker ? "filter " + m_maker->Filter() : "its writer") + " " + how);
}

std::unique_ptr<ByteReader> ReadWhileWritten(std::shared_ptr<const SpooledBytes> bytes,
                                             std::shared_ptr<const JobState> job) {
    return std::make_unique<WaitingReader>(std::move(bytes), std::move(job));
}

SpooledContent::SpooledContent(std::string partName, std::shared_ptr<JobState> job,
                               std::shared_ptr<const StreamMaker> maker)
    : m_partName(std::move(partName)), m_job(std::move(job)),
      m_bytes(std::make_shared<SpooledBytes>(std::move(maker))), m_identity(nextIdentity.fetch_add(1)) {}

std::unique_ptr<ByteReader> SpooledContent::Open() const {
    try {
        const AwaitedStream awaited(*m_job);
        m_bytes->WaitBeyond(std::numeric_limits<std::uint64_t>::max(), *m_job);
    } catch (const HostError& error) {
        throw HostError(error.Result(), m_partName, m_partName + ": " + error.what());
    }
    return ReadWhileWritten(m_bytes, m_job);
}

} // namespace OvPipeline
