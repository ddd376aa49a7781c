#pragma once

#include <oleauto.h>

#include <atomic>

namespace OvPlatform {

/// The slots of IDispatch, which nobody calls: the interfaces are used by their own slots.
template <class Interface>
class Dispatch : public Interface {
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
    ~Dispatch() = default;
};

/// The count of an object that deletes itself.
class ReferenceCount {
public:
    ULONG Increment() noexcept { return m_count.fetch_add(1, std::memory_order_relaxed) + 1; }
    ULONG Decrement() noexcept { return m_count.fetch_sub(1, std::memory_order_acq_rel) - 1; }

private:
    std::atomic<ULONG> m_count{1};
};

} // namespace OvPlatform
