#include "Com/FaultInjection.h"
#include "Locale/Utf16.h"

#include <utf8coder.h>

#include <algorithm>
#include <cstring>
#include <cwchar>
#include <limits>

namespace {

namespace Utf8 = OvPlatform::Utf8;

/// Receives output: counts it all, keeps what fits.
template <typename Unit>
class Output {
public:
    Output(Unit* buffer, std::size_t capacity) : m_buffer(buffer), m_capacity(capacity) {}

    template <typename Source>
    void Put(const Source* units, std::size_t count) {
        if (m_buffer != nullptr && m_capacity - (std::min)(m_size, m_capacity) >= count)
            std::transform(units, units + count, m_buffer + m_size,
                           [](Source unit) { return static_cast<Unit>(unit); });
        else
            m_overflowed = true;
        m_size += count;
    }
    std::size_t Size() const { return m_size; }
    bool Overflowed() const { return m_overflowed; }

private:
    Unit* m_buffer;
    std::size_t m_capacity;
    std::size_t m_size = 0;
    bool m_overflowed = false;
};

/// How many ASCII characters stand at the front. Looked for in blocks, because most text is nothing else.
template <typename Unit>
std::size_t AsciiRun(const Unit* units, std::size_t size) {
    constexpr std::size_t block = 16;
    std::size_t run = 0;
    for (; run + block <= size; run += block) {
        std::uint32_t all = 0;
        for (std::size_t index = 0; index < block; ++index)
            all |= static_cast<std::uint32_t>(units[run + index]);
        if (all >= 0x80) break;
    }
    while (run < size && static_cast<std::uint32_t>(units[run]) < 0x80)
        ++run;
    return run;
}

/// Says whether all was well-formed.
bool Encode(std::wstring_view text, Output<char>& output, std::string_view substitute) {
    bool allIsWellFormed = true;
    const wchar_t* next = text.data();
    for (const wchar_t* const end = next + text.size(); next != end;) {
        if (const std::size_t run = AsciiRun(next, static_cast<std::size_t>(end - next)); run > 0) {
            output.Put(next, run);
            next += run;
            continue;
        }
        bool wellFormed = true;
        const char32_t character = Utf8::Decode(next, end, wellFormed);
        if (wellFormed) {
            char bytes[Utf8::MostBytes];
            output.Put(bytes, Utf8::Encode(character, bytes));
        } else {
            allIsWellFormed = false;
            output.Put(substitute.data(), substitute.size());
        }
    }
    return allIsWellFormed;
}

bool Decode(std::string_view bytes, Output<wchar_t>& output) {
    bool allIsWellFormed = true;
    const char* next = bytes.data();
    for (const char* const end = next + bytes.size(); next != end;) {
        const auto* source = reinterpret_cast<const unsigned char*>(next);
        if (const std::size_t run = AsciiRun(source, static_cast<std::size_t>(end - next)); run > 0) {
            output.Put(source, run);
            next += run;
            continue;
        }
        bool wellFormed = true;
        wchar_t units[Utf8::MostUnits];
        output.Put(units, Utf8::Encode(Utf8::Decode(next, end, wellFormed), units));
        allIsWellFormed = allIsWellFormed && wellFormed;
    }
    return allIsWellFormed;
}

constexpr std::string_view replacementBytes = "\xEF\xBF\xBD";

int Fail(DWORD error) {
    SetLastError(error);
    return 0;
}

bool IsUtf8(UINT codePage) { return codePage == CP_UTF8 || codePage == CP_ACP || codePage == CP_OEMCP; }

template <typename Unit>
int Finish(const Output<Unit>& output, bool wanted) {
    if (output.Size() > static_cast<std::size_t>((std::numeric_limits<int>::max)()))
        return Fail(ERROR_ARITHMETIC_OVERFLOW);
    if (wanted && output.Overflowed()) return Fail(ERROR_INSUFFICIENT_BUFFER);
    return static_cast<int>(output.Size());
}

} // namespace

int WideCharToMultiByte(UINT codePage, DWORD flags, LPCWCH text, int length, LPSTR bytes, int capacity,
                        LPCCH defaultCharacter, LPBOOL usedDefault) {
    if (OvPlatform::FaultPointHit()) return 0;
    if (text == nullptr || length == 0 || capacity < 0 || (capacity > 0 && bytes == nullptr) ||
        !IsUtf8(codePage) || static_cast<const void*>(text) == static_cast<const void*>(bytes))
        return Fail(ERROR_INVALID_PARAMETER);
    if (codePage == CP_UTF8 && (defaultCharacter != nullptr || usedDefault != nullptr))
        return Fail(ERROR_INVALID_PARAMETER);
    const DWORD allowed =
        codePage == CP_UTF8 ? WC_ERR_INVALID_CHARS : WC_ERR_INVALID_CHARS | WC_NO_BEST_FIT_CHARS;
    if ((flags & ~allowed) != 0) return Fail(ERROR_INVALID_FLAGS);

    const std::size_t size = length < 0 ? std::wcslen(text) + 1 : static_cast<std::size_t>(length);
    Output<char> output(capacity > 0 ? bytes : nullptr, static_cast<std::size_t>(capacity));
    const std::string_view substitute =
        defaultCharacter != nullptr ? std::string_view(defaultCharacter, 1) : replacementBytes;
    const bool wellFormed = Encode(std::wstring_view(text, size), output, substitute);
    if (usedDefault != nullptr) *usedDefault = !wellFormed;
    if (!wellFormed && (flags & WC_ERR_INVALID_CHARS) != 0) return Fail(ERROR_NO_UNICODE_TRANSLATION);
    return Finish(output, capacity > 0);
}

int MultiByteToWideChar(UINT codePage, DWORD flags, LPCCH bytes, int length, LPWSTR text, int capacity) {
    if (OvPlatform::FaultPointHit()) return 0;
    if (bytes == nullptr || length == 0 || capacity < 0 || (capacity > 0 && text == nullptr) ||
        !IsUtf8(codePage) || static_cast<const void*>(text) == static_cast<const void*>(bytes))
        return Fail(ERROR_INVALID_PARAMETER);
    const DWORD allowed = codePage == CP_UTF8 ? MB_ERR_INVALID_CHARS : MB_ERR_INVALID_CHARS | MB_PRECOMPOSED;
    if ((flags & ~allowed) != 0) return Fail(ERROR_INVALID_FLAGS);

    const std::size_t size = length < 0 ? std::strlen(bytes) + 1 : static_cast<std::size_t>(length);
    Output<wchar_t> output(capacity > 0 ? text : nullptr, static_cast<std::size_t>(capacity));
    const bool wellFormed = Decode(std::string_view(bytes, size), output);
    if (!wellFormed && (flags & MB_ERR_INVALID_CHARS) != 0) return Fail(ERROR_NO_UNICODE_TRANSLATION);
    return Finish(output, capacity > 0);
}

namespace OvPlatform {

std::string ToUtf8(std::wstring_view text) {
    Output<char> counted(nullptr, 0);
    Encode(text, counted, replacementBytes);
    std::string bytes(counted.Size(), '\0');
    Output<char> output(bytes.data(), bytes.size());
    Encode(text, output, replacementBytes);
    return bytes;
}

std::wstring FromUtf8(std::string_view bytes) {
    // Never more units than bytes.
    std::wstring text(bytes.size(), L'\0');
    Output<wchar_t> output(text.data(), text.size());
    Decode(bytes, output);
    text.resize(output.Size());
    return text;
}

std::u16string ToUtf16(std::wstring_view text) {
    std::u16string units;
    units.reserve(text.size());
    for (const wchar_t unit : text)
        units += static_cast<std::uint32_t>(unit) <= 0xFFFF ? static_cast<char16_t>(unit)
                                                            : static_cast<char16_t>(Utf8::Replacement);
    return units;
}

std::wstring FromUtf16(std::u16string_view text) { return std::wstring(text.begin(), text.end()); }

bool CopyText(std::wstring_view text, LPWSTR buffer, std::size_t capacity) noexcept {
    if (buffer == nullptr || text.size() >= capacity) return false;
    std::copy(text.begin(), text.end(), buffer);
    buffer[text.size()] = 0;
    return true;
}

} // namespace OvPlatform
