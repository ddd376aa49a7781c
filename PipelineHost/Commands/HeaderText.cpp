#include "Commands/HeaderText.h"

#include "Common/Text.h"

#include <algorithm>
#include <cstdint>
#include <span>

namespace OvPipeline {

namespace {

constexpr std::string_view featureStart = "\nfeaturebegin{";

HeaderText::Pieces Lines(std::string_view text) {
    HeaderText::Pieces lines;
    while (!text.empty()) {
        const std::size_t length = std::min(text.find('\n'), text.size() - 1) + 1;
        lines.emplace_back(text.substr(0, length));
        text.remove_prefix(length);
    }
    return lines;
}

HeaderText::Pieces Features(std::string_view text) {
    HeaderText::Pieces features;
    while (!text.empty()) {
        const std::size_t length = std::min(text.find(featureStart, 1), text.size());
        features.emplace_back(text.substr(0, length));
        text.remove_prefix(length);
    }
    return features;
}

std::string Utf8Of(const CXString& text) { return Utf8(text.View()); }

// By the longest sequence that both have.
std::vector<std::size_t> MissingOfDifferent(std::span<const std::string> pieces,
                                            std::span<const std::string> others) {
    const std::size_t width = others.size() + 1;
    std::vector<std::uint32_t> common((pieces.size() + 1) * width, 0); // of what is left of both
    for (std::size_t i = pieces.size(); i-- > 0;)
        for (std::size_t j = others.size(); j-- > 0;)
            common[i * width + j] = pieces[i] == others[j]
                                        ? common[(i + 1) * width + j + 1] + 1
                                        : std::max(common[(i + 1) * width + j], common[i * width + j + 1]);
    std::vector<std::size_t> missing;
    std::size_t j = 0;
    for (std::size_t i = 0; i < pieces.size();) {
        if (j < others.size() && pieces[i] == others[j]) {
            ++i;
            ++j;
        } else if (j < others.size() && common[i * width + j + 1] >= common[(i + 1) * width + j]) {
            ++j;
        } else {
            missing.push_back(i++);
        }
    }
    return missing;
}

} // namespace

HeaderText HeaderText::Of(const DeviceInstructions& instructions) {
    const std::string setup = Utf8Of(instructions.setupCommands);
    return {{Lines(Utf8Of(instructions.pjlCommands)),
             setup.starts_with(featureStart) ? Features(setup) : Lines(setup),
             Lines(Utf8Of(instructions.trailerComments))}};
}

const char* HeaderText::Title(const DeviceFamily& family, std::size_t section) {
    const bool isPageTicket = section == Setup && family.language == DeviceFamily::PageLanguage::Pclm;
    return isPageTicket ? "page ticket" : names[section].title;
}

std::vector<std::size_t> MissingPieces(const HeaderText::Pieces& pieces, const HeaderText::Pieces& others) {
    // What both begin and end with needs no table: a product may bring lines by the thousand.
    std::span<const std::string> left(pieces);
    std::span<const std::string> right(others);
    const auto start = static_cast<std::size_t>(std::ranges::mismatch(left, right).in1 - left.begin());
    left = left.subspan(start);
    right = right.subspan(start);
    const auto endOfLeft = std::mismatch(left.rbegin(), left.rend(), right.rbegin(), right.rend()).first;
    const auto end = static_cast<std::size_t>(endOfLeft - left.rbegin());
    std::vector<std::size_t> missing =
        MissingOfDifferent(left.first(left.size() - end), right.first(right.size() - end));
    for (std::size_t& piece : missing)
        piece += start;
    return missing;
}

HeaderText::Pieces PieceLines(std::string_view piece) {
    if (piece.starts_with('\n')) piece.remove_prefix(1);
    if (piece.ends_with('\n')) piece.remove_suffix(1);
    HeaderText::Pieces lines;
    for (std::size_t start = 0; start <= piece.size();) {
        const std::size_t end = std::min(piece.find('\n', start), piece.size());
        lines.emplace_back(piece.substr(start, end - start));
        start = end + 1;
    }
    return lines;
}

} // namespace OvPipeline
