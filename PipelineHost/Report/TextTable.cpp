#include "Report/TextTable.h"

#include "Locale/ShownText.h"

#include <algorithm>

namespace OvPipeline {

namespace {

constexpr std::size_t CellBound = 160;

std::size_t Width(const std::string& utf8) {
    return static_cast<std::size_t>(std::count_if(
        utf8.begin(), utf8.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }));
}

} // namespace

std::string AlignedTable(std::vector<std::vector<std::string>> lines, const std::string& indent) {
    for (auto& line : lines)
        for (std::string& cell : line)
            cell = OvPlatform::Shown(cell, CellBound);
    std::vector<std::size_t> widths;
    for (const auto& line : lines) {
        widths.resize((std::max)(widths.size(), line.size()));
        for (std::size_t at = 0; at < line.size(); ++at)
            widths[at] = (std::max)(widths[at], Width(line[at]));
    }
    std::string text;
    for (const auto& line : lines) {
        text += indent;
        for (std::size_t at = 0; at < line.size(); ++at)
            text.append(line[at]).append(widths[at] + 2 - Width(line[at]), ' ');
        text.erase(text.find_last_not_of(' ') + 1);
        text += '\n';
    }
    return text;
}

} // namespace OvPipeline
