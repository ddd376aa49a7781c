#pragma once

#include "Report/Trace.h"

#include <windows.h>

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace OvPipeline {

/// What a job has done so far. Any thread.
struct JobCounters {
    std::atomic<std::uint64_t> parts{0};        // handed to the first filter
    std::atomic<std::uint64_t> pageParts{0};    // in the package, wanted or not: so many pages come at most
    std::atomic<std::uint64_t> pages{0};        // handed to the first filter
    std::atomic<std::uint64_t> pagesWritten{0}; // written into the output package
    std::atomic<std::uint64_t> partsWritten{0};
    std::atomic<std::uint64_t> bytesWritten{0};
    std::atomic<std::uint64_t> ticketsAsked{0}; // tickets of parts that filters took, each once a filter
};

/// Why a job did not come to its end.
struct JobFailure {
    HRESULT result = E_FAIL;
    std::string stage;   // "filter PassThrough", "the job", "the output"
    std::string part;    // the part that was in hand; may be empty
    std::string problem; // in words, where more is known than the result
    bool fromInput = false;

    /// Without the program's name. It may hold text from outside as it came.
    std::string Line() const;
};

/// Whether a job runs on; shared by all its threads. The first failure is the one that counts: what follows
/// from it is no news. A cancellation after a failure, or a failure after a cancellation, changes nothing.
class JobState {
public:
    explicit JobState(Trace::Writer trace = {}) : m_trace(std::move(trace)) {}

    void Fail(JobFailure failure);
    void Cancel();
    /// For a signal's handler, which may not wait: from now on nothing is published. Whoever hears of it
    /// calls Cancel, which wakes the job. False where it comes too late.
    bool AskCancel() noexcept { return Settle(Fate::Stopped); }

    /// Puts the output under its name by the step, unless the job stops or is asked to: false then. It is one
    /// decision: a job that is published is not stopped any more. What the step throws leaves the job open.
    template <class Step>
    bool Publish(Step&& step) {
        if (!Settle(Fate::Publishing)) {
            Cancel(); // who asked may not have got so far
            return false;
        }
        try {
            step();
        } catch (...) {
            m_fate = Fate::Open;
            throw;
        }
        m_fate = Fate::Published;
        return true;
    }
    bool IsPublished() const noexcept { return m_fate == Fate::Published; }

    bool IsStopping() const { return m_stopping.load(std::memory_order_acquire); }
    /// What calls give that a stopping job interrupts.
    HRESULT StopResult() const;

    bool IsCancelled() const;
    std::optional<JobFailure> Failure() const;

    /// The manager waits here; others wake it.
    template <class Predicate>
    void WaitUntil(Predicate&& predicate) {
        std::unique_lock lock(m_mutex);
        m_changed.wait(lock, predicate);
    }
    /// Runs the change under the lock and wakes all who wait.
    template <class Change>
    void Announce(Change&& change) {
        {
            const std::lock_guard lock(m_mutex);
            change();
        }
        m_changed.notify_all();
    }

    /// Until then no filter works, and a wait for what another one gives would have no end.
    void SetStarted() { m_started.store(true, std::memory_order_release); }
    bool IsStarted() const { return m_started.load(std::memory_order_acquire); }

    /// Who is in code that is not the host's: "filter Watermark". The text must stand until it leaves.
    void Enter(const std::string& who);
    void Leave(const std::string& who);
    std::vector<std::string> AtWork() const;

    /// Somebody waits for the bytes of a part that is still being written. See AwaitedStream.
    bool IsStreamAwaited() const { return m_awaitedStreams > 0; }

    Trace& Log() { return m_trace; }
    JobCounters& Counters() { return m_counters; }

private:
    friend class AwaitedStream;
    enum class Fate { Open, Stopped, Publishing, Published };
    static_assert(std::atomic<Fate>::is_always_lock_free, "a signal's handler changes it");

    /// From open, or where it is so already.
    bool Settle(Fate fate) noexcept {
        Fate before = Fate::Open;
        return m_fate.compare_exchange_strong(before, fate) || before == fate;
    }

    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    std::atomic<bool> m_stopping{false};
    std::atomic<bool> m_started{false};
    bool m_cancelled = false;
    std::atomic<Fate> m_fate{Fate::Open};
    std::optional<JobFailure> m_failure;
    std::vector<const std::string*> m_atWork;
    std::atomic<int> m_awaitedStreams{0};
    Trace m_trace;
    JobCounters m_counters;
};

/// A wait for the bytes of a part. Who waits so takes no parts meanwhile, and its sender may be the one that
/// writes them: senders do not wait for room then.
class AwaitedStream {
public:
    explicit AwaitedStream(JobState& job) : m_job(job) { ++m_job.m_awaitedStreams; }
    AwaitedStream(const AwaitedStream&) = delete;
    AwaitedStream& operator=(const AwaitedStream&) = delete;
    ~AwaitedStream() { --m_job.m_awaitedStreams; }

private:
    JobState& m_job;
};

} // namespace OvPipeline
