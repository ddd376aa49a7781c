#include "Xml/SourceStream.h"

#include "Xml/DocumentBound.h"
#include "Xml/SourceText.h"
#include "Xml/TextConversion.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <utility>

namespace OvPlatform {

namespace {

constexpr std::size_t pieceBytes = 16 * 1024;

bool IsHighSurrogate(unsigned char highByte) noexcept { return (highByte & 0xFC) == 0xD8; }

} // namespace

SourceStream::SourceStream(CComPtr<ISequentialStream> stream) : m_stream(std::move(stream)) {}

bool SourceStream::Refuse(HRESULT code, const char* reason) {
    m_failure.code = code;
    m_failure.reason = reason;
    return false;
}

// Appends to what the piece before left over; short reads are read on, so that a mark is seen whole.
bool SourceStream::ReadBytes() {
    const std::size_t kept = m_bytes.size();
    m_bytes.resize(kept + pieceBytes);
    std::size_t used = kept;
    while (!m_isAtEnd && used < m_bytes.size()) {
        ULONG read = 0;
        const auto room = static_cast<ULONG>(m_bytes.size() - used);
        const HRESULT result = m_stream->Read(m_bytes.data() + used, room, &read);
        if (FAILED(result)) return Refuse(result, "The text cannot be read from its stream");
        if (read > room) return Refuse(E_UNEXPECTED, "The stream gives more than was asked for");
        used += read;
        m_isAtEnd = read == 0;
    }
    m_bytes.resize(used);
    m_total += used - kept;
    return m_total <= mostDocumentBytes ||
           Refuse(XML_E_MAX_SIZE, "The text is longer than the document allows");
}

// What UTF-16 ends in the middle of a character waits for the next piece.
bool SourceStream::ConvertPiece() {
    std::size_t whole = m_bytes.size() & ~std::size_t{1};
    const std::size_t highByte = m_isBigEndian ? 2 : 1; // of the last unit, from the end
    if (!m_isAtEnd && whole >= 2 && IsHighSurrogate(static_cast<unsigned char>(m_bytes[whole - highByte])))
        whole -= 2;
    if (m_isAtEnd) whole = m_bytes.size();
    m_piece.clear();
    if (!FromUtf16Bytes(std::string_view(m_bytes).substr(0, whole), m_isBigEndian, m_piece))
        return Refuse(XML_E_INVALID_UNICODE, "The bytes after the UTF-16 byte order mark are no UTF-16");
    m_bytes.erase(0, whole);
    return true;
}

bool SourceStream::NextPiece() {
    m_used = 0;
    m_piece.clear();
    while (m_piece.empty() && !m_isAtEnd) {
        if (!ReadBytes()) return false;
        if (!m_isWide)
            m_piece = std::exchange(m_bytes, {});
        else if (!ConvertPiece())
            return false;
    }
    return m_attributes.Passes(m_piece) || Refuse(XML_E_MAX_SIZE, SourceText::tooManyAttributes);
}

bool SourceStream::Begin() {
    if (!ReadBytes()) return false;
    const SourceText::Mark mark = SourceText::MarkOf(m_bytes);
    if (mark.isUnmarkedUtf16) return Refuse(XML_E_INVALIDATROOTLEVEL, SourceText::unmarkedUtf16);
    m_isWide = mark.isUtf16;
    m_isBigEndian = mark.isBigEndian;
    m_bytes.erase(0, mark.length);
    if (!m_isWide)
        m_piece = std::exchange(m_bytes, {});
    else if (!ConvertPiece())
        return false;
    const auto declaration = XmlDeclaration::FromDocument(m_piece);
    if (!SourceText::Fits(mark, declaration, m_failure)) return false;
    m_isUtf8 = SourceText::IsUtf8(mark, declaration);
    return m_attributes.Passes(m_piece) || Refuse(XML_E_MAX_SIZE, SourceText::tooManyAttributes);
}

int SourceStream::Read(char* buffer, int size) noexcept {
    try {
        if (m_used == m_piece.size() && !NextPiece()) return -1;
        const std::size_t given = std::min(m_piece.size() - m_used, static_cast<std::size_t>(size));
        std::memcpy(buffer, m_piece.data() + m_used, given);
        m_used += given;
        return static_cast<int>(given);
    } catch (const std::bad_alloc&) {
        m_failure.code = E_OUTOFMEMORY; // without a reason, which might not be had
        return -1;
    }
}

} // namespace OvPlatform
