#pragma once

#include "FilterUtilitiesExport.h"

#include <filterpipeline.h>
#include <msxml6.h>
#include <windows.h>

#include <atomic>
#include <cstdint>

// Reference count and interface identity of the library's COM objects: an object answers for IUnknown and for
// one interface T. Born with a count of 1. Only the count may be touched by several threads at a time.
template <typename T>
class CUnknown : public T {
public:
    explicit CUnknown(const GUID& iid) : m_referenceCount(1), m_iid(iid), m_clsid(GUID{}) {}
    CUnknown(const GUID& clsid, const GUID& iid) : m_referenceCount(1), m_iid(iid), m_clsid(clsid) {}

    // A copy takes the reference count of its source as it stands; it does not start again at 1.
    CUnknown(const CUnknown& other)
        : T(other), m_referenceCount(other.m_referenceCount.load()), m_iid(other.m_iid),
          m_clsid(other.m_clsid) {}
    CUnknown& operator=(const CUnknown& other) {
        m_referenceCount.store(other.m_referenceCount.load());
        m_iid = other.m_iid;
        m_clsid = other.m_clsid;
        return *this;
    }

    // E_POINTER for a null out; E_NOINTERFACE, and a null *out, for all but IUnknown and the interface given.
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** out) override {
        if (!out) return E_POINTER;
        if (riid != __uuidof(IUnknown) && riid != m_iid) {
            *out = nullptr;
            return E_NOINTERFACE;
        }
        *out = this;
        this->AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(++m_referenceCount); }
    ULONG STDMETHODCALLTYPE Release() override {
        const std::int32_t count = --m_referenceCount;
        if (count == 0) delete this;
        return static_cast<ULONG>(count);
    }

    // Stands behind the operations of T, so that it does not move their slots.
    virtual ~CUnknown() = default;

    GUID GetIID() const { return m_iid; }
    void SetIID(const GUID& iid) { m_iid = iid; }
    GUID GetCLSID() const { return m_clsid; }
    void SetCLSID(const GUID& clsid) { m_clsid = clsid; }

private:
    std::atomic<std::int32_t> m_referenceCount;
    GUID m_iid;
    GUID m_clsid;
};

extern template class OV_FILTER_UTILITIES_API CUnknown<IPrintPipelineFilter>;
extern template class OV_FILTER_UTILITIES_API CUnknown<ISAXContentHandler>;
