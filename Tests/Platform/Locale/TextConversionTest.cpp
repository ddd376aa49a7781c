#include <windows.h>
#include <gtest/gtest.h>
#include <wchar.h>

#include <climits>
#include <cstring>
#include <string>

namespace {

TEST(TextConversion, FitsExactlyAndCountsTheTerminatorOnlyIfItIsPartOfTheText) {
    const std::wstring text(L"a\0\x20AC\xD83D\xDE00", 5);
    const std::string bytes("a\0\xE2\x82\xAC\xF0\x9F\x98\x80", 9);
    char narrow[9];
    wchar_t wide[5];
    for (const UINT page : {UINT{CP_UTF8}, UINT{CP_ACP}}) {
        const DWORD flags = page == CP_UTF8 ? WC_ERR_INVALID_CHARS : 0;
        EXPECT_EQ(9, WideCharToMultiByte(page, flags, text.data(), 5, nullptr, 0, nullptr, nullptr));
        EXPECT_EQ(9, WideCharToMultiByte(page, flags, text.data(), 5, narrow, 9, nullptr, nullptr));
        EXPECT_EQ(bytes, std::string(narrow, 9));
    }
    EXPECT_EQ(5, MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, bytes.data(), 9, nullptr, 0));
    EXPECT_EQ(5, MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, bytes.data(), 9, wide, 5));
    EXPECT_EQ(text, std::wstring(wide, 5));
    EXPECT_EQ(4, WideCharToMultiByte(CP_UTF8, 0, L"abc", -1, nullptr, 0, nullptr, nullptr));
    EXPECT_EQ(4, MultiByteToWideChar(CP_UTF8, 0, "abc", -1, nullptr, 0));
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
    EXPECT_EQ(static_cast<DWORD>(ERROR_NO_UNICODE_TRANSLATION),
              narrow(CP_UTF8, WC_ERR_INVALID_CHARS, L"\xD800", 1, 2));
    EXPECT_EQ(0, MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, "\xE2\x82", 2, units, 2));
    EXPECT_EQ(static_cast<DWORD>(ERROR_NO_UNICODE_TRANSLATION), GetLastError());
    EXPECT_EQ(invalid, narrow(CP_UTF8, 0, L"a", 0, 2));
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
    EXPECT_EQ(CSTR_EQUAL, CompareStringOrdinal(L"\u00C4b", -1, L"\u00E4B", 2, TRUE));
    EXPECT_EQ(CSTR_LESS_THAN, CompareStringOrdinal(L"B", -1, L"a", -1, FALSE));
    EXPECT_EQ(CSTR_GREATER_THAN, CompareStringOrdinal(L"a\0b", 3, L"a", -1, FALSE));
    wchar_t text[] = L"\u00C4bC";
    EXPECT_STREQ(L"\u00E4bc", CharLowerW(text));
}

TEST(WideStrings, ReadNumbersUpToTheFirstOtherCharacter) {
    EXPECT_EQ(42, _wtoi(L" +42abc"));
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
