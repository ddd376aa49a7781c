#include "Report/Trace.h"

namespace OvPipeline {

namespace {

std::string& Stage() {
    static thread_local std::string stage = "job";
    return stage;
}

} // namespace

void Trace::NameThread(std::string stage) { Stage() = std::move(stage); }

const std::string& Trace::ThreadStage() { return Stage(); }

void Trace::Step(std::string_view step, std::string_view subject) {
    if (!m_writer) return;
    std::string line = Stage();
    line += ": ";
    line += step;
    if (!subject.empty()) {
        line += ' ';
        line += subject;
    }
    const std::lock_guard lock(m_mutex);
    m_writer(line);
}

} // namespace OvPipeline
