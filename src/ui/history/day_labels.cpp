// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/history/day_labels.h"

#include <algorithm>

namespace veltrix
{

namespace
{

/// From one labelled day to the next.
struct Step {
    enum class Unit { Day, Month } unit;
    int count;
};

constexpr int monthsOfYear = 12;
constexpr std::array steps{
    Step{Step::Unit::Day, 1},
    Step{Step::Unit::Day, 2},
    Step{Step::Unit::Day, 7},
    Step{Step::Unit::Day, 14},
    Step{Step::Unit::Month, 1},
    Step{Step::Unit::Month, 2},
    Step{Step::Unit::Month, 3},
    Step{Step::Unit::Month, 6},
    Step{Step::Unit::Month, monthsOfYear},
    Step{Step::Unit::Month, 2 * monthsOfYear},
    Step{Step::Unit::Month, 5 * monthsOfYear},
};

/// The first days of periods of so many months, from `day` on; periods begin with the year 0.
std::vector<size_t> periodStarts(QDate firstDay, size_t dayCount, int months)
{
    std::vector<size_t> starts;
    // A clock that is far off may name a day of no calendar.
    if (!firstDay.isValid() || firstDay.year() < 1)
        return starts;
    int month = firstDay.year() * monthsOfYear + firstDay.month() - 1;
    if (firstDay.day() > 1)
        ++month;
    month = (month + months - 1) / months * months;
    for (;; month += months) {
        const QDate start(month / monthsOfYear, month % monthsOfYear + 1, 1);
        const auto day = firstDay.daysTo(start);
        if (!start.isValid() || size_t(day) >= dayCount)
            return starts;
        starts.push_back(size_t(day));
    }
}

std::vector<size_t> labelledDays(const std::vector<RankingTimeline::Day> &days, Step step)
{
    if (step.unit == Step::Unit::Month)
        return periodStarts(calendarDay(days.front().date), days.size(), step.count);
    std::vector<size_t> labelled;
    for (size_t day = 0; day < days.size(); day += size_t(step.count))
        labelled.push_back(day);
    return labelled;
}

/// Places labels side by side as long as they fit.
class LabelRow
{
public:
    LabelRow(const RankPlot &plot, const DayLabelRoom &room, const QFontMetricsF &metrics)
        : m_plot(plot), m_room(room), m_metrics(metrics)
    {
    }

    /// False when the label has no room right of the ones before.
    bool add(size_t day, const QString &text)
    {
        const qreal width = m_metrics.horizontalAdvance(text);
        if (width > m_room.right - m_room.left)
            return false;
        const qreal left = std::clamp(m_plot.x(day) - width / 2, m_room.left, m_room.right - width);
        if (!labels.empty() && left < labels.back().right() + m_room.gap)
            return false;
        labels.push_back({day, text, left, width});
        return true;
    }

    std::vector<DayLabel> labels;

private:
    const RankPlot &m_plot;
    const DayLabelRoom &m_room;
    const QFontMetricsF &m_metrics;
};

DayFormat formatOf(Step step, bool namesYear)
{
    if (step.unit == Step::Unit::Month && step.count >= monthsOfYear)
        return DayFormat::Year;
    return namesYear ? DayFormat::DayAndYear : DayFormat::Day;
}

} // namespace

std::vector<DayLabel> dayLabels(const std::vector<RankingTimeline::Day> &days, const RankPlot &plot,
                                const DayLabelRoom &room, const QFontMetricsF &metrics,
                                const QLocale &locale)
{
    if (days.empty())
        return {};
    // Each year is named once, where its first label stands.
    const bool namesYears = needsYears(days);
    const auto rowOf = [&](Step step) -> std::vector<DayLabel> {
        LabelRow row(plot, room, metrics);
        std::optional<int> named;
        for (const size_t day : labelledDays(days, step)) {
            const int year = calendarDay(days[day].date).year();
            const DayFormat format = formatOf(step, namesYears && named != year);
            if (!row.add(day, dayText(days[day].date, format, locale)))
                return {};
            named = year;
        }
        return row.labels;
    };
    for (const Step step : steps) {
        std::vector<DayLabel> labels = rowOf(step);
        if (labels.size() >= 2)
            return labels;
    }
    LabelRow ends(plot, room, metrics);
    ends.add(0, dayLabel(days.front().date, days, locale));
    if (days.size() > 1)
        ends.add(days.size() - 1, dayLabel(days.back().date, days, locale));
    return ends.labels;
}

} // namespace veltrix
