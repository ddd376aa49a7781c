#pragma once

#include "Package/PartCompressor.h"

#include <filesystem>
#include <string>
#include <vector>

namespace OvPlatform {

// One item of a package to be: its zip name and its compressed bytes.
struct AssemblyItem {
    std::string name;
    std::shared_ptr<const SpooledPart> part;
};

// Writes the items, in their order, as a zip archive under a name of the moment, and renames it to the
// target. The same items give the same bytes. Throws PackageError; the target is as before then.
void AssemblePackage(const std::filesystem::path& target, const SpoolFile& spool,
                     const std::vector<AssemblyItem>& items);

} // namespace OvPlatform
