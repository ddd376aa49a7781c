#include "PrintTime/IXDriverEventSink.h"

#include <wchar.h>

IXDriverEventSink::IXDriverEventSink(const wchar_t* printerName, HANDLE event)
    : m_references(1), m_printerName(printerName), m_event(event) {}

IXDriverEventSink::~IXDriverEventSink() = default;

HRESULT IXDriverEventSink::QueryInterface(REFIID riid, void** object) {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    if (riid != __uuidof(IUnknown) && riid != __uuidof(IDispatch) && riid != __uuidof(IPrinterExtensionEvent))
        return E_NOINTERFACE;
    *object = static_cast<IPrinterExtensionEvent*>(this);
    AddRef();
    return S_OK;
}

ULONG IXDriverEventSink::AddRef() { return ++m_references; }

ULONG IXDriverEventSink::Release() {
    const ULONG left = --m_references;
    if (left == 0) delete this;
    return left;
}

HRESULT IXDriverEventSink::GetTypeInfoCount(UINT*) { return E_NOTIMPL; }

HRESULT IXDriverEventSink::GetTypeInfo(UINT, LCID, ITypeInfo**) { return E_NOTIMPL; }

HRESULT IXDriverEventSink::GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) { return E_NOTIMPL; }

HRESULT IXDriverEventSink::Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) {
    return E_NOTIMPL;
}

HRESULT IXDriverEventSink::OnDriverEvent(IPrinterExtensionEventArgs*) { return S_OK; }

HRESULT IXDriverEventSink::OnPrinterQueuesEnumerated(IPrinterExtensionContextCollection* printers) {
    // First, so that nobody goes on waiting for a list that cannot be read.
    if (m_event != nullptr) SetEvent(m_event);
    if (m_printerName == nullptr || printers == nullptr) return E_FAIL;
    ULONG count = 0;
    if (const HRESULT hr = printers->get_Count(&count); FAILED(hr)) return hr;
    for (ULONG index = 0; index < count; ++index) {
        CComPtr<IPrinterExtensionContext> printer;
        if (FAILED(printers->GetAt(index, &printer)) || !printer || !IsWanted(*printer)) continue;
        m_context = printer;
        return S_OK;
    }
    return E_FAIL;
}

bool IXDriverEventSink::IsWanted(IPrinterExtensionContext& printer) const {
    CComPtr<IPrinterQueue> queue;
    CComBSTR name;
    if (FAILED(printer.get_PrinterQueue(&queue)) || !queue || FAILED(queue->get_Name(&name))) return false;
    return name && _wcsicmp(name, m_printerName) == 0;
}

IPrinterExtensionContext* IXDriverEventSink::GetContext() const { return m_context; }

void IXDriverEventSink::Forget() {
    m_printerName = nullptr;
    m_event = nullptr;
}
