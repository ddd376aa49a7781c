#include "Platform/Fonts/SelectedFont.h"
#include "Platform/Fonts/SystemFontFiles.h"
#include "Support/Rows.h"
#include "Support/TestFonts.h"

#include <gtest/gtest.h>
#include <usp10.h>

#include <array>
#include <filesystem>
#include <thread>
#include <vector>

namespace {

auto* const fonts =
    static_cast<TestFonts*>(testing::AddGlobalTestEnvironment(new TestFonts(SystemFontFiles())));

constexpr DWORD collectionTag = 0x66637474; // "ttcf"
constexpr DWORD nameTag = 0x656D616E;       // "name"

TEST(Gdi, OnlyTheDisplayHasContexts) {
    for (const wchar_t* device : {L"WINSPOOL", L"", static_cast<const wchar_t*>(nullptr)})
        EXPECT_EQ(nullptr, CreateDCW(device, nullptr, nullptr, nullptr));
    const SelectedFont font(L"Test");
    EXPECT_EQ(96, GetDeviceCaps(font.context, LOGPIXELSX));
    EXPECT_EQ(96, GetDeviceCaps(font.context, LOGPIXELSY));
    EXPECT_EQ(0, GetDeviceCaps(font.context, 8));
}

TEST(Gdi, HandlesThatAreNoneOrPastAreRefused) {
    const HDC context = CreateDCW(L"DISPLAY", nullptr, nullptr, nullptr);
    const LOGFONTW asked = {};
    const HFONT font = CreateFontIndirectW(&asked);
    const HGDIOBJ stock = SelectObject(context, font);
    ASSERT_NE(nullptr, stock);
    EXPECT_FALSE(DeleteObject(font)) << "it is selected";
    EXPECT_FALSE(DeleteObject(context)) << "it is no object";
    EXPECT_FALSE(DeleteDC(reinterpret_cast<HDC>(font))) << "it is no context";
    EXPECT_EQ(nullptr, SelectObject(context, context));
    EXPECT_EQ(font, SelectObject(context, stock));
    EXPECT_FALSE(DeleteObject(stock)) << "every context has it";
    EXPECT_TRUE(DeleteObject(font));
    EXPECT_FALSE(DeleteObject(font));
    EXPECT_EQ(nullptr, SelectObject(context, font));
    EXPECT_EQ(ERROR_INVALID_HANDLE, GetLastError());
    EXPECT_TRUE(DeleteDC(context));
    for (const HDC none : {context, static_cast<HDC>(nullptr), reinterpret_cast<HDC>(4)}) {
        SIZE size = {};
        TEXTMETRICW metrics = {};
        WORD glyph = 0;
        EXPECT_FALSE(DeleteDC(none));
        EXPECT_EQ(0, GetDeviceCaps(none, LOGPIXELSX));
        EXPECT_EQ(nullptr, SelectObject(none, stock));
        EXPECT_EQ(0, GetTextFaceW(none, 0, nullptr));
        EXPECT_EQ(GDI_ERROR, GetGlyphIndicesW(none, L"A", 1, &glyph, 0));
        EXPECT_EQ(GDI_ERROR, GetFontData(none, 0, 0, nullptr, 0));
        EXPECT_FALSE(GetTextExtentPoint32W(none, L"A", 1, &size));
        EXPECT_FALSE(GetTextMetricsW(none, &metrics));
    }
}

TEST(Gdi, AContextThatEndsLetsItsFontGo) {
    const HDC context = CreateDCW(L"DISPLAY", nullptr, nullptr, nullptr);
    const LOGFONTW asked = {};
    const HFONT font = CreateFontIndirectW(&asked);
    SelectObject(context, font);
    DeleteDC(context);
    EXPECT_TRUE(DeleteObject(font));
}

TEST(Gdi, AFaceIsFoundByAnyOfItsNamesAndReplacedWhereThereIsNone) {
    for (const auto& [asked, found] : Rows<const wchar_t*, const wchar_t*>{
             {L"Two Names", L"Two Names"},
             {L"TWO NAMES", L"Two Names"},
             {L"\u4E8C\u3064\u306E\u540D\u524D", L"\u4E8C\u3064\u306E\u540D\u524D"},
             {L"Member Two", L"Member Two"},
             {L"DejaVu Sans", L"DejaVu Sans"},
             {L"DejaVu Sans Bold", L"DejaVu Sans"}, // a full name
             {L"Absent Face", L"DejaVu Serif"},
             // No names of their own, or no fonts.
             {L"Nameless", L"DejaVu Sans"},
             {L"truncated", L"DejaVu Sans"},
             {L"text", L"DejaVu Sans"},
             {L"", L"DejaVu Sans"},
         })
        EXPECT_EQ(found, SelectedFont(asked).Face()) << asked;
}

TEST(Gdi, OfAFamilyTheNearestFaceIsTaken) {
    const auto metrics = [](const SelectedFont& font) {
        TEXTMETRICW found = {};
        GetTextMetricsW(font.context, &found);
        return found;
    };
    const auto weight = [&](const SelectedFont& font) { return metrics(font).tmWeight; };
    EXPECT_EQ(0, metrics(SelectedFont(L"Nimbus Sans")).tmItalic);
    EXPECT_NE(0, metrics(SelectedFont(L"Nimbus Sans", -20, DEFAULT_CHARSET, FW_NORMAL, true)).tmItalic);
    EXPECT_EQ(400, weight(SelectedFont(L"DejaVu Sans", -20)));
    EXPECT_EQ(700, weight(SelectedFont(L"DejaVu Sans", -20, DEFAULT_CHARSET, FW_BOLD)));
    EXPECT_EQ(700, weight(SelectedFont(L"DejaVu Sans Bold", -20))) << "its full name";
    EXPECT_EQ(L"DejaVu Sans", SelectedFont(L"None Such", -20).Face());
    EXPECT_EQ(L"Droid Sans Fallback", SelectedFont(L"None Such", -20, SHIFTJIS_CHARSET).Face());
}

TEST(Gdi, AFontThatWentAwayIsReplaced) {
    ASSERT_EQ(L"Member One", SelectedFont(L"Member One").Face()); // by now fonts have been looked for
    std::filesystem::remove(*fonts / "gone.ttf");
    EXPECT_EQ(L"DejaVu Sans", SelectedFont(L"Gone").Face());
}

TEST(Gdi, NamesAreCutToTheBuffer) {
    const SelectedFont font(L"Two Names");
    std::array<wchar_t, 12> name;
    for (const auto& [capacity, copied, expected] : Rows<int, int, const wchar_t*>{
             {12, 10, L"Two Names"}, {10, 10, L"Two Names"}, {4, 4, L"Two"}, {1, 1, L""}}) {
        name.fill(L'#');
        EXPECT_EQ(copied, GetTextFaceW(font.context, capacity, name.data()));
        EXPECT_STREQ(expected, name.data());
        EXPECT_EQ(L'#', name[copied]);
    }
    EXPECT_EQ(0, GetTextFaceW(font.context, 0, name.data()));
}

TEST(Gdi, GlyphsAreThoseOfSingleUnits) {
    const SelectedFont font(L"Two Names");
    EXPECT_EQ(1, font.Glyph(L'A'));
    EXPECT_EQ(2, font.Glyph(L'\u540D'));
    EXPECT_EQ(0xFFFF, font.Glyph(L'B'));
    EXPECT_EQ(0, font.Glyph(L'B', 0));
    // The font has this character, but a unit is half of it.
    EXPECT_EQ(0xFFFF, font.Glyph(0xD840));
    EXPECT_EQ(0xFFFF, font.Glyph(0xDC21));
    WORD glyph = 0;
    EXPECT_EQ(0U, GetGlyphIndicesW(font.context, L"A", 0, &glyph, 0));
    EXPECT_EQ(GDI_ERROR, GetGlyphIndicesW(font.context, L"A", -1, &glyph, 0));
    EXPECT_EQ(GDI_ERROR, GetGlyphIndicesW(font.context, nullptr, 1, &glyph, 0));
}

TEST(Gdi, TextIsMeasuredInTheFontsOwnLines) {
    TEXTMETRICW metrics = {};
    const SelectedFont font(L"Two Names", -1000);
    ASSERT_TRUE(GetTextMetricsW(font.context, &metrics));
    EXPECT_EQ(900, metrics.tmAscent);
    EXPECT_EQ(300, metrics.tmDescent);
    EXPECT_EQ(1200, metrics.tmHeight);
    EXPECT_EQ(200, metrics.tmInternalLeading);
    EXPECT_EQ(500, metrics.tmAveCharWidth);
    EXPECT_EQ(ANSI_CHARSET, metrics.tmCharSet);
    SIZE size = {};
    // The characters, a pair among them, and one that the font lacks: each has an advance of half an em.
    ASSERT_TRUE(GetTextExtentPoint32W(font.context, L"A\u540D\xD840\xDC21?", 5, &size));
    EXPECT_EQ(2000, size.cx);
    EXPECT_EQ(1200, size.cy);
    ASSERT_TRUE(GetTextExtentPoint32W(font.context, L"", 0, &size));
    EXPECT_EQ(0, size.cx);
    EXPECT_EQ(1200, size.cy);
    EXPECT_FALSE(GetTextExtentPoint32W(font.context, L"A", -1, &size));
    // A positive height is that of a line; widths are rounded once, not for each glyph.
    EXPECT_EQ(1000, SelectedFont(L"Two Names", 1200).Width(L"AA"));
    EXPECT_EQ(35, SelectedFont(L"Two Names", -7).Width(L"AAAAAAAAAA"));
    // The largest size there is, and a text of many units.
    EXPECT_EQ(0x3FFFFFFF, SelectedFont(L"Two Names", -0x7FFFFFFF).Width(std::wstring(100'000, L'A')));
}

TEST(Gdi, TextIsShaped) {
    const SelectedFont font(L"DejaVu Sans", -2048); // a pixel is a unit of the font
    // The two letters join to one glyph, and so do they behind Latin letters, whose script is another.
    const LONG apart = font.Width(L"\u0644") + font.Width(L"\u0627");
    EXPECT_LT(font.Width(L"\u0644\u0627"), apart);
    EXPECT_EQ(font.Width(L"abc") + font.Width(L"\u0644\u0627"), font.Width(L"abc\u0644\u0627"));
    EXPECT_EQ(font.Width(L"e\u0301"), font.Width(L"e")) << "a mark has no width of its own";
    EXPECT_GT(font.Width(L"a\xD800z"), font.Width(L"az")) << "a lone surrogate is drawn as something";
}

TEST(Gdi, ShapingSaysWhenThereIsNoRoomForTheGlyphs) {
    const SelectedFont font(L"Test");
    SCRIPT_CACHE cache = nullptr;
    SCRIPT_ANALYSIS analysis = {};
    std::array<WORD, 2> glyphs, clusters;
    std::array<SCRIPT_VISATTR, 2> attributes;
    for (const auto& [room, result] : Rows<int, HRESULT>{{1, E_OUTOFMEMORY}, {2, S_OK}}) {
        int count = 0;
        EXPECT_EQ(result, ScriptShape(font.context, &cache, L"AB", 2, room, &analysis, glyphs.data(),
                                      clusters.data(), attributes.data(), &count));
        EXPECT_EQ(result == S_OK ? 2 : 0, count);
    }
    ScriptFreeCache(&cache);
}

TEST(Gdi, FontDataComesFromTheFile) {
    const std::string collection = SystemFontFiles().at("members.ttc");
    const SelectedFont member(L"Member Two");
    EXPECT_EQ(collection, member.Data(collectionTag));
    TestFont alone;
    alone.families = {{0x409, u"Member Two"}};
    alone.characters = {u'X'};
    EXPECT_EQ(alone.Bytes(), member.Data(0).replace(6, 6, 6, '\0')) << "but for what a search needs";
    EXPECT_EQ(alone.GetTables().at("name"), member.Data(nameTag));
    EXPECT_EQ(GDI_ERROR, GetFontData(member.context, 0x20534C41, 0, nullptr, 0));

    const SelectedFont single(L"Two Names");
    const std::string whole = SystemFontFiles().at("two-names.ttf");
    EXPECT_EQ("", single.Data(collectionTag));
    EXPECT_EQ(whole, single.Data(0));
    std::array<char, 8> piece = {};
    EXPECT_EQ(4U, GetFontData(single.context, 0, 4, piece.data(), 4));
    EXPECT_EQ(whole.substr(4, 4), std::string(piece.data(), 4));
    const auto size = static_cast<DWORD>(whole.size());
    EXPECT_EQ(2U, GetFontData(single.context, 0, size - 2, piece.data(), 8));
    EXPECT_EQ(0U, GetFontData(single.context, 0, size, piece.data(), 8));
    EXPECT_EQ(GDI_ERROR, GetFontData(single.context, 0, size + 1, piece.data(), 8));
}

TEST(Gdi, ContextsOfThreadsShareFonts) {
    std::vector<std::jthread> threads;
    threads.reserve(4);
    for (int thread = 0; thread < 4; ++thread)
        threads.emplace_back([thread] {
            for (int round = 0; round < 50; ++round) {
                const SelectedFont font(round % 2 == 0 ? L"DejaVu Sans" : L"Member One", -20, DEFAULT_CHARSET,
                                        100 * thread + round);
                EXPECT_NE(0, font.Width(L"AB"));
            }
        });
}

} // namespace
