#include "LowLevelFacilities/Strings/CPStringUtils.h"

#include "LowLevelFacilities/Strings/InternalOrvelCPFormatStringBuffer.h"

#include <utf8coder.h>

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace CPStringUtils {

namespace {

bool IsAscii(wchar_t unit) noexcept { return static_cast<char32_t>(unit) < 0x80; }

/// Feeds the UTF-8 form of the text to append(bytes, length), in pieces that each hold whole code points.
template <typename Append>
void narrowInPieces(const wchar_t* text, const wchar_t* end, Append append) {
    char piece[256];
    std::size_t used = 0;
    while (text != end) {
        if (used + OvPlatform::Utf8::MostBytes > sizeof piece) {
            append(piece, used);
            used = 0;
        }
        const auto room = static_cast<std::ptrdiff_t>(sizeof piece - used);
        for (const wchar_t* const stop = text + std::min(room, end - text); text != stop && IsAscii(*text);)
            piece[used++] = static_cast<char>(*text++); // as nearly all are
        if (text == end || used + OvPlatform::Utf8::MostBytes > sizeof piece) continue;
        used += OvPlatform::Utf8::Encode(OvPlatform::Utf8::Decode(text, end), piece + used);
    }
    if (used != 0) append(piece, used);
}

std::size_t lengthOf(const wchar_t* text) noexcept {
    return text == nullptr ? 0 : std::wstring_view{text}.size();
}

} // namespace

CPString narrow(const wchar_t* text) { return CPString{narrowToStdString(text)}; }

std::string narrowToStdString(const wchar_t* text) { return narrowToStdString(text, lengthOf(text)); }

std::string narrowToStdString(const wchar_t* text, std::size_t length) {
    std::string result;
    if (text == nullptr) return result;
    result.reserve(length);
    narrowInPieces(text, text + length,
                   [&result](const char* bytes, std::size_t count) { result.append(bytes, count); });
    return result;
}

void narrowAndAppend(InternalOrvelCP::FormatStringBuffer<1024>& destination, const wchar_t* text) {
    narrowAndAppend(destination, text, lengthOf(text));
}

void narrowAndAppend(InternalOrvelCP::FormatStringBuffer<1024>& destination, const wchar_t* text,
                     std::size_t length) {
    if (text == nullptr) return;
    narrowInPieces(text, text + length, [&destination](const char* bytes, std::size_t count) {
        destination.append(bytes, count);
    });
}

std::wstring widenTo_wstring(const CPString& text) {
    return widenTo_wstring(text.utf8Bytes(), text.view().size());
}

std::wstring widenTo_wstring(const char* text, std::size_t length) {
    std::wstring result;
    if (text == nullptr) return result;
    // A text never has more UTF-16 units than UTF-8 bytes.
    result.resize(length);
    wchar_t* to = result.data();
    for (const char* const end = text + length; text != end;)
        to += OvPlatform::Utf8::Encode(OvPlatform::Utf8::Decode(text, end), to);
    result.resize(static_cast<std::size_t>(to - result.data()));
    return result;
}

} // namespace CPStringUtils
