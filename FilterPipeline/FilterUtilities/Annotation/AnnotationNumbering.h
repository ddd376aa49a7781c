#pragma once

#include "Annotation/AnnotationElementSettings.h"
#include "ComSupport/FilterUtilitiesExport.h"

/// Whether what an element says changes from page to page: a Bates number, a page number.
[[nodiscard]] OV_FILTER_UTILITIES_API bool IsNumberedAnnotation(const AnnotationElementSettings& element);

/// What an element says on a page of the job; pages count from 0. The last digits of a numbered element's
/// text are the number of the first page: it is counted up, in no fewer digits. Without digits the number
/// stands behind the text and begins with 1, a Bates number in six digits. Any other element says its text.
[[nodiscard]] OV_FILTER_UTILITIES_API CXString AnnotationTextOfPage(const AnnotationElementSettings& element,
                                                                    unsigned page);
