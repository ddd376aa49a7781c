#pragma once

#include "Com/Dispatch.h"

#include <msxml6.h>

namespace OvPlatform {

class DomImplementation final : public Dispatch<CountedObject<IXMLDOMImplementation>> {
public:
    /// `XML`, `DOM` and `MS-DOM`, in version 1.0, 2.0 or any.
    HRESULT STDMETHODCALLTYPE hasFeature(BSTR feature, BSTR version, VARIANT_BOOL* has) override;

private:
    ~DomImplementation() override = default;
};

} // namespace OvPlatform
