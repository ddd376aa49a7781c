#pragma once

#include <functional>
#include <mutex>
#include <string>
#include <string_view>

namespace OvPipeline {

/// The account of every part and step, a line each, in the order in which they happen. Any thread.
class Trace {
public:
    /// line: may hold text from outside as it came.
    using Writer = std::function<void(const std::string& line)>;

    Trace() = default;
    explicit Trace(Writer writer) : m_writer(std::move(writer)) {}

    /// Ask first, so that no text is made for nothing.
    bool IsOn() const { return static_cast<bool>(m_writer); }
    /// "<stage>: <step> <subject>", with the calling thread's stage.
    void Step(std::string_view step, std::string_view subject = {});

    /// Names what the calling thread does: a filter's name, "output", "job".
    static void NameThread(std::string stage);
    static const std::string& ThreadStage();

private:
    Writer m_writer;
    std::mutex m_mutex;
};

} // namespace OvPipeline
