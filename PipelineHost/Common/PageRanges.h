#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace OvPipeline {

/// Pages by number, counted from 1; all of them where none is named.
class PageRanges {
public:
    PageRanges() = default;
    /// "2-5,9,12-": numbers and ranges with commas between them, in any order; a range without an end goes to
    /// the last page. Throws std::invalid_argument, in words, for any other text.
    explicit PageRanges(std::string_view text);

    bool AreAll() const { return m_ranges.empty(); }
    bool Contain(std::uint64_t page) const;
    /// As it was given: for messages.
    const std::string& Text() const { return m_text; }

private:
    std::string m_text;
    std::vector<std::pair<std::uint64_t, std::uint64_t>> m_ranges; // first and last, ascending, apart
};

} // namespace OvPipeline
