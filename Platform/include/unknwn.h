#pragma once

#include <rpc.h>
#include <wtypes.h>

/// The root of all interfaces. Objects are counted; whoever got an interface releases it once.
MIDL_INTERFACE("00000000-0000-0000-C000-000000000046") IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** ppvObject) = 0;
    virtual ULONG STDMETHODCALLTYPE AddRef() = 0;
    virtual ULONG STDMETHODCALLTYPE Release() = 0;

    template <class Q>
    HRESULT STDMETHODCALLTYPE QueryInterface(Q * *pp) {
        return QueryInterface(__uuidof(Q), reinterpret_cast<void**>(pp));
    }
};
__CRT_UUID_DECL(IUnknown, 0x00000000, 0x0000, 0x0000, 0xc0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46)
using LPUNKNOWN = IUnknown*;

MIDL_INTERFACE("00000001-0000-0000-C000-000000000046") IClassFactory : public IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown * pUnkOuter, REFIID riid, void** ppvObject) = 0;
    virtual HRESULT STDMETHODCALLTYPE LockServer(BOOL fLock) = 0;
};
__CRT_UUID_DECL(IClassFactory, 0x00000001, 0x0000, 0x0000, 0xc0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46)
using LPCLASSFACTORY = IClassFactory*;
