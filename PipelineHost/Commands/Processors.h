#pragma once

#include <sched.h>
#include <sys/types.h>

#include <cstddef>
#include <vector>

namespace OvPipeline {

/// The processors that this process may use, shared out among processes that are as many: one that stays
/// where it is passes its pages from thread to thread without waking another processor for each, which takes
/// longer than a small page does. One thread.
class Processors {
public:
    Processors();

    std::size_t Count() const { return m_processors.size(); }
    /// Puts the process, which has one thread yet, on the processor that fewest are on. Gives that one.
    int Take(pid_t process);
    void GiveBack(int processor);
    /// Lets all threads of the process use all processors.
    void Free(pid_t process) const;

private:
    struct Processor {
        int number;
        int users = 0;
    };

    cpu_set_t m_all;
    std::vector<Processor> m_processors;
};

} // namespace OvPipeline
