#include "PrinterExtension/EventSinks.h"

#include <olectl.h>

namespace OvPlatform {

HRESULT EventSinks::Advise(IUnknown* sink, DWORD* cookie) {
    CComPtr<IPrinterExtensionEvent> events;
    if (FAILED(sink->QueryInterface(&events)) || !events) return CONNECT_E_CANNOTCONNECT;
    const std::lock_guard guard(m_lock);
    m_sinks.emplace(m_lastCookie + 1, std::move(events));
    *cookie = ++m_lastCookie;
    return S_OK;
}

HRESULT EventSinks::Unadvise(DWORD cookie) {
    CComPtr<IPrinterExtensionEvent> gone; // outside the lock: it may end, and call
    const std::lock_guard guard(m_lock);
    const auto found = m_sinks.find(cookie);
    if (found == m_sinks.end()) return CONNECT_E_NOCONNECTION;
    gone = found->second;
    m_sinks.erase(found);
    return S_OK;
}

ULONG EventSinks::Enable() {
    const std::lock_guard guard(m_lock);
    m_isEnabled = true;
    return ++m_enabling;
}

void EventSinks::Disable() {
    const std::lock_guard guard(m_lock);
    m_isEnabled = false;
}

// The sink behind the cookie, which moves on; null where there is none, or nobody is to be told any more.
CComPtr<IPrinterExtensionEvent> EventSinks::Next(ULONG enabling, DWORD& cookie) {
    const std::lock_guard guard(m_lock);
    const auto found = m_sinks.upper_bound(cookie);
    if (!m_isEnabled || enabling != m_enabling || found == m_sinks.end()) return {};
    cookie = found->first;
    return found->second;
}

void EventSinks::Tell(ULONG enabling, IPrinterExtensionContextCollection* printers) {
    DWORD cookie = 0;
    while (const CComPtr<IPrinterExtensionEvent> sink = Next(enabling, cookie)) {
        const bool isNested = m_enumeration->isRunning; // a sink may pump
        m_enumeration->isRunning = true;
        try {
            sink->OnPrinterQueuesEnumerated(printers);
        } catch (...) {
            // Nobody above could make anything of it, and the other sinks are still to be told.
        }
        m_enumeration->isRunning = isNested;
    }
}

} // namespace OvPlatform
