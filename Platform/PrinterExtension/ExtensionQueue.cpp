#include "PrinterExtension/ExtensionQueue.h"

#include "Com/Guarded.h"
#include "Spooler/PrinterHandles.h"
#include "Spooler/QueuePropertyBag.h"

namespace OvPlatform {

ExtensionQueue::~ExtensionQueue() {
    if (m_handle != nullptr) PrinterHandles::Close(m_handle);
}

HRESULT ExtensionQueue::get_Handle(HANDLE* handle) {
    if (handle == nullptr) return E_POINTER;
    *handle = nullptr;
    return Guarded([&] {
        if (m_handle == nullptr) m_handle = PrinterHandles::Open(m_queue);
        *handle = m_handle;
        return S_OK;
    });
}

HRESULT ExtensionQueue::get_Name(BSTR* text) {
    if (text == nullptr) return E_POINTER;
    *text = nullptr;
    return Guarded([&] {
        const std::wstring& name = m_queue->PrinterName();
        *text = SysAllocStringLen(name.data(), static_cast<UINT>(name.size()));
        return *text != nullptr ? S_OK : E_OUTOFMEMORY;
    });
}

HRESULT ExtensionQueue::SendBidiQuery(BSTR) { return E_NOTIMPL; }

HRESULT ExtensionQueue::GetProperties(IPrinterPropertyBag** bag) {
    if (bag == nullptr) return E_POINTER;
    *bag = nullptr;
    return Guarded([&]() -> HRESULT {
        if (!m_bag) {
            const HRESULT result = QueuePropertyBag::Create(m_queue->QueueProperties(),
                                                            QueuePropertyBag::Access::ReadWrite, &m_bag);
            if (FAILED(result)) return result;
        }
        return m_bag.CopyTo(bag);
    });
}

} // namespace OvPlatform
