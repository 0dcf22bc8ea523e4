// SPDX-License-Identifier: GPL-3.0-or-later
// Speed as a ratio against a reference in the same run: machines differ, ratios stay.
#pragma once

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <utility>
#include <vector>

namespace veltrix
{

/// What several rounds of one measurement gave.
struct Spread {
    double median = 0;
    double lowest = 0;
    double highest = 0;
};

inline Spread spreadOf(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return {values[values.size() / 2], values.front(), values.back()};
}

inline Spread inMilliseconds(Spread time)
{
    return {time.median * 1e3, time.lowest * 1e3, time.highest * 1e3};
}

enum class TimeOf {
    /// What the process itself used, blind to what else the machine does.
    Processor,
    /// What a user waits: for work that waits for the disk, or that several processes do.
    Wall,
};

inline double clockSeconds(TimeOf which)
{
    timespec time{};
    clock_gettime(which == TimeOf::Processor ? CLOCK_PROCESS_CPUTIME_ID : CLOCK_MONOTONIC, &time);
    return double(time.tv_sec) + double(time.tv_nsec) * 1e-9;
}

template <class Work>
double secondsOf(Work &&work, TimeOf which = TimeOf::Processor)
{
    const double start = clockSeconds(which);
    work();
    return clockSeconds(which) - start;
}

/// Time of one call of `work`, in seconds, over `rounds` calls.
template <class Work>
Spread seconds(Work &&work, int rounds, TimeOf which = TimeOf::Processor)
{
    std::vector<double> times;
    for (int i = 0; i < rounds; ++i)
        times.push_back(secondsOf(work, which));
    return spreadOf(std::move(times));
}

/// The quotients of two measurements over `rounds`. Each round takes both twice, the second time in
/// the other order, so that neither a slow moment of the machine nor what one leaves behind for the
/// next favours either.
template <class Dividend, class Divisor>
Spread quotients(Dividend &&dividend, Divisor &&divisor, int rounds)
{
    std::vector<double> ratios;
    for (int i = 0; i < rounds; ++i) {
        const double first = dividend();
        const double second = divisor();
        const double third = divisor();
        const double fourth = dividend();
        ratios.push_back((first + fourth) / (second + third));
    }
    return spreadOf(std::move(ratios));
}

/// How many times as long `work` takes as `reference`, in processor time; `prepare` runs before
/// each, outside the timing.
template <class Work, class Reference, class Prepare>
Spread timesAsLong(Work &&work, Reference &&reference, int rounds, Prepare &&prepare)
{
    const auto prepared = [&prepare](auto &measured) {
        prepare();
        return secondsOf(measured);
    };
    return quotients([&] { return prepared(work); }, [&] { return prepared(reference); }, rounds);
}

template <class Work, class Reference>
Spread timesAsLong(Work &&work, Reference &&reference, int rounds)
{
    return timesAsLong(work, reference, rounds, [] {});
}

/// The other way round: how many times as fast.
template <class Work, class Reference, class Prepare>
Spread timesAsFast(Work &&work, Reference &&reference, int rounds, Prepare &&prepare)
{
    return timesAsLong(reference, work, rounds, prepare);
}

template <class Work, class Reference>
Spread timesAsFast(Work &&work, Reference &&reference, int rounds)
{
    return timesAsFast(work, reference, rounds, [] {});
}

/// What a figure should be.
struct Goal {
    enum class Bound { AtLeast, AtMost } bound;
    double value;

    [[nodiscard]] bool isMetBy(double figure) const
    {
        return bound == Bound::AtLeast ? figure >= value : figure <= value;
    }
};

constexpr Goal atLeast(double value)
{
    return {Goal::Bound::AtLeast, value};
}
constexpr Goal atMost(double value)
{
    return {Goal::Bound::AtMost, value};
}

/// Prints a row of the table "what, ratio, goal, met": the median of a figure, and its lowest and
/// highest value.
inline void report(const char *what, const Spread &figure, Goal goal)
{
    char spread[64];
    std::snprintf(spread, sizeof spread, "%.2f (%.2f to %.2f)", figure.median, figure.lowest,
                  figure.highest);
    std::printf("| %-74s | %-24s | %-13s %-5g | %-3s |\n", what, spread,
                goal.bound == Goal::Bound::AtLeast ? "at least" : "at most", goal.value,
                goal.isMetBy(figure.median) ? "yes" : "NO");
    std::fflush(stdout);
}

/// Prints a row that explains the ones before it and has no goal of its own.
inline void reportDetail(const char *what, const Spread &figure, const char *unit)
{
    char spread[64];
    std::snprintf(spread, sizeof spread, "%.2f (%.2f to %.2f)", figure.median, figure.lowest,
                  figure.highest);
    std::printf("|   %-72s | %-24s | %-19s | %-3s |\n", what, spread, unit, "");
    std::fflush(stdout);
}

} // namespace veltrix
