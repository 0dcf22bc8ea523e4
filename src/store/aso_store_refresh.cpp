// SPDX-License-Identifier: GPL-3.0-or-later
// Measuring keywords, as the store offers it.
#include "store/aso_store.h"

namespace veltrix
{

Task<DashboardKeywordRow> ASOStore::refreshKeyword(QUuid id, std::stop_token callersStop)
{
    const ScopedStop stop(m_tasks, callersStop);
    const TrackedKeyword keyword = trackedKeyword(id).value_or(TrackedKeyword());
    const SharedSnapshot snapshot = co_await m_refreshes->refresh(id, stop);
    co_return rowOf(keyword, snapshot);
}

void ASOStore::queueKeywordRefreshes(const QList<TrackedKeyword> &keywords)
{
    m_refreshes->queue(keywords);
}

void ASOStore::stopKeywordRefreshes()
{
    m_refreshes->stopQueue();
}

const RefreshProgress &ASOStore::refreshProgress() const
{
    return m_refreshes->progress();
}

Task<void> ASOStore::refreshHistory(std::stop_token callersStop)
{
    const ScopedStop stop(m_tasks, callersStop);
    if (!m_refreshes->isRefreshingHistory())
        co_await m_refreshes->refreshStale(std::nullopt, stop);
}

std::optional<QString> ASOStore::historyRefreshError() const
{
    return m_refreshes->error();
}

bool ASOStore::isRefreshingHistory() const
{
    return m_refreshes->isRefreshingHistory();
}

} // namespace veltrix
