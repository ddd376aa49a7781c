#include "Package/PackageDirectory.h"

#include <msopc.h>

#include <algorithm>
#include <charconv>
#include <limits>
#include <unordered_map>

namespace OvPlatform {

namespace {

constexpr std::uint64_t ratioFrom = 1u << 20; // small parts may compress as well as they like

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
        std::uint64_t position = 0;
        std::uint32_t number = 0;
        bool isLast = false;
        std::uint64_t size = 0;
        std::uint64_t storedSize = 0;
    };

    std::string name;
    bool inPieces = false;
    bool encrypted = false;
    bool supported = true;
    bool compressed = false; // the first item
    std::vector<Member> members;

    std::uint64_t Size() const { return Sum(&Member::size); }
    std::uint64_t StoredSize() const { return Sum(&Member::storedSize); }

    void Add(const LogicalName& logical, const ZipItem& item) {
        if (members.empty()) {
            name = logical.prefix;
            inPieces = logical.isPiece;
            compressed = item.compressed;
        } else if (!inPieces || !logical.isPiece)
            throw PackageError(OPC_E_DUPLICATE_PART, logical.prefix, "the part stands twice in the package");
        encrypted |= item.encrypted;
        supported &= item.supported;
        members.push_back({item.position, logical.number, logical.isLast, item.size, item.storedSize});
    }

    // Puts pieces into their order; throws where they make no whole.
    void Complete() {
        if (!inPieces) return;
        std::sort(members.begin(), members.end(),
                  [](const Member& left, const Member& right) { return left.number < right.number; });
        for (std::size_t i = 0; i < members.size(); ++i) {
            if (i != 0 && members[i].number == members[i - 1].number)
                throw PackageError(OPC_E_DUPLICATE_PIECE, name,
                                   "the piece " + std::to_string(members[i].number) + " stands twice");
            if (members[i].number != i)
                throw PackageError(OPC_E_MISSING_PIECE, name,
                                   "the piece " + std::to_string(i) + " is missing");
            if (members[i].isLast && i + 1 != members.size())
                throw PackageError(OPC_E_INVALID_PIECE, name, "there are pieces after the last one");
        }
        if (!members.back().isLast)
            throw PackageError(OPC_E_MISSING_PIECE, name, "the last piece is missing");
    }

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

// The items that are pieces, gathered by the first of each whole.
class PackageDirectory::Groups {
public:
    void Add(const LogicalName& logical, const ZipItem& item) {
        const auto [entry, added] = m_byName.try_emplace(logical.prefix, item.position);
        m_byFirst[entry->second].Add(logical, item);
    }

    // The group whose first item stands there in the directory; null if the item is another piece.
    Group* StartingAt(std::uint64_t position) {
        const auto found = m_byFirst.find(position);
        return found == m_byFirst.end() ? nullptr : &found->second;
    }

private:
    std::unordered_map<std::string, std::uint64_t, PartNameHash, PartNameEqual> m_byName;
    std::unordered_map<std::uint64_t, Group> m_byFirst;
};

// All items, one after the other, for as long as nobody stops.
class PackageDirectory::Items {
public:
    explicit Items(const PackageDirectory& directory)
        : m_directory(directory), m_walk(*directory.m_archive) {}

    bool Next(ZipItem& item) {
        if (m_directory.m_isStopped && ++m_count % askedEvery == 0 && m_directory.m_isStopped())
            throw PackageError(E_ABORT, m_directory.m_archive->File().string(), "it is given up");
        return m_walk.Next(item);
    }

private:
    static constexpr std::size_t askedEvery = 256;

    const PackageDirectory& m_directory;
    ZipArchive::Walk m_walk;
    std::size_t m_count = 0;
};

PackageDirectory::PackageDirectory(std::shared_ptr<const ZipArchive> archive, const PackageLimits& limits,
                                   const std::function<bool()>& isStopped)
    : m_archive(std::move(archive)), m_limits(limits), m_isStopped(isStopped) {
    if (m_archive->Count() > limits.maxItems)
        throw PackageError(OPC_E_ZIP_CENTRAL_DIRECTORY_TOO_LARGE, m_archive->File().string(),
                           "the package has more than " + std::to_string(limits.maxItems) + " items");
    Groups groups;
    const ContentTypes types = ReadContentTypes(groups);
    ReadParts(groups, types);
    CheckNames();
    for (const FoundRelationships& found : m_found)
        AddRelationships(found.name, found.place);
    m_found = {};
    m_isStopped = {};
}

// The content types say which items are parts, and may stand behind all of them.
ContentTypes PackageDirectory::ReadContentTypes(Groups& groups) {
    Group group;
    ZipItem item;
    for (Items items(*this); items.Next(item);) {
        const bool isTypes =
            ComparePartNames(std::string_view(item.name).substr(0, contentTypesName.size() - 1),
                             contentTypesName.substr(1)) == 0;
        if (!isTypes) {
            try {
                CheckStaysInPackage(item.name);
            } catch (const PartNameError& error) {
                throw PackageError(error.Result(), item.name, error.what());
            }
        }
        const LogicalName logical = SplitPiece("/" + item.name);
        if (isTypes && ComparePartNames(logical.prefix, contentTypesName) == 0)
            group.Add(logical, item);
        else if (logical.isPiece)
            groups.Add(logical, item);
    }
    if (group.members.empty())
        throw PackageError(OPC_E_MISSING_CONTENT_TYPES, m_archive->File().string(),
                           "this is no package: it has no [Content_Types].xml");
    group.Complete();
    CheckBounds(group);
    if (group.Size() > m_limits.maxXmlPartSize)
        throw PackageError(OPC_E_UNSUPPORTED_PACKAGE, group.name, "it is too large");
    const Place place = Store(group);
    PieceStream stream(nullptr, m_archive, std::string(contentTypesName), At(place));
    std::string xml(static_cast<std::size_t>(stream.Size()), '\0');
    std::size_t done = 0;
    while (const std::size_t count = stream.Read(xml.data() + done, xml.size() - done))
        done += count;
    return ContentTypes::Parse(xml);
}

void PackageDirectory::ReadParts(Groups& groups, const ContentTypes& types) {
    const auto count = static_cast<std::size_t>(m_archive->Count());
    m_parts.reserve(count); // they stay where they are
    m_pieces.reserve(count + 1);
    ZipItem item;
    for (Items items(*this); items.Next(item);) {
        if (Group* pieces = groups.StartingAt(item.position)) {
            pieces->Complete();
            AddGroup(*pieces, types);
            continue;
        }
        const LogicalName logical = SplitPiece("/" + item.name);
        const bool isFolder = item.name.empty() || (item.name.back() == '/' && item.size == 0);
        if (logical.isPiece || isFolder) continue;
        Group whole;
        whole.Add(logical, item);
        AddGroup(whole, types);
    }
}

PackageDirectory::Place PackageDirectory::Store(const Group& group) {
    Place place{static_cast<std::uint32_t>(m_pieces.size()),
                static_cast<std::uint32_t>(group.members.size())};
    for (const Group::Member& member : group.members)
        m_pieces.emplace_back(member.position);
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
    if (size > ratioFrom && size / m_limits.maxRatio > stored)
        throw PackageError(OPC_E_UNSUPPORTED_PACKAGE, group.name,
                           "it inflates to more than " + std::to_string(m_limits.maxRatio) +
                               " times its stored size");
    if (__builtin_add_overflow(m_totalSize, size, &m_totalSize) || m_totalSize > m_limits.maxPackageSize)
        throw PackageError(OPC_E_UNSUPPORTED_PACKAGE, m_archive->File().string(),
                           "the package inflates to more than " + std::to_string(m_limits.maxPackageSize) +
                               " bytes");
    // A few bytes that many parts claim would become many.
    if (__builtin_add_overflow(m_totalStored, stored, &m_totalStored) || m_totalStored > m_archive->Size())
        throw PackageError(OPC_E_ZIP_INCONSISTENT_DIRECTORY, group.name,
                           "the parts up to here are stored in more bytes than the file has");
}

void PackageDirectory::AddGroup(const Group& group, const ContentTypes& types) {
    if (ComparePartNames(group.name, contentTypesName) == 0) return;
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
        if (ComparePartNames(type, relationshipsContentType) != 0) // without regard to case, as names
            throw PackageError(OPC_E_UNEXPECTED_CONTENT_TYPE, name,
                               "a relationships part has the content type '" + std::string(type) + "'");
        const Place place = Store(group);
        if (!AddRelationships(name, place)) m_found.push_back({name, place});
        return;
    }
    AddPart(group, name, type);
}

void PackageDirectory::AddPart(const Group& group, std::string name, std::string_view type) {
    if (const std::uint32_t other = PlaceOf(name, PartNameHash()(name)); other != HashedIndex::none)
        throw PackageError(OPC_E_DUPLICATE_PART, name,
                           "the part stands twice in the package, the other time as '" + m_parts[other].name +
                               "'");
    const Place place = Store(group);
    m_parts.push_back({std::move(name), *m_contentTypes.emplace(type).first, group.Size(), group.StoredSize(),
                       place.count, group.compressed ? PackageCompression::Normal : PackageCompression::None,
                       group.inPieces});
    m_places.push_back(place.first);
    m_relationships.emplace_back();
    m_index.Add(static_cast<std::uint32_t>(m_parts.size() - 1),
                [this](std::uint32_t at) { return PartNameHash()(m_parts[at].name); });
}

void PackageDirectory::CheckNames() const {
    for (const PackagePart& part : m_parts)
        for (PartNameFolders folders(part.name); folders.Next();)
            if (PlaceOf(folders.Folder(), folders.Hash()) != HashedIndex::none)
                throw PackageError(OPC_E_DUPLICATE_PART, part.name,
                                   "the name extends the name of the part '" + std::string(folders.Folder()) +
                                       "'");
}

std::uint32_t PackageDirectory::PlaceOf(std::string_view name, std::size_t hash) const {
    return m_index.Find(hash, [&](std::uint32_t at) {
        return m_parts[at].name.size() == name.size() && PartNameEqual()(m_parts[at].name, name);
    });
}

// Relationships of what is not there belong to nothing, and are left out.
bool PackageDirectory::AddRelationships(const std::string& name, Place place) {
    const std::string source = RelationshipsSource(name);
    const PackagePart* part = Find(source);
    if (part == nullptr && source != packageRoot) return false;
    Place& at = part != nullptr ? m_relationships[IndexOf(*part)] : m_packageRelationships;
    if (at.count != 0) throw PackageError(OPC_E_DUPLICATE_PART, name, "the part stands twice in the package");
    at = place;
    return true;
}

const PackagePart* PackageDirectory::Find(std::string_view partName) const {
    const std::uint32_t found = PlaceOf(partName, PartNameHash()(partName));
    return found == HashedIndex::none ? nullptr : &m_parts[found];
}

std::span<const StoredPiece> PackageDirectory::Pieces(const PackagePart& part) const {
    return At({m_places[IndexOf(part)], part.pieces});
}

std::span<const StoredPiece> PackageDirectory::RelationshipPieces(std::string_view source) const {
    if (source == packageRoot) return At(m_packageRelationships);
    const PackagePart* part = Find(source);
    return part != nullptr ? At(m_relationships[IndexOf(*part)]) : std::span<const StoredPiece>();
}

} // namespace OvPlatform
