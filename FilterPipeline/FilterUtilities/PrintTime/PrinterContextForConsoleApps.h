#pragma once

#include "ComSupport/FilterUtilitiesExport.h"
#include "PrintTime/IXDriverEventSink.h"

#include <SystemServices/SafeCoInitialize.h>

#include <windows.h>
#include <atlcomcli.h>
#include <ocidl.h>
#include <printerextension.h>

/// A printer's context for a program that runs beside a job and has no message loop of its own. The first
/// question that needs it connects to the printer extension; there is one try.
///
/// Belongs to the program's main thread, which it puts into a single-threaded apartment; while it connects,
/// it dispatches that thread's messages. Throws nothing.
class OV_FILTER_UTILITIES_API PrinterContextForConsoleApps {
public:
    /// The id is that of the driver, a GUID in braces. A name of more than 259 units is no printer's; of it,
    /// and of such an id, only the beginning is kept.
    PrinterContextForConsoleApps(const wchar_t* printerName, const wchar_t* driverId);
    PrinterContextForConsoleApps(const PrinterContextForConsoleApps&) = delete;
    PrinterContextForConsoleApps& operator=(const PrinterContextForConsoleApps&) = delete;
    virtual ~PrinterContextForConsoleApps();

    /// Connects, if that has not been tried yet.
    bool IsPrinterContextAvailable();
    const wchar_t* GetPrinterName();
    const wchar_t* GetPrinterDriverID();

    // What the printer's context gives: the caller's to release. E_FAIL for a null place, and where an
    // earlier try to connect has failed; the first such try tells its own reason.
    HRESULT get_PrinterQueue(IPrinterQueue** queue);
    HRESULT get_PrintSchemaTicket(IPrintSchemaTicket** ticket);
    HRESULT GetUserPropertyBag(IPrinterPropertyBag** bag);
    HRESULT GetDriverPropertyBag(IPrinterPropertyBag** bag);
    HRESULT GetQueuePropertyBag(IPrinterPropertyBag** bag);

protected:
    /// E_FAIL for an id that is no GUID, a printer that the extension does not name, and a second try; else
    /// what the platform says. Whether a failure to connect is reported as well is the caller's choice.
    HRESULT GetPrinterContextObjectOnFirstUse(bool reportsFailure);
    /// Dispatches the thread's messages until the event is set. False where neither it nor a message comes
    /// for so long, or the handle is none.
    bool RunMessageLoop(void* handle, ULONG milliseconds);

private:
    HRESULT Connect();
    HRESULT Ask(IConnectionPoint& events, IPrinterExtensionManager& manager, const GUID& driver);

    SafeCoInitialize m_apartment;
    wchar_t m_printerName[260];
    wchar_t m_driverId[260];
    bool m_hasFailed;
    CComPtr<IXDriverEventSink> m_sink;
    CComPtr<IPrinterExtensionContext> m_context;
};
