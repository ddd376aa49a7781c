#pragma once

#include "Package/HashedIndex.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace OvPlatform {

class PartNameFolders;

/// The names of a package's parts, none of which is equivalent to another or extends another. Some 60 bytes a
/// name, since a package may have very many.
class PartNames {
public:
    /// How a new name meets those that are there.
    enum class Conflict { None, Same, Extends, IsExtended };

    /// other: the name in its way, where it is the same or is extended.
    Conflict ConflictOf(std::string_view name, std::string_view& other) const;
    /// One without a conflict. Gives its number, from 0.
    std::uint32_t Add(std::string_view name);

    bool Contains(std::string_view name) const { return Find(name) != none; }
    /// Its number, or none.
    std::uint32_t Find(std::string_view name) const;
    std::uint32_t Count() const { return static_cast<std::uint32_t>(m_names.size()); }
    std::string_view At(std::uint32_t number) const { return m_names[number]; }

    static constexpr std::uint32_t none = HashedIndex::none;

private:
    /// The first letters of a name, as a folder.
    struct Folder {
        std::uint32_t name;
        std::uint32_t size;
        std::size_t hash;
    };

    std::string_view Keep(std::string_view name);
    void AddFolders(std::uint32_t number);
    std::string_view TextOf(const Folder& folder) const {
        return m_names[folder.name].substr(0, folder.size);
    }
    std::uint32_t FindName(std::string_view name, std::size_t hash) const;
    std::uint32_t FindFolder(std::string_view name, std::size_t hash) const;

    std::vector<std::unique_ptr<char[]>> m_blocks; // of names, one behind the other
    std::size_t m_blockLeft = 0;
    char* m_blockNext = nullptr;
    std::vector<std::string_view> m_names;
    std::vector<Folder> m_folders; // through which they lead, each once
    HashedIndex m_index;
    HashedIndex m_folderIndex;
};

} // namespace OvPlatform
