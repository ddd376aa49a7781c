#include "Com/FaultInjection.h"
#include "Com/SafeArray.h"

#include <cstring>

namespace {

using OvPlatform::FaultPoint;

bool IsKnownType(VARTYPE type) {
    if ((type & VT_RESERVED) != 0) return false;
    const VARTYPE base = type & VT_TYPEMASK;
    const bool isModified = (type & (VT_ARRAY | VT_BYREF)) != 0;
    if (base == VT_EMPTY || base == VT_NULL) return !isModified;
    if (base == VT_VARIANT) return isModified;
    return base <= VT_DECIMAL || (base >= VT_I1 && base <= VT_UINT) || base == VT_RECORD;
}

HRESULT CopyByReference(VARIANT& copy, const VARIANT& source) {
    const VARTYPE base = source.vt & static_cast<VARTYPE>(~VT_BYREF);
    if (source.byref == nullptr) return E_INVALIDARG;
    copy = VARIANT{};
    copy.vt = base;
    if ((base & VT_ARRAY) != 0) {
        copy.parray = *source.pparray;
        return S_OK;
    }
    switch (base) {
    case VT_VARIANT:
        copy = *source.pvarVal;
        break;
    case VT_I1:
    case VT_UI1:
        copy.bVal = *source.pbVal;
        break;
    case VT_I2:
    case VT_UI2:
    case VT_BOOL:
        copy.uiVal = *source.puiVal;
        break;
    case VT_I4:
    case VT_UI4:
    case VT_INT:
    case VT_UINT:
    case VT_R4:
    case VT_ERROR:
        copy.ulVal = *source.pulVal;
        break;
    case VT_I8:
    case VT_UI8:
    case VT_R8:
    case VT_CY:
    case VT_DATE:
        copy.ullVal = *source.pullVal;
        break;
    case VT_BSTR:
        copy.bstrVal = *source.pbstrVal;
        break;
    case VT_UNKNOWN:
    case VT_DISPATCH:
        copy.punkVal = *source.ppunkVal;
        break;
    case VT_DECIMAL:
        copy.decVal = *source.pdecVal;
        copy.vt = VT_DECIMAL;
        break;
    default:
        return DISP_E_BADVARTYPE;
    }
    // One level only.
    return (copy.vt & VT_BYREF) != 0 ? E_INVALIDARG : S_OK;
}

/// Turns a plain copy of the members into a copy of what they own.
HRESULT OwnContents(VARIANT& value) {
    if ((value.vt & VT_BYREF) != 0) return S_OK;
    if ((value.vt & VT_ARRAY) != 0) {
        SAFEARRAY* source = value.parray;
        return SafeArrayCopy(source, &value.parray);
    }
    switch (value.vt) {
    case VT_BSTR:
        if (value.bstrVal != nullptr) {
            value.bstrVal = SysAllocStringByteLen(reinterpret_cast<LPCSTR>(value.bstrVal),
                                                  SysStringByteLen(value.bstrVal));
            if (value.bstrVal == nullptr) return E_OUTOFMEMORY;
        }
        break;
    case VT_UNKNOWN:
    case VT_DISPATCH:
        if (value.punkVal != nullptr) value.punkVal->AddRef();
        break;
    // Records need type information, which this platform has none of.
    case VT_RECORD:
        return DISP_E_BADVARTYPE;
    default:
        break;
    }
    return S_OK;
}

/// `shallow` holds the new members; the target changes only if all goes well.
HRESULT Assign(VARIANT* target, VARIANT shallow) {
    if (HRESULT result = OwnContents(shallow); FAILED(result)) return result;
    if (HRESULT result = VariantClear(target); FAILED(result)) {
        VariantClear(&shallow);
        return result;
    }
    *target = shallow;
    return S_OK;
}

} // namespace

void VariantInit(VARIANTARG* value) { *value = VARIANT{}; }

HRESULT VariantClear(VARIANTARG* value) {
    if (value == nullptr) return E_INVALIDARG;
    if (!IsKnownType(value->vt)) return DISP_E_BADVARTYPE;
    if ((value->vt & VT_BYREF) == 0) {
        if ((value->vt & VT_ARRAY) != 0) {
            if (HRESULT result = SafeArrayDestroy(value->parray); FAILED(result)) return result;
        } else if (value->vt == VT_BSTR) {
            SysFreeString(value->bstrVal);
        } else if ((value->vt == VT_UNKNOWN || value->vt == VT_DISPATCH) && value->punkVal != nullptr) {
            value->punkVal->Release();
        }
    }
    value->vt = VT_EMPTY;
    return S_OK;
}

HRESULT VariantCopy(VARIANTARG* target, VARIANTARG* source) {
    if (target == nullptr || source == nullptr) return E_INVALIDARG;
    if (target == source) return S_OK;
    if (!IsKnownType(source->vt)) return DISP_E_BADVARTYPE;
    if (HRESULT fault = FaultPoint(); FAILED(fault)) return fault;
    return Assign(target, *source);
}

HRESULT VariantCopyInd(VARIANT* target, VARIANTARG* source) {
    if (target == nullptr || source == nullptr) return E_INVALIDARG;
    if ((source->vt & VT_BYREF) == 0) return VariantCopy(target, source);
    if (!IsKnownType(source->vt)) return DISP_E_BADVARTYPE;
    if (HRESULT fault = FaultPoint(); FAILED(fault)) return fault;
    VARIANT shallow{};
    if (HRESULT result = CopyByReference(shallow, *source); FAILED(result)) return result;
    return Assign(target, shallow);
}
