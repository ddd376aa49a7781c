#include "PrinterExtension/ContextCollection.h"

#include "Com/FaultInjection.h"

namespace OvPlatform {

HRESULT ContextCollection::get_Count(ULONG* value) {
    if (value == nullptr) return E_POINTER;
    *value = 0;
    if (const HRESULT fault = FaultPoint(); FAILED(fault)) return fault;
    *value = static_cast<ULONG>(m_contexts.size());
    return S_OK;
}

HRESULT ContextCollection::GetAt(ULONG value, IPrinterExtensionContext** context) {
    if (context == nullptr) return E_POINTER;
    *context = nullptr;
    if (const HRESULT fault = FaultPoint(); FAILED(fault)) return fault;
    if (value >= m_contexts.size()) return E_INVALIDARG;
    CComPtr<IPrinterExtensionContext> found(m_contexts[value]);
    *context = found.Detach();
    return S_OK;
}

HRESULT ContextCollection::get__NewEnum(IUnknown** object) {
    if (object != nullptr) *object = nullptr;
    return E_NOTIMPL;
}

} // namespace OvPlatform
