#pragma once

#include "Package/ContentTypes.h"
#include "Package/HashedIndex.h"
#include "Package/PackageReader.h"
#include "Package/PieceStream.h"
#include "Package/ZipArchive.h"

#include <functional>
#include <span>
#include <unordered_set>
#include <vector>

namespace OvPlatform {

/// What the items of a zip archive mean as a package: parts, relationships parts, and where their bytes lie.
/// Does not change once read.
class PackageDirectory {
public:
    /// isStopped: asked now and then; true gives it up with E_ABORT. Throws PackageError.
    PackageDirectory(std::shared_ptr<const ZipArchive> archive, const PackageLimits& limits,
                     const std::function<bool()>& isStopped);
    PackageDirectory(const PackageDirectory&) = delete;
    PackageDirectory& operator=(const PackageDirectory&) = delete;

    const std::vector<PackagePart>& Parts() const { return m_parts; }
    const PackagePart* Find(std::string_view partName) const;

    std::span<const StoredPiece> Pieces(const PackagePart& part) const;
    /// Of the relationships part of a source; empty where there is none.
    std::span<const StoredPiece> RelationshipPieces(std::string_view source) const;

private:
    /// A range of m_pieces.
    struct Place {
        std::uint32_t first = 0;
        std::uint32_t count = 0;
    };
    /// A relationships part, until its source is known to be there.
    struct FoundRelationships {
        std::string name;
        Place place;
    };
    struct Group;
    class Groups;
    class Items;

    ContentTypes ReadContentTypes(Groups& groups);
    void ReadParts(Groups& groups, const ContentTypes& types);
    void AddGroup(const Group& group, const ContentTypes& types);
    void AddPart(const Group& group, std::string name, std::string_view type);
    /// False where its source is not there.
    bool AddRelationships(const std::string& name, Place place);
    void CheckNames() const;
    void CheckBounds(const Group& group);
    Place Store(const Group& group);
    std::span<const StoredPiece> At(Place place) const {
        return {m_pieces.data() + place.first, place.count};
    }
    std::size_t IndexOf(const PackagePart& part) const {
        return static_cast<std::size_t>(&part - m_parts.data());
    }
    std::uint32_t PlaceOf(std::string_view name, std::size_t hash) const;

    std::shared_ptr<const ZipArchive> m_archive;
    PackageLimits m_limits;
    std::function<bool()> m_isStopped;
    std::uint64_t m_totalSize = 0;
    std::uint64_t m_totalStored = 0;
    std::vector<StoredPiece> m_pieces;
    std::unordered_set<std::string> m_contentTypes; // of m_parts
    std::vector<PackagePart> m_parts;
    std::vector<std::uint32_t> m_places; // of the first pieces of m_parts, in step
    std::vector<Place> m_relationships;  // of the relationships parts of m_parts, in step
    Place m_packageRelationships;
    std::vector<FoundRelationships> m_found; // ahead of their sources; empty once read
    HashedIndex m_index;                     // of m_parts by name
};

} // namespace OvPlatform
