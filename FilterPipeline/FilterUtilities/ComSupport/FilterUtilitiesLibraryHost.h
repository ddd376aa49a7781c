#pragma once

#include "ComSupport/FilterUtilitiesExport.h"

/// What the machine's configuration asks of the library as a whole.
class OV_FILTER_UTILITIES_API FilterUtilitiesLibraryHost {
public:
    /// Whether a broken XML configuration is shown in a message box: the registry value "ShowParseErrors". A
    /// key that cannot be opened is itself reported in a box, and counts as false.
    static bool ShouldNativeXmlConfigurationFeatureSetPopMessageBoxOnException();
};
