#include "DeviceControl/PageLevelSetting.h"

#include <algorithm>
#include <charconv>
#include <string_view>
#include <vector>

namespace {

struct Row {
    std::wstring_view name;
    PageLevelSetting::Kind kind;
};
constexpr Row rows[] = {
    {L"media-size", PageLevelSetting::Kind::MediaSize},
    {L"effective-media-type", PageLevelSetting::Kind::MediaType},
    {L"media-color", PageLevelSetting::Kind::MediaColor},
    {L"sides-imaged", PageLevelSetting::Kind::Sides},
    {L"input-tray", PageLevelSetting::Kind::Tray},
};

/// Of digits alone, as a length has them.
std::optional<int> NumberOf(CXString text) {
    text.Trim();
    std::string digits;
    for (const wchar_t unit : text.View()) {
        if (unit < L'0' || unit > L'9') return std::nullopt;
        digits += static_cast<char>(unit);
    }
    int number = 0;
    const char* const end = digits.data() + digits.size();
    const auto [stopped, error] = std::from_chars(digits.data(), end, number);
    return error == std::errc() && stopped == end ? std::optional(number) : std::nullopt;
}

bool ReadSize(PageLevelSetting& setting) {
    const std::vector<CXString> parts = setting.value.Tokenize(L',');
    if (parts.size() != 2) return false;
    const std::optional<int> width = NumberOf(parts[0]);
    const std::optional<int> height = NumberOf(parts[1]);
    if (!width || !height) return false;
    setting.width = *width;
    setting.height = *height;
    return true;
}

} // namespace

std::optional<PageLevelSetting> PageLevelSetting::Parse(const CXString& text) {
    std::vector<CXString> parts = text.Tokenize(L'=');
    if (parts.size() != 2) return std::nullopt;
    const std::wstring_view name = parts[0].Trim().View();
    const auto* const row = std::ranges::find(rows, name, &Row::name);
    if (row == std::end(rows)) return std::nullopt;
    PageLevelSetting setting{.kind = row->kind, .value = std::move(parts[1].Trim())};
    if (setting.kind == Kind::MediaSize && !ReadSize(setting)) return std::nullopt;
    return setting;
}
