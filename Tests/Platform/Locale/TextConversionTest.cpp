#include "Support/Rows.h"

#include <windows.h>
#include <gtest/gtest.h>
#include <wchar.h>

#include <climits>
#include <cstring>
#include <string>

namespace {

std::string Narrow(const std::wstring& text, DWORD flags = 0, UINT codePage = CP_UTF8) {
    const int length = static_cast<int>(text.size());
    const int needed =
        WideCharToMultiByte(codePage, flags, text.data(), length, nullptr, 0, nullptr, nullptr);
    std::string bytes(static_cast<std::size_t>(needed), '?');
    EXPECT_EQ(needed, WideCharToMultiByte(codePage, flags, text.data(), length, bytes.data(), needed, nullptr,
                                          nullptr));
    return bytes;
}

std::wstring Widen(const std::string& bytes, DWORD flags = 0) {
    const int length = static_cast<int>(bytes.size());
    const int needed = MultiByteToWideChar(CP_UTF8, flags, bytes.data(), length, nullptr, 0);
    std::wstring text(static_cast<std::size_t>(needed), L'?');
    EXPECT_EQ(needed, MultiByteToWideChar(CP_UTF8, flags, bytes.data(), length, text.data(), needed));
    return text;
}

/// One unit each, as text is held in memory.
std::wstring Units(std::initializer_list<unsigned> units) { return std::wstring(units.begin(), units.end()); }

TEST(TextConversion, KeepsWellFormedTextBothWays) {
    const Rows<std::wstring, std::string> cases{
        {L"plain ASCII", "plain ASCII"},
        {std::wstring(L"a\0b", 3), std::string("a\0b", 3)},
        {Units({0x7F, 0x80, 0x7FF, 0x800, 0xFFFF}), "\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF"},
        {Units({0xD83D, 0xDE00}), "\xF0\x9F\x98\x80"},
        {Units({0xD800, 0xDC00, 0xDBFF, 0xDFFF}), "\xF0\x90\x80\x80\xF4\x8F\xBF\xBF"},
        {Units({0xFEFF, 'x'}), "\xEF\xBB\xBFx"},
    };
    for (const auto& [text, bytes] : cases) {
        EXPECT_EQ(bytes, Narrow(text, WC_ERR_INVALID_CHARS));
        EXPECT_EQ(bytes, Narrow(text, 0, CP_ACP));
        EXPECT_EQ(text, Widen(bytes, MB_ERR_INVALID_CHARS));
    }
}

TEST(TextConversion, RefusesWhatIsIllFormedWhereAskedTo) {
    EXPECT_EQ(0, WideCharToMultiByte(CP_UTF8, WC_ERR_INVALID_CHARS, Units({'a', 0xD800, 'b'}).data(), 3,
                                     nullptr, 0, nullptr, nullptr));
    EXPECT_EQ(static_cast<DWORD>(ERROR_NO_UNICODE_TRANSLATION), GetLastError());
    SetLastError(0);
    EXPECT_EQ(0, MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, "a\xE2\x82", 3, nullptr, 0));
    EXPECT_EQ(static_cast<DWORD>(ERROR_NO_UNICODE_TRANSLATION), GetLastError());
}

TEST(TextConversion, CountsTheTerminatorOnlyIfItIsPartOfTheText) {
    EXPECT_EQ(4, WideCharToMultiByte(CP_UTF8, 0, L"abc", -1, nullptr, 0, nullptr, nullptr));
    EXPECT_EQ(3, WideCharToMultiByte(CP_UTF8, 0, L"abc", 3, nullptr, 0, nullptr, nullptr));
    EXPECT_EQ(4, MultiByteToWideChar(CP_UTF8, 0, "abc", -1, nullptr, 0));
    char exact[3];
    EXPECT_EQ(3, WideCharToMultiByte(CP_UTF8, 0, L"abc", 3, exact, 3, nullptr, nullptr));
    EXPECT_EQ(0, std::memcmp("abc", exact, 3));
}

TEST(TextConversion, ReportsWhatIsWrongWithACall) {
    char bytes[2];
    wchar_t units[2];
    BOOL used = FALSE;
    const auto narrow = [&](UINT page, DWORD flags, LPCWSTR text, int length, int capacity,
                            BOOL* usedDefault = nullptr) {
        SetLastError(0);
        EXPECT_EQ(0, WideCharToMultiByte(page, flags, text, length, bytes, capacity, nullptr, usedDefault));
        return GetLastError();
    };
    const DWORD invalid = ERROR_INVALID_PARAMETER;
    EXPECT_EQ(static_cast<DWORD>(ERROR_INSUFFICIENT_BUFFER), narrow(CP_UTF8, 0, L"abc", 3, 2));
    EXPECT_EQ(static_cast<DWORD>(ERROR_INSUFFICIENT_BUFFER), narrow(CP_UTF8, 0, L"\u20AC", 1, 2));
    EXPECT_EQ(static_cast<DWORD>(ERROR_INVALID_FLAGS), narrow(CP_UTF8, 0x200, L"a", 1, 2));
    EXPECT_EQ(invalid, narrow(CP_UTF8, 0, L"a", 0, 2));
    EXPECT_EQ(invalid, narrow(CP_UTF8, 0, nullptr, 1, 2));
    EXPECT_EQ(invalid, narrow(CP_UTF8, 0, L"a", 1, -1));
    EXPECT_EQ(invalid, narrow(CP_UTF8, 0, L"a", 1, 2, &used));
    EXPECT_EQ(invalid, narrow(1252, 0, L"a", 1, 2));
    EXPECT_EQ(0, MultiByteToWideChar(CP_UTF8, 0, "abc", 3, units, 2));
    EXPECT_EQ(static_cast<DWORD>(ERROR_INSUFFICIENT_BUFFER), GetLastError());
    EXPECT_EQ(0, MultiByteToWideChar(CP_UTF8, 0, "\xF0\x9F\x98\x80", 4, units, 1))
        << "half a pair does not fit";
}

TEST(WideStrings, CompareWithoutCaseInAllAlphabets) {
    EXPECT_EQ(0, _wcsicmp(L"\u00C4\u0416Z", L"\u00E4\u0436z"));
    EXPECT_LT(_wcsicmp(L"abc", L"ABD"), 0);
    EXPECT_GT(_wcsicmp(L"abcd", L"ABC"), 0);
    EXPECT_LT(_wcsicmp(L"_", L"a"), 0) << "compared in small letters";
    EXPECT_EQ(0, _wcsnicmp(L"abcX", L"ABCy", 3));
    EXPECT_EQ(CSTR_EQUAL, CompareStringOrdinal(L"\u00C4b", -1, L"\u00E4B", 2, TRUE));
    EXPECT_EQ(CSTR_LESS_THAN, CompareStringOrdinal(L"B", -1, L"a", -1, FALSE));
    EXPECT_EQ(CSTR_GREATER_THAN, CompareStringOrdinal(L"a\0b", 3, L"a", -1, FALSE));
    wchar_t text[] = L"\u00C4bC";
    EXPECT_STREQ(L"\u00E4bc", CharLowerW(text));
}

TEST(WideStrings, ReadNumbersUpToTheFirstOtherCharacter) {
    EXPECT_EQ(42, _wtoi(L" +42abc"));
    EXPECT_EQ(-7, _wtoi(L"-7"));
    EXPECT_EQ(0, _wtoi(L"abc"));
    EXPECT_EQ(INT_MAX, _wtoi(L"99999999999999999999"));
    EXPECT_EQ(INT_MIN, _wtoi(L"-99999999999"));
}

TEST(LocaleFacts, TellPaperAndMeasures) {
    const auto fact = [](const wchar_t* locale, LCTYPE type) {
        DWORD number = 99;
        EXPECT_NE(0, GetLocaleInfoEx(locale, type | LOCALE_RETURN_NUMBER, reinterpret_cast<LPWSTR>(&number),
                                     sizeof(number) / sizeof(WCHAR)));
        return number;
    };
    EXPECT_EQ(1u, fact(L"en-US", LOCALE_IMEASURE));
    EXPECT_EQ(1u, fact(L"en-US", LOCALE_IPAPERSIZE));
    EXPECT_EQ(0u, fact(L"de-DE", LOCALE_IMEASURE));
    EXPECT_EQ(9u, fact(L"de-DE", LOCALE_IPAPERSIZE));
    wchar_t text[4];
    EXPECT_EQ(2, GetLocaleInfoEx(L"de-DE", LOCALE_IPAPERSIZE, text, 4));
    EXPECT_STREQ(L"9", text);
    EXPECT_EQ(0, GetLocaleInfoEx(L"de-DE", LOCALE_IPAPERSIZE, text, 1));
    EXPECT_EQ(static_cast<DWORD>(ERROR_INSUFFICIENT_BUFFER), GetLastError());
    EXPECT_EQ(0, GetLocaleInfoEx(L"not a locale", LOCALE_IPAPERSIZE, text, 4));
}

} // namespace
