#pragma once

#include <filesystem>

namespace OvPipeline {

/// While it lives, the output stream is for one job's output alone: what anybody else writes to it, also a
/// filter, goes to the error stream. A reader that goes away is a failed write, and does not end the program.
/// One at a time.
class StandardOutput {
public:
    /// Throws UsageError where the stream leads to a terminal, or there is none.
    StandardOutput();
    StandardOutput(const StandardOutput&) = delete;
    StandardOutput& operator=(const StandardOutput&) = delete;
    ~StandardOutput();

    int Descriptor() const { return m_descriptor; }
    bool LeadsTo(const std::filesystem::path& file) const;

private:
    int m_descriptor;
    void (*m_beforeSignal)(int);
};

} // namespace OvPipeline
