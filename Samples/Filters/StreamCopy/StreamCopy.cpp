// Bytes in, bytes out: copies the stream. A stream filter writes its own loop and asks itself whether the job
// is alive.
#include "FilterModule.h"
#include "WriteAll.h"

#include <ComSupport/ThrowHresult.h>
#include <Filter/StreamFilterBase.h>

#include <array>

namespace {

class StreamCopy final : public StreamFilterBase {
protected:
    void StartOperation_throws() override {
        const OperationScope operation("StreamCopy::StartOperation_throws");
        std::array<BYTE, 0x10000> buffer;
        BOOL atEnd = FALSE;
        while (IsAlive() && !atEnd) {
            ULONG read = 0;
            ThrowIfFailed(
                m_reader->ReadBytes(buffer.data(), static_cast<ULONG>(buffer.size()), &read, &atEnd));
            if (read == 0) break; // some streams tell of their end by this alone
            ThrowIfFailed(WriteAll(*m_writer, buffer.data(), read));
        }
    }
};

} // namespace

FILTER_MODULE(StreamCopy, {0x6a1f0f3e, 0x0d0c, 0x4c7e, {0x9b, 0x52, 0x1e, 0x5a, 0x77, 0x30, 0xc1, 0x03}})
