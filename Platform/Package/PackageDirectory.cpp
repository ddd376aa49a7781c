#include "Package/PackageDirectory.h"

#include <msopc.h>

#include <algorithm>
#include <charconv>
#include <limits>
#include <optional>

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
    bool compressed = false; // the first item
    std::vector<Member> members;

    std::uint64_t Size() const { return Sum(&Member::size); }
    std::uint64_t StoredSize() const { return Sum(&Member::storedSize); }

    void Add(const LogicalName& logical, std::uint32_t index, const ZipItem& item) {
        if (members.empty()) {
            name = logical.prefix;
            inPieces = logical.isPiece;
            compressed = item.compressed;
        } else if (!inPieces || !logical.isPiece)
            throw PackageError(OPC_E_DUPLICATE_PART, logical.prefix, "the part stands twice in the package");
        encrypted |= item.encrypted;
        supported &= item.supported;
        members.push_back({index, logical.number, logical.isLast, item.size, item.storedSize});
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
    void Add(const LogicalName& logical, std::uint32_t index, const ZipItem& item) {
        const auto [entry, added] = m_byName.try_emplace(logical.prefix, index);
        m_byFirst[entry->second].Add(logical, index, item);
    }

    // The group whose first item that is; null if the item is another piece.
    Group* StartingAt(std::uint32_t index) {
        const auto found = m_byFirst.find(index);
        return found == m_byFirst.end() ? nullptr : &found->second;
    }

private:
    std::unordered_map<std::string, std::uint32_t, PartNameHash, PartNameEqual> m_byName;
    std::unordered_map<std::uint32_t, Group> m_byFirst;
};

PackageDirectory::PackageDirectory(std::shared_ptr<const ZipArchive> archive, const PackageLimits& limits)
    : m_archive(std::move(archive)), m_limits(limits) {
    if (m_archive->Count() > limits.maxItems)
        throw PackageError(OPC_E_ZIP_CENTRAL_DIRECTORY_TOO_LARGE, m_archive->File().string(),
                           "the package has more than " + std::to_string(limits.maxItems) + " items");
    ReadItems(ReadContentTypes());
    IndexParts();
}

// The content types say which items are parts, and may stand behind all of them.
ContentTypes PackageDirectory::ReadContentTypes() {
    Group group;
    for (std::size_t i = 0; i < m_archive->Count(); ++i) {
        const ZipItem item = m_archive->Item(i);
        if (ComparePartNames(item.name.substr(0, contentTypesName.size() - 1), contentTypesName.substr(1)) !=
            0)
            continue;
        const LogicalName logical = SplitPiece("/" + item.name);
        if (ComparePartNames(logical.prefix, contentTypesName) == 0)
            group.Add(logical, static_cast<std::uint32_t>(i), item);
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

void PackageDirectory::ReadItems(const ContentTypes& types) {
    const auto count = static_cast<std::uint32_t>(m_archive->Count());
    Groups groups;
    for (std::uint32_t i = 0; i < count; ++i) {
        const ZipItem item = m_archive->Item(i);
        try {
            CheckStaysInPackage(item.name);
        } catch (const PartNameError& error) {
            throw PackageError(error.Result(), item.name, error.what());
        }
        const LogicalName logical = SplitPiece("/" + item.name);
        if (logical.isPiece) groups.Add(logical, i, item);
    }
    m_parts.reserve(count);
    m_places.reserve(count);
    m_pieces.reserve(count + 1);
    for (std::uint32_t i = 0; i < count; ++i) {
        if (Group* pieces = groups.StartingAt(i)) {
            pieces->Complete();
            AddGroup(*pieces, types);
            continue;
        }
        const ZipItem item = m_archive->Item(i);
        const LogicalName logical = SplitPiece("/" + item.name);
        const bool isFolder = item.name.empty() || (item.name.back() == '/' && item.size == 0);
        if (logical.isPiece || isFolder) continue;
        Group whole;
        whole.Add(logical, i, item);
        AddGroup(whole, types);
    }
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
    if (size > ratioFrom && size / m_limits.maxRatio > stored)
        throw PackageError(OPC_E_UNSUPPORTED_PACKAGE, group.name,
                           "it inflates to more than " + std::to_string(m_limits.maxRatio) +
                               " times its stored size");
    if (__builtin_add_overflow(m_totalSize, size, &m_totalSize) || m_totalSize > m_limits.maxPackageSize)
        throw PackageError(OPC_E_UNSUPPORTED_PACKAGE, m_archive->File().string(),
                           "the package inflates to more than " + std::to_string(m_limits.maxPackageSize) +
                               " bytes");
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
        m_found.push_back({name, Store(group)});
        return;
    }
    PackagePart& part = m_parts.emplace_back();
    part.name = name;
    part.contentType = type;
    part.size = group.Size();
    part.storedSize = group.StoredSize();
    part.compression = group.compressed ? PackageCompression::Normal : PackageCompression::None;
    part.pieces = group.members.size();
    part.interleaved = group.inPieces;
    m_places.push_back(Store(group));
}

// Parts do not move any more: the index keeps views of their names.
void PackageDirectory::IndexParts() {
    m_index.reserve(m_parts.size());
    for (std::size_t i = 0; i < m_parts.size(); ++i) {
        const auto [entry, added] = m_index.emplace(m_parts[i].name, static_cast<std::uint32_t>(i));
        if (!added)
            throw PackageError(OPC_E_DUPLICATE_PART, m_parts[i].name,
                               "the part stands twice in the package, the other time as '" +
                                   std::string(entry->first) + "'");
    }
    for (const PackagePart& part : m_parts)
        for (PartNameFolders folders(part.name); folders.Next();)
            if (m_index.contains(folders))
                throw PackageError(OPC_E_DUPLICATE_PART, part.name,
                                   "the name extends the name of the part '" + std::string(folders.Folder()) +
                                       "'");
    m_relationships.resize(m_parts.size());
    for (const FoundRelationships& found : m_found)
        AddRelationships(found.name, found.place);
    m_found = {};
}

// Relationships of what is not there belong to nothing, and are left out.
void PackageDirectory::AddRelationships(const std::string& name, Place place) {
    const std::string source = RelationshipsSource(name);
    const PackagePart* part = Find(source);
    if (part == nullptr && source != packageRoot) return;
    Place& at = part != nullptr ? m_relationships[IndexOf(*part)] : m_packageRelationships;
    if (at.count != 0) throw PackageError(OPC_E_DUPLICATE_PART, name, "the part stands twice in the package");
    at = place;
}

const PackagePart* PackageDirectory::Find(std::string_view partName) const {
    const auto found = m_index.find(partName);
    return found == m_index.end() ? nullptr : &m_parts[found->second];
}

std::span<const StoredPiece> PackageDirectory::Pieces(const PackagePart& part) const {
    return At(m_places[IndexOf(part)]);
}

std::span<const StoredPiece> PackageDirectory::RelationshipPieces(std::string_view source) const {
    if (source == packageRoot) return At(m_packageRelationships);
    const PackagePart* part = Find(source);
    return part != nullptr ? At(m_relationships[IndexOf(*part)]) : std::span<const StoredPiece>();
}

} // namespace OvPlatform
