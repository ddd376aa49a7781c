#include "ComSupport/ReportWarning.h"

#include <LowLevelFacilities/Failures/DebugUtilities.h>

void ReportWarning(const std::string& text) noexcept {
    DebugUtilities::reportErrorForLowLevelUtilities(text.c_str(), "Warning");
}
