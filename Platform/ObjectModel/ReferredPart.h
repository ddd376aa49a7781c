#pragma once

#include "Com/PlatformExport.h"
#include "Package/PackageReader.h"

#include <string>

namespace OvPlatform {

/// A reference, absolute or relative to a part's name, as a part's name; without a fragment. Throws
/// PackageError for one that cannot be resolved.
OV_PLATFORM_API std::string ResolveReference(const std::string& base, const std::string& reference);

/// The part that a reference leads to, also where one of the two is percent-encoded; null where there is
/// none.
OV_PLATFORM_API const PackagePart* FindReferred(const PackageReader& package, const std::string& base,
                                                const std::string& reference);

} // namespace OvPlatform
