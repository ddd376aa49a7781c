#include "System/StreamOutput.h"

#include "System/FileError.h"

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <system_error>
#include <utility>

namespace OvPlatform {

namespace {

constexpr std::size_t bufferSize = 64u << 10;
// A stream that has room takes as much at once without waiting.
constexpr std::size_t stepSize = PIPE_BUF;
constexpr int askedEveryMilliseconds = 20;

} // namespace

StreamOutput::StreamOutput(int descriptor, std::filesystem::path name, std::function<bool()> isStopped)
    : m_descriptor(descriptor), m_name(std::move(name)), m_isStopped(std::move(isStopped)) {
    m_buffer.reserve(bufferSize);
}

std::filesystem::path StreamOutput::Folder() const {
    std::error_code error;
    std::filesystem::path folder = std::filesystem::temp_directory_path(error);
    if (error)
        throw FileError(error.value(), m_name,
                        "cannot be written: no folder for temporary files: " + error.message());
    return folder;
}

void StreamOutput::Write(const void* bytes, std::size_t size) {
    const char* next = static_cast<const char*>(bytes);
    while (size != 0) {
        const std::size_t step = (std::min)(size, bufferSize - m_buffer.size());
        m_buffer.append(next, step);
        next += step;
        size -= step;
        if (m_buffer.size() == bufferSize) Flush();
    }
}

void StreamOutput::Flush() {
    const char* next = m_buffer.data();
    std::size_t left = m_buffer.size();
    while (left != 0) {
        WaitForRoom();
        const ssize_t count = write(m_descriptor, next, (std::min)(left, stepSize));
        if (count < 0 && (errno == EINTR || errno == EAGAIN)) continue;
        if (count < 0) throw FileError(errno, m_name);
        next += count;
        left -= static_cast<std::size_t>(count);
    }
    m_buffer.clear();
}

void StreamOutput::WaitForRoom() const {
    for (;;) {
        if (m_isStopped && m_isStopped()) throw FileError(ECANCELED, m_name);
        pollfd stream{m_descriptor, POLLOUT, 0};
        const int ready = poll(&stream, 1, askedEveryMilliseconds);
        if (ready > 0) return; // also for a failure, which the write tells
        if (ready < 0 && errno != EINTR) throw FileError(errno, m_name);
    }
}

} // namespace OvPlatform
