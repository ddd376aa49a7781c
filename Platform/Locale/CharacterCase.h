#pragma once

namespace OvPlatform {

/// The simple mapping of one unit, which leaves surrogates alone.
wchar_t SimpleLower(wchar_t unit) noexcept;
wchar_t SimpleUpper(wchar_t unit) noexcept;

} // namespace OvPlatform
