// Texts as glyphs: in order, joined, and in the font's own ids.

#include "Support/Rows.h"
#include "Support/SkipOnWindows.h"

#include <FontsAndImages/TextShaper.h>
#include <LowLevelFacilities/Failures/CPComException.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>

namespace {

std::vector<WORD> Ids(const GlyphRun& run) {
    std::vector<WORD> ids;
    for (const GlyphRun::Glyph& glyph : run.glyphs)
        ids.push_back(glyph.id);
    return ids;
}

/// One run for the text, by itself.
GlyphRun Only(const TextShaper& shaper, const std::wstring& text) {
    const std::vector<GlyphRun> runs = shaper.Shape(CXString(text.c_str()));
    EXPECT_EQ(runs.size(), 1u);
    return runs.empty() ? GlyphRun() : runs.front();
}

class TextShaperTest : public testing::Test {
protected:
    TextShaper m_shaper{L"DejaVu Sans", DEFAULT_CHARSET};
};

TEST_F(TextShaperTest, RunsStandFromLeftToRightAndKeepTheOrderOfTheirText) {
    const std::wstring hebrew = L"\x05D0\x05D1";
    const Rows<std::wstring, std::vector<std::wstring>> cases{
        {L"abc", {L"abc"}},
        {L"ab " + hebrew, {L"ab ", hebrew}},
        {hebrew + L" 12", {L"12", hebrew + L" "}}, // a line from right to left
        {hebrew + L" ab", {L"ab", hebrew + L" "}},
        {L"", {}},
    };
    for (const auto& [text, wanted] : cases) {
        std::vector<std::wstring> texts;
        for (const GlyphRun& run : m_shaper.Shape(CXString(text.c_str()))) {
            texts.push_back(run.text);
            EXPECT_EQ(run.isRightToLeft, run.text.starts_with(hebrew));
            EXPECT_EQ(run.clusters.size(), run.text.size());
            EXPECT_TRUE(std::ranges::is_sorted(run.clusters));
            int width = 0;
            for (const GlyphRun::Glyph& glyph : run.glyphs)
                width += glyph.advance;
            EXPECT_EQ(run.width, width);
        }
        EXPECT_EQ(texts, wanted);
    }
    // The first letter of the text has the first glyph.
    const std::vector<WORD> both = Ids(Only(m_shaper, hebrew));
    EXPECT_EQ(both,
              (std::vector<WORD>{Ids(Only(m_shaper, L"\x05D0"))[0], Ids(Only(m_shaper, L"\x05D1"))[0]}));
}

TEST_F(TextShaperTest, LettersAreJoinedAndClustersSayHow) {
    // Beh alone, and at the beginning, in the middle and at the end of a word.
    const WORD alone = Ids(Only(m_shaper, L"\x0628")).at(0);
    const std::vector<WORD> word = Ids(Only(m_shaper, L"\x0628\x0628\x0628"));
    ASSERT_EQ(word.size(), 3u);
    EXPECT_EQ(std::ranges::count(word, alone), 0);
    EXPECT_NE(word[0], word[1]);
    EXPECT_NE(word[1], word[2]);

    const GlyphRun ligature = Only(m_shaper, L"\x0644\x0627"); // lam and alef
    EXPECT_EQ(ligature.glyphs.size(), 1u);
    EXPECT_EQ(ligature.clusters, (std::vector<WORD>{0, 0}));
    SkipUnderWine("it cuts pairs in two, and has no places for marks");
    const GlyphRun pair = Only(m_shaper, {0xD835, 0xDD38, L'x'}); // beyond the first plane
    EXPECT_EQ(pair.clusters, (std::vector<WORD>{0, 0, 1}));
    EXPECT_NE(pair.glyphs.at(0).id, 0);
    for (const wchar_t* const marked : {L"x\x0323", L"\x05D0\x05B4"}) { // marks that no letter has built in
        const GlyphRun mark = Only(m_shaper, marked);
        ASSERT_EQ(mark.glyphs.size(), 2u);
        EXPECT_EQ(mark.glyphs[1].advance, 0);
        EXPECT_LT(mark.glyphs[1].offset.du, 0) << "back over the letter, whichever way that is";
    }
}

TEST_F(TextShaperTest, LongTextsAreShapedInPieces) {
    for (const bool isRightToLeft : {false, true}) {
        std::wstring text;
        for (int word = 0; word < 20'000; ++word)
            text += isRightToLeft ? L"\x05D0\x05D1\x05D2 " : L"abc ";
        text += std::wstring(30'000, isRightToLeft ? L'\x05D0' : L'a');
        std::vector<GlyphRun> runs = m_shaper.Shape(CXString(text.c_str()));
        if (isRightToLeft) std::ranges::reverse(runs);
        std::wstring joined;
        std::size_t glyphs = 0;
        for (const GlyphRun& run : runs) {
            EXPECT_LE(run.text.size(), 1000u);
            EXPECT_TRUE(joined.empty() || joined.ends_with(L' ') || joined.size() >= 80'000)
                << "a word is cut";
            joined += run.text;
            glyphs += run.glyphs.size();
        }
        EXPECT_TRUE(joined == text);
        EXPECT_EQ(glyphs, text.size());
    }
    std::wstring pairs; // which are not cut in half
    for (int pair = 0; pair < 1200; ++pair)
        pairs += {0xD835, 0xDD38};
    for (const GlyphRun& run : m_shaper.Shape(CXString((L"x" + pairs).c_str())))
        EXPECT_EQ(std::ranges::count(run.glyphs, 0, &GlyphRun::Glyph::id), 0);
    const std::wstring marks = L"a" + std::wstring(60'000, L'\x0301');
    EXPECT_FALSE(m_shaper.Shape(CXString(marks.c_str())).empty());
}

TEST_F(TextShaperTest, MeasuresInPartsOfTheEmSquare) {
    // An em dash is as wide as it says in this font.
    EXPECT_NEAR(Only(m_shaper, L"\x2014").width, TextShaper::unitsPerEm, 2);
    EXPECT_NEAR(m_shaper.Ascent() + m_shaper.Descent(), 1.164 * TextShaper::unitsPerEm, 4);
    EXPECT_EQ(m_shaper.FaceInUse().View(), L"DejaVu Sans");
    for (const wchar_t* const missing : {L"\xE000", L"\x0378"})
        EXPECT_EQ(Ids(Only(m_shaper, missing)), std::vector<WORD>{0}) << "a character that no font has";
    const TextShaper replaced(L"No Such Face", DEFAULT_CHARSET);
    EXPECT_FALSE(replaced.FaceInUse().IsEmpty());
    EXPECT_NE(replaced.FaceInUse().View(), L"No Such Face");
}

} // namespace
