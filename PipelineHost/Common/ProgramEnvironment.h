#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace OvPipeline {

/// The environment of another program that works for a job: ours, but with a folder of its own for temporary
/// files, and without what changes Ghostscript's options.
class ProgramEnvironment {
public:
    explicit ProgramEnvironment(const std::filesystem::path& folder);
    ProgramEnvironment(const ProgramEnvironment&) = delete;
    ProgramEnvironment& operator=(const ProgramEnvironment&) = delete;

    /// As execve(2) takes it, as long as this lives.
    char* const* Pointers() const { return m_pointers.data(); }

private:
    std::vector<std::string> m_variables;
    std::vector<char*> m_pointers;
};

} // namespace OvPipeline
