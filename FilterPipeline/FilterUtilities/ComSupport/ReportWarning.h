#pragma once

#include "ComSupport/FilterUtilitiesExport.h"

#include <string>

/// For what a job goes on without, where nothing has failed: hands the text to the reporter, under the
/// caption "Warning". On any thread.
OV_FILTER_UTILITIES_API void ReportWarning(const std::string& text) noexcept;
