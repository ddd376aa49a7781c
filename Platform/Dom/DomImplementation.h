#pragma once

#include "Dom/Dispatch.h"

#include <msxml6.h>

namespace OvPlatform {

class DomImplementation final : public Dispatch<IXMLDOMImplementation> {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override { return m_count.Increment(); }
    ULONG STDMETHODCALLTYPE Release() override;

    /// `XML`, `DOM` and `MS-DOM`, in version 1.0, 2.0 or any.
    HRESULT STDMETHODCALLTYPE hasFeature(BSTR feature, BSTR version, VARIANT_BOOL* has) override;

private:
    ~DomImplementation() = default;

    ReferenceCount m_count;
};

} // namespace OvPlatform
