#include "Commands/Processors.h"

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <string>

namespace OvPipeline {

Processors::Processors() {
    CPU_ZERO(&m_all);
    if (sched_getaffinity(0, sizeof m_all, &m_all) != 0) return; // more than a set has room for
    for (int number = 0; number < CPU_SETSIZE; ++number)
        if (CPU_ISSET(number, &m_all)) m_processors.push_back({number});
}

int Processors::Take(pid_t process) {
    Processor& least = *std::ranges::min_element(m_processors, {}, &Processor::users);
    ++least.users;
    cpu_set_t one;
    CPU_ZERO(&one);
    CPU_SET(least.number, &one);
    sched_setaffinity(process, sizeof one, &one); // where it is refused, the process goes on where it was
    return least.number;
}

void Processors::GiveBack(int processor) {
    const auto found = std::ranges::find(m_processors, processor, &Processor::number);
    if (found != m_processors.end()) --found->users;
}

void Processors::Free(pid_t process) const {
    std::error_code error; // of a process that is gone
    for (const auto& thread :
         std::filesystem::directory_iterator("/proc/" + std::to_string(process) + "/task", error)) {
        const std::string name = thread.path().filename();
        pid_t number = 0;
        std::from_chars(name.data(), name.data() + name.size(), number);
        sched_setaffinity(number, sizeof m_all, &m_all);
    }
}

} // namespace OvPipeline
