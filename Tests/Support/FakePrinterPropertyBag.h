#pragma once

#include "Support/ComFake.h"

#include <printerextension.h>
#include <streambase.h>

#include <algorithm>
#include <cstring>
#include <map>
#include <memory>
#include <string>

// A stream over a text that others share. Can be told to be in trouble.
class FakePropertyStream : public OvPlatform::StreamBase<OvPlatform::PlainEntry> {
public:
    enum class Trouble { None, Stat, Read, ShortRead, HugeSize };

    FakePropertyStream(std::shared_ptr<std::string> bytes, Trouble trouble)
        : StreamBase(STGM_READWRITE), m_bytes(std::move(bytes)), m_trouble(trouble) {}

    HRESULT STDMETHODCALLTYPE Read(void* to, ULONG wanted, ULONG* read) override {
        if (m_trouble == Trouble::Read) {
            // Half of it has arrived when it fails.
            std::memcpy(to, m_bytes->data(), m_bytes->size() / 2);
            return STG_E_READFAULT;
        }
        ULONG count = (std::min)(wanted, static_cast<ULONG>(m_bytes->size() - m_position));
        if (m_trouble == Trouble::ShortRead && count) --count;
        if (count) std::memcpy(to, m_bytes->data() + m_position, count);
        m_position += count;
        if (read) *read = count;
        return count == wanted ? S_OK : S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE Write(const void* from, ULONG count, ULONG* written) override {
        m_bytes->resize((std::max)(m_bytes->size(), m_position + count));
        if (count) std::memcpy(m_bytes->data() + m_position, from, count);
        m_position += count;
        if (written) *written = count;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE SetSize(ULARGE_INTEGER size) override {
        m_bytes->resize(static_cast<std::size_t>(size.QuadPart));
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Stat(STATSTG* status, DWORD) override {
        if (m_trouble == Trouble::Stat) return STG_E_ACCESSDENIED;
        *status = {};
        status->cbSize.QuadPart = m_trouble == Trouble::HugeSize ? ULONGLONG{1} << 40 : m_bytes->size();
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Clone(IStream**) override { return E_NOTIMPL; }

protected:
    HRESULT Size(std::size_t& size) override {
        size = m_bytes->size();
        return S_OK;
    }

private:
    std::shared_ptr<std::string> m_bytes;
    Trouble m_trouble;
};

// A bag in memory. Each kind of value has its own names.
class FakePrinterPropertyBag : public ComFake<IPrinterPropertyBag> {
public:
    FakePropertyStream::Trouble streamTrouble = FakePropertyStream::Trouble::None;

    // How many blocks GetBytes has given to its callers to free.
    int BytesHandedOut() const { return m_bytesHandedOut; }

    HRESULT STDMETHODCALLTYPE GetBool(BSTR name, BOOL* value) override { return Get(m_bools, name, value); }
    HRESULT STDMETHODCALLTYPE SetBool(BSTR name, BOOL value) override {
        m_bools[name] = value;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetInt32(BSTR name, LONG* value) override {
        return Get(m_numbers, name, value);
    }
    HRESULT STDMETHODCALLTYPE SetInt32(BSTR name, LONG value) override {
        m_numbers[name] = value;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetString(BSTR name, BSTR* text) override {
        std::wstring value;
        const HRESULT hr = Get(m_texts, name, &value);
        if (SUCCEEDED(hr)) *text = SysAllocStringLen(value.data(), static_cast<UINT>(value.size()));
        return hr;
    }
    HRESULT STDMETHODCALLTYPE SetString(BSTR name, BSTR value) override {
        m_texts[name].assign(value, SysStringLen(value));
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetBytes(BSTR name, DWORD* count, BYTE** bytes) override {
        std::string value;
        const HRESULT hr = Get(m_bytes, name, &value);
        if (FAILED(hr)) return hr;
        *count = static_cast<DWORD>(value.size());
        *bytes = static_cast<BYTE*>(CoTaskMemAlloc(value.size()));
        if (!value.empty()) std::memcpy(*bytes, value.data(), value.size());
        ++m_bytesHandedOut;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE SetBytes(BSTR name, DWORD count, BYTE* bytes) override {
        m_bytes[name] = count ? std::string(reinterpret_cast<const char*>(bytes), count) : std::string();
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetReadStream(BSTR name, IStream** stream) override {
        std::shared_ptr<std::string> value;
        const HRESULT hr = Get(m_streams, name, &value);
        return FAILED(hr) ? hr : Open(value, stream);
    }
    HRESULT STDMETHODCALLTYPE GetWriteStream(BSTR name, IStream** stream) override {
        auto& value = m_streams[name];
        if (!value) value = std::make_shared<std::string>();
        return Open(value, stream);
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
    template <typename Value>
    static HRESULT Get(const std::map<std::wstring, Value>& values, BSTR name, Value* value) {
        const auto found = values.find(name);
        if (found == values.end()) return HRESULT_FROM_WIN32(ERROR_NOT_FOUND);
        *value = found->second;
        return S_OK;
    }
    HRESULT Open(const std::shared_ptr<std::string>& value, IStream** stream) const {
        *stream = new FakePropertyStream(value, streamTrouble);
        return S_OK;
    }

    std::map<std::wstring, BOOL> m_bools;
    std::map<std::wstring, LONG> m_numbers;
    std::map<std::wstring, std::wstring> m_texts;
    std::map<std::wstring, std::string> m_bytes;
    std::map<std::wstring, std::shared_ptr<std::string>> m_streams;
    int m_bytesHandedOut = 0;
};
