#include "Report/ShownOutput.h"

#include "Report/JsonText.h"

#include <Locale/ShownText.h>

#include <ostream>

namespace OvPipeline {

namespace {

// Some lines on a terminal; beyond any line that has something to say.
constexpr std::size_t lineBound = 1200;

} // namespace

void ShownOutput::Line(std::string_view line) { m_stream << OvPlatform::Shown(line, lineBound) + '\n'; }

void ShownOutput::Lines(const std::vector<std::string>& lines) {
    for (const std::string& line : lines)
        Line(line);
}

void ShownOutput::Text(std::string_view text) {
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        Line(text.substr(0, end));
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
}

void ShownOutput::Xml(std::string_view xml) { m_stream << OvPlatform::ShownXml(xml) << '\n'; }

void ShownOutput::Json(const JsonText& json) { m_stream << json.Result() << '\n'; }

void ShownOutput::JsonPiece(std::string_view piece) { m_stream << piece; }

bool ShownOutput::Flush() { return static_cast<bool>(m_stream.flush()); }

} // namespace OvPipeline
