#pragma once

// The keywords of Print Schema documents as the library exports them; the list tells what each is. All live
// as long as the library. Tables take the words from DataModel/PrintSchemaKeywordLiterals.h.

#include "ComSupport/FilterUtilitiesExport.h"

namespace PrintSchema {

/// Selects the prefix of a name. There is no namespace 2.
enum MsPrintTicketNamespacesEnum : int { FrameworkNs = 0, KeywordsNs = 1, UserKeywordsNs = 3 };

#define OV_WORD(name, text)
#define OV_KEYWORD(name, text) extern OV_FILTER_UTILITIES_API wchar_t const* const name;
#define OV_KEYWORDS(name, count, ...) extern OV_FILTER_UTILITIES_API wchar_t const* const name[count];
#include "DataModel/PrintSchemaKeywordList.inc"
#undef OV_WORD
#undef OV_KEYWORD
#undef OV_KEYWORDS

} // namespace PrintSchema
