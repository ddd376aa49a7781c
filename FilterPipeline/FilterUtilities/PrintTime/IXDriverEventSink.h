#pragma once

#include "ComSupport/FilterUtilitiesExport.h"

#include <windows.h>
#include <atlcomcli.h>
#include <printerextension.h>

#include <atomic>
#include <cstdint>

/// Receives the printers of a printer extension and keeps the wanted one. Born with one reference. On the
/// thread that pumps the messages by which it is called.
class OV_FILTER_UTILITIES_API IXDriverEventSink : public IPrinterExtensionEvent {
public:
    /// Keeps both as they are: they have to outlive the calls, up to Forget. Names are compared without
    /// regard to case.
    IXDriverEventSink(const wchar_t* printerName, HANDLE event);
    IXDriverEventSink(const IXDriverEventSink&) = delete;
    IXDriverEventSink& operator=(const IXDriverEventSink&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override;
    ULONG STDMETHODCALLTYPE Release() override;

    // Nobody calls these: E_NOTIMPL.
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID riid, LPOLESTR* names, UINT count, LCID locale,
                                            DISPID* ids) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID riid, LCID locale, WORD flags,
                                     DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception,
                                     UINT* argument) override;

    /// Does nothing.
    HRESULT STDMETHODCALLTYPE OnDriverEvent(IPrinterExtensionEventArgs* arguments) override;
    /// Sets the event, whatever it finds; then keeps the first printer of the wanted name. E_FAIL where there
    /// is none.
    HRESULT STDMETHODCALLTYPE
    OnPrinterQueuesEnumerated(IPrinterExtensionContextCollection* printers) override;

    /// The wanted printer; null as long as none was found.
    [[nodiscard]] IPrinterExtensionContext* GetContext() const;
    /// Lets go of the name and of the event: from now on it finds nothing more.
    void Forget();

protected:
    virtual ~IXDriverEventSink();

private:
    bool IsWanted(IPrinterExtensionContext& printer) const;

    std::atomic<std::uint32_t> m_references;
    const wchar_t* m_printerName;
    HANDLE m_event;
    CComPtr<IPrinterExtensionContext> m_context;
};
