#include "Spooler/QueueText.h"

#include <unicode/unistr.h>

namespace OvPlatform {

namespace {

icu::UnicodeString ToIcu(std::wstring_view text) {
    icu::UnicodeString units;
    for (const wchar_t unit : text)
        units.append(static_cast<char16_t>(unit));
    return units;
}

std::wstring FromIcu(const icu::UnicodeString& units) {
    std::wstring text;
    text.reserve(static_cast<std::size_t>(units.length()));
    for (std::int32_t i = 0; i < units.length(); ++i)
        text += static_cast<wchar_t>(units[i]);
    return text;
}

} // namespace

std::wstring WidenQueueText(std::string_view utf8) {
    return FromIcu(
        icu::UnicodeString::fromUTF8(icu::StringPiece(utf8.data(), static_cast<std::int32_t>(utf8.size()))));
}

std::string NarrowQueueText(std::wstring_view utf16) {
    std::string text;
    ToIcu(utf16).toUTF8String(text);
    return text;
}

std::wstring FoldQueueName(std::wstring_view name) { return FromIcu(ToIcu(name).foldCase()); }

} // namespace OvPlatform
