#pragma once

#include "Com/Dispatch.h"
#include "Com/PlatformExport.h"
#include "Spooler/QueueDescription.h"
#include "Spooler/QueueValueStream.h"

#include <printerextension.h>

#include <map>
#include <mutex>

namespace OvPlatform {

/// A bag of a queue behind the published interface. The values are the bag's own from then on: what is set
/// lasts as long as the bag, and does not reach the queue folder. May be called from any thread.
///
/// Results: HRESULT_FROM_WIN32(ERROR_NOT_FOUND) for a name that the bag lacks; E_INVALIDARG for a value of
/// another type than asked, and for an empty name; HRESULT_FROM_WIN32(ERROR_ACCESS_DENIED) for setting in a
/// read-only bag, which is what a driver's bag is while jobs print. Bytes and streams are apart: each has its
/// own calls.
class OV_PLATFORM_API QueuePropertyBag final : public Dispatch<CountedObject<IPrinterPropertyBag>> {
public:
    enum class Access { ReadOnly, ReadWrite };

    /// Gives the bag with one reference. E_OUTOFMEMORY.
    static HRESULT Create(const QueueValues& values, Access access, IPrinterPropertyBag** bag);

    HRESULT STDMETHODCALLTYPE GetBool(BSTR name, BOOL* value) override;
    HRESULT STDMETHODCALLTYPE SetBool(BSTR name, BOOL value) override;
    HRESULT STDMETHODCALLTYPE GetInt32(BSTR name, LONG* value) override;
    HRESULT STDMETHODCALLTYPE SetInt32(BSTR name, LONG value) override;
    HRESULT STDMETHODCALLTYPE GetString(BSTR name, BSTR* text) override;
    HRESULT STDMETHODCALLTYPE SetString(BSTR name, BSTR value) override;
    HRESULT STDMETHODCALLTYPE GetBytes(BSTR name, DWORD* count, BYTE** bytes) override;
    HRESULT STDMETHODCALLTYPE SetBytes(BSTR name, DWORD count, BYTE* bytes) override;
    HRESULT STDMETHODCALLTYPE GetReadStream(BSTR name, IStream** stream) override;
    HRESULT STDMETHODCALLTYPE GetWriteStream(BSTR name, IStream** stream) override;

private:
    using StreamValue = std::shared_ptr<SharedBytes>;
    using Value = std::variant<std::wstring, bool, std::int32_t, QueueBytes, StreamValue>;

    QueuePropertyBag(const QueueValues& values, Access access);
    ~QueuePropertyBag() override = default;

    template <class Type, class Use>
    HRESULT Get(BSTR name, Use use);
    template <class Make>
    HRESULT Set(BSTR name, Make make);

    const Access m_access;
    std::mutex m_lock;
    std::map<std::wstring, Value, std::less<>> m_values;
};

} // namespace OvPlatform
