#pragma once

#include <string>
#include <string_view>

namespace OvPlatform {

/// The simple mapping of one unit, which leaves surrogates alone.
wchar_t SimpleLower(wchar_t unit) noexcept;
wchar_t SimpleUpper(wchar_t unit) noexcept;

/// By Unicode's full folding: texts that fold to the same are equal without regard to case. Throws
/// std::bad_alloc.
std::wstring FoldCase(std::wstring_view text);

} // namespace OvPlatform
