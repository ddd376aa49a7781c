#include "Common/Installation.h"

namespace OvPipeline {

namespace {

constexpr int mostLevels = 4; // from a program up to where it was installed

std::filesystem::path ProgramFolder() {
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error).parent_path();
}

// Empty where the program runs in a build tree.
std::filesystem::path Prefix() {
    std::filesystem::path folder = ProgramFolder();
    std::error_code error;
    for (int level = 0; level < mostLevels && folder.has_relative_path(); ++level) {
        folder = folder.parent_path();
        if (std::filesystem::is_directory(folder / OV_DATA_FOLDER, error)) return folder;
    }
    return {};
}

} // namespace

std::vector<std::filesystem::path> Installation::FilterFolders() {
    const std::filesystem::path program = ProgramFolder();
    if (program.empty()) return {};
    std::vector<std::filesystem::path> folders{program, program.parent_path() / "lib"};
    if (const std::filesystem::path prefix = Prefix(); !prefix.empty())
        folders.push_back(prefix / OV_FILTER_FOLDER);
    return folders;
}

std::optional<std::filesystem::path> Installation::SampleQueue(const char* name) {
    std::error_code error;
    const std::filesystem::path prefix = Prefix();
    for (const auto& folder :
         {prefix / OV_DATA_FOLDER / "Queues" / name, std::filesystem::path(OV_SAMPLE_QUEUES) / name})
        if (folder.is_absolute() && std::filesystem::exists(folder, error)) return folder;
    return std::nullopt;
}

} // namespace OvPipeline
