#include "SystemServices/ReadOnlyMemoryStream.h"

#include <algorithm>
#include <cstring>
#include <new>

ReadOnlyMemoryStream::ReadOnlyMemoryStream(Bytes bytes, std::size_t position) noexcept
    : StreamBase(STGM_READ, position), m_bytes(std::move(bytes)) {}

HRESULT ReadOnlyMemoryStream::Read(void* buffer, ULONG count, ULONG* read) {
    if (read != nullptr) *read = 0;
    if (buffer == nullptr) return STG_E_INVALIDPOINTER;
    std::size_t left = 0;
    Left(left); // which does not fail
    const std::size_t length = std::min<std::size_t>(count, left);
    if (length != 0) std::memcpy(buffer, m_bytes->data() + m_position, length);
    m_position += length;
    if (read != nullptr) *read = static_cast<ULONG>(length);
    return length == count ? S_OK : S_FALSE;
}

HRESULT ReadOnlyMemoryStream::Clone(IStream** clone) {
    if (clone == nullptr) return STG_E_INVALIDPOINTER;
    *clone = new (std::nothrow) ReadOnlyMemoryStream(m_bytes, m_position);
    return *clone == nullptr ? E_OUTOFMEMORY : S_OK;
}

HRESULT ReadOnlyMemoryStream::Size(std::size_t& size) {
    size = m_bytes->size();
    return S_OK;
}
