// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/history/compared_history.h"

#include <algorithm>

namespace veltrix
{

namespace
{

ComparedLine rivalLine(const RivalApp &app, const RankingTimeline &own,
                       const Comparison &comparison, HistoryRange range, Date now)
{
    std::vector<RankingTimeline::Observation> checks = rivalObservations(app, comparison.standings);
    ComparedLine line;
    line.key = app.trackId;
    line.name = app.name;
    if (!checks.empty() && utcDay(own.startedAt) < utcDay(checks.front().date))
        line.trackedSince = startOfUtcDay(utcDay(checks.front().date));
    RankingTimeline timeline(std::move(checks), own.startedAt);
    // All lines have the days of the own one.
    timeline.startedAt = own.startedAt;
    line.data = rankChartData(historyDays(timeline, range, now));
    return line;
}

std::vector<DayMark> allMarks(const Comparison &comparison, const std::vector<RivalApp> &rivals)
{
    std::vector<DayMark> marks = marksOfNotes(comparison.notes, ownLine);
    const auto add = [&marks](std::vector<DayMark> more) {
        marks.insert(marks.end(), more.begin(), more.end());
    };
    add(marksOfChanges(comparison.listing.changes, comparison.storefront, ownLine));
    for (const RivalApp &app : rivals) {
        std::vector<ListingChange> changes;
        for (const QUuid &id : app.competitorIds) {
            const std::vector<ListingChange> of = comparison.rivalListings.value(id).changes;
            changes.insert(changes.end(), of.begin(), of.end());
        }
        std::ranges::stable_sort(changes, {}, &ListingChange::seenAt);
        add(marksOfChanges(changes, comparison.storefront, app.trackId, app.name));
    }
    sortMarks(marks);
    return marks;
}

} // namespace

std::vector<RankingTimeline::Observation>
rivalObservations(const RivalApp &app, const std::vector<KeywordStandings> &standings)
{
    std::vector<RankingTimeline::Observation> checks;
    for (const KeywordStandings &measured : standings) {
        if (const auto standing = standingOf(app, measured))
            checks.push_back({QUuid(), measured.fetchedAt, standing->rank});
    }
    return checks;
}

void LineChoice::meet(const std::vector<RivalApp> &apps)
{
    for (const RivalApp &app : apps) {
        if (!m_places.contains(app.trackId))
            m_places.insert(app.trackId, size_t(m_places.size()));
    }
}

void LineChoice::chooseFirst(const std::vector<std::int64_t> &keys)
{
    if (m_isChosen || keys.empty())
        return;
    for (size_t i = 0; i < std::min(keys.size(), firstLines); ++i)
        m_on.insert(keys[i]);
    m_isChosen = true;
}

void LineChoice::turn(std::int64_t key, bool on)
{
    m_isChosen = true;
    if (on)
        m_on.insert(key);
    else
        m_on.remove(key);
}

bool LineChoice::isOn(std::int64_t key) const
{
    return m_on.contains(key);
}

LineLook LineChoice::look(std::int64_t key) const
{
    return key == ownLine ? ownLook() : rivalLook(m_places.value(key));
}

std::vector<const ComparedLine *> ComparedChart::shownLines() const
{
    std::vector<const ComparedLine *> lines;
    if (own.isOn)
        lines.push_back(&own);
    for (const ComparedLine &rival : rivals) {
        if (rival.isOn)
            lines.push_back(&rival);
    }
    return lines;
}

bool ComparedChart::isShown(const DayMark &mark) const
{
    if (mark.line == ownLine)
        return true;
    const auto rival = std::ranges::find(rivals, mark.line, &ComparedLine::key);
    return rival != rivals.end() && rival->isOn;
}

std::vector<DayMark> ComparedChart::marksBetween(std::int64_t first, std::int64_t last) const
{
    std::vector<DayMark> shown;
    for (auto mark = std::ranges::lower_bound(marks, first, {}, &DayMark::day);
         mark != marks.end() && mark->day <= last; ++mark) {
        if (isShown(*mark))
            shown.push_back(*mark);
    }
    return shown;
}

std::vector<DayMark> ComparedChart::shownMarks() const
{
    if (days().empty())
        return {};
    return marksBetween(utcDay(days().front().date), utcDay(days().back().date));
}

std::vector<DayMark> ComparedChart::marksOf(size_t day) const
{
    if (day >= days().size())
        return {};
    const std::int64_t date = utcDay(days()[day].date);
    return marksBetween(date, date);
}

bool ComparedChart::isCompared() const
{
    return std::ranges::any_of(rivals, &ComparedLine::isOn);
}

bool ComparedChart::isEmpty() const
{
    return std::ranges::all_of(shownLines(),
                               [](const ComparedLine *line) { return line->data.isEmpty(); });
}

std::int64_t ComparedChart::worstRank() const
{
    std::int64_t worst = 0;
    for (const ComparedLine *line : shownLines())
        worst = std::max(worst, line->data.worstRank());
    return worst;
}

bool ComparedChart::hasCheck(size_t day) const
{
    return std::ranges::any_of(shownLines(), [day](const ComparedLine *line) {
        return line->data.days[day].observation.has_value();
    });
}

ComparedChart comparedChart(const RankingTimeline &timeline, const Comparison &comparison,
                            HistoryRange range, Date now, LineChoice &choice)
{
    const std::vector<RivalApp> apps = rivalApps(comparison.competitors, comparison.storefront);
    choice.meet(apps);
    ComparedChart chart;
    chart.own.data = rankChartData(historyDays(timeline, range, now));
    chart.own.name = comparison.appName;
    std::vector<std::int64_t> ranked;
    for (const RivalApp &app : apps) {
        chart.rivals.push_back(rivalLine(app, timeline, comparison, range, now));
        if (!chart.rivals.back().data.isEmpty())
            ranked.push_back(app.trackId);
    }
    choice.chooseFirst(ranked);
    chart.own.isOn = choice.isOn(ownLine);
    for (ComparedLine &line : chart.rivals) {
        line.look = choice.look(line.key);
        line.isOn = choice.isOn(line.key);
    }
    chart.marks = allMarks(comparison, apps);
    return chart;
}

ComparedChart slicedChart(const ComparedChart &chart, const DaySpan &days)
{
    ComparedChart part;
    const auto cut = [&days](const ComparedLine &line) {
        ComparedLine some{{}, line.key, line.name, line.look, line.isOn, line.trackedSince};
        const auto first = line.data.days.begin() + std::ptrdiff_t(days.first);
        some.data = rankChartData({first, first + std::ptrdiff_t(days.count)});
        return some;
    };
    part.own = cut(chart.own);
    for (const ComparedLine &rival : chart.rivals)
        part.rivals.push_back(cut(rival));
    part.marks = chart.marks;
    return part;
}

} // namespace veltrix
