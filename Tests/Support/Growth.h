#pragma once

// How the work of an operation grows with its input: measured at n, 2n and 4n in one run, so that what the
// machine is and does beside it cancels out.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <ctime>
#include <functional>
#include <limits>
#include <ostream>
#include <string>

/// Makes the input of a size, and gives what is to be measured on it. That is run once.
using GrowthMaker = std::function<std::function<void()>(std::size_t n)>;

/// The text of n items one behind the other.
using Item = std::function<std::string(std::size_t)>;
inline std::string Times(std::size_t n, const Item& item) {
    std::string text;
    for (std::size_t i = 0; i < n; ++i)
        text += item(i);
    return text;
}

struct GrowthCase {
    const char* name; // of letters and digits
    GrowthMaker prepare;
    /// The largest n whose fourfold the reader still takes.
    std::size_t most = std::numeric_limits<std::size_t>::max();
};
inline void PrintTo(const GrowthCase& growth, std::ostream* out) { *out << growth.name; }
inline std::string GrowthName(const testing::TestParamInfo<GrowthCase>& info) { return info.param.name; }

namespace GrowthDetail {

/// Of the process, all threads: what the machine does beside it does not count.
inline double CpuSeconds() {
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

struct Cost {
    double run;
    double whole; // with making the input
};

inline Cost CostOf(const GrowthCase& growth, std::size_t n) {
    const double start = CpuSeconds();
    const std::function<void()> run = growth.prepare(n);
    const double prepared = CpuSeconds();
    run();
    const double end = CpuSeconds();
    return {end - prepared, end - start};
}

} // namespace GrowthDetail

/// Fails where four times the input takes more than nine times the work: in proportion that would be 4, with
/// the square 16. The size is found by doubling, so that the least measurement stands clear of the clock's
/// grain, and what grows with the square is found while it is still small.
inline void ExpectLinearGrowth(const GrowthCase& growth) {
    constexpr double clearCost = 0.03; // seconds
    constexpr double longRun = 0.12;
    constexpr double mostForFourfold = 9;
    std::size_t n = 64;
    for (; n * 2 <= growth.most; n *= 2) {
        const GrowthDetail::Cost cost = GrowthDetail::CostOf(growth, n);
        if (cost.run >= clearCost || cost.whole >= longRun) break;
    }
    constexpr std::array<std::size_t, 3> steps = {1, 2, 4};
    std::array<double, 3> best;
    best.fill(std::numeric_limits<double>::max());
    for (int attempt = 0; attempt < 5; ++attempt) {
        for (std::size_t i = 0; i < steps.size(); ++i)
            best[i] = (std::min)(best[i], GrowthDetail::CostOf(growth, n * steps[i]).run);
        if (best[2] <= mostForFourfold * best[0]) return;
    }
    if (best[2] < clearCost) return; // all of it lies below what can be told
    ADD_FAILURE() << growth.name << " takes " << best[0] << " s for " << n << ", " << best[1]
                  << " s for twice and " << best[2] << " s for four times as much";
}
