#pragma once

#include "HtmlReport/HtmlText.h"
#include "Report/RunSummary.h"

namespace OvPipeline {

/// How the job ran through the filters: their times as a chart with its numbers below, and what was merged.
HtmlText TimesSection(const RunSummary& run);

} // namespace OvPipeline
