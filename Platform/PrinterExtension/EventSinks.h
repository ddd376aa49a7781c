#pragma once

#include "PrinterExtension/ExtensionContext.h"

#include <atlcomcli.h>
#include <printerextension.h>

#include <map>
#include <memory>
#include <mutex>

namespace OvPlatform {

/// Who is told of a printer extension's events, and whether anybody is to be told at all. Any thread, but for
/// the telling, which is of the thread that made the manager.
class EventSinks {
public:
    /// CONNECT_E_CANNOTCONNECT for one that does not answer for the event interface. Throws std::bad_alloc.
    HRESULT Advise(IUnknown* sink, DWORD* cookie);
    /// From then on the sink is not called any more. CONNECT_E_NOCONNECTION.
    HRESULT Unadvise(DWORD cookie);

    /// Ends what was enabled before. The number says later whether this is still in force.
    ULONG Enable();
    void Disable();

    /// Tells each sink of the printers, as long as that enabling is in force. What a sink answers, or throws,
    /// is its own affair.
    void Tell(ULONG enabling, IPrinterExtensionContextCollection* printers);

    const std::shared_ptr<EnumerationState>& Enumeration() const { return m_enumeration; }

private:
    CComPtr<IPrinterExtensionEvent> Next(ULONG enabling, DWORD& cookie);

    const std::shared_ptr<EnumerationState> m_enumeration = std::make_shared<EnumerationState>();
    std::mutex m_lock;
    std::map<DWORD, CComPtr<IPrinterExtensionEvent>> m_sinks;
    DWORD m_lastCookie = 0;
    ULONG m_enabling = 0;
    bool m_isEnabled = false;
};

} // namespace OvPlatform
