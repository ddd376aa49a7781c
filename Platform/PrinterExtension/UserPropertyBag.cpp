#include "PrinterExtension/UserPropertyBag.h"

#include "PrinterExtension/UserPropertyFailure.h"
#include "PrinterExtension/UserValueStream.h"
#include "Spooler/QueuePropertyBag.h"

#include <atlcomcli.h>

namespace OvPlatform {

template <class Question>
HRESULT UserPropertyBag::Ask(Question question) const {
    CComPtr<IPrinterPropertyBag> values;
    const HRESULT result = WithUserProperties([&] {
        return QueuePropertyBag::Create(m_properties.Load(), QueuePropertyBag::Access::ReadOnly, &values);
    });
    return FAILED(result) ? result : question(*values);
}

template <class Make>
HRESULT UserPropertyBag::Set(BSTR name, Make make) const {
    return WithUserProperties([&] {
        if (SysStringLen(name) == 0) return E_INVALIDARG;
        m_properties.Store(std::wstring(name, SysStringLen(name)), make());
        return S_OK;
    });
}

HRESULT UserPropertyBag::GetBool(BSTR name, BOOL* value) {
    if (value == nullptr) return E_POINTER;
    *value = FALSE;
    return Ask([&](IPrinterPropertyBag& values) { return values.GetBool(name, value); });
}

HRESULT UserPropertyBag::SetBool(BSTR name, BOOL value) {
    return Set(name, [&]() -> QueueValue { return value != FALSE; });
}

HRESULT UserPropertyBag::GetInt32(BSTR name, LONG* value) {
    if (value == nullptr) return E_POINTER;
    *value = 0;
    return Ask([&](IPrinterPropertyBag& values) { return values.GetInt32(name, value); });
}

HRESULT UserPropertyBag::SetInt32(BSTR name, LONG value) {
    return Set(name, [&]() -> QueueValue { return std::int32_t{value}; });
}

HRESULT UserPropertyBag::GetString(BSTR name, BSTR* text) {
    if (text == nullptr) return E_POINTER;
    *text = nullptr;
    return Ask([&](IPrinterPropertyBag& values) { return values.GetString(name, text); });
}

HRESULT UserPropertyBag::SetString(BSTR name, BSTR value) {
    return Set(name, [&]() -> QueueValue {
        return value != nullptr ? std::wstring(value, SysStringLen(value)) : std::wstring();
    });
}

HRESULT UserPropertyBag::GetBytes(BSTR name, DWORD* count, BYTE** bytes) {
    if (count == nullptr || bytes == nullptr) return E_POINTER;
    *count = 0;
    *bytes = nullptr;
    return Ask([&](IPrinterPropertyBag& values) { return values.GetBytes(name, count, bytes); });
}

HRESULT UserPropertyBag::SetBytes(BSTR name, DWORD count, BYTE* bytes) {
    if (bytes == nullptr && count != 0) return E_INVALIDARG;
    return Set(name, [&]() -> QueueValue {
        return count != 0 ? QueueBytes{{bytes, bytes + count}} : QueueBytes{};
    });
}

HRESULT UserPropertyBag::GetReadStream(BSTR name, IStream** stream) {
    if (stream == nullptr) return E_POINTER;
    *stream = nullptr;
    return Ask([&](IPrinterPropertyBag& values) { return values.GetReadStream(name, stream); });
}

HRESULT UserPropertyBag::GetWriteStream(BSTR name, IStream** stream) {
    if (stream == nullptr) return E_POINTER;
    *stream = nullptr;
    return WithUserProperties([&] {
        if (SysStringLen(name) == 0) return E_INVALIDARG;
        const std::wstring key(name, SysStringLen(name));
        const QueueValues values = m_properties.Load();
        const auto found = values.find(key);
        const auto* stored = found != values.end() ? std::get_if<QueueStream>(&found->second) : nullptr;
        if (found != values.end() && stored == nullptr) return E_INVALIDARG;
        *stream = new UserValueStream(m_properties, key,
                                      stored != nullptr ? stored->bytes : std::vector<std::uint8_t>());
        return S_OK;
    });
}

} // namespace OvPlatform
