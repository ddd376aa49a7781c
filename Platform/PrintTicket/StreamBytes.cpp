#include "PrintTicket/StreamBytes.h"

#include "Xml/DocumentBound.h"

#include <streamcopy.h>

#include <array>

namespace OvPlatform {

HRESULT ReadStreamBytes(IStream* stream, std::string& bytes) {
    std::array<char, 16384> chunk;
    bytes.clear();
    for (;;) {
        ULONG count = 0;
        const HRESULT result = stream->Read(chunk.data(), static_cast<ULONG>(chunk.size()), &count);
        if (FAILED(result)) return result;
        if (count == 0) return S_OK;
        if (bytes.size() + count > mostDocumentBytes) return E_OUTOFMEMORY;
        bytes.append(chunk.data(), count);
    }
}

HRESULT WriteStreamBytes(IStream* stream, std::string_view bytes) {
    ULONGLONG written = 0;
    return WriteWhole(stream, bytes.data(), bytes.size(), &written);
}

} // namespace OvPlatform
