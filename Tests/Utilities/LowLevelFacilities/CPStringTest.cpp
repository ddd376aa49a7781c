#include "Support/Rows.h"

#include <LowLevelFacilities/Strings/CPString.h>
#include <LowLevelFacilities/Strings/CPStringUtils.h>

#include <gtest/gtest.h>

#include <cstring>
#include <type_traits>

namespace {

SizeCodePoints32 at(unsigned int position) { return SizeCodePoints32{position}; }

static_assert(!std::is_convertible_v<SizeCodePoints32, SizeRawBytes32> &&
              !std::is_constructible_v<SizeCodePoints32, SizeRawBytes32>);

TEST(CPString, CountsCodePointsAndBytesApart) {
    const CPString text("a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80z");
    EXPECT_EQ(11u, text.sizeOfUtf8Bytes().value());
    EXPECT_EQ(5u, text.sizeInCodePoints().value());
    EXPECT_EQ(at(2), text.find(CPString("\xE2\x82\xAC")));
    EXPECT_EQ("\xE2\x82\xAC\xF0\x9F\x98\x80", text.substring(at(2), at(2)));
    EXPECT_EQ("z", text.substring(at(4), at(100)));
    EXPECT_EQ("\xF0\x9F\x98\x80z", text.substring(at(3), CPString::npos));
    EXPECT_EQ("", text.substring(at(5), at(1)));
    EXPECT_EQ("", text.substring(at(6), at(1)));
}

TEST(CPString, FindsFromACodePointOn) {
    const CPString text("\xC3\xA9x\xC3\xA9x");
    for (const auto& [what, start, found] :
         Rows<const char*, unsigned int, SizeCodePoints32>{{"x", 0, at(1)},
                                                           {"x", 2, at(3)},
                                                           {"x", 4, CPString::npos},
                                                           {"", 4, at(4)},
                                                           {"", 5, CPString::npos},
                                                           {nullptr, 0, at(0)}})
        EXPECT_EQ(found, text.find(what, at(start))) << start;
}

TEST(CPString, KeepsIllFormedBytesAndCountsTheirParts) {
    const CPString text("a\xFF\xC3"
                        "b\xE2\x82");
    EXPECT_EQ(6u, text.sizeOfUtf8RawBytes().value());
    EXPECT_EQ(5u, text.sizeInCodePoints().value());
    EXPECT_EQ(at(3), text.find("b"));
    EXPECT_EQ(L"a\uFFFD\uFFFD"
              L"b\uFFFD",
              CPStringUtils::widenTo_wstring(text));
}

TEST(CPString, ChangesInPlace) {
    CPString text(SizeRawBytes32{7}, ' ');
    EXPECT_TRUE(text.isEmptyOrOnlyWhitespace());
    std::memcpy(text.utf8RawBytesPointerForOverwriting(), "\xC3\x84@AZ[\0", 7);
    text.toLowerAscii();
    EXPECT_EQ(0, std::memcmp(text.utf8Bytes(), "\xC3\x84@az[\0", 8));
    text = "%&quot;a%&quot;";
    text.replaceAll("%&quot;", "\"");
    EXPECT_EQ("\"a\"", text);
    text.replaceAll("", "x");
    text.replaceAll("\"", nullptr);
    EXPECT_EQ("a", text);
    text = text.utf8Bytes() + 1; // from within itself
    EXPECT_EQ("", text);
    EXPECT_TRUE(CPString(" \t\xE3\x80\x80").isEmptyOrOnlyWhitespace());
    EXPECT_LT(0, CPString("a").compare(static_cast<const char*>(nullptr)));
    EXPECT_EQ(0xAF63DC4C8601EC8Cu, CPString("a").hash()); // the published value of FNV-1a
}

TEST(CPStringUtils, NarrowsAndWidensWithoutLoss) {
    std::wstring all;
    for (unsigned int code = 1; code < 0x10000; ++code)
        if (code < 0xD800 || code > 0xDFFF) all += static_cast<wchar_t>(code);
    for (unsigned int code = 0x10000; code < 0x110000; code += 0x3FF) {
        all += static_cast<wchar_t>(0xD800 + ((code - 0x10000) >> 10));
        all += static_cast<wchar_t>(0xDC00 + ((code - 0x10000) & 0x3FF));
    }
    EXPECT_EQ(all, CPStringUtils::widenTo_wstring(CPStringUtils::narrow(all.c_str())));
    EXPECT_EQ("", CPStringUtils::narrowToStdString(nullptr));
    EXPECT_EQ(std::string("a\0b", 3), CPStringUtils::narrowToStdString(L"a\0bc", 3));
}

} // namespace
