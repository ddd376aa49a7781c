#include "Spooler/QueueValueStream.h"

#include "Com/FaultInjection.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace OvPlatform {

namespace {

// No property grows beyond what a folder may hold.
constexpr ULONGLONG maxSize = 64u << 20;

} // namespace

QueueValueStream::QueueValueStream(std::shared_ptr<SharedBytes> bytes, bool writable, std::size_t position)
    : StreamBase(writable ? STGM_READWRITE : STGM_READ, position), m_bytes(std::move(bytes)),
      m_writable(writable) {}

HRESULT QueueValueStream::Create(std::shared_ptr<SharedBytes> bytes, bool writable, IStream** stream) {
    *stream = new (std::nothrow) QueueValueStream(std::move(bytes), writable, 0);
    return *stream ? S_OK : E_OUTOFMEMORY;
}

HRESULT QueueValueStream::Size(std::size_t& size) {
    size = m_bytes->bytes.size();
    return S_OK;
}

HRESULT QueueValueStream::Read(void* buffer, ULONG size, ULONG* read) {
    if (read != nullptr) *read = 0;
    if (HRESULT fault = FaultPoint(); FAILED(fault)) return fault;
    if (buffer == nullptr) return STG_E_INVALIDPOINTER;
    const std::lock_guard guard(m_bytes->lock);
    const std::vector<std::uint8_t>& bytes = m_bytes->bytes;
    const std::size_t count =
        (std::min)(std::size_t{size}, bytes.size() - (std::min)(m_position, bytes.size()));
    if (count != 0) std::memcpy(buffer, bytes.data() + m_position, count);
    m_position += count;
    if (read != nullptr) *read = static_cast<ULONG>(count);
    return count == size ? S_OK : S_FALSE;
}

HRESULT QueueValueStream::Write(const void* buffer, ULONG size, ULONG* written) {
    if (written != nullptr) *written = 0;
    if (HRESULT fault = FaultPoint(); FAILED(fault)) return fault;
    if (!m_writable) return STG_E_ACCESSDENIED;
    if (buffer == nullptr) return STG_E_INVALIDPOINTER;
    if (size == 0) return S_OK;
    if (ULONGLONG{m_position} + size > maxSize) return STG_E_MEDIUMFULL;
    const std::lock_guard guard(m_bytes->lock);
    try {
        if (m_bytes->bytes.size() < m_position + size) m_bytes->bytes.resize(m_position + size);
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    }
    std::memcpy(m_bytes->bytes.data() + m_position, buffer, size);
    m_position += size;
    if (written != nullptr) *written = size;
    return S_OK;
}

HRESULT QueueValueStream::SetSize(ULARGE_INTEGER size) {
    if (HRESULT fault = FaultPoint(); FAILED(fault)) return fault;
    if (!m_writable) return STG_E_ACCESSDENIED;
    if (size.QuadPart > maxSize) return STG_E_MEDIUMFULL;
    const std::lock_guard guard(m_bytes->lock);
    try {
        m_bytes->bytes.resize(static_cast<std::size_t>(size.QuadPart));
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    }
    return S_OK;
}

HRESULT QueueValueStream::Clone(IStream** stream) {
    if (HRESULT fault = FaultPoint(); FAILED(fault)) return fault;
    if (stream == nullptr) return STG_E_INVALIDPOINTER;
    *stream = new (std::nothrow) QueueValueStream(m_bytes, m_writable, m_position);
    return *stream ? S_OK : E_OUTOFMEMORY;
}

} // namespace OvPlatform
