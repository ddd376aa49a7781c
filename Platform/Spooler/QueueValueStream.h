#pragma once

#include "Com/CountedObject.h"

#include <windows.h>
#include <streambase.h>

#include <cstdint>
#include <limits>
#include <memory>
#include <mutex>
#include <vector>

namespace OvPlatform {

/// The bytes of one stream property, shared by its bag and the streams open on it.
struct SharedBytes {
    std::mutex lock;
    std::vector<std::uint8_t> bytes;
};

/// A stream over a property's bytes: writes are seen by the bag at once. A read-only one refuses to write
/// with STG_E_ACCESSDENIED.
class QueueValueStream final : public StreamBase<FaultEntry> {
public:
    /// The new stream has one reference. E_OUTOFMEMORY.
    static HRESULT Create(std::shared_ptr<SharedBytes> bytes, bool writable, IStream** stream);

    HRESULT STDMETHODCALLTYPE Read(void* buffer, ULONG size, ULONG* read) override;
    HRESULT STDMETHODCALLTYPE Write(const void* buffer, ULONG size, ULONG* written) override;
    HRESULT STDMETHODCALLTYPE SetSize(ULARGE_INTEGER size) override;
    HRESULT STDMETHODCALLTYPE Revert() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Clone(IStream** stream) override;

private:
    QueueValueStream(std::shared_ptr<SharedBytes> bytes, bool writable, std::size_t position);
    ~QueueValueStream() override = default;

    HRESULT Size(std::size_t& size) override;
    void Hold() override { m_bytes->lock.lock(); }
    void LetGo() override { m_bytes->lock.unlock(); }
    /// All: the target may be a stream of the same property.
    ULONG MostAtOnce() const override { return (std::numeric_limits<ULONG>::max)(); }

    std::shared_ptr<SharedBytes> m_bytes;
    const bool m_writable;
};

} // namespace OvPlatform
