#pragma once

#include "Report/JobState.h"
#include "Streams/ByteReader.h"
#include "Streams/StreamMaker.h"

#include <condition_variable>
#include <mutex>
#include <thread>
#include <vector>

namespace OvPipeline {

/// Bytes on their way from one writer to readers: in memory while they are few, then in a temporary file that
/// has no name. Writer and readers may be on different threads.
class SpooledBytes {
public:
    static constexpr std::size_t memoryBound = std::size_t{256} * 1024;

    /// maker: whose failure it is if they are never complete; null where that is not known.
    explicit SpooledBytes(std::shared_ptr<const StreamMaker> maker = {});
    SpooledBytes(const SpooledBytes&) = delete;
    SpooledBytes& operator=(const SpooledBytes&) = delete;
    ~SpooledBytes();

    /// Throws HostError.
    void Append(const void* bytes, std::size_t size);
    /// No more will come: all is there, or the writer gave up. The first one counts.
    void Complete() { End(State::Complete); }
    void Abandon() { End(State::Abandoned); }

    /// What is there at a position now; 0 where nothing is.
    std::size_t ReadAt(std::uint64_t position, void* buffer, std::size_t size) const;
    std::uint64_t SizeSoFar() const;
    bool IsComplete() const;

    /// Waits until bytes beyond the position are there (true) or none will come (false). Throws HostError
    /// where the job stops meanwhile or is not started yet, where the writer gave up or is done without
    /// having closed them, or where the calling thread is the writer and would wait for itself.
    bool WaitBeyond(std::uint64_t position, const JobState& job) const;

private:
    enum class State { Open, Complete, Abandoned };

    void End(State state);
    [[noreturn]] void ThrowLost(const char* how) const;
    void MoveToFile();

    const std::shared_ptr<const StreamMaker> m_maker;
    mutable std::mutex m_mutex;
    mutable std::condition_variable m_changed;
    std::thread::id m_writer = std::this_thread::get_id();
    State m_state = State::Open;
    std::uint64_t m_size = 0;
    std::vector<unsigned char> m_memory;
    int m_file = -1;
};

/// Reads bytes while they are being written.
std::unique_ptr<ByteReader> ReadWhileWritten(std::shared_ptr<const SpooledBytes> bytes,
                                             std::shared_ptr<const JobState> job);

/// A new part's bytes. They can be read once all are written.
class SpooledContent final : public Content {
public:
    SpooledContent(std::string partName, std::shared_ptr<JobState> job,
                   std::shared_ptr<const StreamMaker> maker);

    std::unique_ptr<ByteReader> Open() const override;
    std::uint64_t Identity() const override { return m_identity; }

    const std::shared_ptr<SpooledBytes>& Bytes() const { return m_bytes; }

private:
    std::string m_partName;
    std::shared_ptr<JobState> m_job;
    std::shared_ptr<SpooledBytes> m_bytes;
    std::uint64_t m_identity;
};

} // namespace OvPipeline
