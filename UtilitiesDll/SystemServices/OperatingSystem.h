#pragma once

#include "LowLevelFacilities/UtilitiesExport.h"
#include "LowLevelFacilities/WideStrings/CXString.h"

class OV_UTILITIES_API OperatingSystem {
public:
    OperatingSystem() = delete;

    /// With its domain, if it has one; empty if it cannot be told.
    [[nodiscard]] static CXString GetFullComputerName();
    [[nodiscard]] static bool IsOsVersionWin7OrLater();
    /// Whether the user's locale prints on Letter and Legal rather than on ISO sizes.
    [[nodiscard]] static bool UseEnglishPaperSizes();
};
