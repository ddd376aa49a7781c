#pragma once

#include "Com/Dispatch.h"
#include "Spooler/QueueFolder.h"

#include <atlcomcli.h>
#include <printerextension.h>

#include <memory>

namespace OvPlatform {

/// Whether printers are being told to the sinks at the moment. Of the thread that made the manager.
struct EnumerationState {
    bool isRunning = false;
};

/// One printer, handed to a printer extension. Its queue and its bags are the same at each call; the ticket
/// is a new one, of the printer's default. One thread at a time.
class ExtensionContext final : public Dispatch<CountedObject<IPrinterExtensionContext>> {
public:
    ExtensionContext(std::shared_ptr<const QueueFolder> queue,
                     std::shared_ptr<const EnumerationState> enumeration)
        : m_queue(std::move(queue)), m_enumeration(std::move(enumeration)) {}

    HRESULT STDMETHODCALLTYPE get_PrinterQueue(IPrinterQueue** queue) override;
    /// E_ILLEGAL_METHOD_CALL while the printers are being told.
    HRESULT STDMETHODCALLTYPE get_PrintSchemaTicket(IPrintSchemaTicket** ticket) override;
    HRESULT STDMETHODCALLTYPE get_DriverProperties(IPrinterPropertyBag** bag) override;
    HRESULT STDMETHODCALLTYPE get_UserProperties(IPrinterPropertyBag** bag) override;

private:
    ~ExtensionContext() override = default;

    const std::shared_ptr<const QueueFolder> m_queue;
    const std::shared_ptr<const EnumerationState> m_enumeration;
    // Once asked for.
    CComPtr<IPrinterQueue> m_printerQueue;
    CComPtr<IPrinterPropertyBag> m_driverBag;
    CComPtr<IPrinterPropertyBag> m_userBag;
};

} // namespace OvPlatform
