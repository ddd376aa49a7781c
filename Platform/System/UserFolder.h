#pragma once

#include <filesystem>

namespace OvPlatform {

/// Where what belongs to the user stands: the place that the environment variable names, else `name` in
/// $XDG_CONFIG_HOME/ov-platform, else in ~/.config/ov-platform. Empty where the environment says none of it.
std::filesystem::path PlaceOfUser(const char* variable, const char* name);

} // namespace OvPlatform
