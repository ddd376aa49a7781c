#include "PrinterExtension/UserValueStream.h"

#include "PrinterExtension/UserPropertyFailure.h"
#include "Spooler/QueueSchema.h"

#include <algorithm>
#include <cstring>

namespace OvPlatform {

HRESULT UserValueStream::Size(std::size_t& size) {
    size = m_bytes.size();
    return S_OK;
}

HRESULT UserValueStream::Read(void* buffer, ULONG size, ULONG* read) {
    if (read != nullptr) *read = 0;
    if (const HRESULT fault = FaultPoint(); FAILED(fault)) return fault;
    if (buffer == nullptr) return STG_E_INVALIDPOINTER;
    const std::size_t start = (std::min)(m_position, m_bytes.size());
    const std::size_t count = (std::min)(std::size_t{size}, m_bytes.size() - start);
    if (count != 0) std::memcpy(buffer, m_bytes.data() + start, count);
    m_position += count;
    if (read != nullptr) *read = static_cast<ULONG>(count);
    return count == size ? S_OK : S_FALSE;
}

HRESULT UserValueStream::Write(const void* buffer, ULONG size, ULONG* written) {
    if (written != nullptr) *written = 0;
    if (buffer == nullptr) return STG_E_INVALIDPOINTER;
    return WithUserProperties([&] {
        if (ULONGLONG{m_position} + size > QueueSchema::maxDescriptionSize) return STG_E_MEDIUMFULL;
        std::vector<std::uint8_t> bytes = m_bytes;
        bytes.resize((std::max)(bytes.size(), m_position + size));
        if (size != 0) std::memcpy(bytes.data() + m_position, buffer, size);
        if (const HRESULT result = Store(std::move(bytes)); FAILED(result)) return result;
        m_position += size;
        if (written != nullptr) *written = size;
        return S_OK;
    });
}

HRESULT UserValueStream::SetSize(ULARGE_INTEGER size) {
    return WithUserProperties([&] {
        if (size.QuadPart > QueueSchema::maxDescriptionSize) return STG_E_MEDIUMFULL;
        std::vector<std::uint8_t> bytes = m_bytes;
        bytes.resize(static_cast<std::size_t>(size.QuadPart));
        return Store(std::move(bytes));
    });
}

HRESULT UserValueStream::Store(std::vector<std::uint8_t> bytes) {
    QueueValue value = QueueStream{std::move(bytes)};
    m_properties.Store(m_name, value);
    m_bytes = std::move(std::get<QueueStream>(value).bytes);
    return S_OK;
}

HRESULT UserValueStream::Clone(IStream** stream) {
    if (stream == nullptr) return STG_E_INVALIDPOINTER;
    *stream = nullptr;
    return WithUserProperties([&] {
        *stream = new UserValueStream(m_properties, m_name, m_bytes, m_position);
        return S_OK;
    });
}

} // namespace OvPlatform
