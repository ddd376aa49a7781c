#pragma once

#include "Com/PlatformExport.h"

#include <windows.h>

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

namespace OvPlatform {

// Names of parts as open packaging rules them (ECMA-376 part 2): absolute paths of ASCII segments, what lies
// outside percent-encoded, equal without regard to ASCII case. Texts are UTF-8.

/// A text that is no part name, or a reference that leads to none. what() says why, without the text;
/// Result() is OPC_E_NONCONFORMING_URI, OPC_E_PART_CANNOT_BE_DIRECTORY or OPC_E_RELATIVE_URI_REQUIRED.
class OV_PLATFORM_API PartNameError : public std::runtime_error {
public:
    PartNameError(HRESULT result, const std::string& problem)
        : std::runtime_error(problem), m_result(result) {}
    HRESULT Result() const { return m_result; }

private:
    HRESULT m_result;
};

/// The package itself, as the source of relationships.
inline constexpr std::string_view packageRoot = "/";

/// Throws PartNameError unless the name is a part name as it stands.
OV_PLATFORM_API void CheckPartName(std::string_view name);

/// Throws PartNameError where a text in a package (a path or a reference) holds a backslash or climbs above
/// the root.
OV_PLATFORM_API void CheckStaysInPackage(std::string_view path);

/// The text with what a URI cannot hold percent-encoded: octets outside ASCII, spaces and the like.
OV_PLATFORM_API std::string EncodeExcluded(std::string_view text);

/// The text with percent-encoded letters, digits and marks decoded, and the digits of what stays encoded in
/// capitals.
OV_PLATFORM_API std::string DecodeUnreserved(std::string_view text);

/// The part that a reference leads to from a part ("/" for the package): relative or absolute within the
/// package; a fragment is dropped. Throws PartNameError.
OV_PLATFORM_API std::string ResolvePartName(std::string_view source, std::string_view reference);

/// The shortest relative reference from a part ("/" for the package) to another.
OV_PLATFORM_API std::string RelativeReference(std::string_view source, std::string_view target);

/// "/_rels/.rels" for "/", "/a/_rels/b.x.rels" for "/a/b.x".
OV_PLATFORM_API std::string RelationshipsPartName(std::string_view source);
OV_PLATFORM_API bool IsRelationshipsPartName(std::string_view name);
/// The reverse; the name must be that of a relationships part.
OV_PLATFORM_API std::string RelationshipsSource(std::string_view relationshipsPart);

/// The text after the last dot of the last segment, empty without one.
OV_PLATFORM_API std::string_view PartExtension(std::string_view name);

// ASCII letters in lower case: two names are equivalent if these are equal.
OV_PLATFORM_API std::string FoldPartName(std::string_view name);
OV_PLATFORM_API int ComparePartNames(std::string_view left, std::string_view right);

/// For tables of part names by equivalence.
struct PartNameHash {
    using is_transparent = void;
    OV_PLATFORM_API std::size_t operator()(std::string_view name) const;
    std::size_t operator()(const class PartNameFolders& folders) const;
};
struct PartNameEqual {
    using is_transparent = void;
    bool operator()(std::string_view left, std::string_view right) const {
        return ComparePartNames(left, right) == 0;
    }
    bool operator()(const PartNameFolders& left, std::string_view right) const;
    bool operator()(std::string_view left, const PartNameFolders& right) const;
};

/// The folders that a part name leads through, "/a" and "/a/b" for "/a/b/c", to be looked up one after
/// another in tables by equivalence: all together take no longer than the name is.
class PartNameFolders {
public:
    /// The name must outlive this.
    OV_PLATFORM_API explicit PartNameFolders(std::string_view name);

    /// On to the next folder, the first to begin with. False when there is none left.
    OV_PLATFORM_API bool Next();
    std::string_view Folder() const { return m_name.substr(0, m_length); }
    std::size_t Hash() const { return static_cast<std::size_t>(m_hash); }

private:
    std::string_view m_name;
    std::size_t m_length = 0;
    std::uint64_t m_hash;
};

inline std::size_t PartNameHash::operator()(const PartNameFolders& folders) const { return folders.Hash(); }
inline bool PartNameEqual::operator()(const PartNameFolders& left, std::string_view right) const {
    return ComparePartNames(left.Folder(), right) == 0;
}
inline bool PartNameEqual::operator()(std::string_view left, const PartNameFolders& right) const {
    return ComparePartNames(left, right.Folder()) == 0;
}

/// An order of part names in which those that extend a name follow it at once. Equivalent names are equal.
struct PartNameTreeOrder {
    using is_transparent = void;
    OV_PLATFORM_API bool operator()(std::string_view left, std::string_view right) const;
};

/// Whether the name leads through the folder of that name, as "/a/b" does through "/a".
OV_PLATFORM_API bool ExtendsPartName(std::string_view name, std::string_view folder);

} // namespace OvPlatform
