#pragma once

#include "Arguments/CommandOptions.h"
#include "Source/PackageSource.h"

namespace OvPipeline {

/// What --ticket, --copies and --pages say. Throws InputError for a file that is no ticket.
JobWishes WishesOf(const CommandOptions& options);

} // namespace OvPipeline
