#pragma once

#include "Common/ComObject.h"
#include "Streams/SpooledBytes.h"

#include <filterpipeline.h>

#include <functional>

namespace OvPipeline {

/// The pipeline's write stream into spooled bytes. Close completes them; without it they count as given up.
class PrintWriteStream final : public ComObject<IPrintWriteStream> {
public:
    explicit PrintWriteStream(std::shared_ptr<SpooledBytes> bytes) : m_bytes(std::move(bytes)) {}
    /// For who decides later what becomes of the bytes: Close and the stream's end only tell.
    PrintWriteStream(std::shared_ptr<SpooledBytes> bytes, std::function<void()> closed)
        : m_bytes(std::move(bytes)), m_closed(std::move(closed)) {}

    HRESULT STDMETHODCALLTYPE WriteBytes(const void* bytes, ULONG count, ULONG* written) override;
    void STDMETHODCALLTYPE Close() override;

private:
    ~PrintWriteStream() override {
        if (!m_closed) m_bytes->Abandon();
    }

    std::shared_ptr<SpooledBytes> m_bytes;
    std::function<void()> m_closed;
    bool m_isClosed = false;
};

} // namespace OvPipeline
