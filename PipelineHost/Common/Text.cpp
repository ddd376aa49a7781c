#include "Common/Text.h"

#include <array>
#include <climits>
#include <cstdio>
#include <new>

namespace OvPipeline {

namespace {

char LowerOf(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

int Length(std::size_t size) {
    if (size > INT_MAX) throw std::bad_alloc();
    return static_cast<int>(size);
}

} // namespace

std::string Utf8(std::wstring_view text) {
    if (text.empty()) return {};
    const int units = Length(text.size());
    const int bytes = WideCharToMultiByte(CP_UTF8, 0, text.data(), units, nullptr, 0, nullptr, nullptr);
    std::string result(static_cast<std::size_t>(bytes), '\0');
    if (bytes <= 0 ||
        WideCharToMultiByte(CP_UTF8, 0, text.data(), units, result.data(), bytes, nullptr, nullptr) != bytes)
        throw std::bad_alloc();
    return result;
}

std::wstring Wide(std::string_view text) {
    if (text.empty()) return {};
    const int bytes = Length(text.size());
    const int units = MultiByteToWideChar(CP_UTF8, 0, text.data(), bytes, nullptr, 0);
    std::wstring result(static_cast<std::size_t>(units), L'\0');
    if (units <= 0 || MultiByteToWideChar(CP_UTF8, 0, text.data(), bytes, result.data(), units) != units)
        throw std::bad_alloc();
    return result;
}

BSTR NewBstr(std::string_view utf8) {
    const std::wstring wide = Wide(utf8);
    BSTR text = SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()));
    if (text == nullptr) throw std::bad_alloc();
    return text;
}

std::string Utf8Argument(const wchar_t* text) { return text != nullptr ? Utf8(text) : std::string(); }

std::string LowerAscii(std::string_view text) {
    std::string lower(text);
    for (char& c : lower)
        c = LowerOf(c);
    return lower;
}

bool EqualIgnoringAsciiCase(std::string_view one, std::string_view other) {
    if (one.size() != other.size()) return false;
    for (std::size_t i = 0; i < one.size(); ++i)
        if (LowerOf(one[i]) != LowerOf(other[i])) return false;
    return true;
}

std::string Counted(unsigned long long count, std::string_view noun) {
    std::string text = std::to_string(count) + " ";
    text += noun;
    if (count != 1) text += "s";
    return text;
}

std::string ByteCount(unsigned long long bytes) {
    if (bytes < 1024) return Counted(bytes, "byte");
    static constexpr std::array units{"KB", "MB", "GB", "TB"};
    double value = static_cast<double>(bytes) / 1024;
    std::size_t unit = 0;
    while (value >= 1000 && unit + 1 < units.size()) {
        value /= 1024;
        ++unit;
    }
    char text[32];
    std::snprintf(text, sizeof text, value < 10 ? "%.1f %s" : "%.0f %s", value, units[unit]);
    return text;
}

std::string GuidText(const GUID& guid) {
    char text[40];
    std::snprintf(text, sizeof text, "{%08x-%04x-%04x-%02x%02x-%02x%02x%02x%02x%02x%02x}",
                  static_cast<unsigned>(guid.Data1), guid.Data2, guid.Data3, guid.Data4[0], guid.Data4[1],
                  guid.Data4[2], guid.Data4[3], guid.Data4[4], guid.Data4[5], guid.Data4[6], guid.Data4[7]);
    return text;
}

} // namespace OvPipeline
