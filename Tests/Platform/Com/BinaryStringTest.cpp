#include "Support/Rows.h"

#include <Com/FaultInjection.h>

#include <atlcomcli.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace {

std::wstring Text(BSTR string) { return std::wstring(string, SysStringLen(string)); }

TEST(BinaryString, HasItsLengthInFrontAndAZeroBehind) {
    BSTR string = SysAllocStringLen(L"a\0b", 3);
    ASSERT_NE(nullptr, string);
    UINT prefix = 0;
    std::memcpy(&prefix, reinterpret_cast<const BYTE*>(string) - 4, sizeof(prefix));
    EXPECT_EQ(3 * sizeof(wchar_t), prefix);
    EXPECT_EQ(3u, SysStringLen(string));
    EXPECT_EQ(prefix, SysStringByteLen(string));
    EXPECT_EQ(std::wstring(L"a\0b", 3), Text(string));
    EXPECT_EQ(0, string[3]);
    SysFreeString(string);

    string = SysAllocStringByteLen("abc", 3); // an odd number of bytes
    ASSERT_NE(nullptr, string);
    EXPECT_EQ(3u, SysStringByteLen(string));
    EXPECT_EQ(0u, SysStringLen(string));
    EXPECT_EQ(0, std::memcmp("abc\0\0\0\0", string, 7));
    SysFreeString(string);

    EXPECT_EQ(nullptr, SysAllocStringLen(nullptr, 0x40000000)) << "longer than memory";
    EXPECT_EQ(nullptr, SysAllocStringByteLen(nullptr, 0xFFFFFFFF));
    EXPECT_EQ(nullptr, SysAllocString(nullptr));
    EXPECT_EQ(0u, SysStringLen(nullptr));
    EXPECT_EQ(0u, SysStringByteLen(nullptr));
    SysFreeString(nullptr);
}

TEST(ComString, AppendsItselfPartsOfItselfAndZeroUnits) {
    CComBSTR string(3, L"a\0b");
    EXPECT_EQ(S_OK, string.Append(string));
    EXPECT_EQ(std::wstring(L"a\0ba\0b", 6), Text(string));
    EXPECT_EQ(S_OK, string.Append(string.m_str + 2, 2));
    EXPECT_EQ(std::wstring(L"a\0ba\0bba", 8), Text(string));
    EXPECT_EQ(E_INVALIDARG, string.Append(nullptr, 1));
    EXPECT_EQ(S_OK, string.Append(static_cast<LPCOLESTR>(nullptr)));
    EXPECT_EQ(8u, string.Length());
}

TEST(ComString, CopiesAndComparesWhatStandsBehindAZeroUnit) {
    const CComBSTR first(3, L"a\0b");
    CComBSTR copy(first);
    EXPECT_TRUE(copy == first);
    EXPECT_TRUE(first < CComBSTR(3, L"a\0c"));
    EXPECT_FALSE(CComBSTR(L"a") == CComBSTR(2, L"a\0"));
    const CComBSTR& alias = copy;
    copy = alias;
    copy = copy.m_str;
    EXPECT_EQ(3u, copy.Length());

    OvPlatform::FaultInjectionScope fault(1);
    EXPECT_THROW(copy = L"other", CAtlException);
    EXPECT_TRUE(copy == first) << "it keeps what it has when memory is out";
}

TEST(StringComparison, OrdersAsTheLocaleOrdersWords) {
    const Rows<const wchar_t*, const wchar_t*, ULONG, HRESULT> cases{
        {L"Portrait", L"Portrait", 0, VARCMP_EQ},
        {L"Portrait", L"portrait", 0, VARCMP_GT},
        {L"a", L"B", 0, VARCMP_LT},
        {L"\u00C4rger", L"\u00E4rger", NORM_IGNORECASE, VARCMP_EQ},
        // Composed and decomposed.
        {L"\u00E4", L"a\u0308", 0, VARCMP_EQ},
        {L"\u00E4", L"z", 0, VARCMP_LT},
        {nullptr, L"", 0, VARCMP_EQ},
        {L"", L"a", 0, VARCMP_LT},
    };
    for (const auto& [left, right, flags, order] : cases)
        EXPECT_EQ(order, VarBstrCmp(CComBSTR(left), CComBSTR(right), LOCALE_USER_DEFAULT, flags)) << order;
    // Without a locale unit by unit.
    EXPECT_EQ(VARCMP_GT, VarBstrCmp(CComBSTR(L"a"), CComBSTR(L"B"), LOCALE_NEUTRAL, 0));
}

} // namespace
