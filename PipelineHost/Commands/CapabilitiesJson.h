#pragma once

#include "Commands/OfferedSettings.h"
#include "Report/JsonText.h"

namespace OvPipeline {

/// What a queue offers, for programs.
JsonText CapabilitiesJson(const OfferedSettings& offered);

} // namespace OvPipeline
