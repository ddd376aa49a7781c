#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace OvPipeline {

/// An outside program that draws pages, with bounds of its time, its memory and its files.
class RendererProcess {
public:
    /// Runs to its end in the folder. What went wrong, in words; empty where nothing did.
    static std::string Run(const std::filesystem::path& program, const std::vector<std::string>& arguments,
                           const std::filesystem::path& folder, double seconds);
};

} // namespace OvPipeline
