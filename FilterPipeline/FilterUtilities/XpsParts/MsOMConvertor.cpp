#include "MsOMConvertor.h"

#include <ComSupport/MsSafeHGlobal.h>
#include <ComSupport/ThrowHresult.h>

#include <algorithm>
#include <cstddef>
#include <limits>

namespace {

// Fills the block as far as the reader gives bytes, and says how far that is. The size is what the reader
// said of itself: it may have more, or less, or tell of more than it was asked for.
std::size_t FillBlock(IPrintReadStream& reader, MsSafeHGlobal& block, std::size_t size,
                      const char* function) {
    const auto lock = block.Lock();
    auto* const bytes = static_cast<std::byte*>(lock->GetAddress());
    std::size_t offset = 0;
    BOOL endOfFile = FALSE;
    do {
        const auto request =
            static_cast<ULONG>((std::min)(size - offset, std::size_t{(std::numeric_limits<ULONG>::max)()}));
        ULONG count = 0;
        ThrowIfFailed(reader.ReadBytes(bytes + offset, request, &count, &endOfFile), function);
        if (count > request) ThrowComException(E_UNEXPECTED, function);
        if (count == 0) break;
        offset += count;
    } while (!endOfFile && offset < size);
    return offset;
}

CComPtr<IPrintReadStream> ReaderOf(IPartBase* part) {
    constexpr auto function = "GetIStreamFromPart";
    if (!part) ThrowComException(E_INVALIDARG, function);
    CComPtr<IPrintReadStream> reader;
    ThrowIfFailed(part->GetStream(&reader), function);
    return reader;
}

CComPtr<IStream> CopyInMemory(const CComPtr<IPrintReadStream>& reader, ULONGLONG largest) {
    constexpr auto function = "CreateIStreamFromIPrintReadStream";
    if (!reader) ThrowComException(E_INVALIDARG, function);
    ULONGLONG size = 0;
    ThrowIfFailed(reader->Seek(0, STREAM_SEEK_END, &size), function);
    if (size > largest) ThrowComException(E_OUTOFMEMORY, function);
    ULONGLONG start = 0;
    ThrowIfFailed(reader->Seek(0, STREAM_SEEK_SET, &start), function);

    MsSafeHGlobal block(GMEM_FIXED, static_cast<std::size_t>(size));
    ULARGE_INTEGER filled;
    filled.QuadPart = FillBlock(*reader, block, static_cast<std::size_t>(size), function);
    CComPtr<IStream> stream = block.ConvertToIStream();
    // What was never read is no content.
    if (filled.QuadPart < size) ThrowIfFailed(stream->SetSize(filled), function);
    ThrowIfFailed(stream->Seek(LARGE_INTEGER{}, STREAM_SEEK_SET, nullptr), function);
    return stream;
}

} // namespace

CComPtr<IStream> GetIStreamFromPart(const CComPtr<IPartBase>& part) {
    return CreateIStreamFromIPrintReadStream(ReaderOf(part));
}

CComPtr<IStream> CreateIStreamFromIPrintReadStream(const CComPtr<IPrintReadStream>& reader) {
    return CopyInMemory(reader, (std::numeric_limits<ULONGLONG>::max)());
}

CComPtr<IStream> GetIStreamFromTicket(const CComPtr<IPartPrintTicket>& ticket) {
    return CreateIStreamFromTicketStream(ReaderOf(ticket));
}

CComPtr<IStream> CreateIStreamFromTicketStream(const CComPtr<IPrintReadStream>& reader) {
    return CopyInMemory(reader, MostTicketBytes);
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
