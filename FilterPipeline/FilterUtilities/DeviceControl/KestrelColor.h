#pragma once

#include "DataModel/ValueIds.h"

#include <LowLevelFacilities/WideStrings/CXString.h>

class JobQuestions;

/// A colour correction of the user's own, for the Kestrel family, section by section.
namespace KestrelColor {

[[nodiscard]] CXString Custom(const JobQuestions& job);
/// Empty for a value that has no intent there.
[[nodiscard]] CXString Rgb(DataModelIds::tagValueEnum value);
[[nodiscard]] CXString Cmyk(DataModelIds::tagValueEnum value);

} // namespace KestrelColor
