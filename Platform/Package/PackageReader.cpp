#include "Package/PackageReader.h"

#include "Package/PackageDirectory.h"
#include "Package/PartName.h"

#include <msopc.h>

#include <algorithm>

namespace OvPlatform {

namespace {

class ZipPackageReader final : public PackageReader, public std::enable_shared_from_this<ZipPackageReader> {
public:
    ZipPackageReader(const std::filesystem::path& file, const PackageLimits& limits)
        : m_limits(limits), m_archive(std::make_shared<ZipArchive>(file)), m_directory(m_archive, limits) {}

    const std::filesystem::path& File() const override { return m_archive->File(); }
    const std::vector<PackagePart>& Parts() const override { return m_directory.Parts(); }
    const PackagePart* Find(std::string_view partName) const override { return m_directory.Find(partName); }

    std::unique_ptr<PackagePartStream> OpenPart(std::string_view partName) const override {
        const PackagePart& part = Require(partName);
        return Open(part.name, m_directory.Pieces(part));
    }

    std::string ReadPart(std::string_view partName, std::uint64_t maxSize) const override {
        const PackagePart& part = Require(partName);
        return ReadWhole(part.name, m_directory.Pieces(part), maxSize);
    }

    std::vector<PackageRelationship> Relationships(std::string_view source) const override {
        const auto pieces = m_directory.RelationshipPieces(source);
        if (pieces.empty()) return {};
        const std::string name = RelationshipsPartName(source);
        return ParseRelationships(ReadWhole(name, pieces, m_limits.maxXmlPartSize), std::string(source));
    }

private:
    const PackagePart& Require(std::string_view partName) const {
        const PackagePart* part = Find(partName);
        if (part == nullptr)
            throw PackageError(OPC_E_NO_SUCH_PART, std::string(partName), "there is no such part");
        return *part;
    }

    std::unique_ptr<PackagePartStream> Open(const std::string& name,
                                            std::span<const StoredPiece> pieces) const {
        return std::make_unique<PieceStream>(shared_from_this(), m_archive, name, pieces);
    }

    std::string ReadWhole(const std::string& name, std::span<const StoredPiece> pieces,
                          std::uint64_t maxSize) const {
        const auto stream = Open(name, pieces);
        if (stream->Size() > maxSize)
            throw PackageError(OPC_E_UNSUPPORTED_PACKAGE, name,
                               "it has more than " + std::to_string(maxSize) + " bytes");
        std::string bytes(static_cast<std::size_t>(stream->Size()), '\0');
        std::size_t done = 0;
        while (const std::size_t count = stream->Read(bytes.data() + done, bytes.size() - done))
            done += count;
        return bytes;
    }

    PackageLimits m_limits;
    std::shared_ptr<const ZipArchive> m_archive;
    PackageDirectory m_directory;
};

} // namespace

std::shared_ptr<const PackageReader> PackageReader::Open(const std::filesystem::path& file,
                                                         const PackageLimits& limits) {
    return std::make_shared<ZipPackageReader>(file, limits);
}

const PackagePart& RequireTarget(const PackageReader& package, std::string_view source,
                                 const PackageRelationship& relationship) {
    const std::string subject = RelationshipsPartName(source);
    const std::string which = "the relationship '" + relationship.id + "' of type " + relationship.type;
    if (relationship.external)
        throw PackageError(OPC_E_INVALID_RELATIONSHIP_TARGET, subject, which + " leads out of the package");
    const PackagePart* part = package.Find(relationship.targetPart);
    if (part == nullptr)
        throw PackageError(OPC_E_NO_SUCH_PART, subject,
                           which + " leads to '" + relationship.targetPart +
                               "', which is not in the package");
    return *part;
}

} // namespace OvPlatform
