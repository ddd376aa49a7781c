#pragma once

// Apartments, classes, identifiers as text, and task memory.

#include <objidlbase.h>

enum COINITBASE { COINITBASE_MULTITHREADED = 0x0 };

#define IID_PPV_ARGS(pp) __uuidof(**(pp)), IID_PPV_ARGS_Helper(pp)
template <typename T>
void** IID_PPV_ARGS_Helper(T** pp) {
    static_cast<void>(static_cast<IUnknown*>(*pp));
    return reinterpret_cast<void**>(pp);
}

/// Puts the thread into an apartment: S_OK the first time, S_FALSE when it is in that apartment already (both
/// to be matched by CoUninitialize), RPC_E_CHANGED_MODE when it is in the other kind (not to be matched).
WINOLEAPI CoInitializeEx(LPVOID pvReserved, DWORD dwCoInit);
WINOLEAPI_(void) CoUninitialize();

WINOLEAPI CoCreateInstance(REFCLSID rclsid, LPUNKNOWN pUnkOuter, DWORD dwClsContext, REFIID riid,
                           LPVOID* ppv);
WINOLEAPI CoGetClassObject(REFCLSID rclsid, DWORD dwClsContext, LPVOID pvReserved, REFIID riid, LPVOID* ppv);

WINOLEAPI CoCreateGuid(GUID* pguid);
/// Writes 39 units, braces and terminator included, and returns 39; 0 if `cchMax` is less.
EXTERN_C DECLSPEC_IMPORT int STDAPICALLTYPE StringFromGUID2(REFGUID rguid, LPOLESTR lpsz, int cchMax);
WINOLEAPI StringFromCLSID(REFCLSID rclsid, LPOLESTR* lplpsz);
WINOLEAPI StringFromIID(REFIID rclsid, LPOLESTR* lplpsz);
/// Takes the form with braces; CO_E_CLASSSTRING otherwise. A null text is the null identifier.
WINOLEAPI CLSIDFromString(LPCOLESTR lpsz, LPCLSID pclsid);
WINOLEAPI IIDFromString(LPCOLESTR lpsz, LPIID lpiid);

WINOLEAPI_(LPVOID) CoTaskMemAlloc(SIZE_T cb);
WINOLEAPI_(LPVOID) CoTaskMemRealloc(LPVOID pv, SIZE_T cb);
WINOLEAPI_(void) CoTaskMemFree(LPVOID pv);

/// A stream over `hGlobal`, or over new memory for null. The stream frees the memory when its last clone goes
/// if `fDeleteOnRelease`.
WINOLEAPI CreateStreamOnHGlobal(HGLOBAL hGlobal, BOOL fDeleteOnRelease, IStream** ppstm);
WINOLEAPI GetHGlobalFromStream(IStream* pstm, HGLOBAL* phglobal);

// What a module exports, so that the platform can make its classes.
STDAPI DllGetClassObject(REFCLSID rclsid, REFIID riid, LPVOID* ppv);
STDAPI DllCanUnloadNow();
