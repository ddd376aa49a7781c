// What reads bytes and texts of any length takes time in proportion to it.
#include "Platform/Fonts/SelectedFont.h"
#include "Support/Growth.h"
#include "Support/TestFont.h"

#include <Fonts/FontTables.h>

#include <t2embapi.h>

#include <memory>
#include <span>
#include <string>
#include <vector>

namespace {

std::function<void()> Measured(const std::wstring& text) {
    return [text, font = std::make_shared<SelectedFont>(L"DejaVu Sans")] { (void)font->Width(text); };
}

std::function<void()> Taken(const std::string& collection) {
    return [collection] {
        const auto tables = OvPlatform::FontTables::Read(std::as_bytes(std::span(collection)), 0);
        if (tables) (void)tables->FileOfItsOwn();
    };
}

class FontsGrowth : public testing::TestWithParam<GrowthCase> {};

TEST_P(FontsGrowth, IsInProportion) { ExpectLinearGrowth(GetParam()); }

const GrowthCase cases[] = {
    {"TextOfOneScript", [](std::size_t n) { return Measured(std::wstring(n, L'a')); }},
    {"TextOfManyRuns",
     [](std::size_t n) {
         std::wstring text;
         for (std::size_t i = 0; i < n; ++i)
             text += i % 2 == 0 ? L'a' : L'\u0644';
         return Measured(text);
     }},
    {"TextWithoutAScript", [](std::size_t n) { return Measured(std::wstring(n, L' ')); }},
    {"MarksOnALetter", [](std::size_t n) { return Measured(L"a" + std::wstring(n, L'\u0301')); }},
    {"LoneSurrogates", [](std::size_t n) { return Measured(std::wstring(n, 0xD800)); }},
    // Tables that all are the whole file would be as many copies of it.
    {"TablesThatOverlap",
     [](std::size_t n) {
         FontBytes file;
         file.AddText("ttcf").Add(0x00010000, 4).Add(1, 4).Add(16, 4);
         file.Add(0x00010000, 4).Add(n, 2).Add(0, 6);
         for (std::size_t table = 0; table < n; ++table)
             file.Add(table, 4).Add(0, 4).Add(0, 4).Add(28 + 16 * n, 4);
         return Taken(file.Text());
     },
     16000},
    {"CharactersOfASubset",
     [](std::size_t n) -> std::function<void()> {
         std::vector<USHORT> text(n);
         for (std::size_t i = 0; i < n; ++i)
             text[i] = static_cast<USHORT>(0x300 + i);
         return [text, font = std::make_shared<SelectedFont>(L"Droid Sans Fallback")]() mutable {
             ULONG status = 0;
             ULONG privilege = 0;
             const WRITEEMBEDPROC ignore = [](void*, const void*, const ULONG count) { return count; };
             TTEmbedFont(font->context, TTEMBED_SUBSET, CHARSET_UNICODE, &privilege, &status, ignore, nullptr,
                         text.data(), static_cast<USHORT>(text.size()), 0, nullptr);
         };
     },
     16000},
};
INSTANTIATE_TEST_SUITE_P(Readers, FontsGrowth, testing::ValuesIn(cases), GrowthName);

} // namespace
