#include <BinaryForms/PackedBytes.h>
#include <ClientJobData/ClientJobData2ReaderWriter.h>
#include <LowLevelFacilities/Failures/CPExceptionInvalidArgument.h>

#include <cstdint>
#include <cstdlib>

namespace {

void read(const ByteBuffer& bytes) {
    try {
        ClientJobData2ReaderWriter data(bytes);
        // A content has one form.
        if (!bytes.empty() && data.GetClientJobData2() != bytes) std::abort();
        for (const LONG id : {0, 203, 205, 207, -1}) {
            CXString text;
            ByteBuffer value;
            if (data.GetByteBufferFromParameterList(id, value) != data.GetStringFromParameterList(id, text))
                std::abort();
            data.AddOrReplaceInParameterList(id, value);
            if (!data.GetByteBufferFromParameterList(id, value)) std::abort();
        }
        if (ClientJobData2ReaderWriter(data.GetClientJobData2()).GetClientJobData2() !=
            data.GetClientJobData2())
            std::abort();
    } catch (const CPExceptionInvalidArgument&) {
    }
}

} // namespace

// The input as client job data, and as the content of one whose check fits.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    read(ByteBuffer(data, size));
    ByteBuffer bytes = PackedBytes::beginEnvelope("OJ");
    bytes.insert(bytes.end(), data, data + size);
    PackedBytes::endEnvelope(bytes);
    read(bytes);
    return 0;
}
