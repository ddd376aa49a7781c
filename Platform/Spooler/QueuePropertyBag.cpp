#include "Spooler/QueuePropertyBag.h"

#include "Com/FaultInjection.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace OvPlatform {

QueuePropertyBag::QueuePropertyBag(const QueueValues& values, Access access) : m_access(access) {
    for (const auto& [name, value] : values) {
        const auto* stream = std::get_if<QueueStream>(&value);
        if (stream != nullptr) {
            auto shared = std::make_shared<SharedBytes>();
            shared->bytes = stream->bytes;
            m_values.emplace(name, std::move(shared));
        } else if (const auto* text = std::get_if<std::wstring>(&value))
            m_values.emplace(name, *text);
        else if (const auto* flag = std::get_if<bool>(&value))
            m_values.emplace(name, *flag);
        else if (const auto* number = std::get_if<std::int32_t>(&value))
            m_values.emplace(name, *number);
        else
            m_values.emplace(name, std::get<QueueBytes>(value));
    }
}

HRESULT QueuePropertyBag::Create(const QueueValues& values, Access access, IPrinterPropertyBag** bag) {
    if (bag == nullptr) return E_POINTER;
    *bag = nullptr;
    try {
        *bag = new QueuePropertyBag(values, access);
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    }
    return S_OK;
}

// Hands the value of that name and type to use, under the lock.
template <class Type, class Use>
HRESULT QueuePropertyBag::Get(BSTR name, Use use) {
    if (HRESULT fault = FaultPoint(); FAILED(fault)) return fault;
    if (SysStringLen(name) == 0) return E_INVALIDARG;
    const std::lock_guard guard(m_lock);
    const auto found = m_values.find(std::wstring_view(name, SysStringLen(name)));
    if (found == m_values.end()) return HRESULT_FROM_WIN32(ERROR_NOT_FOUND);
    const auto* value = std::get_if<Type>(&found->second);
    return value ? use(*value) : E_INVALIDARG;
}

template <class Make>
HRESULT QueuePropertyBag::Set(BSTR name, Make make) {
    if (HRESULT fault = FaultPoint(); FAILED(fault)) return fault;
    if (m_access == Access::ReadOnly) return HRESULT_FROM_WIN32(ERROR_ACCESS_DENIED);
    if (SysStringLen(name) == 0) return E_INVALIDARG;
    try {
        Value value = make();
        const std::lock_guard guard(m_lock);
        m_values.insert_or_assign(std::wstring(name, SysStringLen(name)), std::move(value));
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    }
    return S_OK;
}

HRESULT QueuePropertyBag::GetBool(BSTR name, BOOL* value) {
    if (value == nullptr) return E_POINTER;
    *value = FALSE;
    return Get<bool>(name, [&](bool stored) {
        *value = stored ? TRUE : FALSE;
        return S_OK;
    });
}

HRESULT QueuePropertyBag::SetBool(BSTR name, BOOL value) {
    return Set(name, [&]() -> Value { return value != FALSE; });
}

HRESULT QueuePropertyBag::GetInt32(BSTR name, LONG* value) {
    if (value == nullptr) return E_POINTER;
    *value = 0;
    return Get<std::int32_t>(name, [&](std::int32_t stored) {
        *value = stored;
        return S_OK;
    });
}

HRESULT QueuePropertyBag::SetInt32(BSTR name, LONG value) {
    return Set(name, [&]() -> Value { return std::int32_t{value}; });
}

HRESULT QueuePropertyBag::GetString(BSTR name, BSTR* text) {
    if (text == nullptr) return E_POINTER;
    *text = nullptr;
    return Get<std::wstring>(name, [&](const std::wstring& stored) {
        *text = SysAllocStringLen(stored.data(), static_cast<UINT>(stored.size()));
        return *text ? S_OK : E_OUTOFMEMORY;
    });
}

HRESULT QueuePropertyBag::SetString(BSTR name, BSTR value) {
    return Set(name, [&]() -> Value {
        return value != nullptr ? std::wstring(value, SysStringLen(value)) : std::wstring();
    });
}

HRESULT QueuePropertyBag::GetBytes(BSTR name, DWORD* count, BYTE** bytes) {
    if (count == nullptr || bytes == nullptr) return E_POINTER;
    *count = 0;
    *bytes = nullptr;
    return Get<QueueBytes>(name, [&](const QueueBytes& stored) {
        // An empty value gives a block too, so that its caller has one to free.
        *bytes = static_cast<BYTE*>(CoTaskMemAlloc((std::max)(stored.bytes.size(), std::size_t{1})));
        if (!*bytes) return E_OUTOFMEMORY;
        if (!stored.bytes.empty()) std::memcpy(*bytes, stored.bytes.data(), stored.bytes.size());
        *count = static_cast<DWORD>(stored.bytes.size());
        return S_OK;
    });
}

HRESULT QueuePropertyBag::SetBytes(BSTR name, DWORD count, BYTE* bytes) {
    if (bytes == nullptr && count != 0) return E_INVALIDARG;
    return Set(name, [&]() -> Value {
        QueueBytes value;
        if (count != 0) value.bytes.assign(bytes, bytes + count);
        return value;
    });
}

HRESULT QueuePropertyBag::GetReadStream(BSTR name, IStream** stream) {
    if (stream == nullptr) return E_POINTER;
    *stream = nullptr;
    return Get<StreamValue>(
        name, [&](const StreamValue& stored) { return QueueValueStream::Create(stored, false, stream); });
}

HRESULT QueuePropertyBag::GetWriteStream(BSTR name, IStream** stream) {
    if (stream == nullptr) return E_POINTER;
    *stream = nullptr;
    if (HRESULT fault = FaultPoint(); FAILED(fault)) return fault;
    if (m_access == Access::ReadOnly) return HRESULT_FROM_WIN32(ERROR_ACCESS_DENIED);
    if (SysStringLen(name) == 0) return E_INVALIDARG;
    try {
        const std::lock_guard guard(m_lock);
        const auto [entry, added] = m_values.try_emplace(std::wstring(name, SysStringLen(name)));
        if (added) entry->second = std::make_shared<SharedBytes>();
        const auto* stored = std::get_if<StreamValue>(&entry->second);
        return stored != nullptr ? QueueValueStream::Create(*stored, true, stream) : E_INVALIDARG;
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    }
}

} // namespace OvPlatform
