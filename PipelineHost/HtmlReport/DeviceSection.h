#pragma once

#include "Commands/FamilyHeader.h"
#include "HtmlReport/HtmlText.h"

namespace OvPipeline {

/// What the device gets around the pages, each line or command with its causes, which have been looked for.
HtmlText DeviceSection(const FamilyHeader& header);

} // namespace OvPipeline
