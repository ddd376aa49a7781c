#include "Spooler/QueueValueStream.h"

#include "Com/FaultInjection.h"

#include <streamcopy.h>

#include <algorithm>
#include <cstring>
#include <new>

namespace OvPlatform {

namespace {

// No property grows beyond what a folder may hold.
constexpr ULONGLONG MaxSize = 64u << 20;

} // namespace

HRESULT QueueValueStream::Create(std::shared_ptr<SharedBytes> bytes, bool writable, IStream** stream) {
    *stream = new (std::nothrow) QueueValueStream(std::move(bytes), writable);
    return *stream ? S_OK : E_OUTOFMEMORY;
}

// The caller holds the lock.
std::size_t QueueValueStream::Available() const {
    return m_bytes->bytes.size() - (std::min)(m_position, m_bytes->bytes.size());
}

HRESULT QueueValueStream::Read(void* buffer, ULONG size, ULONG* read) {
    if (read) *read = 0;
    if (HRESULT fault = FaultPoint(); FAILED(fault)) return fault;
    if (!buffer) return STG_E_INVALIDPOINTER;
    const std::lock_guard guard(m_bytes->lock);
    const std::size_t count = (std::min)(std::size_t{size}, Available());
    if (count != 0) std::memcpy(buffer, m_bytes->bytes.data() + m_position, count);
    m_position += count;
    if (read) *read = static_cast<ULONG>(count);
    return count == size ? S_OK : S_FALSE;
}

HRESULT QueueValueStream::Write(const void* buffer, ULONG size, ULONG* written) {
    if (written) *written = 0;
    if (HRESULT fault = FaultPoint(); FAILED(fault)) return fault;
    if (!m_writable) return STG_E_ACCESSDENIED;
    if (!buffer) return STG_E_INVALIDPOINTER;
    if (size == 0) return S_OK;
    if (ULONGLONG{m_position} + size > MaxSize) return STG_E_MEDIUMFULL;
    const std::lock_guard guard(m_bytes->lock);
    try {
        if (m_bytes->bytes.size() < m_position + size) m_bytes->bytes.resize(m_position + size);
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    }
    std::memcpy(m_bytes->bytes.data() + m_position, buffer, size);
    m_position += size;
    if (written) *written = size;
    return S_OK;
}

HRESULT QueueValueStream::Seek(LARGE_INTEGER move, DWORD origin, ULARGE_INTEGER* position) {
    if (HRESULT fault = FaultPoint(); FAILED(fault)) return fault;
    if (origin > STREAM_SEEK_END) return STG_E_INVALIDFUNCTION;
    LONGLONG base = 0;
    if (origin == STREAM_SEEK_CUR) base = static_cast<LONGLONG>(m_position);
    if (origin == STREAM_SEEK_END) {
        const std::lock_guard guard(m_bytes->lock);
        base = static_cast<LONGLONG>(m_bytes->bytes.size());
    }
    LONGLONG target = 0;
    if (__builtin_add_overflow(base, move.QuadPart, &target) || target < 0) return STG_E_INVALIDFUNCTION;
    m_position = static_cast<std::size_t>(target);
    if (position) position->QuadPart = static_cast<ULONGLONG>(target);
    return S_OK;
}

HRESULT QueueValueStream::SetSize(ULARGE_INTEGER size) {
    if (HRESULT fault = FaultPoint(); FAILED(fault)) return fault;
    if (!m_writable) return STG_E_ACCESSDENIED;
    if (size.QuadPart > MaxSize) return STG_E_MEDIUMFULL;
    const std::lock_guard guard(m_bytes->lock);
    try {
        m_bytes->bytes.resize(static_cast<std::size_t>(size.QuadPart));
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    }
    return S_OK;
}

HRESULT QueueValueStream::CopyTo(IStream* target, ULARGE_INTEGER size, ULARGE_INTEGER* read,
                                 ULARGE_INTEGER* written) {
    if (read) read->QuadPart = 0;
    if (written) written->QuadPart = 0;
    if (HRESULT fault = FaultPoint(); FAILED(fault)) return fault;
    if (!target) return STG_E_INVALIDPOINTER;
    std::vector<std::uint8_t> copy; // all at once, since the target may be a stream of the same property
    try {
        const std::lock_guard guard(m_bytes->lock);
        const auto from = m_bytes->bytes.begin() +
                          static_cast<std::ptrdiff_t>((std::min)(m_position, m_bytes->bytes.size()));
        copy.assign(from,
                    from + static_cast<std::ptrdiff_t>((std::min)(size.QuadPart, ULONGLONG{Available()})));
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    }
    m_position += copy.size();
    const auto nextChunk = [&](ULONGLONG, const void*& bytes, ULONGLONG& count) {
        bytes = copy.data();
        count = copy.size();
        return S_OK;
    };
    size.QuadPart = copy.size();
    return CopyStream(nextChunk, target, size, read, written);
}

HRESULT QueueValueStream::Commit(DWORD) { return FaultPoint(); }

HRESULT QueueValueStream::Revert() { return E_NOTIMPL; }

HRESULT QueueValueStream::LockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) { return STG_E_INVALIDFUNCTION; }

HRESULT QueueValueStream::UnlockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) {
    return STG_E_INVALIDFUNCTION;
}

HRESULT QueueValueStream::Stat(STATSTG* status, DWORD) {
    if (HRESULT fault = FaultPoint(); FAILED(fault)) return fault;
    if (!status) return STG_E_INVALIDPOINTER;
    *status = {};
    status->type = STGTY_STREAM;
    status->grfMode = m_writable ? STGM_READWRITE : STGM_READ;
    const std::lock_guard guard(m_bytes->lock);
    status->cbSize.QuadPart = m_bytes->bytes.size();
    return S_OK;
}

HRESULT QueueValueStream::Clone(IStream** stream) {
    if (HRESULT fault = FaultPoint(); FAILED(fault)) return fault;
    if (!stream) return STG_E_INVALIDPOINTER;
    auto* clone = new (std::nothrow) QueueValueStream(m_bytes, m_writable);
    *stream = clone;
    if (!clone) return E_OUTOFMEMORY;
    clone->m_position = m_position;
    return S_OK;
}

} // namespace OvPlatform
