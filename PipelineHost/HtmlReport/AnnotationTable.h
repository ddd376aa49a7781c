#pragma once

#include "Commands/AnnotationsReport.h"
#include "HtmlReport/HtmlText.h"

namespace OvPipeline {

/// What it is and what it says, "text \"Draft\" on".
std::string AnnotationTitle(const AnnotationsReport::Facts& facts);

/// All that is decided of one annotation.
HtmlText AnnotationTable(const AnnotationsReport::Facts& facts);

} // namespace OvPipeline
