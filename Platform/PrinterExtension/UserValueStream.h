#pragma once

#include "Com/CountedObject.h"
#include "PrinterExtension/UserProperties.h"

#include <windows.h>
#include <streambase.h>

#include <string>
#include <vector>

namespace OvPlatform {

/// A stream that writes one value of a user's bag: whatever it takes is in the user's file at once. One
/// thread at a time.
class UserValueStream final : public StreamBase<FaultEntry> {
public:
    UserValueStream(UserProperties properties, std::wstring name, std::vector<std::uint8_t> bytes,
                    std::size_t position = 0)
        : StreamBase(STGM_READWRITE, position), m_properties(std::move(properties)), m_name(std::move(name)),
          m_bytes(std::move(bytes)) {}

    HRESULT STDMETHODCALLTYPE Read(void* buffer, ULONG size, ULONG* read) override;
    HRESULT STDMETHODCALLTYPE Write(const void* buffer, ULONG size, ULONG* written) override;
    HRESULT STDMETHODCALLTYPE SetSize(ULARGE_INTEGER size) override;
    HRESULT STDMETHODCALLTYPE Clone(IStream** stream) override;

private:
    ~UserValueStream() override = default;

    HRESULT Size(std::size_t& size) override;
    HRESULT Store(std::vector<std::uint8_t> bytes);

    const UserProperties m_properties;
    const std::wstring m_name;
    std::vector<std::uint8_t> m_bytes;
};

} // namespace OvPlatform
