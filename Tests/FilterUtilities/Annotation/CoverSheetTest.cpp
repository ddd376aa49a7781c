// The lines of a fax cover sheet: what they say, where they stand, and how a text is broken into them.

#include "FilterUtilities/Annotation/AnnotationSupport.h"
#include "Support/Rows.h"

namespace {

using Cover = std::initializer_list<std::pair<LONG, AttributeBytesValue>>;

AttributeBytesIndexedList Fax(Cover cover, const wchar_t* labels = L"From,To,Notes") {
    return Attributes({{274, Members(Attributes({{289, Members(Attributes(cover))}}))}, {979, Text(labels)}});
}

/// Each line behind its number.
std::string LinesOf(const AttributeBytesIndexedList& fax) {
    OpenAnnotations cover;
    cover.SetFaxAnnotationSettings(true);
    cover.Read(fax);
    std::string lines;
    for (int i = 0; cover.SelectAnnotationElement(i) && cover.IsAnAnnotationSpecified(); ++i)
        lines +=
            std::to_string(cover.GetJustificationYOffsetInXpsUnits() / 32 - 3) + Utf8(cover.GetText()) + "|";
    return lines;
}

TEST(CoverSheet, SaysWhoSendsWhatToWhom) {
    const auto recipients = Set(
        {Attributes({{304, Text(L"x")}}), Attributes({{304, Text(L"")}}), Attributes({{304, Text(L"y")}})});
    const Rows<AttributeBytesIndexedList, const char*> cases{
        {Fax({{292, Text(L"a")},
              {293, Text(L"b")},
              {294, Text(L"d")},
              {295, Text(L"e")},
              {296, Text(L"c")},
              {277, Option(8360)},
              {303, recipients},
              {297, Text(L"n\r\n\r\nm")}}),
         "0From|1a|2b|3c|4d|5e|7To|8x|10y|11Notes|12n|14m|"},
        {Fax({{292, Text(L"")}, {295, Text(L"e\r\nf")}, {290, Text(L"x")}, {297, Text(L"")}}),
         "0From|1e|2f|4Notes|"},
        {Fax({{277, Option(8361)}, {290, Text(L"x")}, {303, recipients}, {297, Text(L"n")}}), "0Notes|1n|"},
        {Fax({{277, Option(5001)}, {290, Text(L"x")}, {297, Text(L"n")}}), "0To|1x|3Notes|4n|"},
        {Fax({{292, Text(L"a")}, {277, Option(8360)}, {297, Text(L"n")}}, L"From,To,of,Notes"),
         "0From|1a|3To|4Notes|5n|"},
        {Fax({{292, Text(L"a")}, {277, Option(8360)}, {297, Text(L"n")}}, L"A label"), "0A label|1a|5n|"},
        {AttributeBytesIndexedList(), ""},
    };
    for (const auto& [fax, lines] : cases)
        EXPECT_EQ(LinesOf(fax), lines);
}

TEST(CoverSheet, HasItsLinesInFrontOfTheStoredElements) {
    AttributeBytesIndexedList fax = Fax({{297, Text(L"n")}});
    fax.AddAttributeBytes(
        *JobWith({TextElement(L"stored")}, 940).GetAttributeBytesPtr(AttributeBytesFeatureId(940)));
    OpenAnnotations cover;
    cover.SetFaxAnnotationSettings(true);
    EXPECT_EQ(cover.Read(fax), S_OK);
    EXPECT_EQ(cover.GetCountOfTextBasedElements(), 3);
    cover.InitFaxTextAnnotationElement(L"", 4);
    EXPECT_EQ(cover.AllTexts(), (Texts{"Notes", "n", "stored"}));
    EXPECT_EQ(ShowAll(cover)[0], "7203 first draw 10857 opacity 1 angle 315 at 0,0 edges 5 96,96 order 10896"
                                 " 'Notes' 'Arial' 1 20 '#000000'");
}

// ---- Lines

class Lines : public testing::Test {
protected:
    Lines() { m_annotations.Read({}); }

    bool Fits(const std::wstring& text) {
        CXString piece{std::wstring(text)};
        return m_annotations.GetGdiDeviceContextRef()
                   .GetTextDimensionsInXpsUnits(L"Arial", 1, 20, piece)
                   .Width <= m_annotations.pageWidth - 192;
    }
    std::vector<std::wstring> Wrap(const std::wstring& text) {
        std::vector<std::wstring> lines;
        for (const CXString& line :
             m_annotations.WrapLineIfNecessary(CXString(std::wstring(text))).Tokenize(L'\n'))
            lines.emplace_back(line.View());
        return lines;
    }
    static std::wstring Repeat(int times, const std::wstring& piece) {
        std::wstring text;
        while (times-- > 0)
            text += piece;
        return text;
    }

    OpenAnnotations m_annotations;
};

TEST_F(Lines, AreAsLongAsFits) {
    std::wstring text;
    for (int i = 0; i < 300; ++i)
        text += std::wstring(static_cast<std::size_t>(1 + i * 7 % 11), static_cast<wchar_t>(L'a' + i % 26)) +
                L" ";
    const std::vector<std::wstring> lines = Wrap(text);
    ASSERT_GT(lines.size(), 10U);
    std::wstring joined;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        EXPECT_TRUE(Fits(lines[i])) << i;
        joined += lines[i] + L" ";
        if (i + 1 < lines.size()) {
            EXPECT_FALSE(Fits(lines[i] + L" " + lines[i + 1].substr(0, lines[i + 1].find(L' ')))) << i;
        }
    }
    EXPECT_EQ(joined, text);

    const CXString whole{std::wstring(text)};
    CXString oneByOne;
    int start = 0;
    int length = 0;
    int wordStart = 0;
    int wordLength = 0;
    int remaining = 0;
    while (!m_annotations.FormatLine(oneByOne, whole, start, length, wordStart, wordLength, remaining)
                .IsEmpty()) {
        EXPECT_EQ(whole.Mid(wordStart + wordLength, 1), L" ");
        EXPECT_EQ(oneByOne.Right(wordLength), whole.Mid(wordStart, wordLength));
        EXPECT_EQ(start + remaining, whole.GetLength());
    }
    EXPECT_EQ(oneByOne, m_annotations.WrapLineIfNecessary(whole));
}

TEST_F(Lines, BreakAtBlanksAndNowhereElseIfTheyCan) {
    const std::wstring word(18, L'm'); // more than half a line
    const std::wstring longWord = Repeat(200, L"w");
    const Rows<std::wstring, std::vector<std::wstring>> cases{
        {L"", {}},
        {L"  two  blanks  ", {L"  two  blanks  "}}, // it fits
        {L"  " + word + L"   " + word + L" ", {word, word}},
        {word + Repeat(200, L" ") + L"x", {word, L"x"}},
        {Repeat(500, L" "), {}},
    };
    for (const auto& [text, lines] : cases)
        EXPECT_EQ(Wrap(text), lines);
    const std::vector<std::wstring> cut = Wrap(L"a " + longWord + L" b");
    EXPECT_EQ(cut.front(), L"a");
    EXPECT_TRUE(cut.back().ends_with(L"w b"));
    EXPECT_TRUE(Fits(cut[1]) && !Fits(cut[1] + L"w"));
}

TEST_F(Lines, EndWhereNotesEndThemWhateverTheEndsAre) {
    std::wstring full;
    for (const wchar_t letter : {L'w', L'.'})
        while (Fits(full + letter))
            full += letter;
    const std::wstring notes = full + L"\r\nx";
    EXPECT_EQ(LinesOf(Fax({{297, Text(notes.c_str())}})), "0Notes|1" + Utf8(CXString(full.c_str())) + "|2x|");
}

TEST_F(Lines, NeverCutACharacter) {
    const std::wstring pair = {0xD83D, 0xDE00};
    const std::wstring marked = {L'e', 0x0301, 0x0323};
    const std::wstring supplementaryMark = {L'a', 0xD834, 0xDD65};
    for (const std::wstring& character : {pair, marked, supplementaryMark}) {
        std::size_t before = 1;
        std::wstring joined;
        for (const std::wstring& line : Wrap(L"x" + Repeat(150, character))) {
            EXPECT_EQ((line.size() - before) % character.size(), 0U);
            before = 0;
            joined += line;
            EXPECT_TRUE(joined.size() > 150 * character.size() || !Fits(line + character))
                << "as many as fit";
        }
        EXPECT_EQ(joined, L"x" + Repeat(150, character));
    }
    const std::wstring mixed = Repeat(60, L"e" + std::wstring(12, 0x0301) + L"ab");
    std::size_t end = 0;
    for (const std::wstring& line : Wrap(mixed)) {
        end += line.size();
        const std::wstring next = mixed.substr(end, end < mixed.size() && mixed[end] == L'e' ? 13 : 1);
        EXPECT_TRUE(next.empty() || !Fits(line + next)) << "as many as fit, of whatever length";
    }
    EXPECT_EQ(end, mixed.size());
    const std::wstring halves = Repeat(60, {0xD83D, L'a', 0xDE00, 0xDE00, 0xD83D, 0xD83D});
    std::wstring joined;
    for (const std::wstring& line : Wrap(halves))
        joined += line;
    EXPECT_EQ(joined, halves) << "lone ones are kept";
    m_annotations.pageWidth = 100; // less than the margins
    m_annotations.Read({});
    EXPECT_EQ(Wrap(L"a" + marked + L" b"), (std::vector<std::wstring>{L"a", marked, L"b"}));
}

} // namespace
