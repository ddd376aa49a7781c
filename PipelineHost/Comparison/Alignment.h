#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace OvPipeline {

/// Two items that stand for each other in two sequences, by their places; one of them may be missing.
struct AlignedPair {
    std::optional<std::size_t> a;
    std::optional<std::size_t> b;

    bool operator==(const AlignedPair&) const = default;
};

/// Lays two sequences beside each other so that equal items stand together as far as their order allows. What
/// is different between equal ones is paired in order; what is left over has no partner. Where both differ in
/// too much to be searched, all is paired in order.
std::vector<AlignedPair> Align(std::span<const std::string> a, std::span<const std::string> b);

} // namespace OvPipeline
