#include "System/Thread.h"

#include "Com/FaultInjection.h"

#include <pthread.h>

#include <string_view>
#include <system_error>

namespace OvPlatform {

namespace {

// "for filter PageList" is PageList; the system keeps 15 bytes of a name.
std::string ShortName(std::string_view task) {
    constexpr std::size_t mostBytes = 15;
    for (const std::string_view word : {"for ", "to ", "the ", "filter "})
        if (task.starts_with(word)) task.remove_prefix(word.size());
    return std::string(task.substr(0, mostBytes));
}

constexpr auto noMoreThreads = HRESULT_FROM_WIN32(ERROR_MAX_THRDS_REACHED);

} // namespace

ThreadError::ThreadError(HRESULT result, const std::string& problem)
    : std::runtime_error(problem), m_result(result) {}

Thread::Thread(const std::string& task, std::function<void()> work) {
    const std::string problem = "no thread can be had " + task;
    if (const HRESULT fault = FaultPoint(); FAILED(fault)) throw ThreadError(fault, problem);
    try {
        m_thread = std::thread(std::move(work));
        pthread_setname_np(m_thread.native_handle(), ShortName(task).c_str());
    } catch (const std::system_error& error) {
        throw ThreadError(noMoreThreads, problem + ": " + error.code().message());
    }
}

void Thread::Join() {
    if (m_thread.joinable()) m_thread.join();
}

} // namespace OvPlatform
