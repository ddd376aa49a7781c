#include "Report/JobState.h"

#include "Report/HresultText.h"

namespace OvPipeline {

std::string JobFailure::Line() const {
    // Of an input at fault, no filter need be named. A problem in words names its part itself where it can.
    std::string line = fromInput && !problem.empty() ? std::string() : stage;
    if (!part.empty() && problem.find(part) == std::string::npos) line += (line.empty() ? "" : " at ") + part;
    if (!line.empty()) line += ": ";
    if (!problem.empty()) line += problem + ": ";
    return line + HresultText(result);
}

void JobState::Fail(JobFailure failure) {
    Announce([&] {
        if (m_failure || m_cancelled || !Settle(Fate::Stopped)) return;
        m_failure = std::move(failure);
        m_stopping.store(true, std::memory_order_release);
    });
}

void JobState::Cancel() {
    Announce([&] {
        if (m_failure || m_cancelled || !Settle(Fate::Stopped)) return;
        m_cancelled = true;
        m_stopping.store(true, std::memory_order_release);
    });
}

HRESULT JobState::StopResult() const {
    const std::lock_guard lock(m_mutex);
    return m_failure && FAILED(m_failure->result) ? m_failure->result
                                                  : HRESULT_FROM_WIN32(ERROR_PRINT_CANCELLED);
}

bool JobState::IsCancelled() const {
    const std::lock_guard lock(m_mutex);
    return m_cancelled;
}

std::optional<JobFailure> JobState::Failure() const {
    const std::lock_guard lock(m_mutex);
    return m_failure;
}

void JobState::Enter(const std::string& who) {
    const std::lock_guard lock(m_mutex);
    m_atWork.push_back(&who);
}

void JobState::Leave(const std::string& who) {
    const std::lock_guard lock(m_mutex);
    std::erase(m_atWork, &who);
}

std::vector<std::string> JobState::AtWork() const {
    const std::lock_guard lock(m_mutex);
    std::vector<std::string> names;
    for (const std::string* who : m_atWork)
        names.push_back(*who);
    return names;
}

} // namespace OvPipeline
