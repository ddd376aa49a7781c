#pragma once

#include "Package/PackageReader.h"
#include "Package/SpoolFile.h"
#include "System/Thread.h"

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <exception>
#include <memory>
#include <mutex>
#include <vector>

namespace OvPlatform {

/// A part on its way into a package: compressed bytes in the spool file, and what the zip directory says of
/// them. Changed only by the compressor until it is done. Small: a package may have very many.
class SpooledPart {
public:
    struct Extent {
        std::uint64_t offset = 0;
        std::uint64_t size = 0;
    };

    explicit SpooledPart(PackageCompression how) : compression(how) {}

    /// The next bytes of the part lie there.
    void Append(std::uint64_t offset, std::uint64_t count);

    /// Where the bytes lie, in order: one place, unless parts were written at the same time.
    std::size_t ExtentCount() const { return m_first.size == 0 ? 0 : 1 + (m_more ? m_more->size() : 0); }
    const Extent& ExtentAt(std::size_t index) const { return index == 0 ? m_first : (*m_more)[index - 1]; }

    const PackageCompression compression;
    std::uint32_t checksum = 0;
    std::uint64_t size = 0;
    std::uint64_t storedSize = 0;

private:
    Extent m_first;
    std::unique_ptr<std::vector<Extent>> m_more;
};

/// Compresses the chunks of parts on a thread of its own, so that the work goes on beside what produces them,
/// and spools the result. A little is queued; who is faster than the compressor waits.
class PartCompressor {
public:
    /// Throws ThreadError.
    explicit PartCompressor(SpoolFile& spool);
    PartCompressor(const PartCompressor&) = delete;
    PartCompressor& operator=(const PartCompressor&) = delete;
    /// Throws away what is not done.
    ~PartCompressor();

    enum class End { More, Complete, Abandoned };

    /// The next bytes of a part, which must stay where it is. Throws what failed before, if anything did, and
    /// PackageError after Finish.
    void Put(SpooledPart& part, std::vector<std::uint8_t> bytes, End end);

    /// Waits until all is done and ends the thread. Throws what failed.
    void Finish();

private:
    struct Task {
        SpooledPart* part;
        std::vector<std::uint8_t> bytes;
        End end;
    };
    class Deflater;
    class Work;

    void Run();
    void Stop(bool drain);

    SpoolFile& m_spool;
    std::mutex m_lock;
    std::condition_variable m_added;
    std::condition_variable m_taken;
    std::deque<Task> m_tasks;
    std::size_t m_queuedBytes = 0;
    bool m_ending = false;
    std::exception_ptr m_failure;
    Thread m_thread;
};

} // namespace OvPlatform
