#pragma once

#include "Package/ContentTypes.h"
#include "Package/PackageReader.h"
#include "Package/PieceStream.h"
#include "Package/ZipArchive.h"

#include <span>
#include <unordered_map>
#include <vector>

namespace OvPlatform {

// What the items of a zip archive mean as a package: parts, relationships parts, and where their bytes lie.
// Does not change once read.
class PackageDirectory {
public:
    // Throws PackageError.
    PackageDirectory(std::shared_ptr<const ZipArchive> archive, const PackageLimits& limits);
    PackageDirectory(const PackageDirectory&) = delete;
    PackageDirectory& operator=(const PackageDirectory&) = delete;

    const std::vector<PackagePart>& Parts() const { return m_parts; }
    const PackagePart* Find(std::string_view partName) const;

    std::span<const StoredPiece> Pieces(const PackagePart& part) const;
    // Of a relationships part; empty where there is none.
    std::span<const StoredPiece> RelationshipPieces(std::string_view relationshipsPart) const;

private:
    // A range of m_pieces.
    struct Place {
        std::uint32_t first = 0;
        std::uint32_t count = 0;
    };
    struct Group;
    class Collector;

    void AddPart(const Group& group, const ContentTypes& types);
    Place Store(const Group& group);
    std::span<const StoredPiece> At(Place place) const {
        return {m_pieces.data() + place.first, place.count};
    }
    ContentTypes ReadContentTypes(const Group& group);
    void CheckBounds(const Group& group);
    void IndexParts();

    std::shared_ptr<const ZipArchive> m_archive;
    PackageLimits m_limits;
    std::uint64_t m_totalSize = 0;
    std::vector<StoredPiece> m_pieces;
    std::vector<PackagePart> m_parts;
    std::vector<Place> m_places; // of m_parts, in step
    std::unordered_map<std::string_view, std::uint32_t, PartNameHash, PartNameEqual> m_index; // into m_parts
    std::unordered_map<std::string, Place, PartNameHash, PartNameEqual> m_relationships;
};

} // namespace OvPlatform
