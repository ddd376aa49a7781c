#pragma once

#include <LowLevelFacilities/WideStrings/CXString.h>

#include <algorithm>
#include <charconv>
#include <concepts>
#include <iterator>
#include <limits>
#include <string_view>

/// Builds the texts for the device: PJL lines and PostScript snippets. Literals stand as the device wants
/// them.
namespace InstructionText {

namespace Detail {

template <std::size_t count>
constexpr std::wstring_view Piece(const wchar_t (&literal)[count]) {
    return {literal, count - 1};
}
template <std::same_as<const wchar_t*> Text>
constexpr std::wstring_view Piece(const Text& text) {
    return text;
}
constexpr std::wstring_view Piece(std::wstring_view text) { return text; }
inline std::wstring_view Piece(const CXString& text) { return text.View(); }
constexpr wchar_t Piece(wchar_t unit) { return unit; }

} // namespace Detail

/// Appends texts and units, one behind the other.
template <typename... Pieces>
void Append(CXString& text, const Pieces&... pieces) {
    (static_cast<void>(text += Detail::Piece(pieces)), ...);
}

/// A whole number in decimal digits.
class Decimal {
public:
    explicit Decimal(long long value) {
        char digits[std::numeric_limits<long long>::digits10 + 2]; // a digit more, and the sign
        const char* const end = std::to_chars(std::begin(digits), std::end(digits), value).ptr;
        m_length = static_cast<std::size_t>(end - digits);
        std::copy_n(digits, m_length, m_text);
    }
    operator std::wstring_view() const { return {m_text, m_length}; }

private:
    wchar_t m_text[std::numeric_limits<long long>::digits10 + 2];
    std::size_t m_length = 0;
};

/// The frame of a PostScript command, that lets the interpreter give up a failing feature without losing the
/// job. Feature and option, which may come in pieces, stand as they are, blanks and line feeds too.
inline void BeginSnippet(CXString& text, const auto& feature, const auto&... option) {
    Append(text, L"\nfeaturebegin{\n%%BeginFeature: *", feature, L' ', option..., L"\n\t");
}
inline void EndSnippet(CXString& text) { Append(text, L"\n%%EndFeature\n}featurecleanup\n"); }

/// A command, in pieces, in its frame.
inline void AppendSnippet(CXString& text, const auto& feature, const auto& option, const auto&... command) {
    BeginSnippet(text, feature, option);
    Append(text, command...);
    EndSnippet(text);
}

} // namespace InstructionText
