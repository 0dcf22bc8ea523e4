// SPDX-License-Identifier: GPL-3.0-or-later
// What was measured: the state file's days and those that have left it.
#include "store/aso_store.h"

#include <algorithm>

namespace veltrix
{

namespace
{

std::int64_t dayOf(const RankingTimeline::Observation &observation)
{
    return utcDay(observation.date);
}
std::int64_t dayOf(const SharedSnapshot &snapshot)
{
    return utcDay(snapshot->fetchedAt);
}
Date dateOf(const RankingTimeline::Observation &observation)
{
    return observation.date;
}
Date dateOf(const SharedSnapshot &snapshot)
{
    return snapshot->fetchedAt;
}

/// Whether a list has one of the same day.
template <class T>
class HasOneOf
{
public:
    explicit HasOneOf(const std::vector<T> &list)
    {
        for (const T &one : list)
            m_days.insert(dayOf(one));
    }
    bool operator()(const T &other) const { return m_days.contains(dayOf(other)); }

private:
    QSet<std::int64_t> m_days;
};

template <class T>
std::vector<T> sorted(std::vector<T> some, std::vector<T> others)
{
    std::ranges::move(others, std::back_inserter(some));
    std::ranges::stable_sort(some, {}, [](const T &one) { return dateOf(one); });
    return some;
}

} // namespace

std::vector<SharedSnapshot> ASOStore::keywordSnapshots(QUuid keywordId) const
{
    return m_snapshots.ofKeyword(keywordId);
}

Task<MeasurementPage> ASOStore::measurements(QUuid keywordId, PageStart page,
                                             std::stop_token callersStop)
{
    const ScopedStop stop(m_tasks, callersStop);
    std::vector<SharedSnapshot> history;
    if (m_saver.hasHistory())
        history = co_await m_saver.records(keywordId, page.firstDay, page.size, stop);
    MeasurementPage result;
    // Days move from one to the other between the pages; so each is whole for its own days.
    if (history.size() == page.size)
        result.nextDay = dayOf(history.back()) + 1;
    std::vector<SharedSnapshot> stateFile = m_snapshots.ofKeyword(keywordId);
    std::erase_if(history, HasOneOf(stateFile));
    std::erase_if(stateFile, [&](const SharedSnapshot &snapshot) {
        const std::int64_t day = dayOf(snapshot);
        return day < page.firstDay || (result.nextDay && day >= *result.nextDay);
    });
    result.measurements = sorted(std::move(history), std::move(stateFile));
    co_return result;
}

std::vector<RankingTimeline::Observation> ASOStore::observationsOf(QUuid keywordId) const
{
    std::vector<RankingTimeline::Observation> observations;
    for (const SharedSnapshot &snapshot : m_snapshots.ofKeyword(keywordId))
        observations.push_back({snapshot->id, snapshot->fetchedAt, snapshot->position});
    return observations;
}

RankingTimeline ASOStore::timelineOf(QUuid keywordId,
                                     std::vector<RankingTimeline::Observation> observations) const
{
    const Date now = m_clock->now();
    std::erase_if(observations, [=](const RankingTimeline::Observation &observation) {
        return SnapshotIndex::liesAhead(observation.date, now);
    });
    const TrackedKeyword *keyword = m_keywords.find(keywordId);
    return {std::move(observations), keyword ? keyword->createdAt : now};
}

Task<RankingTimeline> ASOStore::rankingTimeline(QUuid keywordId, std::stop_token callersStop)
{
    const ScopedStop stop(m_tasks, callersStop);
    std::vector<RankingTimeline::Observation> history;
    if (m_saver.hasHistory())
        history = co_await m_saver.observations(keywordId, stop);
    // Of a day that both have, what the state file has counts.
    auto stateFile = observationsOf(keywordId);
    std::erase_if(history, HasOneOf(stateFile));
    co_return timelineOf(keywordId, sorted(std::move(history), std::move(stateFile)));
}

RankingTimeline ASOStore::recentTimeline(QUuid keywordId) const
{
    return timelineOf(keywordId, observationsOf(keywordId));
}

std::optional<RankMovement> ASOStore::latestMovement(QUuid keywordId) const
{
    return recentTimeline(keywordId).latestMovement();
}

const RankDays &ASOStore::rankDays(QUuid keywordId) const
{
    return m_rankDays->of(keywordId);
}

Task<void> ASOStore::rankDaysRead(std::stop_token callersStop)
{
    const ScopedStop stop(m_tasks, callersStop);
    co_await m_rankDays->read(stop);
}

Task<void> ASOStore::tidyHistory(std::stop_token stop)
{
    if (!m_saver.needsTidying())
        co_return;
    co_await m_clock->sleep(historyTidyingDelay, stop);
    // What has changed meanwhile was saved, and then nothing is as it was loaded.
    m_saver.tidy(wholeState());
}

std::optional<HistoryMove> ASOStore::historyMove() const
{
    return m_saver.progress();
}

} // namespace veltrix
