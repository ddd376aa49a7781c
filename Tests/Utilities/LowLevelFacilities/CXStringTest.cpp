#include "Support/Rows.h"

#include <LowLevelFacilities/WideStrings/CXString.h>

#include <gtest/gtest.h>

#include <climits>
#include <sstream>

namespace {

const wchar_t smiley[] = {0xD83D, 0xDE00, 0};
const wchar_t loneHigh[] = {L'a', 0xD83D, L'b', 0};

TEST(CXString, TakesNullAsEmptyEverywhere) {
    const wchar_t* const none = nullptr;
    EXPECT_TRUE(CXString(none).IsEmpty() && CXString(static_cast<const char*>(nullptr)).IsEmpty());
    CXString text(L"abc");
    text += none;
    EXPECT_EQ(L"abc", none + text + none);
    EXPECT_EQ(0, text.Find(none));
    EXPECT_EQ(1, text.Compare(none));
    EXPECT_EQ(0, text.Replace(none, L"x"));
    EXPECT_EQ(1, text.Replace(L"b", none));
    EXPECT_EQ(L"ac", text.SpanExcluding(none));
    text = none;
    EXPECT_TRUE(text.IsEmpty() && text.IsBlank());
}

TEST(CXString, FindsFromAStartWithinTheTextOnly) {
    const CXString text(L"abcabc");
    for (const auto& [what, start, found] : Rows<const wchar_t*, int, int>{{L"abc", 0, 0},
                                                                           {L"abc", 1, 3},
                                                                           {L"c", 6, -1},
                                                                           {L"c", INT_MAX, -1},
                                                                           {L"a", -1, -1},
                                                                           {L"", 6, 6},
                                                                           {L"", 7, -1}})
        EXPECT_EQ(found, text.Find(what, start)) << start;
    EXPECT_EQ(3, text.Find(L'a', 1));
    EXPECT_EQ(-1, text.Find(L'a', INT_MIN));
    EXPECT_EQ(4, text.ReverseFind(L'b'));
    EXPECT_EQ(-1, text.ReverseFind(L'x'));
}

TEST(CXString, CutsSlicesToTheText) {
    const CXString text(L"abcdef");
    for (const auto& [slice, expected] : Rows<CXString, const wchar_t*>{{text.Left(2), L"ab"},
                                                                        {text.Left(-1), L""},
                                                                        {text.Left(100), L"abcdef"},
                                                                        {text.Right(2), L"ef"},
                                                                        {text.Right(INT_MAX), L"abcdef"},
                                                                        {text.Right(INT_MIN), L""},
                                                                        {text.Mid(2), L"cdef"},
                                                                        {text.Mid(-5, 3), L"abc"},
                                                                        {text.Mid(6), L""},
                                                                        {text.Mid(100, 100), L""},
                                                                        {text.SpanExcluding(L"xd"), L"abc"}})
        EXPECT_EQ(expected, slice);
}

TEST(CXString, ChangesInPlace) {
    CXString text(L"a--b--c");
    EXPECT_EQ(2, text.Replace(L"--", L"-->"));
    EXPECT_EQ(L"a-->b-->c", text);
    EXPECT_EQ(2, text.Remove(L'>'));
    EXPECT_EQ(5, text.Delete(1, 2));
    EXPECT_EQ(L"ab--c", text);
    EXPECT_EQ(5, text.Delete(5, 1));
    EXPECT_EQ(4, text.Delete(4, 1));
    EXPECT_EQ(3, text.Delete(-3, 1));
    EXPECT_EQ(1, text.Delete(1, INT_MAX));
    text = L"\x2003\t x y\x00A0\r\n";
    EXPECT_EQ(L"x y\x00A0\r\n", CXString(text).TrimLeft());
    EXPECT_EQ(L"\x2003\t x y", CXString(text).TrimRight());
    EXPECT_TRUE(CXString(L"\u3000\u2028 \t").IsBlank());
    EXPECT_TRUE(CXString(L"\u3000").Trim().IsEmpty());
    text = L"self";
    text = static_cast<const wchar_t*>(text) + 1; // from within itself
    text += text;
    text += static_cast<const wchar_t*>(text) + 3;
    EXPECT_EQ(L"elfelfelf", text);
}

TEST(CXString, LowersLettersOfTheBmpAndNothingElse) {
    CXString text(L"\u00C4\u0416\u03A3 Ab1\u0130");
    text += smiley;
    text.MakeLower();
    EXPECT_EQ(0, text.Find(L"\u00E4\u0436\u03C3 ab1"));
    EXPECT_EQ(smiley, text.Right(2));
    EXPECT_EQ(10, text.GetLength()); // no expansion
    EXPECT_EQ(0, CXString(L"FILE:").CompareNoCase(L"File:"));
    EXPECT_EQ(-1, CXString(L"ALPHA").CompareNoCase(L"beta"));
}

TEST(CXString, ConvertsBetweenUtf8AndSurrogatePairs) {
    EXPECT_EQ((std::vector<char>{'a', 0, 'b', 0}), CXString(L"a\0b", 3).GetAsUtf8());
    EXPECT_EQ((std::vector<char>{'\xF0', '\x9F', '\x98', '\x80', 0}), CXString(smiley).GetAsUtf8());
    // What is ill-formed becomes the replacement character, part by part.
    EXPECT_EQ((std::vector<char>{'a', '\xEF', '\xBF', '\xBD', 'b', 0}), CXString(loneHigh).GetAsUtf8());
    for (const auto& [bytes, text] : Rows<const char*, const wchar_t*>{
             {"\xF0\x9F\x98\x80", smiley}, {"\xC0\x80", L"\uFFFD\uFFFD"}, {"\xF0\x9Fx", L"\uFFFDx"}})
        EXPECT_EQ(text, CXString(bytes));
    std::ostringstream stream;
    stream << CXString(smiley);
    EXPECT_EQ("\xF0\x9F\x98\x80", stream.str());
}

TEST(CXString, EncodesItsUnitsAsLittleEndianBytes) {
    for (const auto& [text, base64] : Rows<CXString, const wchar_t*>{{L"", L""},
                                                                     {L"A", L"QQA="},
                                                                     {L"AB", L"QQBCAA=="},
                                                                     {L"ABC", L"QQBCAEMA"},
                                                                     {smiley, L"PdgA3g=="}}) {
        EXPECT_EQ(base64, text.Base64EncodeUnicodeString());
        EXPECT_EQ(text, CXString(base64).Base64DecodeAsUnicodeString());
    }
    EXPECT_EQ(L"A", CXString(L" Q Q\r\nA").Base64DecodeAsUnicodeString());
    for (const wchar_t* hostile : {L"Q", L"QQ==", L"QQA=x", L"QQ=A", L"=QQA", L"QQ A-", L"QQB\u0100"})
        EXPECT_TRUE(CXString(hostile).Base64DecodeAsUnicodeString().IsEmpty()) << CXString(hostile);
}

TEST(CXString, ReadsTheIntegerAtItsStart) {
    for (const auto& [text, value] : Rows<const wchar_t*, int>{{L"  -7x", -7},
                                                               {L"+3", 3},
                                                               {L"", 0},
                                                               {L"- 1", 0},
                                                               {L"0x10", 0},
                                                               {L"2147483647", INT_MAX},
                                                               {L"2147483648", INT_MAX},
                                                               {L"-2147483648", INT_MIN},
                                                               {L"18446744073709551616", INT_MAX}})
        EXPECT_EQ(value, CXString(text).GetAsInt()) << CXString(text);
}

TEST(CXString, TokenizesWithEmptyPieces) {
    using Pieces = std::vector<CXString>;
    EXPECT_EQ((Pieces{L"a", L"", L"b", L""}), CXString(L"a;;b;").Tokenize(L';'));
    EXPECT_EQ((Pieces{L"alone"}), CXString(L"alone").Tokenize(L';'));
    EXPECT_TRUE(CXString().Tokenize(L';').empty());
}

TEST(CXString, FormatsNarrowAndWideTextAlike) {
    CXString text(L"old");
    text.Format(L"%s-%S-%s \u20AC %05.1f %%", L"w", "n", text, 2.25);
    EXPECT_EQ(L"w-n-old \u20AC 002.2 %", text);
    text.Format(L"%s%s", CXString(std::wstring(1000, L'\u20AC')), smiley); // beyond the area
    EXPECT_EQ(1002, text.GetLength());
    EXPECT_EQ(smiley, text.Right(2));
}

} // namespace
