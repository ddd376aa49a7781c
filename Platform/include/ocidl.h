#pragma once

#include <oaidl.h>

MIDL_INTERFACE("7FD52380-4E07-101B-AE2D-08002B2EC713") IPersistStreamInit : public IPersist {
public:
    virtual HRESULT STDMETHODCALLTYPE IsDirty() = 0;
    virtual HRESULT STDMETHODCALLTYPE Load(IStream * pStm) = 0;
    virtual HRESULT STDMETHODCALLTYPE Save(IStream * pStm, BOOL fClearDirty) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetSizeMax(ULARGE_INTEGER * pCbSize) = 0;
    virtual HRESULT STDMETHODCALLTYPE InitNew() = 0;
};
__CRT_UUID_DECL(IPersistStreamInit, 0x7fd52380, 0x4e07, 0x101b, 0xae, 0x2d, 0x08, 0x00, 0x2b, 0x2e, 0xc7,
                0x13)

MIDL_INTERFACE("FC4801A3-2BA9-11CF-A229-00AA003D7352") IObjectWithSite : public IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE SetSite(IUnknown * pUnkSite) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetSite(REFIID riid, void** ppvSite) = 0;
};
__CRT_UUID_DECL(IObjectWithSite, 0xfc4801a3, 0x2ba9, 0x11cf, 0xa2, 0x29, 0x00, 0xaa, 0x00, 0x3d, 0x73, 0x52)

struct IConnectionPoint;
struct IEnumConnectionPoints;
struct IEnumConnections;

/// An object that calls back: it has a connection point for each interface that it calls.
MIDL_INTERFACE("B196B284-BAB4-101A-B69C-00AA00341D07") IConnectionPointContainer : public IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE EnumConnectionPoints(IEnumConnectionPoints * *ppEnum) = 0;
    virtual HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID riid, IConnectionPoint * *ppCP) = 0;
};
__CRT_UUID_DECL(IConnectionPointContainer, 0xb196b284, 0xbab4, 0x101a, 0xb6, 0x9c, 0x00, 0xaa, 0x00, 0x34,
                0x1d, 0x07)

MIDL_INTERFACE("B196B286-BAB4-101A-B69C-00AA00341D07") IConnectionPoint : public IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE GetConnectionInterface(IID * pIID) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetConnectionPointContainer(IConnectionPointContainer * *ppCPC) = 0;
    virtual HRESULT STDMETHODCALLTYPE Advise(IUnknown * pUnkSink, DWORD * pdwCookie) = 0;
    virtual HRESULT STDMETHODCALLTYPE Unadvise(DWORD dwCookie) = 0;
    virtual HRESULT STDMETHODCALLTYPE EnumConnections(IEnumConnections * *ppEnum) = 0;
};
__CRT_UUID_DECL(IConnectionPoint, 0xb196b286, 0xbab4, 0x101a, 0xb6, 0x9c, 0x00, 0xaa, 0x00, 0x34, 0x1d, 0x07)
