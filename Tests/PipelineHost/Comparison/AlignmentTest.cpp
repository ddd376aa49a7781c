// Which pages of two files stand for each other.
#include "Support/Rows.h"

#include <Comparison/Alignment.h>

#include <gtest/gtest.h>

using namespace OvPipeline;

namespace {

std::vector<std::string> Letters(const std::string& text) {
    std::vector<std::string> letters;
    for (const char c : text)
        letters.emplace_back(1, c);
    return letters;
}

// "aa -b c-": what stands beside what.
std::string Aligned(const std::string& a, const std::string& b) {
    std::string text;
    for (const auto& pair : Align(Letters(a), Letters(b))) {
        text += text.empty() ? "" : " ";
        text += pair.a ? a[*pair.a] : '-';
        text += pair.b ? b[*pair.b] : '-';
    }
    return text;
}

TEST(Alignment, EqualItemsStandTogether) {
    const Rows<const char*, const char*, const char*> rows{
        {"", "", ""},
        {"", "a", "-a"},
        {"abc", "abc", "aa bb cc"},
        {"abc", "axc", "aa bx cc"},
        {"abc", "xabc", "-x aa bb cc"},
        {"abcd", "acd", "aa b- cc dd"},
        {"abcde", "xbcdy", "ax bb cc dd ey"},
        {"abcd", "bcde", "a- bb cc dd -e"}, // one went and one came
        {"aab", "ab", "aa a- bb"},
        {"abc", "xy", "ax by c-"},
    };
    for (const auto& [a, b, aligned] : rows)
        EXPECT_EQ(aligned, Aligned(a, b)) << a << " " << b;
}

TEST(Alignment, PairsWhatIsTooLongToBeSearchedInOrder) {
    std::vector<std::string> a(9000, "a");
    std::vector<std::string> b(9001, "b");
    b[4000] = "a"; // which a search would find
    a.emplace_back("the same");
    b.emplace_back("the same");
    const auto pairs = Align(a, b);
    ASSERT_EQ(9002u, pairs.size());
    EXPECT_EQ((AlignedPair{9000, 9001}), pairs[9001]);
    EXPECT_EQ((AlignedPair{8999, 8999}), pairs[8999]);
    EXPECT_EQ((AlignedPair{std::nullopt, 9000}), pairs[9000]);
}

} // namespace
