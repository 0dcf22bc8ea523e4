// SPDX-License-Identifier: GPL-3.0-or-later
// Ranking histories drawn as text: one token a day.
#pragma once

#include "store/store_fixture.h"
#include "ui/history/rank_history.h"

#include <algorithm>
#include <random>

namespace veltrix
{

/// Day 0 of every picture: 2026-11-08.
inline constexpr std::int64_t firstPictureDay = 9442;

inline Date noonOf(std::int64_t day)
{
    return startOfUtcDay(day) + Seconds(43'200);
}

/// "31 29 . x 24": a rank, no check, an unranked check; one a day.
inline std::vector<RankingTimeline::Day> daysOf(const char *picture)
{
    std::vector<RankingTimeline::Day> days;
    const QStringList tokens = QString::fromUtf8(picture).split(u' ', Qt::SkipEmptyParts);
    for (const QString &token : tokens) {
        const std::int64_t day = firstPictureDay + std::int64_t(days.size());
        RankingTimeline::Day entry{startOfUtcDay(day), std::nullopt, std::nullopt};
        if (token != u".") {
            RankingTimeline::Observation check{QUuid::createUuid(), noonOf(day), std::nullopt};
            if (token != u"x")
                check.position = token.toLongLong();
            entry.observation = check;
        }
        days.push_back(entry);
    }
    return days;
}

/// So many days in a row, of which each may have a check, ranked or not: at most one in `sparsity`
/// days misses each. The same seed gives the same days.
inline std::vector<RankingTimeline::Day>
generatedDays(size_t count, unsigned seed, unsigned sparsity, std::int64_t first = firstPictureDay)
{
    std::mt19937 random(seed);
    std::vector<RankingTimeline::Day> days;
    std::int64_t rank = 1 + random() % 200;
    for (size_t i = 0; i < count; ++i) {
        const std::int64_t day = first + std::int64_t(i);
        RankingTimeline::Day entry{startOfUtcDay(day), std::nullopt, std::nullopt};
        rank = std::clamp<std::int64_t>(rank + random() % 21 - 10, 1, 250);
        if (random() % sparsity != 0) {
            const bool isRanked = random() % sparsity != 0;
            entry.observation = {QUuid::createUuid(), noonOf(day),
                                 isRanked ? std::optional(rank) : std::nullopt};
        }
        days.push_back(entry);
    }
    return days;
}

/// A timeline from a picture; tracking began on its first day.
inline RankingTimeline timelineOf(const char *picture)
{
    std::vector<RankingTimeline::Observation> observations;
    for (const RankingTimeline::Day &day : daysOf(picture)) {
        if (day.observation)
            observations.push_back(*day.observation);
    }
    RankingTimeline timeline(std::move(observations), startOfUtcDay(firstPictureDay));
    timeline.startedAt = startOfUtcDay(firstPictureDay);
    return timeline;
}

/// Segments as letters before the ranks: "a31 a29 . x b24".
inline QString drawn(const RankChartData &data)
{
    QStringList tokens;
    for (size_t day = 0; day < data.days.size(); ++day) {
        QString token = QStringLiteral(".");
        if (std::ranges::count(data.unranked, day) > 0)
            token = QStringLiteral("x");
        if (const RankPoint *point = data.pointOf(day))
            token = QChar(u'a' + char16_t(point->segment)) + QString::number(point->rank);
        tokens.append(token);
    }
    return tokens.join(u' ');
}

} // namespace veltrix
