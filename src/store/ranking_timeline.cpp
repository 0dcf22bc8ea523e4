// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/ranking_timeline.h"

#include <algorithm>
#include <limits>

namespace veltrix
{

RankingTimeline::RankingTimeline(std::vector<Observation> allObservations, Date fallbackStart)
    : observations(std::move(allObservations)), startedAt(fallbackStart)
{
    if (observations.empty())
        return;
    std::ranges::stable_sort(observations, {}, &Observation::date);
    startedAt = observations.front().date;

    size_t kept = 0;
    for (size_t i = 1; i < observations.size(); ++i) {
        const bool sameDay = utcDay(observations[i].date) == utcDay(observations[kept].date);
        if (sameDay && observations[i].date == observations[kept].date)
            continue;
        if (!sameDay)
            ++kept;
        observations[kept] = observations[i];
    }
    observations.resize(kept + 1);
}

RankMovement RankingTimeline::movementTo(size_t index) const
{
    if (index == 0)
        return RankMovement::first();
    return RankMovement::between(observations[index - 1].position, observations[index].position);
}

std::vector<RankingTimeline::Day> RankingTimeline::days(std::int64_t count, Date now) const
{
    if (count <= 0)
        return {};
    const std::int64_t endDay = utcDay(now);
    const std::int64_t firstTracked = utcDay(startedAt);
    if (firstTracked > endDay)
        return {};
    // A wild date may lie at the end of the range of days, where subtracting would overflow.
    const std::int64_t before = std::min(count, longestRange) - 1;
    const bool hasRoom = endDay >= std::numeric_limits<std::int64_t>::min() + before;
    const std::int64_t firstDay = std::max(hasRoom ? endDay - before : endDay, firstTracked);

    size_t next = std::ranges::lower_bound(observations, firstDay, {},
                                           [](const Observation &o) { return utcDay(o.date); }) -
                  observations.begin();
    std::vector<Day> result;
    const std::int64_t length = endDay - firstDay + 1;
    for (std::int64_t i = 0; i < length; ++i) {
        const std::int64_t day = firstDay + i;
        Day entry{startOfUtcDay(day), std::nullopt, std::nullopt};
        if (next < observations.size() && utcDay(observations[next].date) == day) {
            entry.observation = observations[next];
            entry.movement = movementTo(next);
            ++next;
        }
        result.push_back(entry);
    }
    return result;
}

std::optional<RankMovement> RankingTimeline::latestMovement() const
{
    if (observations.empty())
        return std::nullopt;
    return movementTo(observations.size() - 1);
}

} // namespace veltrix
