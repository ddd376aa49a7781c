// Bytes in, bytes out: copies the stream. A stream filter writes its own loop and asks itself whether the job
// is alive.
#include <ComSupport/ThrowHresult.h>
#include <Filter/StreamFilterBase.h>

#include "FilterModule.h"

#include <array>

namespace {

class StreamCopy final : public StreamFilterBase {
protected:
    void StartOperation_throws() override {
        std::array<BYTE, 64 * 1024> buffer;
        BOOL atEnd = FALSE;
        while (IsAlive() && !atEnd) {
            ULONG read = 0;
            ThrowIfFailed(
                m_reader->ReadBytes(buffer.data(), static_cast<ULONG>(buffer.size()), &read, &atEnd),
                "StreamCopy::StartOperation_throws");
            for (ULONG offset = 0, written = 0; offset < read; offset += written) {
                ThrowIfFailed(m_writer->WriteBytes(buffer.data() + offset, read - offset, &written),
                              "StreamCopy::StartOperation_throws");
            }
        }
    }
};

} // namespace

FILTER_MODULE(StreamCopy, {0x6a1f0f3e, 0x0d0c, 0x4c7e, {0x9b, 0x52, 0x1e, 0x5a, 0x77, 0x30, 0xc1, 0x03}})
