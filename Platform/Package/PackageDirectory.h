#pragma once

#include "Package/ContentTypes.h"
#include "Package/PackageReader.h"
#include "Package/PieceStream.h"
#include "Package/ZipArchive.h"

#include <span>
#include <unordered_map>
#include <vector>

namespace OvPlatform {

/// What the items of a zip archive mean as a package: parts, relationships parts, and where their bytes lie.
/// Does not change once read.
class PackageDirectory {
public:
    /// Throws PackageError.
    PackageDirectory(std::shared_ptr<const ZipArchive> archive, const PackageLimits& limits);
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

    ContentTypes ReadContentTypes();
    void ReadItems(const ContentTypes& types);
    void AddGroup(const Group& group, const ContentTypes& types);
    void AddRelationships(const std::string& name, Place place);
    void IndexParts();
    void CheckBounds(const Group& group);
    Place Store(const Group& group);
    std::span<const StoredPiece> At(Place place) const {
        return {m_pieces.data() + place.first, place.count};
    }
    std::size_t IndexOf(const PackagePart& part) const {
        return static_cast<std::size_t>(&part - m_parts.data());
    }

    std::shared_ptr<const ZipArchive> m_archive;
    PackageLimits m_limits;
    std::uint64_t m_totalSize = 0;
    std::vector<StoredPiece> m_pieces;
    std::vector<PackagePart> m_parts;
    std::vector<Place> m_places;        // of m_parts, in step
    std::vector<Place> m_relationships; // of the relationships parts of m_parts, in step
    Place m_packageRelationships;
    std::vector<FoundRelationships> m_found; // empty once read
    std::unordered_map<std::string_view, std::uint32_t, PartNameHash, PartNameEqual> m_index; // into m_parts
};

} // namespace OvPlatform
