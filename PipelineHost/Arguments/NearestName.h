#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace OvPipeline {

/// The name that somebody may have meant who mistyped one: one letter of three may be wrong, missing, too
/// many or in another's place. Empty where none is so near.
std::string NearestName(std::string_view typed, const std::vector<std::string>& names);

} // namespace OvPipeline
