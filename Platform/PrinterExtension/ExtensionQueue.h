#pragma once

#include "Com/Dispatch.h"
#include "Spooler/QueueFolder.h"

#include <atlcomcli.h>
#include <printerextension.h>

namespace OvPlatform {

/// A printer's queue as a printer extension sees it: as it was when the extension was told of it, also if it
/// has gone since. What is set in its bag lasts as long as this object. One thread at a time.
class ExtensionQueue final : public Dispatch<CountedObject<IPrinterQueue>> {
public:
    explicit ExtensionQueue(std::shared_ptr<const QueueFolder> queue) : m_queue(std::move(queue)) {}

    /// The handle is this object's.
    HRESULT STDMETHODCALLTYPE get_Handle(HANDLE* handle) override;
    HRESULT STDMETHODCALLTYPE get_Name(BSTR* text) override;
    /// There is no device to ask: E_NOTIMPL.
    HRESULT STDMETHODCALLTYPE SendBidiQuery(BSTR text) override;
    HRESULT STDMETHODCALLTYPE GetProperties(IPrinterPropertyBag** bag) override;

private:
    ~ExtensionQueue() override;

    const std::shared_ptr<const QueueFolder> m_queue;
    HANDLE m_handle = nullptr;          // once asked for
    CComPtr<IPrinterPropertyBag> m_bag; // the same
};

} // namespace OvPlatform
