#pragma once

// The words of Print Schema documents as constants, for tables and sources. What each is tells the list.

namespace PrintSchema::Keywords {

#define OV_WORD(name, text) inline constexpr wchar_t const* name = text;
#define OV_KEYWORD(name, text) OV_WORD(name, text)
#define OV_KEYWORDS(name, count, ...)
#include "PrintSchemaKeywordList.inc"
#undef OV_WORD
#undef OV_KEYWORD
#undef OV_KEYWORDS

} // namespace PrintSchema::Keywords
