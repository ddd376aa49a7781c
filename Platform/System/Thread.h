#pragma once

#include "Com/PlatformExport.h"

#include <windows.h>

#include <functional>
#include <stdexcept>
#include <string>
#include <thread>

namespace OvPlatform {

/// The system has no thread to give. what() is one line that says what the thread was for.
class OV_PLATFORM_API ThreadError : public std::runtime_error {
public:
    ThreadError(HRESULT result, const std::string& problem);

    HRESULT Result() const { return m_result; }

private:
    HRESULT m_result;
};

/// The one place where threads are made. A thread that runs is joined before its object goes, so that a
/// failure on the way never meets one that nobody waits for: whoever makes it sees to it that its work ends.
class OV_PLATFORM_API Thread {
public:
    Thread() noexcept = default;
    /// Starts the work, which throws nothing. task: what it is for, as in "for the output"; debuggers show
    /// the beginning of its last words as the thread's name. Throws ThreadError.
    Thread(const std::string& task, std::function<void()> work);
    Thread(Thread&&) noexcept = default;
    /// Only on to one that is not running.
    Thread& operator=(Thread&&) noexcept = default;
    ~Thread() { Join(); }

    bool IsRunning() const { return m_thread.joinable(); }
    void Join();

private:
    std::thread m_thread;
};

} // namespace OvPlatform
