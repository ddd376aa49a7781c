#include "Support/Rows.h"

#include <LowLevelFacilities/Strings/CPStringUtils.h>

#include <windows.h>
#include <gtest/gtest.h>
#include <utf8coder.h>

#include <string>

namespace {

namespace Utf8 = OvPlatform::Utf8;

// Empty where the flags let it be refused.
std::wstring WidenedByThePlatform(const std::string& bytes, DWORD flags) {
    wchar_t text[100];
    const int count =
        MultiByteToWideChar(CP_UTF8, flags, bytes.data(), static_cast<int>(bytes.size()), text, 100);
    return {text, static_cast<std::size_t>(count)};
}

std::string NarrowedByThePlatform(const std::wstring& text, DWORD flags) {
    char bytes[100];
    const int count = WideCharToMultiByte(CP_UTF8, flags, text.data(), static_cast<int>(text.size()), bytes,
                                          100, nullptr, nullptr);
    return {bytes, static_cast<std::size_t>(count)};
}

/// One unit each, as text is held in memory.
std::wstring Units(std::initializer_list<unsigned> units) { return std::wstring(units.begin(), units.end()); }

// The platform's functions and the library's strings read the same bytes alike, also where they are no UTF-8.
TEST(Utf8Coder, ReplacesEachMaximalSubpartOfIllFormedBytes) {
    const Rows<const char*, std::string, std::wstring> cases{
        {"longer forms than needed", "\xC0\xAF\xE0\x80\xBF\xF0\x81\x82\x41",
         L"\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFDA"},
        {"surrogates", "\xED\xA0\x80\xED\xBF\xBF\xED\xAF\x41",
         L"\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFDA"},
        {"beyond the last character, and trails alone", "\xF4\x91\x92\x93\xFF\x41\x80\xBF\x42",
         L"\uFFFD\uFFFD\uFFFD\uFFFD\uFFFDA\uFFFD\uFFFDB"},
        {"cut short", "\xE1\x80\xE2\xF0\x91\x92\xF1\xBF\x41", L"\uFFFD\uFFFD\uFFFD\uFFFDA"},
        {"cut short by the end", "a\xF0\x9F\x98", L"a\uFFFD"},
        {"the least of a lead", "\xC2\xE0\xA0\xF0\x90\x80", L"\uFFFD\uFFFD\uFFFD"},
        {"the most of a lead", "\xDF\xED\x9F\xF4\x8F\xBF", L"\uFFFD\uFFFD\uFFFD"},
        {"no lead", "\xC1\xF5\xF8\xFE", L"\uFFFD\uFFFD\uFFFD\uFFFD"},
    };
    for (const auto& [what, bytes, text] : cases) {
        EXPECT_EQ(WidenedByThePlatform(bytes, 0), text) << what;
        EXPECT_EQ(WidenedByThePlatform(bytes, MB_ERR_INVALID_CHARS), L"") << what;
        EXPECT_EQ(CPStringUtils::widenTo_wstring(bytes.data(), bytes.size()), text) << what;
    }
}

TEST(Utf8Coder, ReplacesEachLoneSurrogate) {
    const Rows<const char*, std::wstring, std::string> cases{
        {"a first half", Units({'a', 0xD800, '.'}), "a\xEF\xBF\xBD."},
        {"a second half", Units({'a', 0xDFFF, '.'}), "a\xEF\xBF\xBD."},
        {"the wrong way round", Units({0xDC00, 0xDBFF}), "\xEF\xBF\xBD\xEF\xBF\xBD"},
        {"before a pair", Units({0xD83D, 0xD83D, 0xDE00}), "\xEF\xBF\xBD\xF0\x9F\x98\x80"},
        {"more than 16 bits", Units({'a', 0x1F600}), "a\xEF\xBF\xBD"},
    };
    for (const auto& [what, text, bytes] : cases) {
        EXPECT_EQ(NarrowedByThePlatform(text, 0), bytes) << what;
        EXPECT_EQ(NarrowedByThePlatform(text, WC_ERR_INVALID_CHARS), "") << what;
        EXPECT_EQ(CPStringUtils::narrowToStdString(text.data(), text.size()), bytes) << what;
    }
}

TEST(Utf8Coder, KeepsEveryCharacterBothWays) {
    for (char32_t character = 0; character <= 0x10FFFF; character += character == 0xD7FF ? 0x801 : 1) {
        char bytes[Utf8::MostBytes];
        char16_t units[Utf8::MostUnits];
        const std::size_t size = Utf8::Encode(character, bytes);
        const std::size_t count = Utf8::Encode(character, units);
        const char* byte = bytes;
        const char16_t* unit = units;
        bool bytesAreWellFormed = false;
        bool unitsAreWellFormed = false;
        ASSERT_EQ(Utf8::Decode(byte, bytes + size, bytesAreWellFormed), character);
        ASSERT_EQ(Utf8::Decode(unit, units + count, unitsAreWellFormed), character);
        ASSERT_TRUE(byte == bytes + size && unit == units + count && bytesAreWellFormed && unitsAreWellFormed)
            << static_cast<unsigned>(character);
    }
}

} // namespace
