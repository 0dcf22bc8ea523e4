// SPDX-License-Identifier: GPL-3.0-or-later
// The user's app beside its competitors for one keyword: lines, their looks, and the marks of days.
// Pure values.
#pragma once

#include "model/rival_app.h"
#include "ui/history/day_marks.h"
#include "ui/history/day_span.h"
#include "ui/history/line_look.h"

#include <QHash>
#include <QSet>

namespace veltrix
{

/// The key of the own line; those of others are their App Store ids, which are larger.
inline constexpr std::int64_t ownLine = 0;

/// Where the app stood, oldest first; nothing of measurements that were made before it was tracked.
std::vector<RankingTimeline::Observation>
rivalObservations(const RivalApp &app, const std::vector<KeywordStandings> &standings);

/// What a history is compared with.
struct Comparison {
    /// The user's app.
    QString appName;
    /// Of the keyword.
    QString storefront;
    QList<TrackedCompetitor> competitors;
    std::vector<KeywordStandings> standings;
    QList<AppNote> notes;
    /// Of the user's app.
    ListingHistory listing;
    /// Of competitors, by their ids.
    QHash<QUuid, ListingHistory> rivalListings;
    /// Why some of it could not be read.
    std::optional<QString> problem;
};

/// Which lines are on, and how each looks, for as long as a sheet is open.
class LineChoice
{
public:
    /// How many of the others are on at first.
    static constexpr size_t firstLines = 3;

    /// Gives those that are new the looks that come next.
    void meet(const std::vector<RivalApp> &apps);
    /// Turns the first of these on, unless somebody has chosen before.
    void chooseFirst(const std::vector<std::int64_t> &keys);
    void turn(std::int64_t key, bool on);

    [[nodiscard]] bool isOn(std::int64_t key) const;
    [[nodiscard]] LineLook look(std::int64_t key) const;

private:
    QSet<std::int64_t> m_on{ownLine};
    QHash<std::int64_t, size_t> m_places;
    bool m_isChosen = false;
};

struct ComparedLine {
    /// Of all lines of a chart the days are the same.
    RankChartData data;
    std::int64_t key = ownLine;
    QString name = {};
    LineLook look = ownLook();
    bool isOn = true;
    /// The UTC day of its first check, where the own line has earlier ones.
    std::optional<Date> trackedSince = std::nullopt;
};

/// All that a chart may show; of that, the lines that are on.
struct ComparedChart {
    ComparedLine own;
    std::vector<ComparedLine> rivals = {};
    /// By day, also of lines that are off and of days that are not shown.
    std::vector<DayMark> marks = {};

    /// Those that are on, the own one first.
    [[nodiscard]] std::vector<const ComparedLine *> shownLines() const;
    /// Those of the lines that are on and of the days of the chart; notes and changes of the own
    /// app whether its line is on or not.
    [[nodiscard]] std::vector<DayMark> shownMarks() const;
    [[nodiscard]] std::vector<DayMark> marksOf(size_t day) const;
    [[nodiscard]] const std::vector<RankingTimeline::Day> &days() const { return own.data.days; }
    /// A line beside the own one is on.
    [[nodiscard]] bool isCompared() const;
    /// No line that is on has a rank.
    [[nodiscard]] bool isEmpty() const;
    /// Of all lines that are on; 0 without ranks.
    [[nodiscard]] std::int64_t worstRank() const;
    /// Some line that is on has a check on the day, ranked or not.
    [[nodiscard]] bool hasCheck(size_t day) const;

private:
    [[nodiscard]] bool isShown(const DayMark &mark) const;
    [[nodiscard]] std::vector<DayMark> marksBetween(std::int64_t first, std::int64_t last) const;
};

/// The days of the range, as historyDays() gives them, for the timeline and for all competitors.
/// `choice` learns of those that are new and turns the first ones that rank on.
ComparedChart comparedChart(const RankingTimeline &timeline, const Comparison &comparison,
                            HistoryRange range, Date now, LineChoice &choice);

/// Some days of it.
ComparedChart slicedChart(const ComparedChart &chart, const DaySpan &days);

} // namespace veltrix
