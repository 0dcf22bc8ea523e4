// SPDX-License-Identifier: GPL-3.0-or-later
// Compared histories drawn as text: one token a day and app.
#pragma once

#include "ui/history/compared_history.h"
#include "ui/history/rank_pictures.h"

#include <initializer_list>
#include <utility>

namespace veltrix
{

inline QUuid rivalId(int number)
{
    return {quint32(number), 0, 0, 0x80, 0, 0, 0, 0, 0, 0, 7};
}

/// The competitor of that number: its App Store id is 200 and the number.
inline TrackedCompetitor rival(int number, const char *name, const char *country = "US")
{
    TrackedCompetitor competitor;
    competitor.id = rivalId(number);
    competitor.trackId = 200 + number;
    competitor.name = text(name);
    competitor.country = text(country);
    return competitor;
}

/// "5 x - .": a rank, looked for and not found, not tracked yet, no measurement; one a day from
/// firstPictureDay on, for each competitor by its number.
inline std::vector<KeywordStandings>
standingsOf(std::initializer_list<std::pair<int, const char *>> pictures)
{
    std::vector<KeywordStandings> standings;
    for (const auto &[number, picture] : pictures) {
        const QStringList tokens = QString::fromUtf8(picture).split(u' ', Qt::SkipEmptyParts);
        if (standings.empty())
            standings.resize(size_t(tokens.size()));
        for (size_t day = 0; day < standings.size(); ++day) {
            standings[day].fetchedAt = noonOf(firstPictureDay + std::int64_t(day));
            const QString token = tokens.value(qsizetype(day));
            if (token.isEmpty() || token == u"-" || token == u".")
                continue;
            RivalStanding found{rivalId(number), std::nullopt};
            if (token != u"x")
                found.rank = token.toLongLong();
            standings[day].rivals.push_back(found);
        }
    }
    return standings;
}

inline AppNote noteOn(std::int64_t day, const char *words)
{
    return {QUuid::createUuid(), QUuid(), day, text(words), noonOf(day)};
}

/// A chart of the fortnight that the pictures of `timeline` begin.
inline ComparedChart chartOf(const char *timeline, const Comparison &comparison, LineChoice &choice)
{
    const RankingTimeline own = timelineOf(timeline);
    const auto days = QString::fromUtf8(timeline).split(u' ', Qt::SkipEmptyParts).size();
    return comparedChart(own, comparison, HistoryRange::Days14,
                         noonOf(firstPictureDay + std::int64_t(days) - 1), choice);
}

inline ComparedChart chartOf(const char *timeline, const Comparison &comparison)
{
    LineChoice choice;
    return chartOf(timeline, comparison, choice);
}

/// A comparison with such competitors, as it is for Lumen Photo Editor in the United States.
inline Comparison comparisonOf(const QList<TrackedCompetitor> &competitors,
                               std::vector<KeywordStandings> standings)
{
    Comparison comparison;
    comparison.appName = text("Lumen Photo Editor");
    comparison.storefront = text("US");
    comparison.competitors = competitors;
    comparison.standings = std::move(standings);
    return comparison;
}

} // namespace veltrix
