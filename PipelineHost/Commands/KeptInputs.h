#pragma once

#include "Arguments/CommandOptions.h"

namespace OvPipeline {

/// Throws UsageError where an output of that name would take the place of what the command reads: the job,
/// its ticket or the configuration. what: "the output".
void KeepInputs(const CommandOptions& options, const std::string& what, const std::filesystem::path& output);

} // namespace OvPipeline
