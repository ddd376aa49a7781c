#pragma once

#include "Com/PlatformExport.h"
#include "Spooler/QueueDescription.h"

#include <filesystem>
#include <string>

namespace OvPlatform {

/// What the current user has set for one printer: a file of the user's, which docs/formats/user-properties.md
/// describes. It is read at each call and replaced whole at each change, so that several programs may use it;
/// of two that change it at the same moment, one waits for the other. Any thread.
class OV_PLATFORM_API UserProperties {
public:
    /// The environment variable that names the folder of these files.
    static constexpr const char* folderVariable = "OV_USER_PROPERTIES";

    explicit UserProperties(const std::wstring& printerName);

    /// Empty where the environment names no place for files of the user.
    const std::filesystem::path& File() const { return m_file; }

    /// Without a file there are none. Throws QueueFolderError for one that cannot be read or is damaged.
    QueueValues Load() const;
    /// Puts the value in the place of what has that name, or leaves all as it was. Throws QueueFolderError,
    /// FileError, and std::invalid_argument for text that no XML can hold or a name too long.
    void Store(const std::wstring& name, const QueueValue& value) const;

private:
    std::filesystem::path m_file;
};

} // namespace OvPlatform
