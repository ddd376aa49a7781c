#pragma once

#include <filesystem>
#include <string>
#include <utility>

namespace OvPipeline {

/// The file that a job lies in, and what people call it: its path, or "standard input".
struct JobFile {
    JobFile() = default;
    // NOLINTNEXTLINE(google-explicit-constructor): most files are called by their path
    JobFile(std::filesystem::path file) : path(std::move(file)), name(path.string()) {}
    JobFile(std::filesystem::path file, std::string called)
        : path(std::move(file)), name(std::move(called)) {}

    std::filesystem::path path;
    std::string name; // UTF-8
};

} // namespace OvPipeline
