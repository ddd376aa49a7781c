#include "FilterUtilities/FontsAndImages/OpenedDeviceContext.h"
#include "Support/Rows.h"
#include "Support/SkipOnWindows.h"
#include "Support/TestFont.h"

#include <FontsAndImages/GdiDeviceContext.h>

#include <gtest/gtest.h>

#include <string>
#include <type_traits>
#include <vector>

namespace {

ByteBuffer Buffer(const std::string& bytes) {
    return {reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size()};
}

/// Embedded OpenType data as far as it is looked at: the font's sizes and the flags, the lowest byte first.
std::string Container(const std::string& font, std::uint32_t flags, int more = 0) {
    const std::size_t header = 91;
    std::string bytes;
    for (const std::uint64_t number :
         {header + font.size() + more, font.size(), std::uint64_t{0x00020001}, std::uint64_t{flags}})
        for (int byte = 0; byte < 4; ++byte)
            bytes += static_cast<char>(number >> 8 * byte);
    return bytes + std::string(header - 16, '\0') + font;
}

TEST(GdiDeviceContext, HasThreeFieldsAndNoVirtualOperations) {
    EXPECT_EQ(3 * sizeof(void*), sizeof(GdiDeviceContext));
    EXPECT_FALSE(std::is_polymorphic_v<GdiDeviceContext>);
    EXPECT_FALSE(std::is_copy_constructible_v<GdiDeviceContext>);
    OpenedDeviceContext gdi;
    EXPECT_EQ(std::vector<void*>(3, nullptr), gdi.Fields());
    const HDC context = gdi.GetDeviceContext();
    EXPECT_NE(nullptr, context);
    EXPECT_EQ(context, gdi.GetDeviceContext()) << "one for the object's life";
    EXPECT_EQ((std::vector<void*>{context, nullptr, nullptr}), gdi.Fields());
}

TEST(GdiDeviceContext, TheWrapperIsTakenOffPlainData) {
    const std::string font = SomeFont().Bytes();
    const std::string scrambledFont = [&] {
        std::string bytes = font;
        for (char& byte : bytes)
            byte ^= 0x50;
        return bytes;
    }();
    const std::string whole = Container(font, 1);
    for (const auto& [data, taken] : Rows<std::string, std::string>{
             {whole, font},
             {Container(scrambledFont, 0x10000001), font},
             {Container(font, 5), ""},                  // compressed
             {Container(font, 1, 1), ""},               // longer than it is
             {whole + '\0', ""},                        // shorter than it is
             {whole.substr(0, 90), ""},                 // cut off
             {Container("", 1), ""},                    // no font
             {Container("x", 1, -1).erase(20, 1), "x"}, // the shortest
             {Container("x", 1, -2).erase(20, 2), ""},
             {std::string(90, '\0'), ""},
             {"", ""},
         }) {
        ByteBuffer buffer = Buffer(data);
        EXPECT_EQ(taken.empty() ? E_FAIL : S_OK,
                  OpenedDeviceContext().ConvertEmbeddedOpenTypeDataToTtf(buffer));
        EXPECT_EQ(Buffer(taken), buffer);
    }
    // A font that is said to be longer than the whole.
    ByteBuffer buffer = Buffer(whole);
    buffer[6] = 0xFF;
    EXPECT_EQ(E_FAIL, OpenedDeviceContext().ConvertEmbeddedOpenTypeDataToTtf(buffer));
    EXPECT_TRUE(buffer.empty());
}

TestFont Named(const char16_t* family) {
    TestFont font = SomeFont();
    font.families = {{0x409, family}};
    return font;
}

TEST(GdiDeviceContext, AFontIsFoundInACollectionByItsNames) {
    const std::vector<TestFont> members = {Named(u"One"), Named(u"Two"), Named(u"Three")};
    const std::string collection = TestCollection(members);
    TestFont nameless = Named(u"None");
    nameless.leftOut = {"name"};
    const std::string two = members[1].Bytes();
    std::string outlinesOfAnotherKind = two;
    outlinesOfAnotherKind.replace(0, 4, "OTTO");
    std::string tooMany = collection;
    tooMany.replace(8, 4, "\xFF\xFF\xFF\xFF");
    std::string astray = collection;
    astray.replace(12, 4, "\xFF\xFF\xFF\xF8"); // the first member
    std::string astrayTwo = collection;
    astrayTwo.replace(16, 4, std::string(4, '\0')); // at the collection's own start
    for (const auto& [font, source, index] : Rows<std::string, std::string, unsigned short>{
             {members[0].Bytes(), collection, 0},
             {two, collection, 1},
             {members[2].Bytes(), collection, 2},
             {Named(u"Four").Bytes(), collection, 0xFFFF},
             {two, two, 0xFFFF}, // no collection
             {two, "", 0xFFFF},
             {two, "ttcf", 0xFFFF},
             {"", collection, 0xFFFF},
             {two.substr(0, 11), collection, 0xFFFF},
             {two.substr(0, 12), collection, 0xFFFF},
             {outlinesOfAnotherKind, collection, 0xFFFF},
             {nameless.Bytes(), TestCollection({nameless}), 0xFFFF}, // nothing is equal to nothing
             {two, tooMany, 1},
             {two, astray, 1},
             {two, astrayTwo, 0xFFFF},
             {two, collection.substr(0, 20), 0xFFFF},
         })
        EXPECT_EQ(index, GdiDeviceContext().FindIndexOfTrueTypeFontWithinSourceCollection(Buffer(font),
                                                                                          Buffer(source)));
}

TEST(GdiDeviceContext, TheNumberOfAFontIsTheCheckSumOfItsNames) {
    FontBytes file;
    file.Add(0xAB, 1)
        .Add(0x00010000, 4)
        .Add16({2, 0, 0, 0})
        .AddText("glyf")
        .Add(7, 12)
        .AddText("name")
        .Add(0x12345678, 4)
        .Add(0, 8);
    std::string bytes = file.Text();
    auto* const data = reinterpret_cast<unsigned char*>(bytes.data());
    const auto size = static_cast<ULONG>(bytes.size());
    OpenedDeviceContext gdi;
    EXPECT_EQ(0x12345678U, gdi.GetUniqueNumberRepresentingATrueTypeFont(data, 1, size));
    for (const auto& [offset, end] : Rows<ULONG, ULONG>{
             {0, size}, {1, size - 1}, {size, size}, {size + 1, size}, {0xFFFFFFFF, size}, {1, 12}})
        EXPECT_EQ(0U, gdi.GetUniqueNumberRepresentingATrueTypeFont(data, offset, end))
            << offset << ' ' << end;
    EXPECT_EQ(0U, gdi.GetUniqueNumberRepresentingATrueTypeFont(nullptr, 0, 0));
}

TEST(GdiDeviceContext, AFontIsAskedForInItsSizeAndCharset) {
    OpenedDeviceContext gdi;
    ASSERT_EQ(S_OK, gdi.CreateAndSetFont(CXString(std::wstring(40, L'x')), 128, 10));
    const auto fields = gdi.Fields();
    EXPECT_NE(nullptr, fields[1]);
    EXPECT_NE(nullptr, fields[2]);
    gdi.UnSetAndDeleteFont();
    EXPECT_EQ((std::vector<void*>{fields[0], nullptr, nullptr}), gdi.Fields());
    EXPECT_FALSE(DeleteObject(fields[1])) << "it is deleted";
    // Another font in its place: the one before stays the display's own.
    ASSERT_EQ(S_OK, gdi.CreateAndSetFont(L"DejaVu Sans", 1, 10));
    ASSERT_EQ(S_OK, gdi.CreateAndSetFont(L"DejaVu Sans", 1, 20));
    EXPECT_EQ(fields[2], gdi.Fields()[2]);
    SkipOnWindows("which faces there are is up to the machine");
    ASSERT_EQ(S_OK, gdi.CreateAndSetFont(L"No such face", SHIFTJIS_CHARSET, 10));
    wchar_t japanese[LF_FACESIZE] = {};
    GetTextFaceW(gdi.GetDeviceContext(), LF_FACESIZE, japanese);
    EXPECT_STREQ(L"Droid Sans Fallback", japanese);
}

TEST(GdiDeviceContext, SizesOfTextAreInXpsUnits) {
    GdiDeviceContext gdi;
    CXString text(L"Some text");
    // Of 72 points, an em is 96 units.
    const Gdiplus::RectF small = gdi.GetTextDimensionsInXpsUnits(L"DejaVu Sans", 1, 72, text);
    const Gdiplus::RectF large = gdi.GetTextDimensionsInXpsUnits(L"DejaVu Sans", 1, 720, text);
    EXPECT_EQ(0, small.X);
    EXPECT_EQ(0, small.Y);
    EXPECT_NEAR(large.Width, 10 * small.Width, 60); // Windows rounds each glyph's width
    EXPECT_NEAR(large.Height, 10 * small.Height, 20);
    SkipOnWindows("which faces there are is up to the machine");
    // Two advances of half an em, and lines of 1.2 em.
    CXString two(L"AB");
    const Gdiplus::RectF size = gdi.GetTextDimensionsInXpsUnits(L"Made Up", 1, 720, two);
    EXPECT_EQ(960, size.Width);
    EXPECT_EQ(1152, size.Height);
    // 10 points are an em of 13 pixels, not of 13.3.
    EXPECT_EQ(13, gdi.GetTextDimensionsInXpsUnits(L"Made Up", 1, 10, two).Width);
}

TEST(GdiDeviceContext, AFontThatHasTheCharactersIsChosen) {
    GdiDeviceContext gdi;
    EXPECT_TRUE(gdi.CanFontDisplayString(L"", L"No such face"));
    CXString japanese(L"\u65E5\u672C");
    CXString sans(L"DejaVu Sans");
    const CXString best = gdi.FindBestFontForDisplayingString(japanese, sans);
    EXPECT_EQ(!(best == sans), gdi.CanFontDisplayString(japanese, best));
    SkipOnWindows("which faces there are is up to the machine");
    for (const auto& [face, text, can] : Rows<const wchar_t*, const wchar_t*, bool>{
             {L"DejaVu Sans", L"Text", true},
             {L"DejaVu Sans", L"\u65E5\u672C", false},
             {L"Droid Sans Fallback", L"\u65E5\u672C", true},
             {L"DejaVu Sans", L"\xD835\xDD38", false}, // units by themselves
             {L"Made Up", L"ABC", true},
             {L"Made Up", L"ABCD", false},
         }) {
        EXPECT_EQ(can, gdi.CanFontDisplayString(text, face)) << CXString(face) << ' ' << CXString(text);
        // Wherever in a long text it stands.
        const CXString longText = CXString(std::wstring(600, text[0]).c_str()) + text;
        EXPECT_EQ(can, gdi.CanFontDisplayString(longText, face)) << CXString(face);
    }
    for (const auto& [preferred, text, best] : Rows<const wchar_t*, const wchar_t*, const wchar_t*>{
             {L"Made Up", L"ABC", L"Made Up"},
             {L"DejaVu Serif", L"text", L"DejaVu Serif"},
             {L"Made Up", L"\u65E5\u672C", L"Droid Sans Fallback"},
             {L"DejaVu Sans", L"\u0BB9", L"A Tamil Face"},
             {L"A Tamil Face", L"\uE0FF", L"A Tamil Face"}, // nobody has it
             {L"No such face", L"\uE0FF", L"No such face"},
         }) {
        CXString wanted(text);
        CXString face(preferred);
        EXPECT_EQ(CXString(best), gdi.FindBestFontForDisplayingString(wanted, face));
    }
}

TEST(GdiDeviceContext, TheFontsFileIsGivenWithItsPlaceInACollection) {
    GdiDeviceContext gdi;
    bool isCollection = false;
    unsigned short index = 7;
    EXPECT_FALSE(gdi.GetTheFontData(L"DejaVu Sans", 1, 12, isCollection, index).empty());
    SkipOnWindows("which faces there are is up to the machine");
    EXPECT_EQ(Buffer(DeviceContextFonts().at("members.ttc")),
              gdi.GetTheFontData(L"Member Two", 1, 12, isCollection, index));
    EXPECT_TRUE(isCollection);
    EXPECT_EQ(1, index);
    EXPECT_EQ(Buffer(DeviceContextFonts().at("made-up.ttf")),
              gdi.GetTheFontData(L"Made Up", 1, 12, isCollection, index));
    EXPECT_FALSE(isCollection);
    EXPECT_EQ(0, index);
}

} // namespace
