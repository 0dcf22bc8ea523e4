// SPDX-License-Identifier: GPL-3.0-or-later
// Ranking histories drawn as text: one token a day.
#pragma once

#include "store/store_fixture.h"
#include "ui/history/rank_history.h"

#include <algorithm>

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
