#include "MsOMConvertor.h"

#include <ComSupport/MsSafeHGlobal.h>
#include <ComSupport/ThrowHresult.h>

#include <algorithm>
#include <cstddef>
#include <limits>

namespace {

// Fills the block, whose size is that of the stream.
void ReadWholeStream(IPrintReadStream& reader, MsSafeHGlobal& block, ULONGLONG size, const char* function) {
    const auto lock = block.Lock();
    auto* const bytes = static_cast<std::byte*>(lock->GetAddress());
    // The request keeps the full size in every round, as the pipeline's streams are used to: what is left
    // ends where the block does, since the stream itself gave the size.
    const auto request = static_cast<ULONG>((std::min)(size, ULONGLONG{(std::numeric_limits<ULONG>::max)()}));
    std::size_t offset = 0;
    for (BOOL endOfFile = FALSE; !endOfFile;) {
        ULONG count = 0;
        ThrowIfFailed(reader.ReadBytes(bytes + offset, request, &count, &endOfFile), function);
        if (count == 0) break;
        offset += count;
    }
}

} // namespace

CComPtr<IStream> GetIStreamFromPart(const CComPtr<IPartBase>& part) {
    constexpr auto function = "GetIStreamFromPart";
    if (!part) ThrowComException(E_INVALIDARG, function);
    CComPtr<IPrintReadStream> reader;
    ThrowIfFailed(part->GetStream(&reader), function);
    return CreateIStreamFromIPrintReadStream(reader);
}

CComPtr<IStream> CreateIStreamFromIPrintReadStream(const CComPtr<IPrintReadStream>& reader) {
    constexpr auto function = "CreateIStreamFromIPrintReadStream";
    if (!reader) ThrowComException(E_INVALIDARG, function);
    ULONGLONG size = 0;
    ThrowIfFailed(reader->Seek(0, STREAM_SEEK_END, &size), function);
    ULONGLONG start = 0;
    ThrowIfFailed(reader->Seek(0, STREAM_SEEK_SET, &start), function);

    MsSafeHGlobal block(GMEM_FIXED, static_cast<std::size_t>(size));
    ReadWholeStream(*reader, block, size, function);
    CComPtr<IStream> stream = block.ConvertToIStream();
    ThrowIfFailed(stream->Seek(LARGE_INTEGER{}, STREAM_SEEK_SET, nullptr), function);
    return stream;
}

CComPtr<IOpcPartUri> CreateOpcPartUriFromPart(const CComPtr<IPartBase>& part,
                                              const CComPtr<IOpcFactory>& factory) {
    constexpr auto function = "CreateOpcPartUriFromPart";
    if (!part || !factory) ThrowComException(E_INVALIDARG, function);
    CComBSTR name;
    ThrowIfFailed(part->GetUri(&name), function);
    CComPtr<IOpcPartUri> uri;
    ThrowIfFailed(factory->CreatePartUri(name, &uri), function);
    return uri;
}
