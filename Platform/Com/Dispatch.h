#pragma once

#include "Com/CountedObject.h"

#include <oleauto.h>

namespace OvPlatform {

/// The slots of IDispatch over an object's other bases. Nobody calls them: the interfaces are used by their
/// own slots, and are dual by publication only.
template <class Base>
class Dispatch : public Base {
public:
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        if (count == nullptr) return E_INVALIDARG;
        *count = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo** info) override {
        if (info != nullptr) *info = nullptr;
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                                     UINT*) override {
        return E_NOTIMPL;
    }

protected:
    ~Dispatch() override = default;
};

} // namespace OvPlatform
