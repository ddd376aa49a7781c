#pragma once

#include "LowLevelFacilities/Formatter/InternalOrvelCP.h"
#include "LowLevelFacilities/Strings/CPString.h"
#include "LowLevelFacilities/Strings/CPStringUtils.h"
#include "LowLevelFacilities/UtilitiesExport.h"

#include <compare>
#include <cstddef>
#include <functional>
#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

/// A wide string of UTF-16 units, one in each wchar_t, a character outside the BMP as a surrogate pair.
/// Positions and counts are in units. A null pointer is taken as the empty text, a negative count as 0; what
/// reaches beyond the text is cut. Text may hold zeros, but what goes through a pointer ends at the first.
class OV_UTILITIES_API CXString {
public:
    CXString() noexcept = default;
    CXString(const CXString&) = default;
    CXString(CXString&&) noexcept = default;
    CXString(const wchar_t* text);
    /// From UTF-8; each ill-formed part becomes U+FFFD.
    CXString(const char* utf8);
    CXString(const wchar_t* text, int length);
    explicit CXString(std::wstring&& text) noexcept;
    explicit CXString(const CPString& text);
    ~CXString() = default;

    CXString& operator=(const CXString&) = default;
    CXString& operator=(CXString&&) noexcept = default;
    CXString& operator=(const wchar_t* text);
    CXString& operator=(const char* utf8);
    CXString& operator+=(const CXString& tail);
    CXString& operator+=(const wchar_t* tail);
    CXString& operator+=(wchar_t tail);
    CXString& operator+=(std::wstring_view tail);

    /// Never null, always terminated; valid until the string changes.
    operator const wchar_t*() const noexcept { return m_text.c_str(); }
    /// A test of the pointer, which is never null, is not what anyone means.
    explicit operator bool() const = delete;

    [[nodiscard]] int GetLength() const noexcept { return static_cast<int>(m_text.size()); }
    [[nodiscard]] bool IsEmpty() const noexcept { return m_text.empty(); }
    /// Nothing but white space, or nothing at all.
    [[nodiscard]] bool IsBlank() const noexcept;
    void Empty() noexcept { m_text.clear(); }

    /// The position, or -1. An empty text is found at the start; a start outside the string finds nothing.
    [[nodiscard]] int Find(wchar_t unit) const noexcept { return Find(unit, 0); }
    [[nodiscard]] int Find(wchar_t unit, int start) const noexcept;
    [[nodiscard]] int Find(const wchar_t* text) const noexcept { return Find(text, 0); }
    [[nodiscard]] int Find(const wchar_t* text, int start) const noexcept;
    [[nodiscard]] int ReverseFind(wchar_t unit) const noexcept;

    /// By units: negative, 0 if equal, positive.
    [[nodiscard]] int Compare(const wchar_t* other) const noexcept;
    /// The same for the lower-cased texts.
    [[nodiscard]] int CompareNoCase(const wchar_t* other) const;

    [[nodiscard]] CXString Left(int count) const;
    [[nodiscard]] CXString Right(int count) const;
    [[nodiscard]] CXString Mid(int start) const;
    [[nodiscard]] CXString Mid(int start, int count) const;
    /// What stands before the first of the given units; all of the text if none occurs.
    [[nodiscard]] CXString SpanExcluding(const wchar_t* units) const;

    /// Gives the new length.
    int Delete(int start, int count = 1);
    /// Removes every occurrence and gives their number.
    int Remove(wchar_t unit);
    /// Replaces every occurrence and gives their number. An empty `what` replaces nothing.
    int Replace(const wchar_t* what, const wchar_t* with);
    /// Unit by unit within the BMP, independent of the locale.
    CXString& MakeLower();
    CXString& Trim();
    CXString& TrimLeft();
    CXString& TrimRight();

    /// Replaces the text by the formatted one, by the rules of the typed formatter (InternalOrvelCP.h): %s
    /// takes narrow and wide text alike. A mistake in the format is reported, not thrown. Arguments may refer
    /// to this string.
    template <typename... Arguments>
    void Format(const wchar_t* format, const Arguments&... arguments);

    /// Room for at least minLength units, to be written in place, with the present text at its start. The
    /// string has that length (filled up with zeros) until ReleaseBuffer cuts it at its first zero.
    wchar_t* GetBuffer(int minLength);
    /// Makes the string exactly that long.
    wchar_t* GetBufferSetLength(int length);
    void ReleaseBuffer() noexcept;

    /// The number at the start of the text, behind white space: a sign and decimal digits. 0 if there is
    /// none; a number beyond 32 bits gives the largest or smallest.
    [[nodiscard]] int GetAsInt() const noexcept;
    /// UTF-8 with a terminating zero, so that its first element's address is a C string.
    [[nodiscard]] std::vector<char> GetAsUtf8() const;
    /// Base64 of the text's UTF-16LE bytes.
    [[nodiscard]] CXString Base64EncodeUnicodeString() const;
    /// The inverse; empty if the text is not Base64 of whole UTF-16LE units. White space is skipped.
    [[nodiscard]] CXString Base64DecodeAsUnicodeString() const;
    /// The pieces between the separators, empty ones too; an empty text has no pieces.
    [[nodiscard]] std::vector<CXString> Tokenize(wchar_t separator) const;

    [[nodiscard]] std::wstring_view View() const noexcept { return m_text; }

    friend CXString operator+(CXString left, const CXString& right) { return std::move(left += right); }
    friend CXString operator+(CXString left, const wchar_t* right) { return std::move(left += right); }
    friend CXString operator+(const wchar_t* left, const CXString& right) {
        return std::move(CXString(left) += right);
    }

    friend bool operator==(const CXString& left, const CXString& right) noexcept {
        return left.m_text == right.m_text;
    }
    friend bool operator==(const CXString& left, const wchar_t* right) noexcept {
        return left.Compare(right) == 0;
    }
    friend bool operator<(const CXString& left, const CXString& right) noexcept {
        return left.m_text < right.m_text;
    }

private:
    void AssignFormatted(InternalOrvelCP::FormatBuffer& formatted);

    std::wstring m_text;
};

/// Writes UTF-8.
OV_UTILITIES_API std::ostream& operator<<(std::ostream& stream, const CXString& text);

template <>
struct std::hash<CXString> {
    std::size_t operator()(const CXString& text) const noexcept {
        return std::hash<std::wstring_view>{}(text.View());
    }
};

template <typename... Arguments>
void CXString::Format(const wchar_t* format, const Arguments&... arguments) {
    InternalOrvelCP::FormatBuffer narrowFormat;
    CPStringUtils::narrowAndAppend(narrowFormat, format);
    InternalOrvelCP::FormatBuffer formatted;
    InternalOrvelCP::safeFormatWorker(formatted, format == nullptr ? nullptr : narrowFormat.text(),
                                      arguments...);
    AssignFormatted(formatted);
}
