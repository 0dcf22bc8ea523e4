// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/history/rank_line.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <limits>
#include <optional>
#include <span>

namespace veltrix
{

namespace
{

/// Narrowest column of a day in which each check has a point of its own.
constexpr qreal leastPointColumn = 6;
/// Share of a day's column that a point may fill.
constexpr qreal pointShare = 0.6;
constexpr qreal largestPoint = 9;
constexpr qreal smallestPoint = 5;
/// Where only some checks have points: their side, and from one to the next.
constexpr qreal sparsePoint = 7;
constexpr qreal sparseDistance = 28;
/// The same of lines that are compared, and by how much the marks of the next line stand aside.
constexpr qreal comparedPoint = 8;
constexpr qreal comparedDistance = 64;
constexpr qreal comparedShift = 0.38 * comparedDistance;
/// What stays open of a gap between two points beside it.
constexpr qreal openGap = 3;
constexpr qreal crossArm = 4;
constexpr qreal smallCrossArm = 3;
constexpr qreal crossGap = 2;

/// Joined checks, and from where to where they are drawn.
struct Run {
    std::span<const RankPoint> checks;
    qreal left = 0;
    qreal right = 0;
    /// Distances to the runs beside it.
    qreal gapBefore = std::numeric_limits<qreal>::infinity();
    qreal gapAfter = std::numeric_limits<qreal>::infinity();

    [[nodiscard]] QPointF at(const RankPlot &plot, const RankPoint &check) const
    {
        const QPointF place = plot.at(check.day, check.rank);
        return {std::clamp(place.x(), left, right), place.y()};
    }
};

/// Draws a run in at its ends where the gaps beside it could not be seen.
void openGaps(Run &run)
{
    const qreal left = run.left + std::max(0.0, RankLine::leastGap - run.gapBefore) / 2;
    const qreal right = run.right - std::max(0.0, RankLine::leastGap - run.gapAfter) / 2;
    const qreal middle = std::clamp((left + right) / 2, run.left, run.right);
    run.left = std::min(left, middle);
    run.right = std::max(right, middle);
}

std::vector<Run> runsOf(const RankPlot &plot, std::span<const RankPoint> points)
{
    std::vector<Run> runs;
    for (auto first = points.begin(); first != points.end();) {
        const auto last = std::find_if(first, points.end(), [&](const RankPoint &point) {
            return point.segment != first->segment;
        });
        Run run{{first, last}, plot.x(first->day), plot.x(std::prev(last)->day)};
        if (!runs.empty())
            run.gapBefore = runs.back().gapAfter = run.left - runs.back().right;
        runs.push_back(run);
        first = last;
    }
    std::ranges::for_each(runs, openGaps);
    return runs;
}

QPolygonF polylineOf(const RankPlot &plot, const Run &run)
{
    QPolygonF line;
    for (auto first = run.checks.begin(); first != run.checks.end();) {
        const auto columnOf = [&](const RankPoint &check) {
            return std::floor(run.at(plot, check).x());
        };
        const auto last = std::find_if(first, run.checks.end(), [&](const RankPoint &check) {
            return columnOf(check) != columnOf(*first);
        });
        const auto [best, worst] =
            std::minmax_element(first, last, [](const RankPoint &one, const RankPoint &two) {
                return one.rank < two.rank;
            });
        std::array kept{first, best, worst, std::prev(last)};
        std::ranges::sort(kept);
        for (const auto check : kept) {
            const QPointF place = run.at(plot, *check);
            if (line.isEmpty() || line.back() != place)
                line.append(place);
        }
        first = last;
    }
    return line;
}

/// How some of the checks are chosen that have points.
struct Spread {
    qreal side = sparsePoint;
    qreal distance = sparseDistance;
    /// Where lines are compared: points stand at a raster that begins here.
    std::optional<qreal> raster;

    /// Far enough behind the point before, or where the raster wants one.
    [[nodiscard]] bool isDue(qreal x, qreal checkBefore, qreal pointBefore) const
    {
        if (!raster)
            return x - pointBefore >= distance;
        const auto cell = [this](qreal place) {
            return std::floor((place - *raster) / distance);
        };
        return cell(x) != cell(checkBefore);
    }
};

/// Points at some checks of a run: its ends where they leave the gap open, and others in between.
std::vector<QPointF> sparsePoints(const RankPlot &plot, const Run &run, const Spread &spread)
{
    const qreal clear = spread.side + openGap;
    const qreal left = run.left + (run.gapBefore < clear ? clear / 2 : 0);
    const qreal right = run.right - (run.gapAfter < clear ? clear / 2 : 0);
    std::vector<QPointF> points;
    qreal before = left;
    for (const RankPoint &check : run.checks) {
        const QPointF place = run.at(plot, check);
        if (place.x() < left || place.x() > right)
            continue;
        const qreal distance = points.empty() ? spread.distance : place.x() - points.back().x();
        const bool isDue = points.empty() || spread.isDue(place.x(), before, points.back().x());
        before = place.x();
        const bool isEnd = &check == &run.checks.back();
        if (!isDue && !isEnd)
            continue;
        // The end of a run takes the place of a point that it would touch, but for the other end.
        if (distance < clear && (points.size() == 1 || !isEnd))
            continue;
        if (distance < clear)
            points.pop_back();
        points.push_back(place);
    }
    return points;
}

std::vector<QPointF> crossesOf(const RankPlot &plot, const RankChartData &data, qreal arm)
{
    std::vector<QPointF> crosses;
    for (const size_t day : data.unranked) {
        const QPointF place = plot.unrankedMark(day);
        if (crosses.empty() || place.x() - crosses.back().x() >= 2 * arm + crossGap)
            crosses.push_back(place);
    }
    return crosses;
}

} // namespace

RankLine rankLine(const RankPlot &plot, const RankChartData &data)
{
    RankLine line;
    const bool isSparse = plot.column() < leastPointColumn;
    line.pointSide = isSparse ? sparsePoint
                              : std::clamp(plot.column() * pointShare, smallestPoint, largestPoint);
    for (const Run &run : runsOf(plot, data.points)) {
        line.runs.push_back(polylineOf(plot, run));
        if (isSparse)
            std::ranges::copy(sparsePoints(plot, run, Spread()), std::back_inserter(line.points));
    }
    if (!isSparse) {
        for (const RankPoint &point : data.points)
            line.points.push_back(plot.at(point.day, point.rank));
    }
    line.crossArm = isSparse ? smallCrossArm : crossArm;
    line.crosses = crossesOf(plot, data, line.crossArm);
    return line;
}

RankLine comparedRankLine(const RankPlot &plot, const RankChartData &data, size_t place)
{
    RankLine line;
    line.pointSide = comparedPoint;
    const qreal shift = std::fmod(double(place) * comparedShift, comparedDistance);
    const Spread spread{comparedPoint, comparedDistance, plot.area.left() + shift};
    for (const Run &run : runsOf(plot, data.points)) {
        line.runs.push_back(polylineOf(plot, run));
        std::ranges::copy(sparsePoints(plot, run, spread), std::back_inserter(line.points));
    }
    line.crossArm = plot.column() < leastPointColumn ? smallCrossArm : crossArm;
    line.crosses = crossesOf(plot, data, line.crossArm);
    return line;
}

} // namespace veltrix
