#include "Arguments/NearestName.h"

#include <algorithm>
#include <numeric>

namespace OvPipeline {

namespace {

// Longer ones were not mistyped.
constexpr std::size_t longestName = 40;

// How many letters have to be put in, taken out, changed, or swapped with their neighbour.
std::size_t Distance(std::string_view one, std::string_view other) {
    std::vector<std::size_t> beforeLast(other.size() + 1);
    std::vector<std::size_t> last(other.size() + 1);
    std::vector<std::size_t> row(other.size() + 1);
    std::iota(last.begin(), last.end(), std::size_t{0});
    for (std::size_t i = 1; i <= one.size(); ++i) {
        row[0] = i;
        for (std::size_t j = 1; j <= other.size(); ++j) {
            const std::size_t changed = last[j - 1] + (one[i - 1] == other[j - 1] ? 0 : 1);
            row[j] = std::min({last[j] + 1, row[j - 1] + 1, changed});
            if (i > 1 && j > 1 && one[i - 1] == other[j - 2] && one[i - 2] == other[j - 1])
                row[j] = std::min(row[j], beforeLast[j - 2] + 1);
        }
        beforeLast.swap(last);
        last.swap(row);
    }
    return last.back();
}

} // namespace

std::string NearestName(std::string_view typed, const std::vector<std::string>& names) {
    if (typed.size() > longestName) return {};
    std::string nearest;
    std::size_t least = typed.size() / 3 + 1;
    for (const std::string& name : names)
        if (const std::size_t distance = Distance(typed, name); distance < least) {
            least = distance;
            nearest = name;
        }
    return nearest;
}

} // namespace OvPipeline
