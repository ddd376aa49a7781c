#pragma once

#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

namespace OvPipeline {

class JsonText;

/// One of the program's two streams. It may lead to a terminal, and what is written may come from outside:
/// nothing that goes through here acts on a terminal, and no line is more than one line or too long to be
/// read. One thread at a time.
class ShownOutput {
public:
    /// width: of the terminal behind the stream, in characters; 0 where there is none.
    explicit ShownOutput(std::ostream& stream, std::size_t width = 0) : m_stream(stream), m_width(width) {}
    ShownOutput(const ShownOutput&) = delete;
    ShownOutput& operator=(const ShownOutput&) = delete;

    /// What tables are fitted to; 0: they are whole.
    std::size_t Width() const { return m_width; }

    /// One line, without its end. It is written as one, so that processes that share a stream do not mix
    /// theirs.
    void Line(std::string_view line);
    void Lines(const std::vector<std::string>& lines);
    /// Several lines whose breaks are the program's own: help, or tables, whose cells hold none.
    void Text(std::string_view text);
    /// Data for programs, whole.
    void Xml(std::string_view xml);
    void Json(const JsonText& json);
    /// A piece of it; Json, or a piece that ends a line, comes last.
    void JsonPiece(std::string_view piece);

    /// False if anything could not be written.
    bool Flush();

private:
    std::ostream& m_stream;
    std::size_t m_width;
};

} // namespace OvPipeline
