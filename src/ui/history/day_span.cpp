// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/history/day_span.h"

#include <QCoreApplication>

#include <algorithm>
#include <cmath>

namespace veltrix
{

namespace
{

struct SpanTexts {
    Q_DECLARE_TR_FUNCTIONS(RankHistory)
};

/// `count` days from `first` on, moved into the range.
DaySpan spanInside(double first, size_t count, size_t total)
{
    count = std::clamp(count, std::min(fewestShownDays, total), total);
    return {size_t(std::clamp(std::round(first), 0.0, double(total - count))), count};
}

} // namespace

DaySpan wholeRange(size_t total)
{
    return {0, total};
}

DaySpan spanBetween(size_t one, size_t other, size_t total)
{
    if (total == 0)
        return {};
    const size_t first = std::min({one, other, total - 1});
    const size_t last = std::min(std::max(one, other), total - 1);
    const size_t days = last - first + 1;
    const double around = days < fewestShownDays ? double(fewestShownDays - days) / 2 : 0;
    return spanInside(double(first) - around, days, total);
}

DaySpan zoomed(const DaySpan &shown, double factor, size_t anchor, size_t total)
{
    if (total == 0 || shown.count == 0)
        return {};
    auto count = size_t(std::llround(double(shown.count) * factor));
    // A step that is rounded away would never end.
    if (factor < 1)
        count = std::min(count, shown.count - 1);
    else if (factor > 1)
        count = std::max(count, shown.count + 1);
    count = std::clamp(count, std::min(fewestShownDays, total), total);
    const double place = (double(anchor) - double(shown.first) + 0.5) / double(shown.count);
    return spanInside(double(anchor) + 0.5 - place * double(count), count, total);
}

DaySpan moved(const DaySpan &shown, std::int64_t days, size_t total)
{
    if (total == 0)
        return {};
    return spanInside(double(shown.first) + double(days), shown.count, total);
}

QString spanText(const std::vector<RankingTimeline::Day> &days, const QLocale &locale)
{
    if (days.empty())
        return {};
    const Date first = days.front().date;
    const Date last = days.back().date;
    const bool isOfOneYear = calendarDay(first).year() == calendarDay(last).year();
    const DayFormat format = isOfOneYear ? DayFormat::Day : DayFormat::DayAndYear;
    return SpanTexts::tr("%1 – %2").arg(dayText(first, format, locale),
                                        dayText(last, DayFormat::DayAndYear, locale));
}

} // namespace veltrix
