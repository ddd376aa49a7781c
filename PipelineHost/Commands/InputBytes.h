#pragma once

#include "Source/JobFile.h"

#include <string>

namespace OvPipeline {

/// A whole file of up to 64 MiB. Throws InputError.
std::string ReadInputBytes(const JobFile& file);

} // namespace OvPipeline
