#include <Locale/ShownText.h>

#include <gtest/gtest.h>

using namespace OvPlatform;
using namespace std::string_literals;

namespace {

TEST(ShownTextTest, WritesOutWhatActsOnATerminalAndNothingElse) {
    const std::pair<std::string, const char*> cases[] = {
        {"plain text: 100% \\ \"quoted\" <a&b>", "plain text: 100% \\ \"quoted\" <a&b>"},
        {"\u00e4\u00df \u65e5\u672c \u0645\u0631\u062d\u0628\u0627 \U0001F5A8 e\u0301 \ue000 \ufffd",
         "\u00e4\u00df \u65e5\u672c \u0645\u0631\u062d\u0628\u0627 \U0001F5A8 e\u0301 \ue000 \ufffd"},
        {"a\0b\x1b[2J\n\r\t\x07\x7f"s, "a\\x00b\\x1b[2J\\n\\r\\t\\x07\\x7f"},
        {"\u0080\u009b2J\u009f\u00a0|", "\\u0080\\u009b2J\\u009f\u00a0|"},
        {"\u200e\u202eabc\u2066\u2069\u061c", "\\u200e\\u202eabc\\u2066\\u2069\\u061c"},
        {"\u2028\u2029\u200b\u00ad\ufeff\ufff9", "\\u2028\\u2029\\u200b\\u00ad\\ufeff\\ufff9"},
        {"\ufdd0\uffff\U0001FFFE\U000E0041", "\\ufdd0\\uffff\\U0001fffe\\U000e0041"},
        // No UTF-8: bytes alone, cut short, longer than need be, halves of pairs, beyond the last.
        {"\xff\x80 \xc3", "\\xff\\x80 \\xc3"},
        {"\xe2\x82 \xf0\x9f\x96", "\\xe2\\x82 \\xf0\\x9f\\x96"},
        {"\xc0\xaf \xe0\x80\x9b", "\\xc0\\xaf \\xe0\\x80\\x9b"},
        {"\xed\xa0\x80 \xf4\x90\x80\x80", "\\xed\\xa0\\x80 \\xf4\\x90\\x80\\x80"},
    };
    for (const auto& [text, shown] : cases)
        EXPECT_EQ(shown, Shown(text));
}

TEST(ShownTextTest, LeavesOutTheMiddleOfWhatIsTooLong) {
    EXPECT_EQ("\u00e4\u00e4\u00e4\u00e4\u00e4\u00e4", Shown("\u00e4\u00e4\u00e4\u00e4\u00e4\u00e4", 6));
    EXPECT_EQ("abcd... (1 more) ...fg", Shown("abcdefg", 6));
    EXPECT_EQ("\u00e4123... (199992 more) ...8\u00e4",
              Shown("\u00e4123" + std::string(199'992, 'x') + "8\u00e4", 6));
    // What is written out counts as it is written, and is never cut.
    EXPECT_EQ("\\x1b... (3 more) ...", Shown("\x1b\x1b\x1b\x1b", 6));
    EXPECT_LT(Shown(std::string(100'000, '\x1b'), 100).size(), 130u);
}

TEST(ShownTextTest, XmlSaysTheSameWithReferences) {
    const std::pair<std::string, const char*> cases[] = {
        {"<a b=\"x > '\u009b' \u00e4\">\n\t\u202e\u00e4\r\r\n</a>",
         "<a b=\"x > '&#x9b;' \u00e4\">\n\t&#x202e;\u00e4&#xd;\r\n</a>"},
        {"<a b='\"\u009b'/>\u009b", "<a b='\"&#x9b;'/>&#x9b;"},
        {"<!-- <a b=\"\u009b\"> -->\u009b<?p \u009b?>\u009b",
         "<!-- <a b=\"\\u009b\"> -->&#x9b;<?p \\u009b?>&#x9b;"},
        {"<![CDATA[<\u009b>]]>\u009b", "<![CDATA[<]]>&#x9b;<![CDATA[>]]>&#x9b;"},
        {"<n\u200da\u200dme>\u200d</n\u200da\u200dme>", "<n\u200da\u200dme>&#x200d;</n\u200da\u200dme>"},
    };
    for (const auto& [xml, shown] : cases)
        EXPECT_EQ(shown, ShownXml(xml));
}

} // namespace
