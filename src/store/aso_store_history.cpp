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

/// Both in one, oldest first; of a day that both have, what the state file has.
template <class T>
std::vector<T> joined(std::vector<T> history, std::vector<T> stateFile)
{
    QSet<std::int64_t> days;
    for (const T &one : stateFile)
        days.insert(dayOf(one));
    std::erase_if(history, [&](const T &one) { return days.contains(dayOf(one)); });
    std::ranges::move(stateFile, std::back_inserter(history));
    std::ranges::stable_sort(history, {}, [](const T &one) { return dateOf(one); });
    return history;
}

} // namespace

std::vector<SharedSnapshot> ASOStore::keywordSnapshots(QUuid keywordId) const
{
    return m_snapshots.ofKeyword(keywordId);
}

Task<std::vector<SharedSnapshot>> ASOStore::measurements(QUuid keywordId,
                                                         std::stop_token callersStop)
{
    const ScopedStop stop(m_tasks, callersStop);
    std::vector<SharedSnapshot> history;
    if (m_saver.hasHistory())
        history = co_await m_saver.records(keywordId, stop);
    co_return joined(std::move(history), m_snapshots.ofKeyword(keywordId));
}

std::vector<RankingTimeline::Observation> ASOStore::observationsOf(QUuid keywordId) const
{
    std::vector<RankingTimeline::Observation> observations;
    for (const SharedSnapshot &snapshot : m_snapshots.ofKeyword(keywordId))
        observations.push_back({snapshot->id, snapshot->fetchedAt, snapshot->position});
    return observations;
}

Task<RankingTimeline> ASOStore::rankingTimeline(QUuid keywordId, std::stop_token callersStop)
{
    const ScopedStop stop(m_tasks, callersStop);
    std::vector<RankingTimeline::Observation> history;
    if (m_saver.hasHistory())
        history = co_await m_saver.observations(keywordId, stop);
    auto observations = joined(std::move(history), observationsOf(keywordId));
    const Date now = m_clock->now();
    std::erase_if(observations, [=](const RankingTimeline::Observation &observation) {
        return SnapshotIndex::liesAhead(observation.date, now);
    });
    const TrackedKeyword *keyword = m_keywords.find(keywordId);
    co_return RankingTimeline(std::move(observations), keyword ? keyword->createdAt : now);
}

std::optional<RankMovement> ASOStore::latestMovement(QUuid keywordId) const
{
    const Date now = m_clock->now();
    auto observations = observationsOf(keywordId);
    std::erase_if(observations, [=](const RankingTimeline::Observation &observation) {
        return SnapshotIndex::liesAhead(observation.date, now);
    });
    return RankingTimeline(std::move(observations), now).latestMovement();
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
