#include "Package/PackageDirectory.h"

#include <msopc.h>

#include <algorithm>
#include <charconv>
#include <limits>
#include <optional>

namespace OvPlatform {

namespace {

constexpr std::string_view RelationshipsType = "application/vnd.openxmlformats-package.relationships+xml";
constexpr std::uint64_t RatioFrom = 1u << 20; // small parts may compress as well as they like

bool EndsWith(std::string_view text, std::string_view end) {
    return text.size() >= end.size() && ComparePartNames(text.substr(text.size() - end.size()), end) == 0;
}

// A logical item name: the name of the whole, and which piece of it the item is.
struct LogicalName {
    std::string prefix; // with its leading slash
    bool isPiece = false;
    bool isLast = false;
    std::uint32_t number = 0;
};

// "<prefix>/[<number>].piece" or "<prefix>/[<number>].last.piece"; anything else is a whole part.
LogicalName SplitPiece(std::string name) {
    LogicalName logical;
    const std::size_t slash = name.rfind('/');
    const std::string_view last = std::string_view(name).substr(slash + 1);
    logical.isLast = EndsWith(last, "].last.piece");
    logical.isPiece = slash != 0 && last.starts_with('[') && (logical.isLast || EndsWith(last, "].piece"));
    if (!logical.isPiece) {
        logical.prefix = std::move(name);
        return logical;
    }
    const std::string_view digits = last.substr(1, last.find(']') - 1);
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), logical.number);
    const bool isNumber = error == std::errc() && end == digits.data() + digits.size();
    const bool zeroLed = digits.size() > 1 && digits.front() == '0';
    if (!isNumber || zeroLed)
        throw PackageError(OPC_E_INVALID_PIECE, name, "the number of the piece is not valid");
    logical.prefix = name.substr(0, slash);
    return logical;
}

} // namespace

// All items of one logical name.
struct PackageDirectory::Group {
    struct Member {
        std::uint32_t item = 0;
        std::uint32_t number = 0;
        bool isLast = false;
        std::uint64_t size = 0;
        std::uint64_t storedSize = 0;
    };

    std::string name;
    bool inPieces = false;
    bool encrypted = false;
    bool supported = true;
    bool compressed = false; // the first piece
    std::vector<Member> members;

    std::uint64_t Size() const { return Sum(&Member::size); }
    std::uint64_t StoredSize() const { return Sum(&Member::storedSize); }

private:
    // Sticks at the largest number, so that sizes made to overflow pass no bound.
    std::uint64_t Sum(std::uint64_t Member::*field) const {
        std::uint64_t sum = 0;
        for (const Member& member : members)
            if (__builtin_add_overflow(sum, member.*field, &sum))
                return (std::numeric_limits<std::uint64_t>::max)();
        return sum;
    }
};

// Sorts the items of the archive into groups, in the order of the directory.
class PackageDirectory::Collector {
public:
    explicit Collector(const ZipArchive& archive) : m_archive(archive) {}

    void Collect(std::size_t maxItems) {
        const std::size_t count = m_archive.Count();
        if (count > maxItems)
            throw PackageError(OPC_E_ZIP_CENTRAL_DIRECTORY_TOO_LARGE, m_archive.File().string(),
                               "the package has more than " + std::to_string(maxItems) + " items");
        m_groups.reserve(count);
        for (std::size_t i = 0; i < count; ++i)
            Add(static_cast<std::uint32_t>(i), m_archive.Item(i));
        for (Group& group : m_groups)
            if (group.inPieces) OrderPieces(group);
    }

    const std::vector<Group>& Groups() const { return m_groups; }

    const Group* Find(std::string_view name) const {
        const auto found = m_index.find(name);
        return found == m_index.end() ? nullptr : &m_groups[found->second];
    }

private:
    void Add(std::uint32_t index, const ZipItem& item) {
        try {
            CheckStaysInPackage(item.name);
        } catch (const PartNameError& error) {
            throw PackageError(error.Result(), item.name, error.what());
        }
        if (item.name.empty() || (item.name.back() == '/' && item.size == 0)) return; // a folder

        LogicalName logical = SplitPiece("/" + item.name);
        const auto [entry, added] =
            m_index.try_emplace(logical.prefix, static_cast<std::uint32_t>(m_groups.size()));
        if (added) {
            m_groups.emplace_back();
            m_groups.back().name = logical.prefix;
            m_groups.back().inPieces = logical.isPiece;
            m_groups.back().compressed = item.compressed;
        }
        Group& group = m_groups[entry->second];
        if (!added && (!logical.isPiece || !group.inPieces))
            throw PackageError(OPC_E_DUPLICATE_PART, logical.prefix,
                               "the part stands twice in the package, the other time as '" + group.name +
                                   "'");
        group.encrypted |= item.encrypted;
        group.supported &= item.supported;
        group.members.push_back({index, logical.number, logical.isLast, item.size, item.storedSize});
    }

    static void OrderPieces(Group& group) {
        auto& members = group.members;
        std::sort(members.begin(), members.end(),
                  [](const auto& left, const auto& right) { return left.number < right.number; });
        for (std::size_t i = 0; i < members.size(); ++i) {
            if (i != 0 && members[i].number == members[i - 1].number)
                throw PackageError(OPC_E_DUPLICATE_PIECE, group.name,
                                   "the piece " + std::to_string(members[i].number) + " stands twice");
            if (members[i].number != i)
                throw PackageError(OPC_E_MISSING_PIECE, group.name,
                                   "the piece " + std::to_string(i) + " is missing");
            if (members[i].isLast && i + 1 != members.size())
                throw PackageError(OPC_E_INVALID_PIECE, group.name, "there are pieces after the last one");
        }
        if (!members.back().isLast)
            throw PackageError(OPC_E_MISSING_PIECE, group.name, "the last piece is missing");
    }

    const ZipArchive& m_archive;
    std::vector<Group> m_groups;
    std::unordered_map<std::string, std::uint32_t, PartNameHash, PartNameEqual> m_index;
};

PackageDirectory::PackageDirectory(std::shared_ptr<const ZipArchive> archive, const PackageLimits& limits)
    : m_archive(std::move(archive)), m_limits(limits) {
    Collector collector(*m_archive);
    collector.Collect(limits.maxItems);
    const Group* typesGroup = collector.Find(ContentTypesName);
    if (!typesGroup)
        throw PackageError(OPC_E_MISSING_CONTENT_TYPES, m_archive->File().string(),
                           "this is no package: it has no [Content_Types].xml");
    const ContentTypes types = ReadContentTypes(*typesGroup);
    for (const Group& group : collector.Groups())
        if (&group != typesGroup) AddPart(group, types);
    IndexParts();
}

PackageDirectory::Place PackageDirectory::Store(const Group& group) {
    Place place{static_cast<std::uint32_t>(m_pieces.size()),
                static_cast<std::uint32_t>(group.members.size())};
    for (const Group::Member& member : group.members)
        m_pieces.push_back({member.item, member.size});
    return place;
}

void PackageDirectory::CheckBounds(const Group& group) {
    const std::uint64_t size = group.Size(), stored = group.StoredSize();
    if (group.encrypted) throw PackageError(OPC_E_ZIP_UNSUPPORTEDARCHIVE, group.name, "it is encrypted");
    if (!group.supported)
        throw PackageError(OPC_E_ZIP_UNSUPPORTEDARCHIVE, group.name,
                           "its compression method is not supported");
    if (size > m_limits.maxPartSize)
        throw PackageError(OPC_E_UNSUPPORTED_PACKAGE, group.name,
                           "it inflates to more than " + std::to_string(m_limits.maxPartSize) + " bytes");
    if (size > RatioFrom && size / m_limits.maxRatio > stored)
        throw PackageError(OPC_E_UNSUPPORTED_PACKAGE, group.name,
                           "it inflates to more than " + std::to_string(m_limits.maxRatio) +
                               " times its stored size");
    if (__builtin_add_overflow(m_totalSize, size, &m_totalSize) || m_totalSize > m_limits.maxPackageSize)
        throw PackageError(OPC_E_UNSUPPORTED_PACKAGE, m_archive->File().string(),
                           "the package inflates to more than " + std::to_string(m_limits.maxPackageSize) +
                               " bytes");
}

ContentTypes PackageDirectory::ReadContentTypes(const Group& group) {
    CheckBounds(group);
    if (group.Size() > m_limits.maxXmlPartSize)
        throw PackageError(OPC_E_UNSUPPORTED_PACKAGE, group.name, "it is too large");
    const Place place = Store(group);
    PieceStream stream(nullptr, m_archive, std::string(ContentTypesName), At(place));
    std::string xml(static_cast<std::size_t>(stream.Size()), '\0');
    for (std::size_t done = 0; done < xml.size();)
        done += stream.Read(xml.data() + done, xml.size() - done);
    return ContentTypes::Parse(xml);
}

void PackageDirectory::AddPart(const Group& group, const ContentTypes& types) {
    // Some producers write names raw that should be percent-encoded.
    const std::string name = EncodeExcluded(group.name);
    const std::string_view type = types.Find(name);
    try {
        CheckPartName(name);
    } catch (const PartNameError& error) {
        if (type.empty()) return; // an item that is no part
        throw PackageError(error.Result(), group.name, error.what());
    }
    if (type.empty()) return;
    CheckBounds(group);

    if (IsRelationshipsPartName(name)) {
        if (type != RelationshipsType)
            throw PackageError(OPC_E_UNEXPECTED_CONTENT_TYPE, name,
                               "a relationships part has the content type '" + std::string(type) + "'");
        if (!m_relationships.emplace(name, Store(group)).second)
            throw PackageError(OPC_E_DUPLICATE_PART, name, "the part stands twice in the package");
        return;
    }
    PackagePart part;
    part.name = name;
    part.contentType = type;
    part.size = group.Size();
    part.storedSize = group.StoredSize();
    part.compression = group.compressed ? PackageCompression::Normal : PackageCompression::None;
    part.pieces = group.members.size();
    part.interleaved = group.inPieces;
    m_parts.push_back(std::move(part));
    m_places.push_back(Store(group));
}

// Parts do not move any more: the index keeps views of their names.
void PackageDirectory::IndexParts() {
    m_parts.shrink_to_fit();
    m_places.shrink_to_fit();
    m_pieces.shrink_to_fit();
    m_index.reserve(m_parts.size());
    for (std::size_t i = 0; i < m_parts.size(); ++i)
        if (!m_index.emplace(m_parts[i].name, static_cast<std::uint32_t>(i)).second)
            throw PackageError(OPC_E_DUPLICATE_PART, m_parts[i].name, "the part stands twice in the package");
    for (const PackagePart& part : m_parts) {
        const std::string_view name = part.name;
        for (std::size_t slash = name.find('/', 1); slash != std::string_view::npos;
             slash = name.find('/', slash + 1))
            if (m_index.contains(name.substr(0, slash)))
                throw PackageError(OPC_E_DUPLICATE_PART, part.name,
                                   "the name extends the name of the part '" +
                                       std::string(name.substr(0, slash)) + "'");
    }
}

const PackagePart* PackageDirectory::Find(std::string_view partName) const {
    const auto found = m_index.find(partName);
    return found == m_index.end() ? nullptr : &m_parts[found->second];
}

std::span<const StoredPiece> PackageDirectory::Pieces(const PackagePart& part) const {
    return At(m_places[static_cast<std::size_t>(&part - m_parts.data())]);
}

std::span<const StoredPiece> PackageDirectory::RelationshipPieces(std::string_view relationshipsPart) const {
    const auto found = m_relationships.find(relationshipsPart);
    return found == m_relationships.end() ? std::span<const StoredPiece>() : At(found->second);
}

} // namespace OvPlatform
