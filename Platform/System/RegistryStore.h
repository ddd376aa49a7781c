#pragma once

#include "System/RegistryFile.h"

#include <filesystem>
#include <mutex>
#include <optional>
#include <set>

namespace OvPlatform {

/// The registry of the process: the file that the environment names, read again whenever it has changed.
class RegistryStore {
public:
    static RegistryStore& Instance();

    /// Held by whoever uses the other operations.
    std::mutex& Lock() { return m_lock; }

    /// Brings the contents up to date. ERROR_SUCCESS, or why the file cannot be used: ERROR_BADDB for one
    /// that is malformed. A file that is not there is an empty registry.
    LSTATUS Refresh();
    RegistryContents& Contents() { return m_contents; }

    /// A key without values lives as long as the process.
    void CreateKey(std::wstring_view path);
    /// Writes the contents to the file, whole or not at all.
    LSTATUS Save();

private:
    struct Mark {
        std::filesystem::path file;
        std::filesystem::file_time_type time;
        std::uintmax_t size = 0;
        ULONGLONG inode = 0;

        bool operator==(const Mark&) const = default;
    };
    LSTATUS Write();
    static std::optional<Mark> MarkOf(const std::filesystem::path& file);

    std::mutex m_lock;
    RegistryContents m_contents;
    std::optional<Mark> m_mark;
    std::filesystem::path m_file;
    LSTATUS m_state = ERROR_SUCCESS;
    bool m_loaded = false;
    std::set<std::wstring> m_createdKeys;
};

} // namespace OvPlatform
