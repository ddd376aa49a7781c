#pragma once

#include <objidl.h>

#include <atomic>
#include <memory>
#include <vector>

/// A stream over bytes of its own that never change. Writing is refused with STG_E_ACCESSDENIED.
class ReadOnlyMemoryStream final : public IStream {
public:
    using Bytes = std::shared_ptr<const std::vector<unsigned char>>;

    /// Born with one reference.
    explicit ReadOnlyMemoryStream(Bytes bytes, std::size_t position = 0) noexcept;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID interfaceId, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override;
    ULONG STDMETHODCALLTYPE Release() override;
    HRESULT STDMETHODCALLTYPE Read(void* buffer, ULONG count, ULONG* read) override;
    HRESULT STDMETHODCALLTYPE Write(const void* buffer, ULONG count, ULONG* written) override;
    HRESULT STDMETHODCALLTYPE Seek(LARGE_INTEGER move, DWORD origin, ULARGE_INTEGER* position) override;
    HRESULT STDMETHODCALLTYPE SetSize(ULARGE_INTEGER size) override;
    HRESULT STDMETHODCALLTYPE CopyTo(IStream* target, ULARGE_INTEGER count, ULARGE_INTEGER* read,
                                     ULARGE_INTEGER* written) override;
    HRESULT STDMETHODCALLTYPE Commit(DWORD flags) override;
    HRESULT STDMETHODCALLTYPE Revert() override;
    HRESULT STDMETHODCALLTYPE LockRegion(ULARGE_INTEGER offset, ULARGE_INTEGER count, DWORD type) override;
    HRESULT STDMETHODCALLTYPE UnlockRegion(ULARGE_INTEGER offset, ULARGE_INTEGER count, DWORD type) override;
    HRESULT STDMETHODCALLTYPE Stat(STATSTG* statistics, DWORD flags) override;
    HRESULT STDMETHODCALLTYPE Clone(IStream** clone) override;

private:
    virtual ~ReadOnlyMemoryStream() = default;
    [[nodiscard]] std::size_t Rest() const noexcept;

    std::atomic<LONG> m_references{1};
    Bytes m_bytes;
    std::size_t m_position; // may lie behind the end
};
