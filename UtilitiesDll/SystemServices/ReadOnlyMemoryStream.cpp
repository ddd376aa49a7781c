#include "SystemServices/ReadOnlyMemoryStream.h"

#include <algorithm>
#include <cstring>
#include <new>

#include <streamcopy.h>
#include <windows.h>

ReadOnlyMemoryStream::ReadOnlyMemoryStream(Bytes bytes, std::size_t position) noexcept
    : m_bytes(std::move(bytes)), m_position(position) {}

HRESULT ReadOnlyMemoryStream::QueryInterface(REFIID interfaceId, void** object) {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    if (interfaceId != __uuidof(IUnknown) && interfaceId != __uuidof(ISequentialStream) &&
        interfaceId != __uuidof(IStream)) {
        return E_NOINTERFACE;
    }
    *object = static_cast<IStream*>(this);
    AddRef();
    return S_OK;
}

ULONG ReadOnlyMemoryStream::AddRef() { return static_cast<ULONG>(++m_references); }

ULONG ReadOnlyMemoryStream::Release() {
    const LONG references = --m_references;
    if (references == 0) delete this;
    return static_cast<ULONG>(references);
}

HRESULT ReadOnlyMemoryStream::Read(void* buffer, ULONG count, ULONG* read) {
    if (read != nullptr) *read = 0;
    if (buffer == nullptr) return STG_E_INVALIDPOINTER;
    const std::size_t length = std::min<std::size_t>(count, Rest());
    if (length != 0) std::memcpy(buffer, m_bytes->data() + m_position, length);
    m_position += length;
    if (read != nullptr) *read = static_cast<ULONG>(length);
    return length == count ? S_OK : S_FALSE;
}

HRESULT ReadOnlyMemoryStream::Write(const void*, ULONG, ULONG* written) {
    if (written != nullptr) *written = 0;
    return STG_E_ACCESSDENIED;
}

HRESULT ReadOnlyMemoryStream::Seek(LARGE_INTEGER move, DWORD origin, ULARGE_INTEGER* position) {
    LONGLONG base = 0;
    switch (origin) {
    case STREAM_SEEK_SET:
        break;
    case STREAM_SEEK_CUR:
        base = static_cast<LONGLONG>(m_position);
        break;
    case STREAM_SEEK_END:
        base = static_cast<LONGLONG>(m_bytes->size());
        break;
    default:
        return STG_E_INVALIDFUNCTION;
    }
    LONGLONG target = 0;
    if (__builtin_add_overflow(base, move.QuadPart, &target) || target < 0) return STG_E_INVALIDFUNCTION;
    m_position = static_cast<std::size_t>(target);
    if (position != nullptr) position->QuadPart = static_cast<ULONGLONG>(target);
    return S_OK;
}

HRESULT ReadOnlyMemoryStream::SetSize(ULARGE_INTEGER) { return STG_E_ACCESSDENIED; }

HRESULT ReadOnlyMemoryStream::CopyTo(IStream* target, ULARGE_INTEGER count, ULARGE_INTEGER* read,
                                     ULARGE_INTEGER* written) {
    const auto nextChunk = [this](ULONGLONG most, const void*& bytes, ULONGLONG& size) {
        size = std::min<ULONGLONG>(most, Rest());
        bytes = m_bytes->data() + (m_bytes->size() - Rest());
        m_position += static_cast<std::size_t>(size);
        return S_OK;
    };
    return OvPlatform::CopyStream(nextChunk, target, count, read, written);
}

HRESULT ReadOnlyMemoryStream::Commit(DWORD) { return S_OK; }

HRESULT ReadOnlyMemoryStream::Revert() { return S_OK; }

HRESULT ReadOnlyMemoryStream::LockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) {
    return STG_E_INVALIDFUNCTION;
}

HRESULT ReadOnlyMemoryStream::UnlockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) {
    return STG_E_INVALIDFUNCTION;
}

HRESULT ReadOnlyMemoryStream::Stat(STATSTG* statistics, DWORD) {
    if (statistics == nullptr) return STG_E_INVALIDPOINTER;
    *statistics = STATSTG{};
    statistics->type = STGTY_STREAM;
    statistics->cbSize.QuadPart = m_bytes->size();
    statistics->grfMode = STGM_READ;
    return S_OK;
}

HRESULT ReadOnlyMemoryStream::Clone(IStream** clone) {
    if (clone == nullptr) return STG_E_INVALIDPOINTER;
    *clone = new (std::nothrow) ReadOnlyMemoryStream(m_bytes, m_position);
    return *clone == nullptr ? E_OUTOFMEMORY : S_OK;
}

std::size_t ReadOnlyMemoryStream::Rest() const noexcept {
    return m_position < m_bytes->size() ? m_bytes->size() - m_position : 0;
}
