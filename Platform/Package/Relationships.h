#pragma once

#include "Com/PlatformExport.h"

#include <string>
#include <string_view>
#include <vector>

namespace OvPlatform {

inline constexpr std::string_view relationshipsContentType =
    "application/vnd.openxmlformats-package.relationships+xml";

/// One relationship of a package or part. All texts UTF-8.
struct PackageRelationship {
    std::string id;
    std::string type;   // compared as a string, case-sensitive
    std::string target; // as written
    bool external = false;
    /// For an internal target, the part it leads to, resolved against the source and in the form of a part
    /// name (that no part of that name need exist); its fragment is dropped. Empty for an external one.
    std::string targetPart;
};

/// The relationships part's XML for a list. Deterministic.
OV_PLATFORM_API std::string FormatRelationships(const std::vector<PackageRelationship>& relationships);

/// Reads a relationships part. source is the name of the part they belong to, "/" for the package. Throws
/// PackageError that names the relationships part: bad XML, a DTD, an id twice, a missing attribute, a target
/// that is no part name.
OV_PLATFORM_API std::vector<PackageRelationship> ParseRelationships(std::string_view xml,
                                                                    const std::string& source);

} // namespace OvPlatform
