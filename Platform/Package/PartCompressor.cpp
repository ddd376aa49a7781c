#include "Package/PartCompressor.h"

#include "Package/ArchivedParts.h"
#include "Package/PackageError.h"

#include <msopc.h>
#include <zlib.h>

#include <algorithm>
#include <map>
#include <new>
#include <unordered_map>

namespace OvPlatform {

namespace {

constexpr std::size_t maxQueuedBytes = 2u << 20;
constexpr std::size_t quickSize = 4u << 10;
constexpr std::size_t taskSize = 1024; // what a task takes beside its bytes, at most
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

    template <class Take>
    void Compress(std::vector<std::uint8_t>& bytes, bool last, const Take& take) {
        m_stream.next_in = bytes.data();
        m_stream.avail_in = static_cast<uInt>(bytes.size());
        do {
            m_stream.next_out = m_output;
            m_stream.avail_out = sizeof m_output;
            deflate(&m_stream, last ? Z_FINISH : Z_NO_FLUSH);
            const std::size_t made = sizeof m_output - m_stream.avail_out;
            if (made == 0) break;
            take(m_output, made);
        } while (m_stream.avail_out == 0);
    }

private:
    z_stream m_stream{};
    Bytef m_output[outputSize];
};

// The state of the thread: the parts that are under way with their streams, and idle streams by level.
class PartCompressor::Work {
public:
    Work(ZipWriter& archive, ByteOutput& output) : m_parts(archive, output) {}

    void Do(Task& task) {
        const bool isWhole = task.end == End::Complete && !m_open.contains(task.part.get());
        if (isWhole && !task.part->isPacked && task.bytes.size() <= mostKnownSize &&
            task.part->compression == PackageCompression::Normal)
            return DoSmall(task);
        Open& open = m_open.try_emplace(task.part.get(), task.part).first->second;
        if (task.end != End::Abandoned) {
            Take(open, task);
            if (task.end == End::More) return;
        }
        auto node = m_open.extract(task.part.get());
        Open& done = node.mapped();
        if (done.deflater) m_idle[Level(task.part->compression)].push_back(std::move(done.deflater));
        if (task.end == End::Complete)
            m_parts.Complete(std::move(done.item), task.part->entry);
        else
            m_parts.Abandon(std::move(done.item));
    }

private:
    struct Open {
        explicit Open(const std::shared_ptr<ArrivingPart>& arriving)
            : part(arriving), item(arriving->isPacked) {}

        std::shared_ptr<ArrivingPart> part;
        ArchivedParts::Item item;
        std::unique_ptr<Deflater> deflater;
    };
    struct Known {
        std::vector<std::uint8_t> bytes;
        std::vector<std::uint8_t> packed;
        std::uint32_t checksum = 0;
    };

    static constexpr std::size_t mostKnown = 16;
    static constexpr std::size_t mostKnownSize = 8u << 10;

    void Take(Open& open, Task& task) {
        ArrivingPart& part = *task.part;
        if (part.isPacked) return m_parts.Append(open.item, part.entry, task.bytes.data(), task.bytes.size());
        Count(part.entry, task.bytes);
        if (part.compression == PackageCompression::None) {
            m_parts.Append(open.item, part.entry, task.bytes.data(), task.bytes.size());
            part.entry.storedSize += task.bytes.size();
            return;
        }
        if (!open.deflater) open.deflater = IdleDeflater(Level(part.compression));
        open.deflater->Compress(task.bytes, task.end == End::Complete,
                                [&](const void* made, std::size_t size) {
                                    m_parts.Append(open.item, part.entry, made, size);
                                    part.entry.storedSize += size;
                                });
    }

    // The relationships of one page after the other, and its ticket, are often the same text.
    void DoSmall(Task& task) {
        const auto same = std::find_if(m_known.begin(), m_known.end(),
                                       [&](const Known& known) { return known.bytes == task.bytes; });
        const Known& known = same != m_known.end() ? *same : Learn(task);
        ZipHeader& entry = task.part->entry;
        entry.checksum = known.checksum;
        entry.size = known.bytes.size();
        entry.storedSize = known.packed.size();
        ArchivedParts::Item item(false);
        m_parts.Append(item, entry, known.packed.data(), known.packed.size());
        m_parts.Complete(std::move(item), entry);
    }

    const Known& Learn(Task& task) {
        Known known;
        ZipHeader entry;
        Count(entry, task.bytes);
        known.checksum = entry.checksum;
        auto deflater = IdleDeflater(Level(PackageCompression::Normal));
        deflater->Compress(task.bytes, true, [&](const std::uint8_t* made, std::size_t size) {
            known.packed.insert(known.packed.end(), made, made + size);
        });
        m_idle[Level(PackageCompression::Normal)].push_back(std::move(deflater));
        known.bytes = std::move(task.bytes);
        if (m_known.size() == mostKnown) m_known.pop_front(); // the oldest
        return m_known.emplace_back(std::move(known));
    }

    static void Count(ZipHeader& entry, const std::vector<std::uint8_t>& bytes) {
        entry.checksum = static_cast<std::uint32_t>(crc32_z(entry.checksum, bytes.data(), bytes.size()));
        entry.size += bytes.size();
    }

    std::unique_ptr<Deflater> IdleDeflater(int level) {
        auto& idle = m_idle[level];
        if (idle.empty()) return std::make_unique<Deflater>(level);
        auto deflater = std::move(idle.back());
        idle.pop_back();
        deflater->Restart();
        return deflater;
    }

    ArchivedParts m_parts;
    std::unordered_map<const ArrivingPart*, Open> m_open;
    std::map<int, std::vector<std::unique_ptr<Deflater>>> m_idle;
    std::deque<Known> m_known;
};

PartCompressor::PartCompressor(ZipWriter& archive, ByteOutput& output)
    : m_output(output), m_work(std::make_unique<Work>(archive, output)),
      m_thread("to compress parts", [this] { Run(); }) {}

PartCompressor::~PartCompressor() { Stop(false); }

// To hand it to another thread would take longer.
bool PartCompressor::IsQuick(const Task& task) {
    return task.part->isPacked || task.bytes.size() <= quickSize;
}

void PartCompressor::Put(const std::shared_ptr<ArrivingPart>& part, std::vector<std::uint8_t> bytes,
                         End end) {
    Task task{part, std::move(bytes), end};
    std::unique_lock guard(m_lock);
    m_taken.wait(guard, [&] { return m_queuedBytes < maxQueuedBytes || m_failure || m_ending; });
    if (m_failure) std::rethrow_exception(m_failure);
    // Nobody would take it any more.
    if (m_ending) throw PackageError(E_UNEXPECTED, m_output.Name().string(), "the package is finished");
    if (m_tasks.empty() && !m_isWorking && IsQuick(task)) {
        Do(task, guard);
        if (m_failure) std::rethrow_exception(m_failure);
        return;
    }
    m_queuedBytes += task.bytes.size() + taskSize;
    m_tasks.push_back(std::move(task));
    guard.unlock();
    m_added.notify_one();
}

void PartCompressor::Finish() {
    Stop(true);
    if (m_failure) std::rethrow_exception(m_failure);
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
    std::unique_lock guard(m_lock);
    for (;;) {
        m_added.wait(guard, [&] { return (!m_tasks.empty() || m_ending) && !m_isWorking; });
        if (m_tasks.empty()) return;
        Task task = std::move(m_tasks.front());
        m_tasks.pop_front();
        m_queuedBytes -= task.bytes.size() + taskSize;
        if (m_failure) continue; // what comes after a failure is only taken away
        Do(task, guard);
    }
}

// The lock is let go meanwhile.
void PartCompressor::Do(Task& task, std::unique_lock<std::mutex>& guard) {
    m_isWorking = true;
    guard.unlock();
    std::exception_ptr failure;
    try {
        m_work->Do(task);
    } catch (...) {
        failure = std::current_exception();
    }
    guard.lock();
    m_isWorking = false;
    if (failure) m_failure = failure;
    const bool isAwaited = !m_tasks.empty() || m_ending;
    m_taken.notify_all();
    if (isAwaited) m_added.notify_one();
}

} // namespace OvPlatform
