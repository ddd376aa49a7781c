#pragma once

#include "Com/Dispatch.h"
#include "PrinterExtension/UserProperties.h"

#include <printerextension.h>

namespace OvPlatform {

/// The current user's bag of a printer behind the published interface. What is set is in the user's file when
/// the call returns, and every bag of that printer sees it. May be called from any thread.
///
/// Results beside those of QueuePropertyBag: E_INVALIDARG for text that no XML can hold;
/// HRESULT_FROM_WIN32(ERROR_FILE_CORRUPT) for a file that is damaged or cannot be read, which then stays as
/// it is; the system's own where the file cannot be written, and it keeps what it had.
class OV_PLATFORM_API UserPropertyBag final : public Dispatch<CountedObject<IPrinterPropertyBag>> {
public:
    explicit UserPropertyBag(const std::wstring& printerName) : m_properties(printerName) {}

    HRESULT STDMETHODCALLTYPE GetBool(BSTR name, BOOL* value) override;
    HRESULT STDMETHODCALLTYPE SetBool(BSTR name, BOOL value) override;
    HRESULT STDMETHODCALLTYPE GetInt32(BSTR name, LONG* value) override;
    HRESULT STDMETHODCALLTYPE SetInt32(BSTR name, LONG value) override;
    HRESULT STDMETHODCALLTYPE GetString(BSTR name, BSTR* text) override;
    HRESULT STDMETHODCALLTYPE SetString(BSTR name, BSTR value) override;
    HRESULT STDMETHODCALLTYPE GetBytes(BSTR name, DWORD* count, BYTE** bytes) override;
    HRESULT STDMETHODCALLTYPE SetBytes(BSTR name, DWORD count, BYTE* bytes) override;
    HRESULT STDMETHODCALLTYPE GetReadStream(BSTR name, IStream** stream) override;
    /// Each write to the stream is a change of the file.
    HRESULT STDMETHODCALLTYPE GetWriteStream(BSTR name, IStream** stream) override;

private:
    ~UserPropertyBag() override = default;

    /// Asks the values of this moment.
    template <class Question>
    HRESULT Ask(Question question) const;
    template <class Make>
    HRESULT Set(BSTR name, Make make) const;

    const UserProperties m_properties;
};

} // namespace OvPlatform
