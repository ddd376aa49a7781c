#include "Com/SafeArray.h"

#include "Com/FaultInjection.h"

#include <cstdlib>
#include <cstring>
#include <limits>

namespace {

using OvPlatform::FaultPoint;
using OvPlatform::FaultPointHit;

// The element type stands in the four bytes before the descriptor, as published for FADF_HAVEVARTYPE.
constexpr std::size_t descriptorOffset = 16;

ULONG ElementSize(VARTYPE type) {
    switch (type) {
    case VT_I1:
    case VT_UI1:
        return 1;
    case VT_I2:
    case VT_UI2:
    case VT_BOOL:
        return 2;
    case VT_I4:
    case VT_UI4:
    case VT_INT:
    case VT_UINT:
    case VT_R4:
    case VT_ERROR:
        return 4;
    case VT_I8:
    case VT_UI8:
    case VT_R8:
    case VT_CY:
    case VT_DATE:
        return 8;
    case VT_BSTR:
    case VT_UNKNOWN:
    case VT_DISPATCH:
        return sizeof(void*);
    case VT_VARIANT:
        return sizeof(VARIANT);
    default:
        return 0;
    }
}

VARTYPE ElementType(const SAFEARRAY* array) {
    DWORD type = 0;
    std::memcpy(&type, reinterpret_cast<const BYTE*>(array) - sizeof(type), sizeof(type));
    return static_cast<VARTYPE>(type);
}

USHORT Features(VARTYPE type) {
    switch (type) {
    case VT_BSTR:
        return FADF_HAVEVARTYPE | FADF_BSTR;
    case VT_UNKNOWN:
        return FADF_HAVEVARTYPE | FADF_UNKNOWN;
    case VT_DISPATCH:
        return FADF_HAVEVARTYPE | FADF_DISPATCH;
    case VT_VARIANT:
        return FADF_HAVEVARTYPE | FADF_VARIANT;
    default:
        return FADF_HAVEVARTYPE;
    }
}

SAFEARRAY* Create(VARTYPE type, LONG lowerBound, ULONG elements, USHORT moreFeatures) noexcept {
    const ULONG size = ElementSize(type);
    // The upper bound has to be a LONG.
    const bool boundFits =
        static_cast<LONGLONG>(lowerBound) + elements - 1 <= (std::numeric_limits<LONG>::max)();
    if (size == 0 || !boundFits) return nullptr;
    auto* block = static_cast<BYTE*>(std::calloc(1, descriptorOffset + sizeof(SAFEARRAY)));
    void* data = std::calloc(elements > 0 ? elements : 1, size);
    if (block == nullptr || data == nullptr) {
        std::free(block);
        std::free(data);
        return nullptr;
    }
    const DWORD typeMark = type;
    std::memcpy(block + descriptorOffset - sizeof(typeMark), &typeMark, sizeof(typeMark));
    auto* array = reinterpret_cast<SAFEARRAY*>(block + descriptorOffset);
    array->cDims = 1;
    array->fFeatures = static_cast<USHORT>(Features(type) | moreFeatures);
    array->cbElements = size;
    array->pvData = data;
    array->rgsabound[0] = {elements, lowerBound};
    return array;
}

void ClearElement(VARTYPE type, void* element) noexcept {
    switch (type) {
    case VT_BSTR:
        SysFreeString(*static_cast<BSTR*>(element));
        break;
    case VT_UNKNOWN:
    case VT_DISPATCH:
        if (IUnknown* held = *static_cast<IUnknown**>(element)) held->Release();
        break;
    case VT_VARIANT:
        VariantClear(static_cast<VARIANT*>(element));
        break;
    default:
        break;
    }
}

/// `target` holds zeros.
HRESULT CopyElement(VARTYPE type, ULONG size, const void* source, void* target) {
    switch (type) {
    case VT_BSTR: {
        BSTR text = *static_cast<const BSTR*>(source);
        if (text == nullptr) return S_OK;
        BSTR copy = SysAllocStringByteLen(reinterpret_cast<LPCSTR>(text), SysStringByteLen(text));
        *static_cast<BSTR*>(target) = copy;
        return copy != nullptr ? S_OK : E_OUTOFMEMORY;
    }
    case VT_VARIANT:
        return VariantCopy(static_cast<VARIANT*>(target),
                           const_cast<VARIANT*>(static_cast<const VARIANT*>(source)));
    case VT_UNKNOWN:
    case VT_DISPATCH:
        if (IUnknown* held = *static_cast<IUnknown* const*>(source)) held->AddRef();
        break;
    default:
        break;
    }
    std::memcpy(target, source, size);
    return S_OK;
}

void* Element(SAFEARRAY* array, LONG index) {
    const LONGLONG place = static_cast<LONGLONG>(index) - array->rgsabound[0].lLbound;
    if (place < 0 || place >= array->rgsabound[0].cElements) return nullptr;
    return static_cast<BYTE*>(array->pvData) + static_cast<std::size_t>(place) * array->cbElements;
}

} // namespace

namespace OvPlatform {

void DestroySafeArray(SAFEARRAY* array) noexcept {
    const VARTYPE type = ElementType(array);
    for (ULONG index = 0; index < array->rgsabound[0].cElements; ++index)
        ClearElement(type,
                     static_cast<BYTE*>(array->pvData) + static_cast<std::size_t>(index) * array->cbElements);
    std::free(array->pvData);
    std::free(reinterpret_cast<BYTE*>(array) - descriptorOffset);
}

} // namespace OvPlatform

SAFEARRAY* SafeArrayCreate(VARTYPE type, UINT dimensions, SAFEARRAYBOUND* bounds) {
    if (dimensions != 1 || bounds == nullptr || FaultPointHit()) return nullptr;
    return Create(type, bounds[0].lLbound, bounds[0].cElements, 0);
}

SAFEARRAY* SafeArrayCreateVector(VARTYPE type, LONG lowerBound, ULONG elements) {
    if (FaultPointHit()) return nullptr;
    return Create(type, lowerBound, elements, FADF_CREATEVECTOR);
}

HRESULT SafeArrayDestroy(SAFEARRAY* array) {
    if (array == nullptr) return S_OK;
    if (array->cLocks > 0) return DISP_E_ARRAYISLOCKED;
    OvPlatform::DestroySafeArray(array);
    return S_OK;
}

UINT SafeArrayGetDim(SAFEARRAY* array) { return array != nullptr ? array->cDims : 0; }

UINT SafeArrayGetElemsize(SAFEARRAY* array) { return array != nullptr ? array->cbElements : 0; }

HRESULT SafeArrayGetUBound(SAFEARRAY* array, UINT dimension, LONG* bound) {
    if (array == nullptr || bound == nullptr) return E_INVALIDARG;
    if (dimension != 1) return DISP_E_BADINDEX;
    if (HRESULT fault = FaultPoint(); FAILED(fault)) return fault;
    // One less than the lower bound for an array without elements.
    const SAFEARRAYBOUND& held = array->rgsabound[0];
    *bound = static_cast<LONG>(static_cast<LONGLONG>(held.lLbound) + held.cElements - 1);
    return S_OK;
}

HRESULT SafeArrayGetLBound(SAFEARRAY* array, UINT dimension, LONG* bound) {
    if (array == nullptr || bound == nullptr) return E_INVALIDARG;
    if (dimension != 1) return DISP_E_BADINDEX;
    if (HRESULT fault = FaultPoint(); FAILED(fault)) return fault;
    *bound = array->rgsabound[0].lLbound;
    return S_OK;
}

HRESULT SafeArrayGetVartype(SAFEARRAY* array, VARTYPE* type) {
    if (array == nullptr || type == nullptr) return E_INVALIDARG;
    if (HRESULT fault = FaultPoint(); FAILED(fault)) return fault;
    *type = ElementType(array);
    return S_OK;
}

HRESULT SafeArrayLock(SAFEARRAY* array) {
    if (array == nullptr) return E_INVALIDARG;
    if (HRESULT fault = FaultPoint(); FAILED(fault)) return fault;
    ++array->cLocks;
    return S_OK;
}

HRESULT SafeArrayUnlock(SAFEARRAY* array) {
    if (array == nullptr) return E_INVALIDARG;
    if (array->cLocks == 0) return E_UNEXPECTED;
    --array->cLocks;
    return S_OK;
}

HRESULT SafeArrayAccessData(SAFEARRAY* array, void** data) {
    if (array == nullptr || data == nullptr) return E_INVALIDARG;
    if (HRESULT result = SafeArrayLock(array); FAILED(result)) return result;
    *data = array->pvData;
    return S_OK;
}

HRESULT SafeArrayUnaccessData(SAFEARRAY* array) { return SafeArrayUnlock(array); }

HRESULT SafeArrayCopy(SAFEARRAY* array, SAFEARRAY** copy) {
    if (copy == nullptr) return E_INVALIDARG;
    *copy = nullptr;
    if (array == nullptr) return S_OK;
    if (HRESULT fault = FaultPoint(); FAILED(fault)) return fault;
    const VARTYPE type = ElementType(array);
    const SAFEARRAYBOUND& bound = array->rgsabound[0];
    SAFEARRAY* made = Create(type, bound.lLbound, bound.cElements, array->fFeatures & FADF_CREATEVECTOR);
    if (made == nullptr) return E_OUTOFMEMORY;
    for (ULONG index = 0; index < bound.cElements; ++index) {
        const std::size_t offset = static_cast<std::size_t>(index) * array->cbElements;
        const HRESULT result =
            CopyElement(type, array->cbElements, static_cast<const BYTE*>(array->pvData) + offset,
                        static_cast<BYTE*>(made->pvData) + offset);
        if (FAILED(result)) {
            OvPlatform::DestroySafeArray(made);
            return result;
        }
    }
    *copy = made;
    return S_OK;
}

HRESULT SafeArrayGetElement(SAFEARRAY* array, LONG* indices, void* value) {
    if (array == nullptr || indices == nullptr || value == nullptr) return E_INVALIDARG;
    if (HRESULT fault = FaultPoint(); FAILED(fault)) return fault;
    const void* element = Element(array, indices[0]);
    if (element == nullptr) return DISP_E_BADINDEX;
    std::memset(value, 0, array->cbElements);
    return CopyElement(ElementType(array), array->cbElements, element, value);
}

HRESULT SafeArrayPutElement(SAFEARRAY* array, LONG* indices, void* value) {
    if (array == nullptr || indices == nullptr) return E_INVALIDARG;
    if (HRESULT fault = FaultPoint(); FAILED(fault)) return fault;
    void* element = Element(array, indices[0]);
    if (element == nullptr) return DISP_E_BADINDEX;
    const VARTYPE type = ElementType(array);
    // Strings and interfaces come as what they point at, all else by reference.
    const bool isPointer = type == VT_BSTR || type == VT_UNKNOWN || type == VT_DISPATCH;
    if (value == nullptr && !isPointer) return E_INVALIDARG;
    VARIANT fresh{};
    if (HRESULT result =
            CopyElement(type, array->cbElements, isPointer ? static_cast<void*>(&value) : value, &fresh);
        FAILED(result))
        return result;
    ClearElement(type, element);
    std::memcpy(element, &fresh, array->cbElements);
    return S_OK;
}
