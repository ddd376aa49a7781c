#pragma once

#include "Commands/OfferedSettings.h"

#include <string>

namespace OvPipeline {

/// What a queue offers, for people. width: as AlignedTable takes it.
std::string CapabilitiesText(const OfferedSettings& offered, std::size_t width = 0);

} // namespace OvPipeline
