// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/history/rank_plot.h"

#include <QCoreApplication>

#include <algorithm>
#include <cmath>

namespace veltrix
{

namespace
{

/// Shares of the ranks' span that stay free above rank 1 and below the last one.
constexpr double topMargin = 0.05;
constexpr double bottomMargin = 0.10;
/// Where in the lower margin the marks of unranked checks lie.
constexpr double markInMargin = 0.55;
/// How far beside a check a pointer still means it, and up to where it is right over it, in pixels.
constexpr qreal pointerReach = 4;
constexpr qreal pointerWidth = 0.5;

struct RankPlotTexts {
    Q_DECLARE_TR_FUNCTIONS(RankPlot)
};

bool hasCheck(const RankChartData &data, size_t day)
{
    return data.days[day].observation.has_value();
}

} // namespace

double RankPlot::lastX() const
{
    return std::max(double(dayCount), 1.0) - 0.5;
}

double RankPlot::topY() const
{
    return 1 - double(bottom - 1) * topMargin;
}

double RankPlot::bottomY() const
{
    return double(bottom) + double(bottom - 1) * bottomMargin;
}

qreal RankPlot::x(size_t day) const
{
    return area.left() + (double(day) - firstX()) / (lastX() - firstX()) * area.width();
}

qreal RankPlot::y(double rank) const
{
    return area.top() + (rank - topY()) / (bottomY() - topY()) * area.height();
}

QPointF RankPlot::at(size_t day, std::int64_t rank) const
{
    return {x(day), y(double(rank))};
}

QPointF RankPlot::unrankedMark(size_t day) const
{
    return {x(day), y(double(bottom) + double(bottom - 1) * bottomMargin * markInMargin)};
}

QPointF RankPlot::markOf(const RankChartData &data, size_t day) const
{
    const RankPoint *point = data.pointOf(day);
    return point ? at(day, point->rank) : unrankedMark(day);
}

qreal RankPlot::column() const
{
    return area.width() / std::max(double(dayCount), 1.0);
}

std::optional<size_t> RankPlot::dayAt(qreal position) const
{
    if (dayCount == 0 || area.width() <= 0)
        return std::nullopt;
    const double column = (position - area.left()) / area.width() * double(dayCount);
    return size_t(std::clamp(std::floor(column), 0.0, double(dayCount - 1)));
}

std::optional<size_t> dayNear(const RankPlot &plot, const std::vector<const RankChartData *> &lines,
                              QPointF pointer)
{
    std::optional<size_t> nearest = plot.dayAt(pointer.x());
    if (!nearest)
        return nearest;
    std::optional<std::pair<qreal, qreal>> least;
    const size_t last = *plot.dayAt(pointer.x() + pointerReach);
    for (size_t day = *plot.dayAt(pointer.x() - pointerReach); day <= last; ++day) {
        const qreal beside = std::abs(plot.x(day) - pointer.x());
        if (beside > pointerReach)
            continue;
        for (const RankChartData *line : lines) {
            if (!hasCheck(*line, day))
                continue;
            const QPointF mark = plot.markOf(*line, day);
            const std::pair distance(std::max(beside, pointerWidth),
                                     std::abs(mark.y() - pointer.y()));
            if (least && distance >= *least)
                continue;
            least = distance;
            nearest = day;
        }
    }
    return nearest;
}

std::optional<size_t> stepDay(const RankChartData &data, std::optional<size_t> current,
                              DayStep step)
{
    if (data.days.empty())
        return std::nullopt;
    const size_t last = data.days.size() - 1;
    const auto checkFrom = [&](size_t day, int direction) -> std::optional<size_t> {
        for (;; day += size_t(direction)) {
            if (hasCheck(data, day))
                return day;
            if (day == (direction < 0 ? 0 : last))
                return std::nullopt;
        }
    };
    switch (step) {
    case DayStep::First:
        return 0;
    case DayStep::Last:
        return last;
    case DayStep::Previous:
        return current ? *current - (*current > 0 ? 1 : 0) : last;
    case DayStep::Next:
        return current ? std::min(*current + 1, last) : 0;
    case DayStep::PreviousCheck:
        if (current == 0)
            return current;
        return checkFrom(current ? *current - 1 : last, -1).value_or(current.value_or(last));
    case DayStep::NextCheck:
        if (current == last)
            return current;
        return checkFrom(current ? *current + 1 : 0, 1).value_or(current.value_or(0));
    }
    Q_UNREACHABLE();
}

QString inspectionText(const RankChartData &data, std::optional<size_t> day, const QLocale &locale)
{
    if (!day || *day >= data.days.size())
        return RankPlotTexts::tr("Hover to inspect a saved check");
    const RankingTimeline::Day &inspected = data.days[*day];
    const QString date = dayLabel(inspected.date, data.days, locale);
    if (!inspected.observation)
        return RankPlotTexts::tr("No check saved on %1").arg(date);
    if (!inspected.observation->position)
        return RankPlotTexts::tr("%1: Not ranked").arg(date);
    return RankPlotTexts::tr("%1: rank %2")
        .arg(date, QString::number(*inspected.observation->position));
}

QString accessibleText(const RankPoint &point)
{
    return RankPlotTexts::tr("Rank %1").arg(point.rank);
}

} // namespace veltrix
