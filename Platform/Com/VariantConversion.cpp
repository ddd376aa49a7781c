#include "Com/FaultInjection.h"

#include <atlcomcli.h>

#include <charconv>
#include <cmath>
#include <limits>
#include <optional>
#include <string>
#include <string_view>

// Conversions between the simple kinds of values. Every source becomes one of three intermediate forms (whole
// number, real number, text), and every target is made from these.

namespace {

using Integer = __int128;

struct Value {
    enum class Form { Integer, Real, Text } form = Form::Integer;
    Integer integer = 0;
    double real = 0;
    std::wstring_view text;
    bool isBoolean = false;
};

std::optional<Value> Read(const VARIANT& source) {
    Value value;
    const auto whole = [&](auto number) { value.integer = number; };
    const auto fraction = [&](double number) {
        value.form = Value::Form::Real;
        value.real = number;
    };
    switch (source.vt) {
    case VT_EMPTY:
        break;
    case VT_I1:
        whole(static_cast<int>(static_cast<signed char>(source.cVal)));
        break;
    case VT_UI1:
        whole(source.bVal);
        break;
    case VT_I2:
        whole(source.iVal);
        break;
    case VT_UI2:
        whole(source.uiVal);
        break;
    case VT_I4:
    case VT_INT:
        whole(source.lVal);
        break;
    case VT_UI4:
    case VT_UINT:
        whole(source.ulVal);
        break;
    case VT_I8:
        whole(source.llVal);
        break;
    case VT_UI8:
        whole(source.ullVal);
        break;
    case VT_R4:
        fraction(source.fltVal);
        break;
    case VT_R8:
        fraction(source.dblVal);
        break;
    case VT_BOOL:
        whole(source.boolVal);
        value.isBoolean = true;
        break;
    case VT_BSTR:
        value.form = Value::Form::Text;
        value.text = std::wstring_view(source.bstrVal, SysStringLen(source.bstrVal));
        break;
    default:
        return std::nullopt;
    }
    return value;
}

/// The characters of a number; empty if the text can be none.
std::string NumberText(std::wstring_view text) {
    constexpr std::wstring_view blanks = L" \t\r\n";
    const auto first = text.find_first_not_of(blanks);
    if (first == std::wstring_view::npos) return {};
    text = text.substr(first, text.find_last_not_of(blanks) + 1 - first);
    if (text.starts_with(L"+-")) return {};
    if (text.front() == L'+') text.remove_prefix(1);
    std::string number;
    for (const wchar_t unit : text) {
        if (std::wstring_view(L"0123456789+-.eE").find(unit) == std::wstring_view::npos) return {};
        number += static_cast<char>(unit);
    }
    return number;
}

HRESULT ParseReal(std::wstring_view text, double& real) {
    const std::string number = NumberText(text);
    const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), real);
    if (error == std::errc::result_out_of_range) return DISP_E_OVERFLOW;
    return error == std::errc() && end == number.data() + number.size() && !number.empty()
               ? S_OK
               : DISP_E_TYPEMISMATCH;
}

HRESULT ToReal(const Value& value, double& real) {
    if (value.form == Value::Form::Text) return ParseReal(value.text, real);
    real = value.form == Value::Form::Real ? value.real : static_cast<double>(value.integer);
    return S_OK;
}

HRESULT ToInteger(const Value& value, Integer& integer) {
    if (value.form == Value::Form::Integer) {
        integer = value.integer;
        return S_OK;
    }
    if (value.form == Value::Form::Text) {
        // Whole numbers keep all their digits.
        const std::string number = NumberText(value.text);
        LONGLONG parsed = 0;
        const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), parsed);
        if (error == std::errc() && end == number.data() + number.size()) {
            integer = parsed;
            return S_OK;
        }
    }
    double real = 0;
    if (HRESULT result = ToReal(value, real); FAILED(result)) return result;
    if (!(std::abs(real) < 1e19)) return DISP_E_OVERFLOW;
    // Halves go to the even neighbour.
    integer = static_cast<Integer>(std::nearbyint(real));
    return S_OK;
}

template <typename T>
HRESULT StoreInteger(const Value& value, T& target) {
    Integer integer = 0;
    if (HRESULT result = ToInteger(value, integer); FAILED(result)) return result;
    if (integer < (std::numeric_limits<T>::min)() || integer > (std::numeric_limits<T>::max)())
        return DISP_E_OVERFLOW;
    target = static_cast<T>(integer);
    return S_OK;
}

HRESULT StoreBoolean(const Value& value, VARIANT_BOOL& target) {
    double real = 0;
    if (value.form == Value::Form::Text) {
        const std::wstring text(value.text);
        if (_wcsicmp(text.c_str(), L"True") == 0 || text == L"#TRUE#")
            real = 1;
        else if (_wcsicmp(text.c_str(), L"False") != 0 && text != L"#FALSE#") {
            if (HRESULT result = ParseReal(value.text, real); FAILED(result)) return result;
        }
    } else if (HRESULT result = ToReal(value, real); FAILED(result)) {
        return result;
    }
    target = real != 0 ? VARIANT_TRUE : VARIANT_FALSE;
    return S_OK;
}

std::wstring Print(const Value& value, bool wordsForBooleans) {
    if (value.form == Value::Form::Text) return std::wstring(value.text);
    if (value.isBoolean && wordsForBooleans) return value.integer != 0 ? L"True" : L"False";
    if (value.form == Value::Form::Integer)
        return value.integer < 0 ? std::to_wstring(static_cast<LONGLONG>(value.integer))
                                 : std::to_wstring(static_cast<ULONGLONG>(value.integer));
    char digits[64];
    const auto end =
        std::to_chars(digits, digits + sizeof(digits), value.real, std::chars_format::general, 15).ptr;
    std::wstring text(digits, end);
    for (wchar_t& unit : text)
        if (unit == L'e') unit = L'E';
    return text;
}

HRESULT Convert(const VARIANT& source, VARTYPE type, bool wordsForBooleans, VARIANT& target) {
    if ((source.vt == VT_UNKNOWN || source.vt == VT_DISPATCH) &&
        (type == VT_UNKNOWN || type == VT_DISPATCH)) {
        target.punkVal = nullptr;
        if (source.punkVal == nullptr) return S_OK;
        const HRESULT result =
            source.punkVal->QueryInterface(type == VT_UNKNOWN ? __uuidof(IUnknown) : __uuidof(IDispatch),
                                           reinterpret_cast<void**>(&target.punkVal));
        return FAILED(result) ? DISP_E_TYPEMISMATCH : S_OK;
    }
    const std::optional<Value> value = Read(source);
    if (!value) return DISP_E_TYPEMISMATCH;
    switch (type) {
    case VT_EMPTY:
        return S_OK;
    case VT_I1: {
        signed char number = 0;
        const HRESULT result = StoreInteger(*value, number);
        target.cVal = static_cast<CHAR>(number);
        return result;
    }
    case VT_UI1:
        return StoreInteger(*value, target.bVal);
    case VT_I2:
        return StoreInteger(*value, target.iVal);
    case VT_UI2:
        return StoreInteger(*value, target.uiVal);
    case VT_I4:
        return StoreInteger(*value, target.lVal);
    case VT_INT:
        return StoreInteger(*value, target.intVal);
    case VT_UI4:
        return StoreInteger(*value, target.ulVal);
    case VT_UINT:
        return StoreInteger(*value, target.uintVal);
    case VT_I8:
        return StoreInteger(*value, target.llVal);
    case VT_UI8:
        return StoreInteger(*value, target.ullVal);
    case VT_R8:
        return ToReal(*value, target.dblVal);
    case VT_R4: {
        double real = 0;
        if (HRESULT result = ToReal(*value, real); FAILED(result)) return result;
        if (std::abs(real) > static_cast<double>((std::numeric_limits<float>::max)())) return DISP_E_OVERFLOW;
        target.fltVal = static_cast<float>(real);
        return S_OK;
    }
    case VT_BOOL:
        return StoreBoolean(*value, target.boolVal);
    case VT_BSTR: {
        const std::wstring text = source.vt == VT_EMPTY ? std::wstring() : Print(*value, wordsForBooleans);
        target.bstrVal = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
        return target.bstrVal != nullptr ? S_OK : E_OUTOFMEMORY;
    }
    default:
        return DISP_E_TYPEMISMATCH;
    }
}

} // namespace

HRESULT VariantChangeTypeEx(VARIANTARG* target, VARIANTARG* source, LCID, USHORT flags, VARTYPE type) {
    if (target == nullptr || source == nullptr) return E_INVALIDARG;
    if (HRESULT fault = OvPlatform::FaultPoint(); FAILED(fault)) return fault;
    try {
        CComVariant resolved;
        if (HRESULT result = VariantCopyInd(&resolved, source); FAILED(result)) return result;
        if (resolved.vt == type) return VariantCopy(target, &resolved);
        VARIANT converted{};
        const HRESULT result = Convert(resolved, type, (flags & VARIANT_ALPHABOOL) != 0, converted);
        if (FAILED(result)) return result;
        converted.vt = type;
        if (HRESULT cleared = VariantClear(target); FAILED(cleared)) {
            VariantClear(&converted);
            return cleared;
        }
        *target = converted;
        return S_OK;
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    }
}

HRESULT VariantChangeType(VARIANTARG* target, VARIANTARG* source, USHORT flags, VARTYPE type) {
    return VariantChangeTypeEx(target, source, LOCALE_USER_DEFAULT, flags, type);
}
