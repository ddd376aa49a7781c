#pragma once

#include <filesystem>
#include <optional>
#include <vector>

namespace OvPipeline {

/// Where the running program finds what was installed with it, wherever that was put.
class Installation {
public:
    /// The folders in which filter modules lie: beside the program, and those of its installation.
    static std::vector<std::filesystem::path> FilterFolders();

    /// The sample queue of that name, of the installation or else of the sources that the program was built
    /// from; nothing where neither is there.
    static std::optional<std::filesystem::path> SampleQueue(const char* name);
};

} // namespace OvPipeline
