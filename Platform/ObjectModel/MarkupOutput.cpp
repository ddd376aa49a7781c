#include "ObjectModel/MarkupOutput.h"

#include "Xml/TextConversion.h"

#include <utf8coder.h>

#include <algorithm>
#include <utility>

namespace OvPlatform {

namespace {

constexpr std::size_t block = std::size_t{256} << 10;
constexpr std::string_view utf8Mark = "\xEF\xBB\xBF";

} // namespace

MarkupOutput::MarkupOutput(Sink sink, const PageSource* like) : m_sink(std::move(sink)) {
    if (like == nullptr || !like->HasMark()) return;
    m_isUtf16 = like->IsUtf16();
    m_isBigEndian = like->IsBigEndian();
    Append(utf8Mark);
}

void MarkupOutput::Write(std::string_view text) {
    while (!text.empty()) {
        const std::string_view piece = Piece(text);
        text.remove_prefix(piece.size());
        if (m_buffer.size() + piece.size() > block) Flush();
        Append(piece);
    }
}

void MarkupOutput::Flush() {
    m_sink(m_buffer);
    m_buffer.clear();
}

// Whole characters of it, no more than fit into a block.
std::string_view MarkupOutput::Piece(std::string_view text) {
    std::size_t size = std::min(text.size(), block / 2);
    while (size < text.size() && size > 1 && Utf8::IsTrail(text[size]))
        --size;
    return text.substr(0, size);
}

void MarkupOutput::Append(std::string_view text) {
    if (!m_isUtf16) {
        m_buffer += text;
        return;
    }
    std::string bytes = ToUtf16Bytes(text).substr(2); // less the mark
    if (m_isBigEndian)
        for (std::size_t at = 0; at + 1 < bytes.size(); at += 2)
            std::swap(bytes[at], bytes[at + 1]);
    m_buffer += bytes;
}

} // namespace OvPlatform
