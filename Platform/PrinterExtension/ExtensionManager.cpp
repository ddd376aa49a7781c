#include "PrinterExtension/ExtensionManager.h"

#include "Com/ClassTable.h"
#include "Com/Guarded.h"
#include "PrinterExtension/ContextCollection.h"
#include "PrinterExtension/EventConnectionPoint.h"
#include "Spooler/QueueRegistry.h"

#include <olectl.h>

namespace OvPlatform {

namespace {

const ClassRegistration registration(__uuidof(PrinterExtensionManager), &ExtensionManager::Create);

} // namespace

HRESULT ExtensionManager::Create(REFIID riid, void** object) {
    return OrOutOfMemory([&] {
        CComPtr<IPrinterExtensionManager> manager;
        manager.Attach(new ExtensionManager);
        return manager->QueryInterface(riid, object);
    });
}

CComPtr<IPrinterExtensionContextCollection> ExtensionManager::Printers() const {
    std::vector<CComPtr<IPrinterExtensionContext>> contexts;
    for (auto& queue : QueueRegistry::All()) {
        CComPtr<IPrinterExtensionContext> context;
        context.Attach(new ExtensionContext(std::move(queue), m_sinks->Enumeration()));
        contexts.push_back(std::move(context));
    }
    CComPtr<IPrinterExtensionContextCollection> printers;
    printers.Attach(new ContextCollection(std::move(contexts)));
    return printers;
}

HRESULT ExtensionManager::EnableEvents(GUID id) {
    return Guarded([&] {
        if (id == GUID{}) return E_INVALIDARG;
        // Whatever can fail does so now, when there is somebody to tell.
        const CComPtr<IPrinterExtensionContextCollection> printers = Printers();
        const ULONG enabling = m_sinks->Enable();
        const auto tell = [sinks = m_sinks, printers, enabling] { sinks->Tell(enabling, printers); };
        return m_messages->Post(tell) ? S_OK : RPC_E_DISCONNECTED;
    });
}

HRESULT ExtensionManager::DisableEvents() {
    m_sinks->Disable();
    return S_OK;
}

HRESULT ExtensionManager::EnumConnectionPoints(IEnumConnectionPoints** points) {
    if (points != nullptr) *points = nullptr;
    return E_NOTIMPL;
}

HRESULT ExtensionManager::FindConnectionPoint(REFIID riid, IConnectionPoint** point) {
    if (point == nullptr) return E_POINTER;
    *point = nullptr;
    return Guarded([&] {
        if (riid != __uuidof(IPrinterExtensionEvent)) return CONNECT_E_NOCONNECTION;
        *point = new EventConnectionPoint(this, m_sinks);
        return S_OK;
    });
}

} // namespace OvPlatform
