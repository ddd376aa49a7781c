#include "PrinterExtension/EventConnectionPoint.h"

#include "Com/Guarded.h"

namespace OvPlatform {

HRESULT EventConnectionPoint::GetConnectionInterface(IID* iid) {
    if (iid == nullptr) return E_POINTER;
    *iid = __uuidof(IPrinterExtensionEvent);
    return S_OK;
}

HRESULT EventConnectionPoint::GetConnectionPointContainer(IConnectionPointContainer** container) {
    if (container == nullptr) return E_POINTER;
    CComPtr<IConnectionPointContainer> manager(m_manager);
    *container = manager.Detach();
    return S_OK;
}

HRESULT EventConnectionPoint::Advise(IUnknown* sink, DWORD* cookie) {
    if (cookie == nullptr) return E_POINTER;
    *cookie = 0;
    if (sink == nullptr) return E_POINTER;
    return Guarded([&] { return m_sinks->Advise(sink, cookie); });
}

HRESULT EventConnectionPoint::Unadvise(DWORD cookie) {
    // No fault point: a caller has no answer to it, and its sink would stay.
    return m_sinks->Unadvise(cookie);
}

HRESULT EventConnectionPoint::EnumConnections(IEnumConnections** connections) {
    if (connections != nullptr) *connections = nullptr;
    return E_NOTIMPL;
}

} // namespace OvPlatform
