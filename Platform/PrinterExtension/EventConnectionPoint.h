#pragma once

#include "Com/CountedObject.h"
#include "PrinterExtension/EventSinks.h"

#include <atlcomcli.h>
#include <ocidl.h>

namespace OvPlatform {

/// Where sinks for a printer extension's events are made known.
class EventConnectionPoint final : public CountedObject<IConnectionPoint> {
public:
    EventConnectionPoint(IConnectionPointContainer* manager, std::shared_ptr<EventSinks> sinks)
        : m_manager(manager), m_sinks(std::move(sinks)) {}

    HRESULT STDMETHODCALLTYPE GetConnectionInterface(IID* iid) override;
    HRESULT STDMETHODCALLTYPE GetConnectionPointContainer(IConnectionPointContainer** container) override;
    HRESULT STDMETHODCALLTYPE Advise(IUnknown* sink, DWORD* cookie) override;
    HRESULT STDMETHODCALLTYPE Unadvise(DWORD cookie) override;
    /// Nobody lists them: E_NOTIMPL.
    HRESULT STDMETHODCALLTYPE EnumConnections(IEnumConnections** connections) override;

private:
    ~EventConnectionPoint() override = default;

    const CComPtr<IConnectionPointContainer> m_manager;
    const std::shared_ptr<EventSinks> m_sinks;
};

} // namespace OvPlatform
