#include "Common/TemporaryFiles.h"

#include "Common/HostError.h"

#include <System/FileError.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>

namespace OvPipeline {

std::filesystem::path FolderForTemporaryFiles() {
    std::error_code error;
    std::filesystem::path folder = std::filesystem::temp_directory_path(error);
    if (!error) return folder;
    const char* const named = std::getenv("TMPDIR");
    throw HostError(OvPlatform::FileError(error.value(), "").Result(), {},
                    "there is no folder for temporary files: " +
                        (named == nullptr ? "" : std::string(named) + ": ") + error.message());
}

void ThrowNoTemporary(const std::filesystem::path& folder) {
    const int problem = errno;
    throw HostError(OvPlatform::FileError(problem, folder).Result(), {},
                    "no temporary files can be made in " + folder.string() + ": " + std::strerror(problem));
}

} // namespace OvPipeline
