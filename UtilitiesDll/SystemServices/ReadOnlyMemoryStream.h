#pragma once

#include <streambase.h>

#include <memory>
#include <vector>

/// A stream over bytes of its own that never change. Writing is refused with STG_E_ACCESSDENIED.
class ReadOnlyMemoryStream final : public OvPlatform::StreamBase<OvPlatform::PlainEntry> {
public:
    using Bytes = std::shared_ptr<const std::vector<unsigned char>>;

    /// Born with one reference.
    explicit ReadOnlyMemoryStream(Bytes bytes, std::size_t position = 0) noexcept;

    HRESULT STDMETHODCALLTYPE Read(void* buffer, ULONG count, ULONG* read) override;
    HRESULT STDMETHODCALLTYPE Clone(IStream** clone) override;

private:
    ~ReadOnlyMemoryStream() override = default;
    HRESULT Size(std::size_t& size) override;

    Bytes m_bytes;
};
