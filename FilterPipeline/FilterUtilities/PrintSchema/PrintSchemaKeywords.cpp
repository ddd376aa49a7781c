#include "PrintSchemaKeywords.h"

namespace PrintSchema {

// A text of the list may name a word before it: that is why the words stand here, too.
#define OV_WORD(name, text) [[maybe_unused]] static constexpr wchar_t const* name = text;
#define OV_KEYWORD(name, text) constexpr wchar_t const* name = text;
#define OV_KEYWORDS(name, count, ...) constexpr wchar_t const* name[count] = {__VA_ARGS__};
#include <DataModel/PrintSchemaKeywordList.inc>
#undef OV_WORD
#undef OV_KEYWORD
#undef OV_KEYWORDS

} // namespace PrintSchema
