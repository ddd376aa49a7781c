#pragma once

#include "Streams/SpooledBytes.h"
#include "Support/ComObject.h"

#include <filterpipeline.h>

#include <functional>

namespace OvPipeline {

// The pipeline's write stream into spooled bytes. Without Close the bytes count as given up.
class PrintWriteStream final : public ComObject<IPrintWriteStream> {
public:
    // closed: told once, when Close comes.
    explicit PrintWriteStream(std::shared_ptr<SpooledBytes> bytes, std::function<void()> closed = {})
        : m_bytes(std::move(bytes)), m_closed(std::move(closed)) {}

    HRESULT STDMETHODCALLTYPE WriteBytes(const void* bytes, ULONG count, ULONG* written) override;
    void STDMETHODCALLTYPE Close() override;

private:
    ~PrintWriteStream() override { m_bytes->Abandon(); }

    std::shared_ptr<SpooledBytes> m_bytes;
    std::function<void()> m_closed;
};

} // namespace OvPipeline
