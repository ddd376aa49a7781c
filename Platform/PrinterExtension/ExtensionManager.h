#pragma once

#include "Com/CountedObject.h"
#include "PrinterExtension/EventSinks.h"
#include "System/MessageQueue.h"

#include <ocidl.h>

namespace OvPlatform {

/// The class PrinterExtensionManager: tells its sinks of the printers that the process knows. They are told
/// on the thread that made the manager, when that thread dispatches its messages. A queue folder does not say
/// which extension it belongs to, so each extension is told of all printers. Any thread, but for that.
class ExtensionManager final : public CountedObject<IPrinterExtensionManager, IConnectionPointContainer> {
public:
    static HRESULT Create(REFIID riid, void** object);

    /// Tells anew of the printers that there are now, each time. E_INVALIDARG for the null identifier;
    /// RPC_E_DISCONNECTED once the manager's thread has ended.
    HRESULT STDMETHODCALLTYPE EnableEvents(GUID id) override;
    HRESULT STDMETHODCALLTYPE DisableEvents() override;

    /// There is the one of IPrinterExtensionEvent; nobody lists them: E_NOTIMPL.
    HRESULT STDMETHODCALLTYPE EnumConnectionPoints(IEnumConnectionPoints** points) override;
    /// CONNECT_E_NOCONNECTION for another interface.
    HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID riid, IConnectionPoint** point) override;

private:
    ExtensionManager() = default;
    ~ExtensionManager() override { m_sinks->Disable(); }

    CComPtr<IPrinterExtensionContextCollection> Printers() const;

    const std::shared_ptr<MessageQueue> m_messages = MessageQueue::OfThread();
    const std::shared_ptr<EventSinks> m_sinks = std::make_shared<EventSinks>();
};

} // namespace OvPlatform
