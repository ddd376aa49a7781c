#pragma once

#include "Xml/AttributeBound.h"
#include "Xml/XmlFailure.h"

#include <atlcomcli.h>
#include <objidl.h>

#include <string>

namespace OvPlatform {

/// A text to be parsed that is read piece by piece as the parser asks for it, by the same rules as one that
/// is there as a whole (SourceText). It is read from where the stream stands.
class SourceStream {
public:
    explicit SourceStream(CComPtr<ISequentialStream> stream);
    SourceStream(const SourceStream&) = delete;
    SourceStream& operator=(const SourceStream&) = delete;

    /// Reads as much as shows the encoding. False with Failure.
    bool Begin();
    bool IsEmpty() const noexcept { return m_piece.empty(); }
    /// Otherwise the parser reads it in the declared encoding.
    bool IsUtf8() const noexcept { return m_isUtf8; }

    /// At most so many bytes; 0 at the end, -1 with Failure. Nothing is thrown.
    int Read(char* buffer, int size) noexcept;

    /// What went wrong with the stream or its bytes.
    const XmlFailure& Failure() const noexcept { return m_failure; }

private:
    bool NextPiece();
    bool ReadBytes();
    bool ConvertPiece();
    bool Refuse(HRESULT code, const char* reason);

    CComPtr<ISequentialStream> m_stream;
    XmlFailure m_failure;
    AttributeBound m_attributes;
    std::string m_piece;     // what the parser gets next
    std::size_t m_used = 0;  // of the piece
    std::string m_bytes;     // as read, in front of them what the piece before left over
    std::size_t m_total = 0; // bytes read
    bool m_isWide = false;   // UTF-16
    bool m_isBigEndian = false;
    bool m_isUtf8 = true;
    bool m_isAtEnd = false;
};

} // namespace OvPlatform
