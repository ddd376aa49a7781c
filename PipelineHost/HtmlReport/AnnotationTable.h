#pragma once

#include "Commands/AnnotationsReport.h"
#include "HtmlReport/HtmlText.h"

namespace OvPipeline {

/// All that is decided of one annotation.
HtmlText AnnotationTable(const AnnotationsReport::Facts& facts);

} // namespace OvPipeline
