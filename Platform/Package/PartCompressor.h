#pragma once

#include "Package/PackageReader.h"
#include "Package/ZipWriter.h"
#include "System/Thread.h"

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <exception>
#include <memory>
#include <mutex>
#include <vector>

namespace OvPlatform {

/// A part on its way into a package.
struct ArrivingPart {
    ZipHeader entry;
    PackageCompression compression = PackageCompression::Normal;
    bool isPacked = false; // its bytes come as they are to be stored, and all else is known ahead
};

/// Compresses the chunks of parts and writes them into the archive, on a thread of its own, so that the work
/// goes on beside what produces them. A little is queued; who is faster than the thread waits. A part is
/// written when it is complete, or from where it has outgrown a bound: one at a time; what comes beside it
/// waits in a temporary file.
class PartCompressor {
public:
    /// archive: nobody else's until Finish. output: that it writes into. Throws ThreadError.
    PartCompressor(ZipWriter& archive, ByteOutput& output);
    PartCompressor(const PartCompressor&) = delete;
    PartCompressor& operator=(const PartCompressor&) = delete;
    /// Throws away what is not done.
    ~PartCompressor();

    enum class End { More, Complete, Abandoned };

    /// The next bytes of a part; what takes no compressing is written at once where nothing is queued. Throws
    /// what failed before, if anything did, and PackageError after Finish.
    void Put(const std::shared_ptr<ArrivingPart>& part, std::vector<std::uint8_t> bytes, End end);

    /// Waits until all is done and ends the thread. Throws what failed.
    void Finish();

private:
    struct Task {
        std::shared_ptr<ArrivingPart> part;
        std::vector<std::uint8_t> bytes;
        End end;
    };
    class Deflater;
    class Work;

    void Run();
    void Stop(bool drain);
    static bool IsQuick(const Task& task);
    void Do(Task& task, std::unique_lock<std::mutex>& guard);

    ByteOutput& m_output;
    std::mutex m_lock;
    std::condition_variable m_added;
    std::condition_variable m_taken;
    std::deque<Task> m_tasks;
    std::size_t m_queuedBytes = 0;
    bool m_isWorking = false; // somebody is, without the lock
    bool m_ending = false;
    std::exception_ptr m_failure;
    std::unique_ptr<Work> m_work; // of whoever is working
    Thread m_thread;
};

} // namespace OvPlatform
