#pragma once

#include "Report/Trace.h"

#include <windows.h>

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <optional>
#include <string>

namespace OvPipeline {

// What a job has done so far. Any thread.
struct JobCounters {
    std::atomic<std::uint64_t> parts{0};        // handed to the first filter
    std::atomic<std::uint64_t> pages{0};        // handed to the first filter
    std::atomic<std::uint64_t> pagesWritten{0}; // written into the output package
    std::atomic<std::uint64_t> partsWritten{0};
    std::atomic<std::uint64_t> bytesWritten{0};
    std::atomic<std::uint64_t> ticketsAsked{0}; // tickets of parts that filters took, each once a filter
};

// Why a job did not come to its end.
struct JobFailure {
    HRESULT result = E_FAIL;
    std::string stage;   // "filter PassThrough", "the job", "the output"
    std::string part;    // the part that was in hand; may be empty
    std::string problem; // in words, where more is known than the result
    bool fromInput = false;

    // One line, without the program's name.
    std::string Line() const;
};

// Whether a job runs on; shared by all its threads. The first failure is the one that counts: what follows
// from it is no news. A cancellation after a failure, or a failure after a cancellation, changes nothing.
class JobState {
public:
    explicit JobState(Trace::Writer trace = {}) : m_trace(std::move(trace)) {}

    void Fail(JobFailure failure);
    void Cancel();

    bool IsStopping() const { return m_stopping.load(std::memory_order_acquire); }
    // What calls give that a stopping job interrupts.
    HRESULT StopResult() const;

    bool IsCancelled() const;
    std::optional<JobFailure> Failure() const;

    // The manager waits here; others wake it.
    template <class Predicate>
    void WaitUntil(Predicate&& predicate) {
        std::unique_lock lock(m_mutex);
        m_changed.wait(lock, predicate);
    }
    // Runs the change under the lock and wakes all who wait.
    template <class Change>
    void Announce(Change&& change) {
        {
            const std::lock_guard lock(m_mutex);
            change();
        }
        m_changed.notify_all();
    }

    Trace& Log() { return m_trace; }
    JobCounters& Counters() { return m_counters; }

private:
    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    std::atomic<bool> m_stopping{false};
    bool m_cancelled = false;
    std::optional<JobFailure> m_failure;
    Trace m_trace;
    JobCounters m_counters;
};

} // namespace OvPipeline
