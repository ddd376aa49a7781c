// A module of the older kind: DllGetClassObject hands out the filter itself. It is a service module too.
#include <filterpipeline.h>
#include <windows.h>

#include <oleauto.h>

namespace {

class OldFilter final : public IPrintPipelineFilter {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** object) override {
        const bool known = riid == __uuidof(IUnknown) || riid == __uuidof(IPrintPipelineFilter);
        *object = known ? this : nullptr;
        if (known) AddRef();
        return known ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++m_references; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = --m_references;
        if (left == 0) delete this;
        return left;
    }
    HRESULT STDMETHODCALLTYPE InitializeFilter(IInterFilterCommunicator*, IPrintPipelinePropertyBag*,
                                               IPrintPipelineManagerControl*) override {
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE ShutdownOperation() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE StartOperation() override { return E_ABORT; }

private:
    ULONG m_references = 1;
};

} // namespace

#define EXPORT extern "C" __attribute__((visibility("default")))

EXPORT HRESULT DllGetClassObject(REFCLSID, REFIID riid, void** object) {
    *object = nullptr;
    if (riid != __uuidof(IPrintPipelineFilter)) return E_NOINTERFACE;
    *object = new OldFilter;
    return S_OK;
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
