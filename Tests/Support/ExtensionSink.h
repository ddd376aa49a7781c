#pragma once

#include "Support/ComFake.h"

#include <printerextension.h>

#include <functional>

/// A sink of a printer extension's events that does with the printers whatever a test wants.
class ExtensionSink : public ComFake<IPrinterExtensionEvent, IDispatch> {
public:
    using Told = std::function<HRESULT(IPrinterExtensionContextCollection*)>;
    explicit ExtensionSink(Told told) : m_told(std::move(told)) {}

    HRESULT STDMETHODCALLTYPE OnDriverEvent(IPrinterExtensionEventArgs*) override { return E_UNEXPECTED; }
    HRESULT STDMETHODCALLTYPE
    OnPrinterQueuesEnumerated(IPrinterExtensionContextCollection* collection) override {
        return m_told(collection);
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                                     UINT*) override {
        return E_NOTIMPL;
    }

private:
    Told m_told;
};
