#include "Streams/PrintWriteStream.h"

#include "Common/HostError.h"

namespace OvPipeline {

HRESULT PrintWriteStream::WriteBytes(const void* bytes, ULONG count, ULONG* written) {
    if (written == nullptr || (!bytes && count > 0)) return E_POINTER;
    *written = 0;
    return Guarded([&] {
        if (m_isClosed) throw HostError(E_UNEXPECTED, {}, "bytes are written to a stream that is closed");
        m_bytes->Append(bytes, count);
        *written = count;
        return S_OK;
    });
}

void PrintWriteStream::Close() {
    m_isClosed = true;
    if (m_closed)
        m_closed();
    else
        m_bytes->Complete();
}

} // namespace OvPipeline
