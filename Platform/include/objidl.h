#pragma once

#include <objidlbase.h>

MIDL_INTERFACE("0000010c-0000-0000-C000-000000000046") IPersist : public IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE GetClassID(CLSID * pClassID) = 0;
};
__CRT_UUID_DECL(IPersist, 0x0000010c, 0x0000, 0x0000, 0xc0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46)

MIDL_INTERFACE("00000109-0000-0000-C000-000000000046") IPersistStream : public IPersist {
public:
    virtual HRESULT STDMETHODCALLTYPE IsDirty() = 0;
    virtual HRESULT STDMETHODCALLTYPE Load(IStream * pStm) = 0;
    virtual HRESULT STDMETHODCALLTYPE Save(IStream * pStm, BOOL fClearDirty) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetSizeMax(ULARGE_INTEGER * pcbSize) = 0;
};
__CRT_UUID_DECL(IPersistStream, 0x00000109, 0x0000, 0x0000, 0xc0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46)
