#include "Comparison/Alignment.h"

#include <algorithm>
#include <cstdint>

namespace OvPipeline {

namespace {

constexpr std::size_t mostCells = 32u << 20; // of the table, four bytes each

using Texts = std::span<const std::string>;

// The pairs of what differs, with the places from `atA` and `atB` on.
void PairInOrder(std::vector<AlignedPair>& pairs, std::size_t atA, std::size_t countA, std::size_t atB,
                 std::size_t countB) {
    for (std::size_t i = 0; i < (std::max)(countA, countB); ++i)
        pairs.push_back({i < countA ? std::optional(atA + i) : std::nullopt,
                         i < countB ? std::optional(atB + i) : std::nullopt});
}

// By the longest sequence that both have.
void PairByCommon(std::vector<AlignedPair>& pairs, Texts a, Texts b, std::size_t start) {
    const std::size_t width = b.size() + 1;
    std::vector<std::uint32_t> common((a.size() + 1) * width, 0); // of what is left of both
    for (std::size_t i = a.size(); i-- > 0;)
        for (std::size_t j = b.size(); j-- > 0;)
            common[i * width + j] = a[i] == b[j]
                                        ? common[(i + 1) * width + j + 1] + 1
                                        : (std::max)(common[(i + 1) * width + j], common[i * width + j + 1]);
    std::size_t i = 0, j = 0, doneA = 0, doneB = 0;
    const auto flush = [&] { PairInOrder(pairs, start + doneA, i - doneA, start + doneB, j - doneB); };
    while (i < a.size() && j < b.size()) {
        if (a[i] == b[j]) {
            flush();
            pairs.push_back({start + i++, start + j++});
            doneA = i;
            doneB = j;
        } else if (common[(i + 1) * width + j] >= common[i * width + j + 1]) {
            ++i;
        } else {
            ++j;
        }
    }
    i = a.size();
    j = b.size();
    flush();
}

} // namespace

std::vector<AlignedPair> Align(Texts a, Texts b) {
    const auto start = static_cast<std::size_t>(std::ranges::mismatch(a, b).in1 - a.begin());
    std::size_t tail = 0;
    while (tail < (std::min)(a.size(), b.size()) - start && a[a.size() - 1 - tail] == b[b.size() - 1 - tail])
        ++tail;
    const Texts restA = a.subspan(start, a.size() - start - tail);
    const Texts restB = b.subspan(start, b.size() - start - tail);

    std::vector<AlignedPair> pairs;
    PairInOrder(pairs, 0, start, 0, start);
    if (restA.empty() || restB.empty() || (restA.size() + 1) > mostCells / (restB.size() + 1))
        PairInOrder(pairs, start, restA.size(), start, restB.size());
    else
        PairByCommon(pairs, restA, restB, start);
    PairInOrder(pairs, a.size() - tail, tail, b.size() - tail, tail);
    return pairs;
}

} // namespace OvPipeline
