#pragma once

namespace CombiningMarks {

/// Whether a character belongs to the one before it.
[[nodiscard]] bool IsMark(char32_t character) noexcept;

} // namespace CombiningMarks
