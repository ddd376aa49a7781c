#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace OvPipeline {

/// An outside program that draws pages, in a process that has nothing of this one: no open files, no streams,
/// a bounded time, and bounded files. It ends with this program.
class RendererProcess {
public:
    /// Runs to its end in the folder. What went wrong, in words; empty where nothing did.
    static std::string Run(const std::filesystem::path& program, const std::vector<std::string>& arguments,
                           const std::filesystem::path& folder, double seconds);
};

} // namespace OvPipeline
