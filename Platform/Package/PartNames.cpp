#include "Package/PartNames.h"

#include "Package/PartName.h"

#include <algorithm>
#include <cstring>

namespace OvPlatform {

namespace {

constexpr std::size_t blockSize = 64u << 10;

} // namespace

std::uint32_t PartNames::FindName(std::string_view name, std::size_t hash) const {
    return m_index.Find(hash, [&](std::uint32_t at) {
        return m_names[at].size() == name.size() && PartNameEqual()(m_names[at], name);
    });
}

std::uint32_t PartNames::FindFolder(std::string_view name, std::size_t hash) const {
    return m_folderIndex.Find(hash, [&](std::uint32_t at) {
        return m_folders[at].hash == hash && PartNameEqual()(TextOf(m_folders[at]), name);
    });
}

std::uint32_t PartNames::Find(std::string_view name) const { return FindName(name, PartNameHash()(name)); }

PartNames::Conflict PartNames::ConflictOf(std::string_view name, std::string_view& other) const {
    const std::size_t hash = PartNameHash()(name);
    if (const std::uint32_t same = FindName(name, hash); same != none) {
        other = m_names[same];
        return Conflict::Same;
    }
    for (PartNameFolders folders(name); folders.Next();)
        if (const std::uint32_t before = FindName(folders.Folder(), folders.Hash()); before != none) {
            other = m_names[before];
            return Conflict::Extends;
        }
    return FindFolder(name, hash) != none ? Conflict::IsExtended : Conflict::None;
}

std::string_view PartNames::Keep(std::string_view name) {
    if (name.size() > m_blockLeft) {
        m_blockLeft = (std::max)(blockSize, name.size());
        m_blocks.push_back(std::make_unique_for_overwrite<char[]>(m_blockLeft));
        m_blockNext = m_blocks.back().get();
    }
    std::memcpy(m_blockNext, name.data(), name.size());
    const std::string_view kept(m_blockNext, name.size());
    m_blockNext += name.size();
    m_blockLeft -= name.size();
    return kept;
}

std::uint32_t PartNames::Add(std::string_view name) {
    const std::uint32_t number = Count();
    m_names.push_back(Keep(name));
    m_index.Add(number, [this](std::uint32_t at) { return PartNameHash()(m_names[at]); });
    AddFolders(number);
    return number;
}

// Where a folder is there, all that it stands in are.
void PartNames::AddFolders(std::uint32_t number) {
    std::vector<Folder> folders;
    for (PartNameFolders each(m_names[number]); each.Next();)
        folders.push_back({number, static_cast<std::uint32_t>(each.Folder().size()), each.Hash()});
    for (; !folders.empty() && FindFolder(TextOf(folders.back()), folders.back().hash) == none;
         folders.pop_back()) {
        m_folders.push_back(folders.back());
        m_folderIndex.Add(static_cast<std::uint32_t>(m_folders.size() - 1),
                          [this](std::uint32_t at) { return m_folders[at].hash; });
    }
}

} // namespace OvPlatform
