#pragma once

#include "Comparison/DeviceStreamReader.h"
#include "Comparison/DifferenceReport.h"

namespace OvPipeline {

/// Adds what is different: PJL commands and PostScript comments by name, what the set-up gives the page
/// device by key, other set-up commands line by line, and the pages in their order.
void CompareStreams(const DeviceStream& a, const DeviceStream& b, DifferenceReport& report);

} // namespace OvPipeline
