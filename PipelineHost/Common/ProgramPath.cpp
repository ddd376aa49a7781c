#include "Common/ProgramPath.h"

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <string_view>

namespace OvPipeline {

namespace {

constexpr const char* usualFolders = "/usr/bin:/bin"; // where no environment names others

} // namespace

std::filesystem::path ProgramPath(const std::string& name) {
    const char* const path = std::getenv("PATH");
    std::string_view rest = path != nullptr ? path : usualFolders;
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find(':'), rest.size());
        std::filesystem::path file = std::filesystem::path(rest.substr(0, end)) / name;
        rest.remove_prefix(std::min(end + 1, rest.size()));
        std::error_code error;
        if (file.is_absolute() && std::filesystem::is_regular_file(file, error) &&
            access(file.c_str(), X_OK) == 0)
            return file;
    }
    return {};
}

} // namespace OvPipeline
