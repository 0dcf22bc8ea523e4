// SPDX-License-Identifier: GPL-3.0-or-later
// Measuring keywords: one, the background queue, all that are stale.
#include "store/aso_store.h"

namespace veltrix
{

bool ASOStore::hasCurrentModels(const KeywordSnapshot &snapshot) const
{
    return snapshot.popularityModelVersion == m_pipeline.popularityProvider->modelVersion() &&
           snapshot.scoringModelVersion == currentScoringModelVersion;
}

Seconds ASOStore::age(const KeywordSnapshot &snapshot) const
{
    return m_clock->now() - snapshot.fetchedAt;
}

Task<DashboardKeywordRow> ASOStore::refreshKeyword(QUuid id, std::stop_token stop)
{
    const std::optional<TrackedKeyword> keyword = trackedKeyword(id);
    if (!keyword)
        throw StoreError(404, QStringLiteral("Tracked keyword not found"));
    const std::optional<AppProfile> itsApp = app(keyword->appId);
    if (!itsApp)
        throw StoreError(404, QStringLiteral("App not found"));
    const SharedSnapshot newest = newestSnapshot(id);
    if (newest && hasCurrentModels(*newest) && age(*newest) < keywordRefreshTTL)
        co_return dashboardRow(*keyword);

    const std::weak_ptr<const bool> life = m_life;
    auto snapshot = std::make_shared<KeywordSnapshot>();
    *snapshot = co_await m_pipeline.run(*keyword, *itsApp, stop);
    if (life.expired())
        throw Cancelled();
    throwIfStopped(stop);
    // Deleted while it was measured: the result belongs to nothing.
    if (!trackedKeyword(id))
        throw Cancelled();
    m_snapshots.store(std::move(snapshot));
    const DashboardKeywordRow row = dashboardRow(*keyword);
    Q_EMIT keywordChanged(id);
    save();
    co_return row;
}

void ASOStore::queueKeywordRefreshes(const QList<TrackedKeyword> &keywords)
{
    const auto before = m_pendingKeywordRefreshes.size();
    QSet<QUuid> known;
    for (const TrackedKeyword &pending : m_pendingKeywordRefreshes)
        known.insert(pending.id);
    if (m_activeKeywordRefresh)
        known.insert(m_activeKeywordRefresh->id);
    for (const TrackedKeyword &keyword : keywords) {
        if (known.contains(keyword.id))
            continue;
        known.insert(keyword.id);
        m_pendingKeywordRefreshes.push_back(keyword);
    }
    if (m_pendingKeywordRefreshes.size() != before)
        Q_EMIT refreshProgressChanged();
    if (m_isKeywordWorkerRunning || m_pendingKeywordRefreshes.empty())
        return;
    m_isKeywordWorkerRunning = true;
    m_keywordRefreshTask.own(runRefreshQueue(m_keywordRefreshTask.token()));
}

Task<void> ASOStore::runRefreshQueue(std::stop_token stop)
{
    // Once stopped, the queue is somebody else's or the store is dying, so nothing is touched.
    while (!stop.stop_requested() && !m_pendingKeywordRefreshes.empty()) {
        const TrackedKeyword keyword = m_pendingKeywordRefreshes.front();
        m_pendingKeywordRefreshes.pop_front();
        if (!m_keywords.find(keyword.id)) {
            Q_EMIT refreshProgressChanged();
            continue;
        }
        m_activeKeywordRefresh = keyword;
        Q_EMIT refreshProgressChanged();
        throwIfStopped(stop);

        bool measured = false;
        bool failed = false;
        try {
            co_await refreshKeyword(keyword.id, stop);
            measured = true;
        } catch (const Cancelled &) {
            // Stopped, or the keyword was deleted meanwhile; neither is a failure.
        } catch (const std::exception &) {
            failed = true;
        }
        throwIfStopped(stop);
        if (failed && m_keywords.find(keyword.id)) {
            endRefreshQueue();
            setHistoryRefreshError(QStringLiteral(
                "Keywords are saved. Metrics couldn't be loaded; use Refresh to retry."));
            co_return;
        }
        m_activeKeywordRefresh.reset();
        if (measured)
            ++m_refreshesDone;
        if (!m_pendingKeywordRefreshes.empty())
            Q_EMIT refreshProgressChanged();
    }
    throwIfStopped(stop);
    endRefreshQueue();
}

void ASOStore::endRefreshQueue()
{
    m_pendingKeywordRefreshes.clear();
    m_activeKeywordRefresh.reset();
    m_isKeywordWorkerRunning = false;
    m_refreshesDone = 0;
    Q_EMIT refreshProgressChanged();
}

void ASOStore::stopKeywordRefreshes()
{
    if (!m_isKeywordWorkerRunning)
        return;
    m_keywordRefreshTask.stop();
    endRefreshQueue();
}

RefreshProgress ASOStore::refreshProgress() const
{
    return {m_refreshesDone, static_cast<int>(m_pendingKeywordRefreshes.size()),
            m_activeKeywordRefresh};
}

bool ASOStore::isStaleInHistory(const QUuid &keywordId) const
{
    const SharedSnapshot newest = newestSnapshot(keywordId);
    return !newest || !hasCurrentModels(*newest) || age(*newest) >= historyStaleness;
}

Task<void> ASOStore::refreshHistory(std::stop_token stop)
{
    if (m_isRefreshingHistory)
        co_return;
    const std::weak_ptr<const bool> life = m_life;
    setRefreshingHistory(true);
    setHistoryRefreshError(std::nullopt);
    const QList<TrackedKeyword> keywords = m_keywords.all();
    for (const TrackedKeyword &keyword : keywords) {
        if (stop.stop_requested())
            break;
        if (!m_keywords.find(keyword.id) || !isStaleInHistory(keyword.id))
            continue;
        bool failed = false;
        try {
            co_await refreshKeyword(keyword.id, stop);
        } catch (const Cancelled &) {
            // Stopped, or the keyword was deleted meanwhile; neither is a failure.
        } catch (const std::exception &) {
            failed = true;
        }
        if (life.expired())
            throw Cancelled();
        if (failed) {
            if (!stop.stop_requested()) {
                setHistoryRefreshError(
                    QStringLiteral("Some rankings couldn't be updated. Try again later."));
            }
            break;
        }
    }
    setRefreshingHistory(false);
    throwIfStopped(stop);
}

std::optional<QString> ASOStore::historyRefreshError() const
{
    return m_historyRefreshError;
}

bool ASOStore::isRefreshingHistory() const
{
    return m_isRefreshingHistory;
}

void ASOStore::setHistoryRefreshError(std::optional<QString> error)
{
    if (m_historyRefreshError == error)
        return;
    m_historyRefreshError = std::move(error);
    Q_EMIT historyRefreshErrorChanged();
}

void ASOStore::setRefreshingHistory(bool refreshing)
{
    m_isRefreshingHistory = refreshing;
    Q_EMIT isRefreshingHistoryChanged();
}

} // namespace veltrix
