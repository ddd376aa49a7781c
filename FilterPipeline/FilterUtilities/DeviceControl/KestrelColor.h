#pragma once

#include "DataModel/ValueIds.h"

class CXString;
class JobQuestions;

/// A colour correction of the user's own, for the Kestrel family, section by section.
namespace KestrelColor {

void AppendCustom(CXString& text, const JobQuestions& job);
/// Nothing for a value that has no intent there.
void AppendRgb(CXString& text, DataModelIds::tagValueEnum value);
void AppendCmyk(CXString& text, DataModelIds::tagValueEnum value);

} // namespace KestrelColor
