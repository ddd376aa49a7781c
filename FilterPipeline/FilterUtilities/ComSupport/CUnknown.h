#pragma once

#include "ComSupport/FilterUtilitiesExport.h"

#include <windows.h>
#include <filterpipeline.h>
#include <msxml6.h>

#include <atomic>
#include <cstdint>

/// Reference count and interface identity of the library's COM objects: an object answers for IUnknown and
/// for one interface T. Born with a count of 1. Only the count may be touched by several threads at a time.
///
/// The library instantiates it for the two interfaces below, and for no others.
template <typename T>
class CUnknown : public T {
public:
    explicit CUnknown(const GUID& iid);
    CUnknown(const GUID& clsid, const GUID& iid);

    /// A copy takes the reference count of its source as it stands; it does not start again at 1.
    CUnknown(const CUnknown& other);
    CUnknown& operator=(const CUnknown& other);

    /// E_POINTER for a null out; E_NOINTERFACE, and a null *out, for all but IUnknown and the interface
    /// given.
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** out) override;
    ULONG STDMETHODCALLTYPE AddRef() override;
    ULONG STDMETHODCALLTYPE Release() override;

    /// Stands behind the operations of T, so that it does not move their slots.
    virtual ~CUnknown();

    GUID GetIID() const;
    void SetIID(const GUID& iid);
    GUID GetCLSID() const;
    void SetCLSID(const GUID& clsid);

private:
    std::atomic<std::int32_t> m_referenceCount;
    GUID m_iid;
    GUID m_clsid;
};

extern template class OV_FILTER_UTILITIES_API CUnknown<IPrintPipelineFilter>;
extern template class OV_FILTER_UTILITIES_API CUnknown<ISAXContentHandler>;
