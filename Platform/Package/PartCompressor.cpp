#include "Package/PartCompressor.h"

#include "Package/PackageError.h"

#include <msopc.h>
#include <zlib.h>

#include <map>
#include <new>

namespace OvPlatform {

namespace {

constexpr std::size_t maxQueuedBytes = 2u << 20;
constexpr std::size_t outputSize = 64u << 10;

int Level(PackageCompression compression) {
    switch (compression) {
    case PackageCompression::Small:
        return Z_BEST_COMPRESSION;
    case PackageCompression::Fast:
        return Z_BEST_SPEED;
    default:
        return Z_DEFAULT_COMPRESSION;
    }
}

} // namespace

void SpooledPart::Append(std::uint64_t offset, std::uint64_t count) {
    if (count == 0) return;
    storedSize += count;
    Extent& last = m_more ? m_more->back() : m_first;
    if (last.size == 0)
        last = {offset, count};
    else if (last.offset + last.size == offset)
        last.size += count;
    else {
        if (!m_more) m_more = std::make_unique<std::vector<Extent>>();
        m_more->push_back({offset, count});
    }
}

// A raw deflate stream, used for one part after the other: setting one up costs more than a small part.
class PartCompressor::Deflater {
public:
    explicit Deflater(int level) {
        if (deflateInit2(&m_stream, level, Z_DEFLATED, -MAX_WBITS, 8, Z_DEFAULT_STRATEGY) != Z_OK)
            throw std::bad_alloc();
    }
    Deflater(const Deflater&) = delete;
    Deflater& operator=(const Deflater&) = delete;
    ~Deflater() { deflateEnd(&m_stream); }

    void Restart() { deflateReset(&m_stream); }

    void Compress(std::vector<std::uint8_t>& bytes, bool last, SpooledPart& part, SpoolFile& spool) {
        m_stream.next_in = bytes.data();
        m_stream.avail_in = static_cast<uInt>(bytes.size());
        do {
            m_stream.next_out = m_output;
            m_stream.avail_out = sizeof m_output;
            deflate(&m_stream, last ? Z_FINISH : Z_NO_FLUSH);
            const std::size_t made = sizeof m_output - m_stream.avail_out;
            if (made == 0) break;
            const std::uint64_t offset = spool.End();
            spool.Append(m_output, made);
            part.Append(offset, made);
        } while (m_stream.avail_out == 0);
    }

private:
    z_stream m_stream{};
    Bytef m_output[outputSize];
};

// The state of the thread: the streams of the parts that are under way, and idle ones by level.
class PartCompressor::Work {
public:
    explicit Work(SpoolFile& spool) : m_spool(spool) {}

    void Do(Task& task) {
        SpooledPart& part = *task.part;
        if (task.end == End::Abandoned) return Release(part);
        part.checksum = static_cast<std::uint32_t>(
            crc32(part.checksum, task.bytes.data(), static_cast<uInt>(task.bytes.size())));
        part.size += task.bytes.size();
        const bool last = task.end == End::Complete;
        if (part.compression == PackageCompression::None) {
            const std::uint64_t offset = m_spool.End();
            m_spool.Append(task.bytes.data(), task.bytes.size());
            part.Append(offset, task.bytes.size());
        } else
            Stream(part).Compress(task.bytes, last, part, m_spool);
        if (last) Release(part);
    }

private:
    Deflater& Stream(const SpooledPart& part) {
        auto& stream = m_active[&part];
        if (stream) return *stream;
        auto& idle = m_idle[Level(part.compression)];
        if (idle.empty())
            stream = std::make_unique<Deflater>(Level(part.compression));
        else {
            stream = std::move(idle.back());
            idle.pop_back();
            stream->Restart();
        }
        return *stream;
    }

    void Release(const SpooledPart& part) {
        auto node = m_active.extract(&part);
        if (node) m_idle[Level(part.compression)].push_back(std::move(node.mapped()));
    }

    SpoolFile& m_spool;
    std::map<const SpooledPart*, std::unique_ptr<Deflater>> m_active;
    std::map<int, std::vector<std::unique_ptr<Deflater>>> m_idle;
};

PartCompressor::PartCompressor(SpoolFile& spool)
    : m_spool(spool), m_thread("to compress the package", [this] { Run(); }) {}

PartCompressor::~PartCompressor() { Stop(false); }

void PartCompressor::Put(SpooledPart& part, std::vector<std::uint8_t> bytes, End end) {
    {
        std::unique_lock guard(m_lock);
        m_taken.wait(guard, [&] { return m_queuedBytes < maxQueuedBytes || m_failure || m_ending; });
        if (m_failure) std::rethrow_exception(m_failure);
        // Nobody would take it any more.
        if (m_ending) throw PackageError(E_UNEXPECTED, m_spool.Target().string(), "the package is finished");
        m_queuedBytes += bytes.size();
        m_tasks.push_back({&part, std::move(bytes), end});
    }
    m_added.notify_one();
}

void PartCompressor::Finish() {
    Stop(true);
    if (m_failure) std::rethrow_exception(m_failure);
    m_spool.Flush();
}

void PartCompressor::Stop(bool drain) {
    {
        const std::lock_guard guard(m_lock);
        m_ending = true;
        if (!drain) m_tasks.clear();
    }
    m_added.notify_one();
    m_thread.Join();
}

void PartCompressor::Run() {
    Work work(m_spool);
    for (;;) {
        std::unique_lock guard(m_lock);
        m_added.wait(guard, [&] { return !m_tasks.empty() || m_ending; });
        if (m_tasks.empty()) return;
        Task task = std::move(m_tasks.front());
        m_tasks.pop_front();
        m_queuedBytes -= task.bytes.size();
        if (m_failure) continue; // what comes after a failure is only taken away
        guard.unlock();
        m_taken.notify_all();
        try {
            work.Do(task);
        } catch (...) {
            guard.lock();
            m_failure = std::current_exception();
            guard.unlock();
            m_taken.notify_all();
        }
    }
}

} // namespace OvPlatform
