// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <utility>
#include <vector>

/// What every benchmark program measures and prints with.
namespace Bench {

/// The best of @p rounds times of one call, in milliseconds: the least disturbed run is the one that repeats.
template <typename Function>
double milliseconds(int rounds, Function&& function)
{
    double best = 0;
    for (int round = 0; round < rounds; ++round) {
        const auto start = std::chrono::steady_clock::now();
        function();
        const std::chrono::duration<double, std::milli> elapsed = std::chrono::steady_clock::now() - start;
        best = round == 0 ? elapsed.count() : std::min(best, elapsed.count());
    }
    return best;
}

/// Two functions timed in turn, so that whatever else the machine does hits both: {ours, peer}.
template <typename Ours, typename Peer>
std::pair<double, double> millisecondsInTurn(int rounds, Ours&& ours, Peer&& peer)
{
    double bestOurs = 0;
    double bestPeer = 0;
    for (int round = 0; round < rounds; ++round) {
        const double timeOurs = milliseconds(1, ours);
        const double timePeer = milliseconds(1, peer);
        bestOurs = round == 0 ? timeOurs : std::min(bestOurs, timeOurs);
        bestPeer = round == 0 ? timePeer : std::min(bestPeer, timePeer);
    }
    return {bestOurs, bestPeer};
}

/// The same with the middle of all times in place of the best, for what waits for a disk: there the best is a run that
/// happened not to have to wait.
template <typename Ours, typename Peer>
std::pair<double, double> medianMillisecondsInTurn(int rounds, Ours&& ours, Peer&& peer)
{
    std::vector<double> timesOurs;
    std::vector<double> timesPeer;
    for (int round = 0; round < rounds; ++round) {
        timesOurs.push_back(milliseconds(1, ours));
        timesPeer.push_back(milliseconds(1, peer));
    }
    const auto median = [](std::vector<double>& times) {
        const auto middle = times.begin() + std::ptrdiff_t(times.size() / 2);
        std::nth_element(times.begin(), middle, times.end());
        return *middle;
    };
    return {median(timesOurs), median(timesPeer)};
}

/// Prints one measure whose target is a ratio of ours to the peer's.
inline void report(const char* name, double ours, double peer, double target)
{
    const double ratio = peer > 0 ? ours / peer : 0;
    std::printf("bench: %s ours=%.4g peer=%.4g ratio=%.3f target=%.3g %s\n", name, ours, peer, ratio, target,
        ratio <= target ? "ok" : "MISSED");
    std::fflush(stdout);
}

/// Prints one measure whose target is a value of its own (the peer is told for comparison; 0 where there is none).
inline void reportAbsolute(const char* name, double ours, double peer, double target)
{
    std::printf("bench: %s ours=%.4g peer=%.4g ratio=%.3f target=%.3g %s\n", name, ours, peer,
        peer > 0 ? ours / peer : 0, target, ours <= target ? "ok" : "MISSED");
    std::fflush(stdout);
}

} // namespace Bench
