// SPDX-License-Identifier: GPL-3.0-or-later
// Speed as a ratio against a reference in the same run: machines differ, ratios stay.
#pragma once

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <iterator>
#include <string>
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

/// As shares of a whole.
inline Spread sharesOf(const Spread &figure, double whole)
{
    return {figure.median / whole, figure.lowest / whole, figure.highest / whole};
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

/// What figures are of: seconds, or bytes.
enum class Unit { Time, Bytes };

/// The quotients of a figure and its reference over several rounds, and both by themselves.
struct Ratio : Spread {
    Spread figure;
    Spread reference;
    Unit unit = Unit::Time;
};

/// A figure beside a reference over `rounds`. Each round takes both twice, the second time in the
/// other order, so that neither a slow moment of the machine nor what one leaves behind for the
/// next favours either.
template <class Figure, class Reference>
Ratio quotients(Figure &&figure, Reference &&reference, int rounds, Unit unit = Unit::Time)
{
    std::vector<double> ratios;
    std::vector<double> figures;
    std::vector<double> references;
    for (int i = 0; i < rounds; ++i) {
        const double first = figure();
        const double second = reference();
        const double third = reference();
        const double fourth = figure();
        ratios.push_back((first + fourth) / (second + third));
        figures.push_back((first + fourth) / 2);
        references.push_back((second + third) / 2);
    }
    return {spreadOf(std::move(ratios)), spreadOf(std::move(figures)),
            spreadOf(std::move(references)), unit};
}

/// How many times as long `work` takes as `reference`, in processor time; `prepare` runs before
/// each, outside the timing.
template <class Work, class Reference, class Prepare>
Ratio timesAsLong(Work &&work, Reference &&reference, int rounds, Prepare &&prepare)
{
    const auto prepared = [&prepare](auto &measured) {
        prepare();
        return secondsOf(measured);
    };
    return quotients([&] { return prepared(work); }, [&] { return prepared(reference); }, rounds);
}

template <class Work, class Reference>
Ratio timesAsLong(Work &&work, Reference &&reference, int rounds)
{
    return timesAsLong(work, reference, rounds, [] {});
}

/// The other way round, of any two measurements: how many times the reference is the figure.
template <class Figure, class Reference>
Ratio timesBetter(Figure &&figure, Reference &&reference, int rounds)
{
    const Ratio turned = quotients(reference, figure, rounds);
    return {turned, turned.reference, turned.figure, turned.unit};
}

/// How many times as fast.
template <class Work, class Reference, class Prepare>
Ratio timesAsFast(Work &&work, Reference &&reference, int rounds, Prepare &&prepare)
{
    const Ratio turned = timesAsLong(reference, work, rounds, prepare);
    return {turned, turned.reference, turned.figure, turned.unit};
}

template <class Work, class Reference>
Ratio timesAsFast(Work &&work, Reference &&reference, int rounds)
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

/// A figure for people, such as "12.5 ms".
inline std::string inWords(double value, Unit unit)
{
    struct Step {
        double size;
        const char *name;
    };
    static constexpr Step times[] = {{1, "s"}, {1e-3, "ms"}, {1e-6, "µs"}, {1e-9, "ns"}};
    static constexpr Step sizes[] = {{1e9, "GB"}, {1e6, "MB"}, {1e3, "kB"}, {1, "bytes"}};
    const auto &steps = unit == Unit::Time ? times : sizes;
    const Step *step = std::begin(steps);
    while (step + 1 != std::end(steps) && value < step->size)
        ++step;
    char text[32];
    std::snprintf(text, sizeof text, "%.3g %s", value / step->size, step->name);
    return text;
}

/// A row of the table: what is measured, its median with the lowest and the highest value, the
/// figure beside its reference, the goal, and whether the median meets it.
inline void printRow(const std::string &what, const Spread &figure, const std::string &beside,
                     const std::string &goal, const char *isMet)
{
    std::printf("| %s | %.2f (%.2f to %.2f) | %s | %s | %s |\n", what.c_str(), figure.median,
                figure.lowest, figure.highest, beside.c_str(), goal.c_str(), isMet);
    std::fflush(stdout);
}

/// Prints a row of the table with a goal. `beside` says what the figure is of.
inline void report(const char *what, const Spread &figure, Goal goal,
                   const std::string &beside = std::string())
{
    char bound[32];
    std::snprintf(bound, sizeof bound, "%s %g",
                  goal.bound == Goal::Bound::AtLeast ? "at least" : "at most", goal.value);
    printRow(what, figure, beside, bound, goal.isMetBy(figure.median) ? "yes" : "**no**");
}

inline std::string besideEachOther(const Ratio &ratio)
{
    return inWords(ratio.figure.median, ratio.unit) + " : " +
           inWords(ratio.reference.median, ratio.unit);
}

inline void report(const char *what, const Ratio &ratio, Goal goal)
{
    report(what, ratio, goal, besideEachOther(ratio));
}

/// Prints a row that explains the ones before it and has no goal of its own.
inline void reportDetail(const char *what, const Spread &figure, const char *unit)
{
    printRow(std::string("· ") + what, figure, unit, {}, "");
}

inline void reportDetail(const char *what, const Ratio &ratio)
{
    printRow(std::string("· ") + what, ratio, besideEachOther(ratio), {}, "");
}

} // namespace veltrix
