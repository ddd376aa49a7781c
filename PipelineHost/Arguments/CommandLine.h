#pragma once

#include "Arguments/CommandOptions.h"

namespace OvPipeline {

/// Reads the arguments behind the program's name. Options may stand before and behind operands; "--" ends
/// them; a value stands behind its option or behind a "=". Throws UsageError.
CommandOptions ParseCommandLine(const std::vector<std::string>& arguments);

} // namespace OvPipeline
