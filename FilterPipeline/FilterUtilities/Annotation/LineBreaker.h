#pragma once

#include <cstddef>
#include <functional>
#include <string_view>
#include <utility>

/// Breaks a text into lines at its blanks. A word that is wider than a line is cut between two characters: a
/// surrogate pair is never cut, nor a combining mark taken from what it marks; one such character that does
/// not fit is a line of its own. The blanks at a break belong to neither line.
class LineBreaker {
public:
    /// Whether a piece of the text fits into a line. What begins a piece that fits is expected to fit, too.
    using Fits = std::function<bool(std::wstring_view)>;

    struct Line {
        std::wstring_view text; // without the blanks around it
        std::size_t next = 0;   // where the next line begins, in units of the whole text
    };

    explicit LineBreaker(Fits fits) : m_fits(std::move(fits)) {}

    [[nodiscard]] bool FitsAsAWhole(std::wstring_view text) const { return m_fits(text); }
    /// The line that begins at the position; an empty one if only blanks are left. The work grows with the
    /// length of the line, not with that of the text.
    [[nodiscard]] Line NextLine(std::wstring_view text, std::size_t start);

private:
    [[nodiscard]] std::size_t FittingUnits(std::wstring_view text) const;

    Fits m_fits;
    std::size_t m_expectedUnits = 64; // of a line
};
