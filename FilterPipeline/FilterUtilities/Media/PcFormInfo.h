#pragma once

#include "PrintSchema/PrintSchemaKeywords.h"

#include <LowLevelFacilities/WideStrings/CXString.h>

/// An option of the page media size in a capabilities document.
struct PcFormInfo {
    int width; // microns
    int height;
    CXString optionName; // without prefix
    /// Deliberate: 3 for a public name and 1 for a private one, crosswise to the enumerators' names.
    PrintSchema::MsPrintTicketNamespacesEnum nameSpace;
};
