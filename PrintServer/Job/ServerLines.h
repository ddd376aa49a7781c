#pragma once

#include <cstdint>
#include <mutex>
#include <string>
#include <string_view>

namespace OvPrintServer {

/// What is said to the print server: lines on the error stream, which it understands by the word that they
/// begin with. What comes from outside stays in its line and is bounded. Any thread.
class ServerLines {
public:
    /// Standard error where no other descriptor is given.
    explicit ServerLines(int descriptor = 2) : m_descriptor(descriptor) {}
    ServerLines(const ServerLines&) = delete;
    ServerLines& operator=(const ServerLines&) = delete;

    void Info(std::string_view text) { Say("INFO: ", text); }
    void Warning(std::string_view text) { Say("WARNING: ", text); }
    void Error(std::string_view text) { Say("ERROR: ", text); }
    /// A reason of the printer's state, on or off.
    void State(bool isOn, std::string_view reason);
    /// How much of the job is done, in percent: an attribute of it, as clients see it.
    void Progress(std::uint64_t percent);
    /// A page that is done, by its number in the job.
    void Page(unsigned long page, unsigned copies);

private:
    void Say(std::string_view word, std::string_view text);

    std::mutex m_mutex;
    const int m_descriptor;
};

} // namespace OvPrintServer
