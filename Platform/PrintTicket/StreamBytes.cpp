#include "PrintTicket/StreamBytes.h"

#include <algorithm>
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
        if (bytes.size() + count > MaxStreamBytes) return E_OUTOFMEMORY;
        bytes.append(chunk.data(), count);
    }
}

HRESULT WriteStreamBytes(IStream* stream, std::string_view bytes) {
    while (!bytes.empty()) {
        ULONG count = 0;
        const auto wanted = static_cast<ULONG>((std::min)(bytes.size(), std::size_t{1} << 30));
        const HRESULT result = stream->Write(bytes.data(), wanted, &count);
        if (FAILED(result)) return result;
        if (count == 0) return STG_E_MEDIUMFULL;
        bytes.remove_prefix(count);
    }
    return S_OK;
}

} // namespace OvPlatform
