#include "PrinterExtension/ExtensionContext.h"

#include "Com/Guarded.h"
#include "PrinterExtension/ExtensionQueue.h"
#include "PrinterExtension/SchemaTicket.h"
#include "PrinterExtension/UserPropertyBag.h"
#include "Spooler/QueuePropertyBag.h"

namespace OvPlatform {

namespace {

// Hands out an object, made by the first who asks for it.
template <class Interface, class Make>
HRESULT Give(CComPtr<Interface>& kept, Interface** place, Make make) {
    if (place == nullptr) return E_POINTER;
    *place = nullptr;
    return Guarded([&]() -> HRESULT {
        if (!kept)
            if (const HRESULT result = make(); FAILED(result)) return result;
        return kept.CopyTo(place);
    });
}

} // namespace

HRESULT ExtensionContext::get_PrinterQueue(IPrinterQueue** queue) {
    return Give(m_printerQueue, queue, [&] {
        m_printerQueue.Attach(new ExtensionQueue(m_queue));
        return S_OK;
    });
}

HRESULT ExtensionContext::get_PrintSchemaTicket(IPrintSchemaTicket** ticket) {
    if (ticket == nullptr) return E_POINTER;
    *ticket = nullptr;
    if (m_enumeration->isRunning) return E_ILLEGAL_METHOD_CALL;
    return Guarded([&] { return SchemaTicket::Create(m_queue->DefaultTicket(), ticket); });
}

HRESULT ExtensionContext::get_DriverProperties(IPrinterPropertyBag** bag) {
    return Give(m_driverBag, bag, [&] {
        return QueuePropertyBag::Create(m_queue->DriverProperties(), QueuePropertyBag::Access::ReadOnly,
                                        &m_driverBag);
    });
}

HRESULT ExtensionContext::get_UserProperties(IPrinterPropertyBag** bag) {
    return Give(m_userBag, bag, [&] {
        m_userBag.Attach(new UserPropertyBag(m_queue->PrinterName()));
        return S_OK;
    });
}

} // namespace OvPlatform
