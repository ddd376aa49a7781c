#pragma once

#include <atomic>
#include <string>
#include <utility>

namespace OvPipeline {

/// The filter that has a stream to write. Once it is done, what it has left open will never be closed,
/// whoever still holds it. Any thread.
class StreamMaker {
public:
    explicit StreamMaker(std::string filter) : m_filter(std::move(filter)) {}

    const std::string& Filter() const { return m_filter; }
    bool IsDone() const { return m_isDone.load(std::memory_order_acquire); }
    void SetDone() { m_isDone.store(true, std::memory_order_release); }

private:
    std::string m_filter;
    std::atomic<bool> m_isDone{false};
};

} // namespace OvPipeline
