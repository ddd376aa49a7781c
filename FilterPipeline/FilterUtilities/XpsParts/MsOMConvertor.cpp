#include "XpsParts/MsOMConvertor.h"

#include "ComSupport/MsSafeHGlobal.h"
#include "ComSupport/ThrowHresult.h"

#include <algorithm>
#include <cstddef>
#include <limits>

namespace {

// Fills the block as far as the reader gives bytes, and says how far that is. The size is what the reader
// said of itself: it may have more, or less, or tell of more than it was asked for.
std::size_t FillBlock(IPrintReadStream& reader, MsSafeHGlobal& block, std::size_t size) {
    const auto lock = block.Lock();
    auto* const bytes = static_cast<std::byte*>(lock->GetAddress());
    std::size_t offset = 0;
    BOOL endOfFile = FALSE;
    do {
        const auto request =
            static_cast<ULONG>((std::min)(size - offset, std::size_t{(std::numeric_limits<ULONG>::max)()}));
        ULONG count = 0;
        ThrowIfFailed(reader.ReadBytes(bytes + offset, request, &count, &endOfFile));
        if (count > request) ThrowComException(E_UNEXPECTED);
        if (count == 0) break;
        offset += count;
    } while (!endOfFile && offset < size);
    return offset;
}

CComPtr<IPrintReadStream> ReaderOf(IPartBase* part) {
    if (!part) ThrowComException(E_INVALIDARG);
    CComPtr<IPrintReadStream> reader;
    ThrowIfFailed(part->GetStream(&reader));
    return reader;
}

CComPtr<IStream> CopyInMemory(const CComPtr<IPrintReadStream>& reader, ULONGLONG largest) {
    if (!reader) ThrowComException(E_INVALIDARG);
    ULONGLONG size = 0;
    ThrowIfFailed(reader->Seek(0, STREAM_SEEK_END, &size));
    if (size > largest) ThrowComException(E_OUTOFMEMORY);
    ULONGLONG start = 0;
    ThrowIfFailed(reader->Seek(0, STREAM_SEEK_SET, &start));

    MsSafeHGlobal block(GMEM_FIXED, static_cast<std::size_t>(size));
    ULARGE_INTEGER filled;
    filled.QuadPart = FillBlock(*reader, block, static_cast<std::size_t>(size));
    CComPtr<IStream> stream = block.ConvertToIStream();
    // What was never read is no content.
    if (filled.QuadPart < size) ThrowIfFailed(stream->SetSize(filled));
    ThrowIfFailed(stream->Seek(LARGE_INTEGER{}, STREAM_SEEK_SET, nullptr));
    return stream;
}

} // namespace

CComPtr<IStream> GetIStreamFromPart(const CComPtr<IPartBase>& part) {
    const OperationScope operation("GetIStreamFromPart");
    return CreateIStreamFromIPrintReadStream(ReaderOf(part));
}

CComPtr<IStream> CreateIStreamFromIPrintReadStream(const CComPtr<IPrintReadStream>& reader) {
    const OperationScope operation("CreateIStreamFromIPrintReadStream");
    return CopyInMemory(reader, (std::numeric_limits<ULONGLONG>::max)());
}

CComPtr<IStream> GetIStreamFromTicket(const CComPtr<IPartPrintTicket>& ticket) {
    const OperationScope operation("GetIStreamFromTicket");
    return CreateIStreamFromTicketStream(ReaderOf(ticket));
}

CComPtr<IStream> CreateIStreamFromTicketStream(const CComPtr<IPrintReadStream>& reader) {
    const OperationScope operation("CreateIStreamFromTicketStream");
    return CopyInMemory(reader, mostTicketBytes);
}

CComPtr<IOpcPartUri> CreateOpcPartUriFromPart(const CComPtr<IPartBase>& part,
                                              const CComPtr<IOpcFactory>& factory) {
    const OperationScope operation("CreateOpcPartUriFromPart");
    if (!part || !factory) ThrowComException(E_INVALIDARG);
    CComBSTR name;
    ThrowIfFailed(part->GetUri(&name));
    CComPtr<IOpcPartUri> uri;
    ThrowIfFailed(factory->CreatePartUri(name, &uri));
    return uri;
}
