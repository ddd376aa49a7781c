#include "Report/TextTable.h"

#include <Locale/ShownText.h>

#include <utf8coder.h>

#include <algorithm>
#include <numeric>

namespace OvPipeline {

namespace {

constexpr std::size_t cellBound = 160;
constexpr std::size_t narrowestColumn = 8;
constexpr std::size_t gap = 2; // between columns

// Takes from the widest, so that all end up as wide as they can.
void Fit(std::vector<std::size_t>& widths, std::size_t room) {
    const std::size_t gaps = widths.empty() ? 0 : gap * (widths.size() - 1);
    std::size_t total = std::accumulate(widths.begin(), widths.end(), gaps);
    while (total > room) {
        const auto widest = std::ranges::max_element(widths);
        if (*widest <= narrowestColumn) return;
        --*widest;
        --total;
    }
}

// The beginning, with a mark that there is more.
std::string Cut(const std::string& cell, std::size_t width) {
    if (OvPlatform::Utf8::CountCharacters(cell) <= width) return cell;
    std::size_t end = 0;
    for (std::size_t character = 0; character < width; ++end)
        if ((static_cast<unsigned char>(cell[end + 1]) & 0xC0) != 0x80) ++character;
    // The last of them gives its place to the mark.
    do
        --end;
    while ((static_cast<unsigned char>(cell[end]) & 0xC0) == 0x80);
    return cell.substr(0, end) + "\u2026";
}

} // namespace

std::string AlignedTable(std::vector<std::vector<std::string>> lines, std::size_t width,
                         const std::string& indent) {
    for (auto& line : lines)
        for (std::string& cell : line)
            cell = OvPlatform::Shown(cell, cellBound);
    std::vector<std::size_t> widths;
    for (const auto& line : lines) {
        widths.resize((std::max)(widths.size(), line.size()));
        for (std::size_t at = 0; at < line.size(); ++at)
            widths[at] = (std::max)(widths[at], OvPlatform::Utf8::CountCharacters(line[at]));
    }
    if (width > indent.size()) Fit(widths, width - indent.size());
    std::string text;
    for (const auto& line : lines) {
        text += indent;
        for (std::size_t at = 0; at < line.size(); ++at) {
            const std::string cell = Cut(line[at], widths[at]);
            text.append(cell).append(widths[at] + gap - OvPlatform::Utf8::CountCharacters(cell), ' ');
        }
        text.erase(text.find_last_not_of(' ') + 1);
        text += '\n';
    }
    return text;
}

} // namespace OvPipeline
