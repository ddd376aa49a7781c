#pragma once

#include <filesystem>

namespace OvPrintServer {

/// A folder that only this user may enter, below the one for temporary files. It goes with all that is in it.
class PrivateFolder {
public:
    /// Throws std::filesystem::filesystem_error.
    PrivateFolder();
    PrivateFolder(const PrivateFolder&) = delete;
    PrivateFolder& operator=(const PrivateFolder&) = delete;
    ~PrivateFolder();

    const std::filesystem::path& Path() const { return m_path; }

private:
    std::filesystem::path m_path;
};

} // namespace OvPrintServer
