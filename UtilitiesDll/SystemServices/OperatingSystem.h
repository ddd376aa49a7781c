#pragma once

#include "LowLevelFacilities/CXString.h"
#include "LowLevelFacilities/UtilitiesExport.h"

class OV_UTILITIES_API OperatingSystem {
public:
    OperatingSystem() = delete;

    /// With its domain, if it has one; empty if it cannot be told.
    [[nodiscard]] static CXString GetFullComputerName();
    [[nodiscard]] static bool IsOsVersionWin7OrLater();
    /// Whether the user's locale prints on Letter and Legal rather than on ISO sizes.
    [[nodiscard]] static bool UseEnglishPaperSizes();
};
