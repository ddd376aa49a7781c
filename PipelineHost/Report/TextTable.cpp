#include "Report/TextTable.h"

#include <Locale/ShownText.h>

#include <utf8coder.h>

#include <algorithm>

namespace OvPipeline {

namespace {

constexpr std::size_t cellBound = 160;

} // namespace

std::string AlignedTable(std::vector<std::vector<std::string>> lines, const std::string& indent) {
    for (auto& line : lines)
        for (std::string& cell : line)
            cell = OvPlatform::Shown(cell, cellBound);
    std::vector<std::size_t> widths;
    for (const auto& line : lines) {
        widths.resize((std::max)(widths.size(), line.size()));
        for (std::size_t at = 0; at < line.size(); ++at)
            widths[at] = (std::max)(widths[at], OvPlatform::Utf8::CountCharacters(line[at]));
    }
    std::string text;
    for (const auto& line : lines) {
        text += indent;
        for (std::size_t at = 0; at < line.size(); ++at)
            text.append(line[at]).append(widths[at] + 2 - OvPlatform::Utf8::CountCharacters(line[at]), ' ');
        text.erase(text.find_last_not_of(' ') + 1);
        text += '\n';
    }
    return text;
}

} // namespace OvPipeline
