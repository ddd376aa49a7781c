#include "StreamText.h"

#include "WriteAll.h"

#include <ComSupport/ThrowHresult.h>
#include <LowLevelFacilities/Strings/CPString.h>

#include <atlcomcli.h>

namespace {

constexpr std::size_t pieceSize = 0x10000;

void Write(IPrintWriteStream& stream, std::string_view bytes) {
    ThrowIfFailed(WriteAll(stream, bytes.data(), static_cast<ULONG>(bytes.size())));
}

} // namespace

void StreamText::Add(std::string_view bytes) {
    if (m_gathered.size() + bytes.size() > pieceSize) Flush();
    if (bytes.size() > pieceSize)
        Write(m_stream, bytes);
    else
        m_gathered += bytes;
}

void StreamText::AddUtf8(const CXString& text) { Add(CPString(text).view()); }

void StreamText::Flush() {
    Write(m_stream, m_gathered);
    m_gathered.clear();
}

void StreamText::PassOn() {
    Flush();
    const CComQIPtr<IPrintWriteStreamFlush> stream(&m_stream);
    if (stream) ThrowIfFailed(stream->FlushData());
}
