#include "Common/PageRanges.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <stdexcept>

namespace OvPipeline {

namespace {

constexpr std::uint64_t lastOfAll = std::numeric_limits<std::uint64_t>::max();

// The number that the text begins with, which is taken off it; 0 where there is none from 1 up.
std::uint64_t TakeNumber(std::string_view& text) {
    std::uint64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc()) return 0;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return number;
}

std::pair<std::uint64_t, std::uint64_t> RangeOf(std::string_view text) {
    std::string_view rest = text;
    const std::uint64_t first = TakeNumber(rest);
    std::uint64_t last = first;
    if (rest.starts_with('-')) {
        rest.remove_prefix(1);
        last = rest.empty() ? lastOfAll : TakeNumber(rest);
    }
    if (first == 0 || last == 0 || !rest.empty())
        throw std::invalid_argument("\"" + std::string(text) +
                                    "\" is neither a page nor a range, as in 2-5,9,12-");
    if (last < first)
        throw std::invalid_argument("the range " + std::string(text) + " ends before it begins");
    return {first, last};
}

} // namespace

PageRanges::PageRanges(std::string_view text) : m_text(text) {
    for (std::size_t start = 0; start <= text.size();) {
        const std::size_t comma = std::min(text.find(',', start), text.size());
        m_ranges.push_back(RangeOf(text.substr(start, comma - start)));
        start = comma + 1;
    }
    std::ranges::sort(m_ranges);
    std::size_t kept = 0;
    for (const auto& range : m_ranges)
        if (kept > 0 && range.first <= m_ranges[kept - 1].second)
            m_ranges[kept - 1].second = std::max(m_ranges[kept - 1].second, range.second);
        else
            m_ranges[kept++] = range;
    m_ranges.resize(kept);
}

bool PageRanges::Contain(std::uint64_t page) const {
    if (AreAll()) return true;
    const auto behind =
        std::ranges::upper_bound(m_ranges, page, {}, [](const auto& range) { return range.first; });
    return behind != m_ranges.begin() && page <= std::prev(behind)->second;
}

} // namespace OvPipeline
