#pragma once

#include "Com/CountedObject.h"

#include <windows.h>

#include <cstdint>
#include <memory>
#include <mutex>
#include <vector>

namespace OvPlatform {

// The bytes of one stream property, shared by its bag and the streams open on it.
struct SharedBytes {
    std::mutex lock;
    std::vector<std::uint8_t> bytes;
};

// A stream over a property's bytes: writes are seen by the bag at once. A read-only one refuses to write with
// STG_E_ACCESSDENIED.
class QueueValueStream final : public CountedObject<IStream> {
public:
    // The new stream has one reference. E_OUTOFMEMORY.
    static HRESULT Create(std::shared_ptr<SharedBytes> bytes, bool writable, IStream** stream);

    HRESULT STDMETHODCALLTYPE Read(void* buffer, ULONG size, ULONG* read) override;
    HRESULT STDMETHODCALLTYPE Write(const void* buffer, ULONG size, ULONG* written) override;
    HRESULT STDMETHODCALLTYPE Seek(LARGE_INTEGER move, DWORD origin, ULARGE_INTEGER* position) override;
    HRESULT STDMETHODCALLTYPE SetSize(ULARGE_INTEGER size) override;
    HRESULT STDMETHODCALLTYPE CopyTo(IStream* target, ULARGE_INTEGER size, ULARGE_INTEGER* read,
                                     ULARGE_INTEGER* written) override;
    HRESULT STDMETHODCALLTYPE Commit(DWORD flags) override;
    HRESULT STDMETHODCALLTYPE Revert() override;
    HRESULT STDMETHODCALLTYPE LockRegion(ULARGE_INTEGER offset, ULARGE_INTEGER size, DWORD type) override;
    HRESULT STDMETHODCALLTYPE UnlockRegion(ULARGE_INTEGER offset, ULARGE_INTEGER size, DWORD type) override;
    HRESULT STDMETHODCALLTYPE Stat(STATSTG* status, DWORD flags) override;
    HRESULT STDMETHODCALLTYPE Clone(IStream** stream) override;

private:
    QueueValueStream(std::shared_ptr<SharedBytes> bytes, bool writable)
        : m_bytes(std::move(bytes)), m_writable(writable) {}
    ~QueueValueStream() override = default;

    std::size_t Available() const;

    std::shared_ptr<SharedBytes> m_bytes;
    bool m_writable;
    std::size_t m_position = 0;
};

} // namespace OvPlatform
