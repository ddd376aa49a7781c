#include "Streams/PrintWriteStream.h"

#include "Support/HostError.h"

namespace OvPipeline {

HRESULT PrintWriteStream::WriteBytes(const void* bytes, ULONG count, ULONG* written) {
    if (!written || (!bytes && count > 0)) return E_POINTER;
    *written = 0;
    return Guarded([&] {
        m_bytes->Append(bytes, count);
        *written = count;
        return S_OK;
    });
}

void PrintWriteStream::Close() {
    if (m_closed) m_closed();
    m_closed = {};
    m_bytes->Complete();
}

} // namespace OvPipeline
