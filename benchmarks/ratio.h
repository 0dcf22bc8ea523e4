// SPDX-License-Identifier: GPL-3.0-or-later
// Speed as a ratio against a reference in the same run: machines differ, ratios stay.
#pragma once

#include <algorithm>
#include <chrono>
#include <vector>

namespace veltrix
{

/// Median time of one call of `work`, in seconds, over `rounds` calls; `prepare` runs before each,
/// outside the timing.
template <class Work, class Prepare>
double medianSeconds(Work &&work, int rounds, Prepare &&prepare)
{
    std::vector<double> times;
    for (int i = 0; i < rounds; ++i) {
        prepare();
        const auto start = std::chrono::steady_clock::now();
        work();
        times.push_back(
            std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
    }
    std::nth_element(times.begin(), times.begin() + rounds / 2, times.end());
    return times[size_t(rounds / 2)];
}

template <class Work>
double medianSeconds(Work &&work, int rounds)
{
    return medianSeconds(work, rounds, [] {});
}

/// Median of the ratio reference ÷ work over `rounds` pairs, each pair measured back to back, so
/// that a slow moment of the machine touches both; `prepare` runs before each, outside the timing.
template <class Reference, class Work, class Prepare>
double medianSpeedup(Reference &&reference, Work &&work, int rounds, Prepare &&prepare)
{
    std::vector<double> ratios;
    for (int i = 0; i < rounds; ++i)
        ratios.push_back(medianSeconds(reference, 1, prepare) / medianSeconds(work, 1, prepare));
    std::nth_element(ratios.begin(), ratios.begin() + rounds / 2, ratios.end());
    return ratios[size_t(rounds / 2)];
}

template <class Reference, class Work>
double medianSpeedup(Reference &&reference, Work &&work, int rounds)
{
    return medianSpeedup(reference, work, rounds, [] {});
}

} // namespace veltrix
