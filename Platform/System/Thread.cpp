#include "System/Thread.h"

#include "Com/FaultInjection.h"

#include <system_error>

namespace OvPlatform {

namespace {

constexpr auto noMoreThreads = HRESULT_FROM_WIN32(ERROR_MAX_THRDS_REACHED);

} // namespace

ThreadError::ThreadError(HRESULT result, const std::string& problem)
    : std::runtime_error(problem), m_result(result) {}

Thread::Thread(const std::string& task, std::function<void()> work) {
    const std::string problem = "no thread can be had " + task;
    if (const HRESULT fault = FaultPoint(); FAILED(fault)) throw ThreadError(fault, problem);
    try {
        m_thread = std::thread(std::move(work));
    } catch (const std::system_error& error) {
        throw ThreadError(noMoreThreads, problem + ": " + error.code().message());
    }
}

void Thread::Join() {
    if (m_thread.joinable()) m_thread.join();
}

} // namespace OvPlatform
