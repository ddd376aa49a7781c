#include "Chain/FilterCall.h"

#include <Locale/ShownText.h>

#include <utility>

namespace OvPipeline {

namespace {

// A plain pointer: at the end of a program the thread's objects are gone before those who ask.
thread_local const char* innermost = nullptr;

// Names come from the command line and from pipeline configurations, and go to a terminal from a signal's
// handler.
constexpr std::size_t mostShown = 200;

} // namespace

FilterCall::FilterCall(JobState& job, const std::string& who)
    : m_job(job), m_who(OvPlatform::Shown(who, mostShown)) {
    m_job.Enter(m_who);
    m_outer = std::exchange(innermost, m_who.c_str());
}

FilterCall::~FilterCall() {
    innermost = m_outer;
    m_job.Leave(m_who);
}

const char* FilterCall::Innermost() noexcept { return innermost; }

} // namespace OvPipeline
