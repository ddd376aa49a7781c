// The bytes of fonts that are cut, on the platform's own fonts: where it is Wine, there is no call that cuts.
#include "FilterUtilities/FontsAndImages/OpenedDeviceContext.h"
#include "Support/FailureSweep.h"
#include "Support/Growth.h"
#include "Support/TestFonts.h"

#include <Fonts/FontFace.h>

#include <gtest/gtest.h>

#include <memory>

namespace {

auto* const fonts = testing::AddGlobalTestEnvironment(new TestFonts(DeviceContextFonts()));

std::shared_ptr<const OvPlatform::FontFace> Opened(const ByteBuffer& font) {
    return OvPlatform::FontFace::Open(std::as_bytes(std::span(font)), 0);
}

ByteBuffer Subset(const wchar_t* face, CXString text) {
    GdiDeviceContext gdi;
    return gdi.GetFontSubset(face, DEFAULT_CHARSET, 12, text);
}

TEST(FontSubset, IsAFontWithTheCharactersOfTheText) {
    GdiDeviceContext gdi;
    bool isCollection = false;
    unsigned short index = 0;
    const ByteBuffer whole = gdi.GetTheFontData(L"DejaVu Sans", 1, 12, isCollection, index);
    for (const CXString& text : {CXString(L"Te xt\u0644\u0627\xD835\xDD38\xD800"),
                                 // Beyond what the system takes in one call.
                                 CXString(std::wstring(100'000, L'e').c_str()) + L"Tx\xD835\xDD38"}) {
        const ByteBuffer subset = Subset(L"DejaVu Sans", text);
        const auto font = Opened(subset);
        ASSERT_TRUE(font);
        EXPECT_LT(subset.size(), whole.size() / 10);
        for (const std::uint32_t character : {0x54U, 0x65U, 0x78U, 0x1D538U})
            EXPECT_EQ(Opened(whole)->Glyph(character), font->Glyph(character)) << character;
        EXPECT_EQ(0U, font->Glyph(L'y'));
    }
}

TEST(FontSubset, IsTheWholeFontOrNoneWhereTheFontWantsItSo) {
    const std::string whole = DeviceContextFonts().at("whole.ttf");
    EXPECT_EQ(ByteBuffer(reinterpret_cast<const unsigned char*>(whole.data()), whole.size()),
              Subset(L"Whole Only", L"A"));
    EXPECT_TRUE(Subset(L"Forbidden", L"A").empty());
    EXPECT_TRUE(Subset(L"Made Up", L"").empty());
    // More different characters than the system takes.
    std::wstring all;
    for (wchar_t unit = 1; unit < 0xD800; ++unit)
        all += unit;
    for (wchar_t unit = 0; unit < 0x3000; ++unit)
        (all += static_cast<wchar_t>(0xD800 + unit / 0x400)) += static_cast<wchar_t>(0xDC00 + unit % 0x400);
    EXPECT_TRUE(Subset(L"Made Up", all.c_str()).empty());
}

struct DeviceContextWorld {
    OpenedDeviceContext gdi;
    static std::string State() { return {}; }
};

/// An empty answer is a failure.
template <typename Ask>
void Sweep(const std::string& name, Ask ask) {
    FailureSweep<DeviceContextWorld>([] { return std::make_unique<DeviceContextWorld>(); },
                                     [ask](DeviceContextWorld& world) {
                                         SweptAnswer answer(std::string(ask(world.gdi)));
                                         answer.hasFailed = answer.text.empty();
                                         return answer;
                                     })
        .Run(name);
}

std::string Text(const ByteBuffer& bytes) { return {bytes.begin(), bytes.end()}; }

TEST(FontSubset, EveryCallThatFailsLeavesNothingHalf) {
    CXString text(L"AB");
    Sweep("GetFontSubset",
          [&](GdiDeviceContext& gdi) { return Text(gdi.GetFontSubset(L"Made Up", 1, 9, text)); });
    Sweep("GetTheFontData", [](GdiDeviceContext& gdi) {
        bool isCollection = false;
        unsigned short index = 0;
        return Text(gdi.GetTheFontData(L"Made Up", 1, 9, isCollection, index));
    });
    Sweep("GetTextDimensionsInXpsUnits", [&](GdiDeviceContext& gdi) {
        const auto size = gdi.GetTextDimensionsInXpsUnits(L"Made Up", 1, 9, text);
        return size.Width > 0 ? std::to_string(size.Width) + std::to_string(size.Height) : std::string();
    });
    Sweep("CanFontDisplayString",
          [&](GdiDeviceContext& gdi) { return gdi.CanFontDisplayString(text, L"Made Up") ? "yes" : ""; });
    CXString tamil(L"\u0BB9");
    Sweep("CanFontDisplayString of what the face lacks",
          [&](GdiDeviceContext& gdi) { return gdi.CanFontDisplayString(tamil, L"Made Up") ? "yes" : "no"; });
    // This one keeps the face that was preferred.
    CXString preferred(L"Made Up");
    Sweep("FindBestFontForDisplayingString", [&](GdiDeviceContext& gdi) {
        const CXString face = gdi.FindBestFontForDisplayingString(tamil, preferred);
        return face == preferred ? std::string() : std::string(CPString(face).utf8Bytes());
    });
}

class FontsAndImagesGrowth : public testing::TestWithParam<GrowthCase> {};
TEST_P(FontsAndImagesGrowth, IsInProportion) { ExpectLinearGrowth(GetParam()); }

ByteBuffer Bytes(const std::string& text) {
    return {reinterpret_cast<const unsigned char*>(text.data()), text.size()};
}

const GrowthCase cases[] = {
    // As many members as there are, which share one long table without the name.
    {"MembersThatShareATable",
     [](std::size_t n) -> std::function<void()> {
         FontBytes file;
         file.AddText("ttcf").Add(0x00010000, 4).Add(n, 4);
         for (std::size_t member = 0; member < n; ++member)
             file.Add(12 + 4 * n, 4);
         file.Add(0x00010000, 4).Add(std::min<std::size_t>(n, 0xFFFF), 2).Add(0, 6);
         for (std::size_t table = 0; table < n; ++table)
             file.Add(table, 16);
         return [collection = Bytes(file.Text()), font = Bytes(SomeFont().Bytes())] {
             GdiDeviceContext().FindIndexOfTrueTypeFontWithinSourceCollection(font, collection);
         };
     },
     200'000},
    {"CharactersOfALongText",
     [](std::size_t n) -> std::function<void()> {
         std::wstring text;
         for (std::size_t i = 0; i < n; ++i)
             text += static_cast<wchar_t>(0x20 + i % 500);
         return [text = CXString(text.c_str())]() mutable {
             GdiDeviceContext().GetFontSubset(L"Made Up", 1, 9, text);
         };
     }},
    {"CharactersThatAreLookedFor",
     [](std::size_t n) -> std::function<void()> {
         return [text = CXString(std::wstring(n, L'A').c_str()), face = CXString(L"Made Up")]() mutable {
             GdiDeviceContext().FindBestFontForDisplayingString(text, face);
         };
     }},
};
INSTANTIATE_TEST_SUITE_P(Readers, FontsAndImagesGrowth, testing::ValuesIn(cases), GrowthName);

} // namespace
