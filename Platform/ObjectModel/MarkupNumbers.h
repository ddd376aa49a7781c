#pragma once

#include <xpsobjectmodel.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace OvPlatform {

// Numbers as the values of attributes: they are read as the format has them, and written as short as brings
// the same number back. What is read is nothing where the text is no such value.

/// Reads numbers one after another, separated by blanks and commas.
class NumberReader {
public:
    explicit NumberReader(std::string_view text) noexcept : m_rest(text) {}

    bool Next(FLOAT& number) noexcept;
    /// Whether nothing is left but blanks.
    bool IsAtEnd() noexcept;
    /// A letter that stands next, 0 if none does.
    char NextLetter() noexcept;

private:
    void SkipBlanks() noexcept;

    std::string_view m_rest;
};

std::optional<FLOAT> ParseNumber(std::string_view text);
std::optional<XPS_RECT> ParseRect(std::string_view text);
std::optional<XPS_MATRIX> ParseMatrix(std::string_view text);
/// Any count of numbers.
std::optional<std::vector<FLOAT>> ParseNumbers(std::string_view text);

// The number must be finite.
void AppendNumber(std::string& text, FLOAT number);
std::string FormatNumber(FLOAT number);
std::string FormatNumbers(const FLOAT* numbers, std::size_t count, char separator = ',');
std::string FormatRect(const XPS_RECT& rect);
std::string FormatMatrix(const XPS_MATRIX& matrix);

/// A colour but for its profile: of "ContextColor PROFILE a,c,..." the numbers.
std::optional<XPS_COLOR> ParseColor(std::string_view text);
/// For a colour of a profile what follows the profile, from the blank on.
std::string FormatColor(const XPS_COLOR& color);

// Throw MarkupFailure: XPS_E_INVALID_FLOAT for what is no finite number, XPS_E_NEGATIVE_FLOAT,
// XPS_E_COLOR_COMPONENT_OUT_OF_RANGE, E_INVALIDARG.
void CheckFinite(FLOAT number);
void CheckNotNegative(FLOAT number);
void CheckOpacity(FLOAT opacity);
void CheckColor(const XPS_COLOR& color);
void CheckRect(const XPS_RECT& rect);

} // namespace OvPlatform
