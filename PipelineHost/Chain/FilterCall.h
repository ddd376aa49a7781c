#pragma once

#include "Common/HostError.h"
#include "Report/FilterWords.h"
#include "Report/JobState.h"

#include <string>

namespace OvPipeline {

/// Marks, while it lives, that its thread is in code that is not the host's: a filter's or a module's.
class FilterCall {
public:
    /// who: as a line names it, "filter Watermark (InitializeFilter)".
    FilterCall(JobState& job, const std::string& who);
    FilterCall(const FilterCall&) = delete;
    FilterCall& operator=(const FilterCall&) = delete;
    ~FilterCall();

    /// Who is called by the calling thread, innermost; null where nobody is. It may be asked in a signal's
    /// handler and at the end of the program.
    static const char* Innermost() noexcept;

private:
    JobState& m_job;
    const std::string m_who;
    const char* m_outer;
};

/// Calls into a filter. No exception may come out of one; one that does is a failure of that filter, and is
/// noted. What the thread noted before is forgotten.
template <class Call>
HRESULT CallFilter(JobState& job, const std::string& who, Call&& call) {
    ThreadNote() = {};
    ThreadPart().clear();
    TakenPart().clear();
    FilterWords::Forget();
    try {
        const FilterCall mark(job, who);
        return call();
    } catch (...) {
        return NoteException();
    }
}

} // namespace OvPipeline
