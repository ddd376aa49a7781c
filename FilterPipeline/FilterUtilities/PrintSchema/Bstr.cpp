#include "PrintSchema/Bstr.h"

#include "ComSupport/ThrowHresult.h"

#include <LowLevelFacilities/Numbers/Number.h>
#include <LowLevelFacilities/WideStrings/CXString.h>

#include <algorithm>
#include <cwchar>
#include <limits>

namespace PrintSchemaText {

CComBSTR Join(std::initializer_list<std::wstring_view> pieces) {
    std::size_t length = 0;
    for (const std::wstring_view piece : pieces)
        length += piece.size();
    constexpr std::size_t longest = std::numeric_limits<INT>::max() / sizeof(OLECHAR) - 1;
    CComBSTR joined;
    if (length <= longest) joined.Attach(::SysAllocStringLen(nullptr, static_cast<UINT>(length)));
    if (joined.m_str == nullptr) ThrowComException(E_OUTOFMEMORY);
    OLECHAR* end = joined.m_str;
    for (const std::wstring_view piece : pieces)
        end = std::copy(piece.begin(), piece.end(), end);
    return joined;
}

CComBSTR Copy(const CComBSTR& text) {
    if (text.m_str == nullptr) return {};
    return Make(View(text));
}

void CopyOut(const CComBSTR& text, BSTR* out) { *out = Copy(text).Detach(); }

int IntegerOf(const CComBSTR& text) { return text.m_str == nullptr ? 0 : ::_wtoi(text); }

float RealOf(const CComBSTR& text) {
    return static_cast<float>(Number(CXString(text.m_str), false).GetDoubleValue());
}

VARIANT Borrowed(BSTR text) {
    VARIANT variant;
    ::VariantInit(&variant);
    variant.vt = VT_BSTR;
    variant.bstrVal = text;
    return variant;
}

bool IsPlain(BSTR text) {
    return std::all_of(text, text + ::SysStringLen(text),
                       [](wchar_t unit) { return unit >= L' ' && unit <= L'~'; });
}

bool AreEqual(BSTR left, BSTR right) {
    // Texts of visible ASCII are equal for every language only if they are equal unit by unit. Names and
    // namespaces are such texts; asking the language's rules costs more than reading the document.
    if (IsPlain(left) && IsPlain(right)) {
        const std::size_t length = ::SysStringLen(left);
        return length == ::SysStringLen(right) && std::equal(left, left + length, right);
    }
    const HRESULT order = ::VarBstrCmp(left, right, LOCALE_USER_DEFAULT, 0);
    ThrowIfFailed(order);
    return order == static_cast<HRESULT>(VARCMP_EQ);
}

} // namespace PrintSchemaText
