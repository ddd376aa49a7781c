#pragma once

#include "ComSupport/FilterUtilitiesExport.h"

#include <LowLevelFacilities/WideStrings/CXString.h>

/// Keeps a text that comes from outside (a job's title, a user's name, a phone number) from ending the PJL
/// line or the PostScript string that it is written into, and so from bringing commands of its own.
class OV_FILTER_UTILITIES_API CommandSafeText {
public:
    CommandSafeText() = delete;

    /// Puts blanks in the place of control characters (line ends and ESC among them) and of Unicode's line
    /// and paragraph separators, of quotation marks, of parentheses without a partner, and of a backslash
    /// that would take the meaning from a parenthesis or from what follows the text. Gives back whether there
    /// were any.
    static bool Clean(CXString& text);
};
