#pragma once

// Functions on BSTR, VARIANT and SAFEARRAY.

#include <oaidl.h>

// A BSTR points at its first unit. The four bytes before it hold its length in bytes of memory, and a zero
// unit follows its last one. The functions that count bytes count memory, sizeof(OLECHAR) for a unit, so that
// what SysStringByteLen says can be copied as it lies; bytes of text in an encoding come from
// WideCharToMultiByte only. A null BSTR is the empty string: its length is zero, and freeing it does nothing.

/// Null for null, and when memory is out.
WINOLEAUTAPI_(BSTR) SysAllocString(const OLECHAR* psz);
/// `ui` units, copied from `strIn` unless it is null; may hold zero units.
WINOLEAUTAPI_(BSTR) SysAllocStringLen(const OLECHAR* strIn, UINT ui);
/// `len` bytes of memory, copied from `psz` unless it is null.
WINOLEAUTAPI_(BSTR) SysAllocStringByteLen(LPCSTR psz, UINT len);
/// Replaces `*pbstr` by a copy of `psz`. FALSE if memory is out; `*pbstr` is then as it was.
EXTERN_C DECLSPEC_IMPORT INT STDAPICALLTYPE SysReAllocString(BSTR* pbstr, const OLECHAR* psz);
EXTERN_C DECLSPEC_IMPORT INT STDAPICALLTYPE SysReAllocStringLen(BSTR* pbstr, const OLECHAR* psz, UINT len);
WINOLEAUTAPI_(void) SysFreeString(BSTR bstrString);
/// In units.
WINOLEAUTAPI_(UINT) SysStringLen(BSTR pbstr);
/// In bytes of memory.
WINOLEAUTAPI_(UINT) SysStringByteLen(BSTR bstr);

WINOLEAUTAPI_(void) VariantInit(VARIANTARG* pvarg);
/// Frees what the variant owns and leaves it VT_EMPTY. What is held by reference is not freed.
WINOLEAUTAPI VariantClear(VARIANTARG* pvarg);
/// A deep copy: strings and arrays are copied, interfaces counted once more. The source is not changed.
WINOLEAUTAPI VariantCopy(VARIANTARG* pvargDest, VARIANTARG* pvargSrc);
/// Like VariantCopy, with one level of reference resolved.
WINOLEAUTAPI VariantCopyInd(VARIANT* pvarDest, VARIANTARG* pvargSrc);
/// Numbers, booleans and strings into one another, by the rules of the invariant locale; else
/// DISP_E_TYPEMISMATCH.
WINOLEAUTAPI VariantChangeType(VARIANTARG* pvargDest, VARIANTARG* pvarSrc, USHORT wFlags, VARTYPE vt);
WINOLEAUTAPI VariantChangeTypeEx(VARIANTARG* pvargDest, VARIANTARG* pvarSrc, LCID lcid, USHORT wFlags,
                                 VARTYPE vt);
#define VARIANT_NOVALUEPROP 0x1
#define VARIANT_ALPHABOOL 0x2

WINOLEAUTAPI_(SAFEARRAY*) SafeArrayCreate(VARTYPE vt, UINT cDims, SAFEARRAYBOUND* rgsabound);
WINOLEAUTAPI_(SAFEARRAY*) SafeArrayCreateVector(VARTYPE vt, LONG lLbound, ULONG cElements);
WINOLEAUTAPI SafeArrayDestroy(SAFEARRAY* psa);
WINOLEAUTAPI_(UINT) SafeArrayGetDim(SAFEARRAY* psa);
WINOLEAUTAPI_(UINT) SafeArrayGetElemsize(SAFEARRAY* psa);
WINOLEAUTAPI SafeArrayGetUBound(SAFEARRAY* psa, UINT nDim, LONG* plUbound);
WINOLEAUTAPI SafeArrayGetLBound(SAFEARRAY* psa, UINT nDim, LONG* plLbound);
WINOLEAUTAPI SafeArrayGetVartype(SAFEARRAY* psa, VARTYPE* pvt);
WINOLEAUTAPI SafeArrayLock(SAFEARRAY* psa);
WINOLEAUTAPI SafeArrayUnlock(SAFEARRAY* psa);
WINOLEAUTAPI SafeArrayAccessData(SAFEARRAY* psa, void** ppvData);
WINOLEAUTAPI SafeArrayUnaccessData(SAFEARRAY* psa);
WINOLEAUTAPI SafeArrayCopy(SAFEARRAY* psa, SAFEARRAY** ppsaOut);
WINOLEAUTAPI SafeArrayGetElement(SAFEARRAY* psa, LONG* rgIndices, void* pv);
WINOLEAUTAPI SafeArrayPutElement(SAFEARRAY* psa, LONG* rgIndices, void* pv);

/// Compares whole BSTRs, zero units included; null equals the empty string. The result is a VARCMP_ value.
/// With NORM_IGNORECASE letters of different case are equal. Strings are ordered as the locale `lcid` orders
/// words.
WINOLEAUTAPI VarBstrCmp(BSTR bstrLeft, BSTR bstrRight, LCID lcid, ULONG dwFlags);
WINOLEAUTAPI VarBstrCat(BSTR bstrLeft, BSTR bstrRight, LPBSTR pbstrResult);
#define VARCMP_LT 0
#define VARCMP_EQ 1
#define VARCMP_GT 2
#define VARCMP_NULL 3

/// Puts the calling thread's error information, or takes it away with null.
WINOLEAUTAPI SetErrorInfo(ULONG dwReserved, IErrorInfo* perrinfo);
/// Hands the calling thread's error information over and clears it; S_FALSE and null if there is none.
WINOLEAUTAPI GetErrorInfo(ULONG dwReserved, IErrorInfo** pperrinfo);
WINOLEAUTAPI CreateErrorInfo(ICreateErrorInfo** pperrinfo);
