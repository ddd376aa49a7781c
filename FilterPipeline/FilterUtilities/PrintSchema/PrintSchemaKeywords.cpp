#include "PrintSchema/PrintSchemaKeywords.h"

namespace PrintSchema {

using Word = wchar_t const*;

// A text of the list may name a word before it: that is why the words stand here, too.
#define OV_WORD(name, text) [[maybe_unused]] static constexpr Word name = text;
#define OV_KEYWORD(name, text) constexpr Word name = text;
#define OV_KEYWORDS(name, count, ...) constexpr Word name[count] = {__VA_ARGS__};
#include "DataModel/PrintSchemaKeywordList.inc"
#undef OV_WORD
#undef OV_KEYWORD
#undef OV_KEYWORDS

} // namespace PrintSchema
