#pragma once

#include <filesystem>
#include <string>

namespace OvPipeline {

/// Where a program of the system lies, by the folders of PATH; empty where there is none. A relative folder
/// is passed over, since another one is current where the program runs.
std::filesystem::path ProgramPath(const std::string& name);

} // namespace OvPipeline
