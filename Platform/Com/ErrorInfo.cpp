#include "Com/CountedObject.h"
#include "Com/FaultInjection.h"

#include <atlcomcli.h>
#include <cguid.h>

#include <new>

namespace {

thread_local CComPtr<IErrorInfo> threadErrorInfo;

/// The platform's own record of an error: written through one interface, read through the other.
class ErrorRecord final : public OvPlatform::CountedObject<IErrorInfo, ICreateErrorInfo> {
public:
    HRESULT STDMETHODCALLTYPE GetGUID(GUID* guid) override {
        if (guid == nullptr) return E_INVALIDARG;
        *guid = m_guid;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetSource(BSTR* source) override { return Give(m_source, source); }
    HRESULT STDMETHODCALLTYPE GetDescription(BSTR* description) override {
        return Give(m_description, description);
    }
    HRESULT STDMETHODCALLTYPE GetHelpFile(BSTR* helpFile) override { return Give(m_helpFile, helpFile); }
    HRESULT STDMETHODCALLTYPE GetHelpContext(DWORD* helpContext) override {
        if (helpContext == nullptr) return E_INVALIDARG;
        *helpContext = m_helpContext;
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE SetGUID(REFGUID guid) override {
        m_guid = guid;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE SetSource(LPOLESTR source) override { return Take(m_source, source); }
    HRESULT STDMETHODCALLTYPE SetDescription(LPOLESTR description) override {
        return Take(m_description, description);
    }
    HRESULT STDMETHODCALLTYPE SetHelpFile(LPOLESTR helpFile) override { return Take(m_helpFile, helpFile); }
    HRESULT STDMETHODCALLTYPE SetHelpContext(DWORD helpContext) override {
        m_helpContext = helpContext;
        return S_OK;
    }

private:
    static HRESULT Give(const CComBSTR& text, BSTR* out) {
        if (out == nullptr) return E_INVALIDARG;
        *out = nullptr;
        if (HRESULT fault = OvPlatform::FaultPoint(); FAILED(fault)) return fault;
        return text.CopyTo(out);
    }
    static HRESULT Take(CComBSTR& text, LPOLESTR value) {
        if (HRESULT fault = OvPlatform::FaultPoint(); FAILED(fault)) return fault;
        BSTR copy = SysAllocString(value);
        if (value != nullptr && copy == nullptr) return E_OUTOFMEMORY;
        text.Attach(copy);
        return S_OK;
    }

    GUID m_guid = GUID_NULL;
    CComBSTR m_source;
    CComBSTR m_description;
    CComBSTR m_helpFile;
    DWORD m_helpContext = 0;
};

} // namespace

HRESULT SetErrorInfo(ULONG reserved, IErrorInfo* information) {
    if (reserved != 0) return E_INVALIDARG;
    threadErrorInfo = information;
    return S_OK;
}

HRESULT GetErrorInfo(ULONG reserved, IErrorInfo** information) {
    if (reserved != 0 || information == nullptr) return E_INVALIDARG;
    *information = threadErrorInfo.Detach();
    return *information != nullptr ? S_OK : S_FALSE;
}

HRESULT CreateErrorInfo(ICreateErrorInfo** information) {
    if (information == nullptr) return E_INVALIDARG;
    *information = nullptr;
    if (HRESULT fault = OvPlatform::FaultPoint(); FAILED(fault)) return fault;
    CComPtr<ErrorRecord> record;
    record.Attach(new (std::nothrow) ErrorRecord);
    if (!record) return E_OUTOFMEMORY;
    *information = record.Detach();
    return S_OK;
}
