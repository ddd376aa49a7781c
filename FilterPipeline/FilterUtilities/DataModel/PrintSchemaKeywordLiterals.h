#pragma once

// The words of Print Schema documents as constants (wchar_t const*), for tables and sources. What each is
// tells the list.

namespace PrintSchema::Keywords {

#define OV_WORD(name, text) inline constexpr auto name = text;
#define OV_KEYWORD(name, text) OV_WORD(name, text)
#define OV_KEYWORDS(name, count, ...)
#include "DataModel/PrintSchemaKeywordList.inc"
#undef OV_WORD
#undef OV_KEYWORD
#undef OV_KEYWORDS

} // namespace PrintSchema::Keywords
