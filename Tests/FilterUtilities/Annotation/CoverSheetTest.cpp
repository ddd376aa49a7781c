// The lines of a fax cover sheet: what they say, where they stand, and how a text is broken into them.

#include "FilterUtilities/Annotation/AnnotationSupport.h"
#include "Support/Rows.h"
#include "Support/SkipOnWindows.h"

#include <algorithm>

namespace {

using Members = std::initializer_list<std::pair<LONG, AttributeBytesValue>>;

/// The attributes of a fax whose cover sheet has these.
AttributeBytesIndexedList Fax(Members cover, const wchar_t* labels = L"From,To,Notes") {
    const auto fax = Attributes({{FEAT_FAX_COVER_COL, AttributeValue::FromCollection(Attributes(cover))}});
    return Attributes(
        {{FEAT_FAX_OUT_COL, AttributeValue::FromCollection(fax)}, {FEAT_FAX_COVER_LABELS, Text(labels)}});
}

AttributeBytesValue Recipients(std::initializer_list<const wchar_t*> names) {
    AttributeBytesRawList set;
    for (const wchar_t* const name : names) {
        const auto recipient = Attributes({{FEAT_FAX_COVER_RECIPIENT_COL_NAME, Text(name)}});
        set.AddAttributeBytes(
            AttributeBytes(AttributeBytesFeatureId(0), AttributeValue::FromCollection(recipient)));
    }
    return AttributeValue::FromCollectionSet(set);
}

/// Each line behind its number.
std::string LinesOf(const AttributeBytesIndexedList& fax) {
    OpenAnnotations cover;
    cover.SetFaxAnnotationSettings(true);
    cover.Read(fax);
    std::string lines;
    for (int i = 0; cover.SelectAnnotationElement(i) && cover.IsAnAnnotationSpecified(); ++i) {
        EXPECT_EQ(cover.GetJustificationYOffsetInXpsUnits() % 32, 0);
        lines +=
            std::to_string(cover.GetJustificationYOffsetInXpsUnits() / 32 - 3) + Utf8(cover.GetText()) + "|";
    }
    EXPECT_EQ(cover.GetCountOfTextBasedElements(), std::ranges::count(lines, '|'));
    return lines;
}

constexpr auto listed = VAL_FAX_COVER_RECIPIENTS_LISTED;
constexpr auto omitted = VAL_FAX_COVER_RECIPIENTS_OMITTED;

TEST(CoverSheet, SaysWhoSendsWhatToWhom) {
    const Rows<AttributeBytesIndexedList, const char*> cases{
        {Fax({{FEAT_FAX_COVER_SENDER_292, Text(L"a")},
              {FEAT_FAX_COVER_SENDER_293, Text(L"b")},
              {FEAT_FAX_COVER_SENDER_294, Text(L"d")},
              {FEAT_FAX_COVER_SENDER_295, Text(L"e")},
              {FEAT_FAX_COVER_SENDER_296, Text(L"c")},
              {FEAT_FAX_COVER_RECIPIENT_MODE, Option(listed)},
              {FEAT_FAX_COVER_RECIPIENT_COL, Recipients({L"x", L"", L"y"})},
              {FEAT_FAX_COVER_NOTES, Text(L"n\r\n\r\nm")}}),
         "0From|1a|2b|3c|4d|5e|7To|8x|9y|10Notes|11n|13m|"},
        {Fax({{FEAT_FAX_COVER_SENDER_295, Text(L"e")}, {FEAT_FAX_COVER_SENDER_292, Text(L"")}}), "0From|1e|"},
        {Fax({{FEAT_FAX_COVER_RECIPIENT_MODE, Option(omitted)},
              {FEAT_FAX_COVER_RECIPIENT_NAME, Text(L"x")},
              {FEAT_FAX_COVER_NOTES, Text(L"n")}}),
         "0Notes|1n|"},
        {Fax({{FEAT_FAX_COVER_RECIPIENT_MODE, Option(VAL_UNSPECIFIED)},
              {FEAT_FAX_COVER_RECIPIENT_NAME, Text(L"x")},
              {FEAT_FAX_COVER_NOTES, Text(L"n")}}),
         "0To|1x|3Notes|4n|"},
        {Fax({{FEAT_FAX_COVER_RECIPIENT_NAME, Text(L"x")}, {FEAT_FAX_COVER_NOTES, Text(L"")}}), ""},
        {Fax({{FEAT_FAX_COVER_RECIPIENT_MODE, Option(listed)}}, L"only"), ""},
        {Fax({{FEAT_FAX_COVER_SENDER_292, Text(L"a")},
              {FEAT_FAX_COVER_RECIPIENT_MODE, Option(listed)},
              {FEAT_FAX_COVER_NOTES, Text(L"n")}},
             L"From,To,of,Notes"),
         "0From|1a|3To|4Notes|5n|"},
        {Fax({{FEAT_FAX_COVER_SENDER_292, Text(L"a")}, {FEAT_FAX_COVER_NOTES, Text(L"n")}}, L"A label"),
         "0A label|1a|4n|"},
        {Fax({{FEAT_FAX_COVER_SENDER_292, Text(L"a\nb")}}, L",To,"), "1a|2b|"},
        {AttributeBytesIndexedList(), ""},
    };
    for (const auto& [fax, lines] : cases)
        EXPECT_EQ(LinesOf(fax), lines);
}

TEST(CoverSheet, HasItsLinesInFrontOfTheStoredElements) {
    const auto element = Attributes({{FEAT_ANNOTATION_TYPE, Option(VAL_ANNOTATION_TYPE_PAGE_NUMBERS)}});
    AttributeBytesIndexedList fax = Fax({{FEAT_FAX_COVER_NOTES, Text(L"n")}});
    const AttributeBytesIndexedList stored = JobWith({element}, {}, FEAT_FAX_COVER_ANNOTATION_COL);
    fax.AddAttributeBytes(
        *stored.GetAttributeBytesPtr(AttributeBytesFeatureId(FEAT_FAX_COVER_ANNOTATION_COL)));
    OpenAnnotations cover;
    cover.SetFaxAnnotationSettings(true);
    EXPECT_EQ(cover.Read(fax), S_OK);
    const auto all = ShowAll(cover);
    ASSERT_EQ(all.size(), 3U);
    EXPECT_EQ(all[0], "7203 first draw 10857 opacity 1 angle 315 at 0,0 edges 5 96,96 order 10896"
                      " 'Notes' 'Arial' 1 20 '#000000'");
    EXPECT_TRUE(all[2].starts_with("7207 first "));
    cover.InitFaxTextAnnotationElement(L"", 4);
    EXPECT_EQ(ShowAll(cover).size(), 3U);
}

// ---- Lines

std::vector<std::wstring> Split(const CXString& text) {
    std::vector<std::wstring> lines;
    for (const CXString& line : text.Tokenize(L'\n'))
        lines.emplace_back(line.View());
    return lines;
}

class Lines : public testing::Test {
protected:
    Lines() { m_annotations.Read({}); }

    float WidthOf(const std::wstring& text) {
        CXString piece{std::wstring(text)};
        return m_annotations.GetGdiDeviceContextRef()
            .GetTextDimensionsInXpsUnits(L"Arial", 1, 20, piece)
            .Width;
    }
    std::vector<std::wstring> Wrap(const std::wstring& text) {
        return Split(m_annotations.WrapLineIfNecessary(CXString(std::wstring(text))));
    }

    OpenAnnotations m_annotations;
    float m_room = 816 - 192;
};

std::wstring Words(int count) {
    std::wstring text;
    for (int i = 0; i < count; ++i)
        text += std::wstring(static_cast<std::size_t>(1 + i * 7 % 11), static_cast<wchar_t>(L'a' + i % 26)) +
                L" ";
    return text;
}

TEST_F(Lines, AreAsLongAsFits) {
    const std::wstring text = Words(300);
    const std::vector<std::wstring> lines = Wrap(text);
    EXPECT_GT(lines.size(), 10U);
    std::wstring joined;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        EXPECT_LE(WidthOf(lines[i]), m_room) << i;
        joined += lines[i] + L" ";
        if (i + 1 == lines.size()) continue;
        const std::wstring nextWord = lines[i + 1].substr(0, lines[i + 1].find(L' '));
        EXPECT_GT(WidthOf(lines[i] + L" " + nextWord), m_room) << i;
    }
    EXPECT_EQ(joined, text);
}

TEST_F(Lines, LeaveATextAloneThatFits) {
    for (const wchar_t* const text : {L"", L" ", L"  two  blanks  ", L"word"})
        EXPECT_EQ(m_annotations.WrapLineIfNecessary(text), text);
    // The room is what counts, to the unit.
    std::wstring text = Words(8);
    text.pop_back();
    OpenAnnotations page;
    page.pageWidth = WidthOf(text) + 192;
    page.Read({});
    EXPECT_EQ(page.WrapLineIfNecessary(CXString(std::wstring(text))).View(), text);
    page.pageWidth -= 0.5F;
    page.Read({});
    EXPECT_EQ(Split(page.WrapLineIfNecessary(CXString(std::wstring(text)))).size(), 2U);
}

TEST_F(Lines, BreakAtAllBlanksOfAPlace) {
    const std::wstring word(18, L'm'); // more than half a line
    EXPECT_EQ(Wrap(L"  " + word + L"   " + word + L" "), (std::vector<std::wstring>{word, word}));
    EXPECT_EQ(Wrap(word + std::wstring(200, L' ') + L"x"), (std::vector<std::wstring>{word, L"x"}));
    EXPECT_EQ(Wrap(word + std::wstring(200, L' ')), std::vector<std::wstring>{word});
    EXPECT_TRUE(m_annotations.WrapLineIfNecessary(CXString(std::wstring(500, L' '))).IsEmpty());
}

TEST_F(Lines, CutAWordThatIsTooLongWhereItFits) {
    const std::wstring word(200, L'w');
    const std::vector<std::wstring> lines = Wrap(L"a " + word + L" b");
    ASSERT_GT(lines.size(), 3U);
    EXPECT_EQ(lines[0], L"a");
    EXPECT_TRUE(lines.back().ends_with(L" b"));
    EXPECT_LE(WidthOf(lines[1]), m_room);
    EXPECT_GT(WidthOf(lines[1] + L"w"), m_room);
}

TEST_F(Lines, NeverCutACharacter) {
    const std::wstring pair = {0xD83D, 0xDE00};
    const std::wstring marked = {L'e', 0x0301, 0x0323};
    const std::wstring supplementaryMark = {L'a', 0xD834, 0xDD65};
    for (const std::wstring& character : {pair, marked, supplementaryMark}) {
        std::wstring text;
        for (int i = 0; i < 150; ++i)
            text += character;
        for (const wchar_t* const start : {L"", L"x"}) {
            std::wstring joined;
            const std::vector<std::wstring> lines = Wrap(start + text);
            EXPECT_GT(lines.size(), 1U);
            for (const std::wstring& line : lines) {
                EXPECT_EQ((line.size() - (line.starts_with(L'x') ? 1U : 0U)) % character.size(), 0U);
                joined += line;
            }
            EXPECT_EQ(joined, start + text);
        }
    }
    const std::wstring halves = {0xD83D, L'a', 0xDE00, 0xDE00, 0xD83D, 0xD83D};
    std::wstring text;
    for (int i = 0; i < 60; ++i)
        text += halves;
    std::wstring joined;
    for (const std::wstring& line : Wrap(text))
        joined += line;
    EXPECT_EQ(joined, text) << "lone halves are kept";
}

TEST_F(Lines, HoldOneCharacterAtLeast) {
    m_annotations.pageWidth = 100; // less than the margins
    m_annotations.Read({});
    const std::wstring marked = {L'e', 0x0301};
    EXPECT_EQ(Wrap(L"a" + marked + L" b"), (std::vector<std::wstring>{L"a", marked, L"b"}));
}

TEST_F(Lines, ComeOneByOne) {
    const CXString text(Words(60));
    CXString lines;
    int start = 0;
    int length = 0;
    int wordStart = 0;
    int wordLength = 0;
    int remaining = 0;
    for (CXString line;
         line = m_annotations.FormatLine(lines, text, start, length, wordStart, wordLength, remaining),
         !line.IsEmpty();) {
        EXPECT_EQ(line.GetLength(), length);
        EXPECT_EQ(line.Right(wordLength), text.Mid(wordStart, wordLength));
        EXPECT_EQ(text.Mid(wordStart + wordLength, 1), L" ");
        EXPECT_EQ(start + remaining, text.GetLength());
    }
    EXPECT_EQ(lines, m_annotations.WrapLineIfNecessary(text));
    EXPECT_EQ(remaining, 0);
    for (int outside : {-5, 100'000}) {
        CXString other;
        m_annotations.FormatLine(other, L"ab", outside, length, wordStart, wordLength, remaining);
        EXPECT_EQ(outside, 2);
    }
}

} // namespace
