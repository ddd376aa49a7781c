// A module of the older kind: DllGetClassObject hands out the filter itself. It is a service module too.
#include "Support/Modules/TestFilter.h"

#include <oleauto.h>

namespace {

class OldFilter final : public TestFilter {
public:
    HRESULT STDMETHODCALLTYPE StartOperation() override { return E_ABORT; }
};

} // namespace

EXPORT HRESULT DllGetClassObject(REFCLSID, REFIID riid, void** object) {
    return HandOut<OldFilter>(riid, object);
}

EXPORT HRESULT DllCanUnloadNow() { return S_OK; }

EXPORT HRESULT DrvPopulateFilterServices(IPrintPipelinePropertyBag* bag) {
    VARIANT value;
    VariantInit(&value);
    value.vt = VT_BSTR;
    value.bstrVal = SysAllocString(L"served");
    const HRESULT hr = bag->AddProperty(L"TestService", &value);
    VariantClear(&value);
    return hr;
}
