#include "Support/ComFake.h"
#include "Support/Rows.h"

#include <Com/FaultInjection.h>

#include <atlcomcli.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace {

TEST(Variant, OwnsWhatItHolds) {
    const auto object = MakeFake<ComFake<IUnknown>>();
    {
        CComVariant holder(static_cast<IUnknown*>(object)), copy(holder);
        EXPECT_EQ(3u, object->References());
        copy = CComVariant(L"text");
        EXPECT_EQ(2u, object->References());
    }

    VARIANT byReference{};
    IUnknown* pointer = object;
    byReference.vt = VT_UNKNOWN | VT_BYREF;
    byReference.ppunkVal = &pointer;
    VARIANT resolved{};
    EXPECT_EQ(S_OK, VariantCopyInd(&resolved, &byReference));
    EXPECT_EQ(VT_UNKNOWN, resolved.vt);
    EXPECT_EQ(2u, object->References());
    EXPECT_EQ(S_OK, VariantClear(&byReference));
    EXPECT_EQ(2u, object->References()) << "what is held by reference is not owned";
    EXPECT_EQ(S_OK, VariantClear(&resolved));
    EXPECT_EQ(1u, object->References());
    EXPECT_EQ(VT_EMPTY, resolved.vt);
    resolved.vt = 15; // no type at all
    EXPECT_EQ(DISP_E_BADVARTYPE, VariantClear(&resolved));
    resolved.vt = VT_VARIANT;
    EXPECT_EQ(DISP_E_BADVARTYPE, VariantClear(&resolved));
}

TEST(Variant, CopiesStringsWholeAndSurvivesAFailingCopy) {
    CComVariant source;
    source.vt = VT_BSTR;
    source.bstrVal = SysAllocStringLen(L"a\0b", 3);
    VARIANT target{};
    ASSERT_EQ(S_OK, VariantCopy(&target, &source));
    EXPECT_NE(source.bstrVal, target.bstrVal);
    {
        // The second call is the copy of the string.
        OvPlatform::FaultInjectionScope fault(2);
        EXPECT_EQ(E_OUTOFMEMORY, VariantCopy(&target, &source));
    }
    EXPECT_EQ(3u, SysStringLen(target.bstrVal));
    VariantClear(&target);
}

TEST(Variant, ConvertsTextToValues) {
    const Rows<const wchar_t*, VARTYPE, HRESULT, double> cases{
        {L" -7 ", VT_I2, S_OK, -7},
        {L"2.5", VT_I4, S_OK, 2},
        {L"3.5", VT_I4, S_OK, 4},
        {L"4294967295", VT_UI4, S_OK, 4294967295.0},
        {L"4294967296", VT_UI4, DISP_E_OVERFLOW, 0},
        {L"-1", VT_UI4, DISP_E_OVERFLOW, 0},
        {L"1e400", VT_R8, DISP_E_OVERFLOW, 0},
        {L"", VT_I4, DISP_E_TYPEMISMATCH, 0},
        {L"12a", VT_I4, DISP_E_TYPEMISMATCH, 0},
        {L"+-1", VT_I4, DISP_E_TYPEMISMATCH, 0},
        {L"+1", VT_I4, S_OK, 1},
        {L"nan", VT_R8, DISP_E_TYPEMISMATCH, 0},
        {L"true", VT_BOOL, S_OK, -1},
        {L"maybe", VT_BOOL, DISP_E_TYPEMISMATCH, 0},
    };
    for (const auto& [text, type, result, expected] : cases) {
        CComVariant value(text);
        ASSERT_EQ(result, value.ChangeType(type)) << text;
        if (FAILED(result)) continue;
        ASSERT_EQ(S_OK, value.ChangeType(VT_R8));
        EXPECT_EQ(expected, value.dblVal) << text;
    }
}

TEST(Variant, ConvertsValuesToText) {
    const auto text = [](CComVariant value, USHORT flags = 0) {
        EXPECT_EQ(S_OK, VariantChangeType(&value, &value, flags, VT_BSTR));
        return std::wstring(value.bstrVal, SysStringLen(value.bstrVal));
    };
    CComVariant real, large;
    real.vt = VT_R8;
    real.dblVal = 0.1;
    large.vt = VT_UI8;
    large.ullVal = 18446744073709551615ULL;
    EXPECT_EQ(L"0.1", text(real));
    EXPECT_EQ(L"18446744073709551615", text(large));
    EXPECT_EQ(L"-1", text(CComVariant(true)));
    EXPECT_EQ(L"True", text(CComVariant(true), VARIANT_ALPHABOOL));
    EXPECT_EQ(L"", text(CComVariant()));
    CComVariant null;
    null.vt = VT_NULL;
    EXPECT_EQ(DISP_E_TYPEMISMATCH, null.ChangeType(VT_BSTR));
}

TEST(ByteArray, KeepsBoundsLocksAndContents) {
    SAFEARRAY* array = SafeArrayCreateVector(VT_UI1, 0, 5);
    ASSERT_NE(nullptr, array);
    LONG upper = -1;
    EXPECT_EQ(S_OK, SafeArrayGetUBound(array, 1, &upper));
    EXPECT_EQ(4, upper);
    EXPECT_EQ(DISP_E_BADINDEX, SafeArrayGetUBound(array, 2, &upper));
    void* data = nullptr;
    ASSERT_EQ(S_OK, SafeArrayAccessData(array, &data));
    std::memcpy(data, "bytes", 5);
    EXPECT_EQ(DISP_E_ARRAYISLOCKED, SafeArrayDestroy(array));

    VARIANT holder{};
    holder.vt = VT_ARRAY | VT_UI1;
    holder.parray = array;
    VARIANT copy{};
    ASSERT_EQ(S_OK, VariantCopy(&copy, &holder));
    EXPECT_NE(array, copy.parray);
    EXPECT_EQ(0, std::memcmp(copy.parray->pvData, "bytes", 5));
    EXPECT_EQ(S_OK, VariantClear(&copy));

    EXPECT_EQ(S_OK, SafeArrayUnaccessData(array));
    EXPECT_EQ(E_UNEXPECTED, SafeArrayUnaccessData(array));
    EXPECT_EQ(S_OK, VariantClear(&holder));
}

TEST(Array, OwnsItsElements) {
    SAFEARRAY* array = SafeArrayCreateVector(VT_BSTR, 1, 2);
    LONG index = 2;
    CComBSTR text(L"element"), read;
    EXPECT_EQ(S_OK, SafeArrayPutElement(array, &index, text.m_str));
    EXPECT_EQ(S_OK, SafeArrayPutElement(array, &index, text.m_str));
    EXPECT_EQ(S_OK, SafeArrayGetElement(array, &index, &read));
    EXPECT_TRUE(read == text);
    index = 3;
    EXPECT_EQ(DISP_E_BADINDEX, SafeArrayPutElement(array, &index, text.m_str));
    EXPECT_EQ(S_OK, SafeArrayDestroy(array));
    EXPECT_EQ(nullptr, SafeArrayCreateVector(VT_UI1, 0x7FFFFFFF, 2));
}

} // namespace
