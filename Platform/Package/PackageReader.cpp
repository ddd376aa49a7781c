#include "Package/PackageReader.h"

#include "Package/PackageDirectory.h"
#include "Package/PartName.h"

#include <msopc.h>

#include <algorithm>
#include <deque>
#include <mutex>

namespace OvPlatform {

namespace {

class PackedItem final : public PackedPartStream {
public:
    PackedItem(std::shared_ptr<const void> owner, const std::shared_ptr<const ZipArchive>& archive,
               const std::string& part, const StoredPiece& piece)
        : PackedItem(std::move(owner), archive, part, piece, archive->ItemAt(piece.Position())) {}

    const PackedForm& Form() const override { return m_form; }

    std::size_t Read(void* buffer, std::size_t size) override {
        const std::size_t count = m_reader.ReadStored(buffer, size, m_isToBeChecked);
        if (m_reader.IsSound()) m_piece.NoteSound();
        return count;
    }

private:
    PackedItem(std::shared_ptr<const void> owner, const std::shared_ptr<const ZipArchive>& archive,
               const std::string& part, const StoredPiece& piece, const ZipItem& item)
        : m_owner(std::move(owner)),
          m_piece(piece), m_form{item.compressed, item.size, item.storedSize, item.checksum},
          m_isToBeChecked(!piece.IsSound()), m_reader(archive, item, part) {}

    std::shared_ptr<const void> m_owner;
    const StoredPiece& m_piece;
    PackedForm m_form;
    bool m_isToBeChecked;
    ZipItemReader m_reader;
};

// The pages of a folder mostly say the same, and mean the same by it.
class RecentRelationships {
public:
    std::vector<PackageRelationship> Parse(std::string xml, const std::string& source) const {
        std::string folder = source.substr(0, source.rfind('/') + 1);
        {
            const std::lock_guard guard(m_lock);
            for (const Known& known : m_known)
                if (known.xml == xml && known.folder == folder) return known.relationships;
        }
        auto relationships = ParseRelationships(xml, source);
        // One that leads back to its source leads elsewhere from another one.
        const bool isSame = std::none_of(relationships.begin(), relationships.end(), [&](const auto& each) {
            return ComparePartNames(each.targetPart, source) == 0;
        });
        if (!isSame || xml.size() > mostSize) return relationships;
        const std::lock_guard guard(m_lock);
        if (m_known.size() == mostKnown) m_known.pop_front();
        m_known.push_back({std::move(folder), std::move(xml), relationships});
        return relationships;
    }

private:
    struct Known {
        std::string folder;
        std::string xml;
        std::vector<PackageRelationship> relationships;
    };
    static constexpr std::size_t mostKnown = 16;
    static constexpr std::size_t mostSize = 8u << 10;

    mutable std::mutex m_lock;
    mutable std::deque<Known> m_known;
};

class ZipPackageReader final : public PackageReader, public std::enable_shared_from_this<ZipPackageReader> {
public:
    ZipPackageReader(const std::filesystem::path& file, const PackageLimits& limits,
                     const std::function<bool()>& isStopped, const std::filesystem::path& name)
        : m_limits(limits), m_archive(std::make_shared<ZipArchive>(file, name)),
          m_directory(m_archive, limits, isStopped) {}

    const std::filesystem::path& File() const override { return m_archive->File(); }
    const std::vector<PackagePart>& Parts() const override { return m_directory.Parts(); }
    const PackagePart* Find(std::string_view partName) const override { return m_directory.Find(partName); }

    std::unique_ptr<PackagePartStream> OpenPart(std::string_view partName) const override {
        const PackagePart& part = Require(partName);
        return Open(part.name, m_directory.Pieces(part));
    }

    std::unique_ptr<PackedPartStream> OpenPacked(std::string_view partName) const override {
        const PackagePart& part = Require(partName);
        return OpenPacked(part.name, m_directory.Pieces(part));
    }

    std::string ReadPart(std::string_view partName, std::uint64_t maxSize) const override {
        const PackagePart& part = Require(partName);
        return ReadWhole(part.name, m_directory.Pieces(part), maxSize);
    }

    std::vector<PackageRelationship> Relationships(std::string_view source) const override {
        const auto pieces = m_directory.RelationshipPieces(source);
        if (pieces.empty()) return {};
        const std::string name = RelationshipsPartName(source);
        return m_relationships.Parse(ReadWhole(name, pieces, m_limits.maxXmlPartSize), std::string(source));
    }

    std::unique_ptr<PackedPartStream> OpenPackedRelationships(std::string_view source) const override {
        const auto pieces = m_directory.RelationshipPieces(source);
        const bool isSound = pieces.size() == 1 && pieces[0].IsSound();
        return isSound ? OpenPacked(RelationshipsPartName(source), pieces) : nullptr;
    }

private:
    std::unique_ptr<PackedPartStream> OpenPacked(const std::string& name,
                                                 std::span<const StoredPiece> pieces) const {
        if (pieces.size() != 1) return {};
        return std::make_unique<PackedItem>(shared_from_this(), m_archive, name, pieces[0]);
    }

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
    RecentRelationships m_relationships;
    std::shared_ptr<const ZipArchive> m_archive;
    PackageDirectory m_directory;
};

} // namespace

std::shared_ptr<const PackageReader> PackageReader::Open(const std::filesystem::path& file,
                                                         const PackageLimits& limits,
                                                         const std::function<bool()>& isStopped,
                                                         const std::filesystem::path& name) {
    return std::make_shared<ZipPackageReader>(file, limits, isStopped, name.empty() ? file : name);
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
