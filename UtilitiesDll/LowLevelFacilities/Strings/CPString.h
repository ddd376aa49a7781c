#pragma once

#include "LowLevelFacilities/Strings/StrictlyTypedIntegral.h"
#include "LowLevelFacilities/UtilitiesExport.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <iosfwd>
#include <string>
#include <string_view>

struct SizeCodePoints32Struct {};
struct SizeRawBytes32Struct {};
using SizeCodePoints32 = StrictlyTypedIntegral<unsigned int, SizeCodePoints32Struct>;
using SizeRawBytes32 = StrictlyTypedIntegral<unsigned int, SizeRawBytes32Struct>;

/// A UTF-8 string. Positions and counts are in code points, sizes of storage in bytes. Bytes that are not
/// valid UTF-8 are kept as they are; each such byte counts as one code point and widens to U+FFFD.
/// A null pointer is taken as the empty text. Operations that grow the text throw std::bad_alloc.
class OV_UTILITIES_API CPString {
public:
    /// "Not found".
    static constexpr SizeCodePoints32 npos{0xFFFFFFFFu};

    CPString() noexcept = default;
    CPString(const CPString&) = default;
    CPString(CPString&&) noexcept = default;
    CPString(const char* utf8);
    CPString(const wchar_t* utf16);
    CPString(std::string&& utf8) noexcept;
    CPString(SizeRawBytes32 count, char fill);
    CPString(std::size_t count, char fill);
    ~CPString() = default;

    CPString& operator=(const CPString&) = default;
    CPString& operator=(CPString&&) noexcept = default;
    CPString& operator=(const char* utf8);
    CPString& operator=(const wchar_t* utf16);
    CPString& operator+=(const CPString& tail);
    CPString& operator+=(const char* tail);

    [[nodiscard]] bool isEmpty() const noexcept { return m_bytes.empty(); }
    [[nodiscard]] bool isEmptyOrOnlyWhitespace() const noexcept;
    void clear() noexcept { m_bytes.clear(); }

    /// The position of the first occurrence, in code points, or npos. An empty text is found at the start;
    /// a start behind the end finds nothing.
    [[nodiscard]] SizeCodePoints32 find(const CPString& text) const noexcept;
    [[nodiscard]] SizeCodePoints32 find(const char* text) const noexcept;
    [[nodiscard]] SizeCodePoints32 find(const char* text, SizeCodePoints32 start) const noexcept;
    /// At most count code points from start; what lies behind the end is left out. A count of npos means "to
    /// the end".
    [[nodiscard]] CPString substring(SizeCodePoints32 start, SizeCodePoints32 count) const;
    [[nodiscard]] bool startsWith(char character) const noexcept;
    void replaceAll(const char* what, const char* with);

    /// By bytes, which is also the order of the code points: negative, 0 or positive.
    [[nodiscard]] int compare(const CPString& other) const noexcept;
    [[nodiscard]] int compare(const char* other) const noexcept;
    [[nodiscard]] std::uint64_t hash() const noexcept;

    /// The text with a zero behind it; valid until the string changes.
    [[nodiscard]] const char* utf8Bytes() const noexcept { return m_bytes.c_str(); }
    [[nodiscard]] const unsigned char* utf8RawBytes() const noexcept;
    /// Both sizes are in bytes, without the terminator.
    [[nodiscard]] SizeRawBytes32 sizeOfUtf8Bytes() const noexcept;
    [[nodiscard]] SizeRawBytes32 sizeOfUtf8RawBytes() const noexcept { return sizeOfUtf8Bytes(); }
    [[nodiscard]] SizeCodePoints32 sizeInCodePoints() const noexcept;
    /// For overwriting in place, never beyond sizeOfUtf8RawBytes.
    [[nodiscard]] unsigned char* utf8RawBytesPointerForOverwriting() noexcept;
    [[nodiscard]] std::string_view view() const noexcept { return m_bytes; }

    /// Lowers A to Z and nothing else.
    void toLowerAscii() noexcept;

    friend bool operator==(const CPString& left, const CPString& right) noexcept {
        return left.m_bytes == right.m_bytes;
    }
    friend bool operator==(const CPString& left, const char* right) noexcept {
        return left.compare(right) == 0;
    }
    friend bool operator<(const CPString& left, const CPString& right) noexcept {
        return left.compare(right) < 0;
    }

private:
    std::string m_bytes;
};

/// Writes the bytes.
OV_UTILITIES_API std::ostream& operator<<(std::ostream& stream, const CPString& text);

template <>
struct std::hash<CPString> {
    std::size_t operator()(const CPString& text) const noexcept {
        return static_cast<std::size_t>(text.hash());
    }
};
