#pragma once

#include "Com/PlatformExport.h"
#include "Package/PartName.h"

#include <map>
#include <string>
#include <string_view>
#include <unordered_map>

namespace OvPlatform {

/// The logical name of the stream of content types, which is no part.
inline constexpr std::string_view contentTypesName = "/[Content_Types].xml";

/// What a package says of its parts' types: one for each of some names, and defaults by extension.
class OV_PLATFORM_API ContentTypes {
public:
    /// Throws PackageError: bad XML, a DTD, an extension or name twice, an empty type, a name that is no part
    /// name.
    static ContentTypes Parse(std::string_view xml);

    /// The type of a part; empty where there is none. Lives as long as this object.
    std::string_view Find(std::string_view partName) const;

    /// Notes a new part: by a default for its extension where that is free or the same, by its name
    /// otherwise.
    void Add(std::string_view partName, std::string_view contentType);
    /// The type that all parts of an extension have unless said otherwise. Replaces one before.
    void SetDefault(std::string_view extension, std::string_view contentType);

    /// Deterministic.
    std::string Format() const;

private:
    std::map<std::string, std::string, std::less<>> m_defaults; // by folded extension
    std::unordered_map<std::string, std::string, PartNameHash, PartNameEqual> m_overrides;
};

} // namespace OvPlatform
