#pragma once

#include "ObjectModel/PageSource.h"

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace OvPlatform {

/// Markup that is written, in blocks, in the encoding of the part that it was read from.
class MarkupOutput {
public:
    /// Of encoded bytes. May throw.
    using Sink = std::function<void(std::string_view)>;

    /// `like`: null for UTF-8 without a mark.
    MarkupOutput(Sink sink, const PageSource* like);

    /// Text in UTF-8.
    void Write(std::string_view text);
    /// At the end.
    void Flush();

private:
    static std::string_view Piece(std::string_view text);
    void Append(std::string_view text);

    const Sink m_sink;
    std::string m_buffer;
    bool m_isUtf16 = false;
    bool m_isBigEndian = false;
};

} // namespace OvPlatform
