#pragma once

#include "Limits.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <string>
#include <vector>

/// The times of a task and its peer, which take turns, so that both see the same machine. Medians count: what
/// else runs there lengthens some rounds of either.
class PairedTimes {
public:
    /// One round of both. Gives the task's seconds.
    template <typename Own, typename Peer>
    double Run(Own&& own, Peer&& peer) {
        using Clock = std::chrono::steady_clock;
        const auto start = Clock::now();
        own();
        const auto between = Clock::now();
        peer();
        const auto end = Clock::now();
        m_own.push_back(std::chrono::duration<double>(between - start).count());
        m_peer.push_back(std::chrono::duration<double>(end - between).count());
        return m_own.back();
    }

    double Own() { return Median(m_own); }
    double Peer() { return Median(m_peer); }
    double Ratio() { return Own() / Peer(); }

    /// All rounds of a benchmark that uses manual time; its counters are the ratio and the limit.
    template <typename Own, typename Peer>
    static void Compare(benchmark::State& state, const std::string& what, double limit, Own&& own,
                        Peer&& peer) {
        PairedTimes times;
        for ([[maybe_unused]] auto _ : state)
            state.SetIterationTime(times.Run(own, peer));
        state.counters["peer_us"] = times.Peer() * 1e6;
        state.counters["ratio"] = times.Ratio();
        Limits::Report(what, times.Ratio(), limit);
    }

private:
    static double Median(std::vector<double>& values) {
        const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
        std::nth_element(values.begin(), middle, values.end());
        return *middle;
    }

    std::vector<double> m_own;
    std::vector<double> m_peer;
};
