// SPDX-License-Identifier: GPL-3.0-or-later
// The refresh of all rankings: which keywords, in which order, until which failure.
#include "store/keyword_refreshes.h"

#include <algorithm>

namespace veltrix
{

bool KeywordRefreshes::isStale(const QUuid &keywordId, Due rule) const
{
    const SharedSnapshot newest = m_keywords.newestSnapshot(keywordId);
    if (!newest || !hasCurrentModels(*newest))
        return true;
    return rule == Due::EachDay ? utcDay(newest->fetchedAt) < utcDay(m_clock->now())
                                : age(*newest) >= historyStaleness;
}

bool KeywordRefreshes::isDue(const QUuid &keywordId, Due rule) const
{
    return canBeMeasured(keywordId) && isStale(keywordId, rule);
}

KeywordRefreshes::Reuse KeywordRefreshes::reuseWhenDue() const
{
    return m_due == Due::EachDay ? Reuse::Today : Reuse::SixHours;
}

Task<HistoryRefresh> KeywordRefreshes::refreshStale(std::optional<QUuid> first,
                                                    std::stop_token stop)
{
    if (m_historyTask.isRunning() && m_history && first)
        putFirst(m_history->waiting, *first);
    SharedTask<HistoryRefresh>::Start start = [this, first](std::stop_token running) {
        return runHistory(first, std::move(running));
    };
    return m_historyTask.join(std::move(start), std::move(stop));
}

Task<HistoryRefresh> KeywordRefreshes::runHistory(std::optional<QUuid> first, std::stop_token stop)
{
    const auto lane = std::make_shared<Lane>();
    lane->waiting = staleKeywords();
    if (first)
        putFirst(lane->waiting, *first);
    m_history = lane;
    Q_EMIT isRefreshingHistoryChanged();
    setError(std::nullopt, std::nullopt);

    HistoryRefresh result;
    std::exception_ptr stopped;
    try {
        result = co_await refreshLane(lane, stop);
    } catch (const Cancelled &) {
        stopped = std::current_exception();
    }
    if (result.failure)
        setError(QStringLiteral("Some rankings couldn't be updated. Try again later."),
                 result.failure);
    // An observer may have stopped this one and started the next.
    if (m_history == lane) {
        m_history.reset();
        Q_EMIT isRefreshingHistoryChanged();
        announceProgress();
    }
    if (stopped)
        std::rethrow_exception(stopped);
    co_return result;
}

Task<HistoryRefresh> KeywordRefreshes::refreshLane(std::shared_ptr<Lane> lane, std::stop_token stop)
{
    HistoryRefresh result;
    QSet<QUuid> tried;
    // Rankings become stale while others are measured; each has one turn.
    for (; !lane->waiting.empty(); lookAgain(*lane, tried)) {
        while (!lane->waiting.empty()) {
            throwIfStopped(stop);
            const TrackedKeyword keyword = lane->waiting.front();
            lane->waiting.pop_front();
            tried.insert(keyword.id);
            // Deleted, or measured on another way, before its turn came.
            if (!isDue(keyword.id, m_due))
                continue;
            lane->current = keyword;
            announceProgress();
            throwIfStopped(stop);
            const Attempt turn = co_await attempt(keyword, reuseWhenDue(), stop);
            lane->current.reset();
            if (turn.problem) {
                result.failure = RefreshFailure{keyword, *turn.problem};
                co_return result;
            }
            result.measured += turn.isMeasured ? 1 : 0;
        }
    }
    result.nextStale = nextStale();
    co_return result;
}

void KeywordRefreshes::lookAgain(Lane &lane, const QSet<QUuid> &tried) const
{
    lane.waiting = staleKeywords();
    std::erase_if(lane.waiting,
                  [&](const TrackedKeyword &keyword) { return tried.contains(keyword.id); });
}

std::optional<Date> KeywordRefreshes::nextStale() const
{
    std::optional<Date> next;
    for (const TrackedKeyword &keyword : m_keywords.trackedKeywords()) {
        const SharedSnapshot newest = m_keywords.newestSnapshot(keyword.id);
        if (!newest)
            continue;
        const Date stale = m_due == Due::EachDay ? startOfUtcDay(utcDay(newest->fetchedAt) + 1)
                                                 : newest->fetchedAt + historyStaleness;
        if ((!next || stale < *next) && canBeMeasured(keyword.id))
            next = stale;
    }
    return next;
}

std::deque<TrackedKeyword> KeywordRefreshes::staleKeywords() const
{
    std::deque<TrackedKeyword> result;
    for (const TrackedKeyword &keyword : m_keywords.trackedKeywords()) {
        if (isDue(keyword.id, m_due))
            result.push_back(keyword);
    }
    // Zero for those that did not fail. Of those that did, the one that has waited longest for its
    // next attempt comes first: so two that never succeed do not keep a third from its turn.
    std::ranges::stable_sort(result, {}, [this](const TrackedKeyword &keyword) {
        return m_failed.value(keyword.id, 0);
    });
    return result;
}

void KeywordRefreshes::putFirst(std::deque<TrackedKeyword> &keywords, const QUuid &appId) const
{
    std::ranges::stable_partition(keywords, [&](const TrackedKeyword &keyword) {
        return keyword.appId == appId && !m_failed.contains(keyword.id);
    });
}

} // namespace veltrix
