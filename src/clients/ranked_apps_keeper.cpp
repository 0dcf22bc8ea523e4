// SPDX-License-Identifier: GPL-3.0-or-later
#include "clients/ranked_apps_keeper.h"

#include <algorithm>

namespace veltrix
{

namespace
{

/// What a list of apps shows and what tracks one of them; details are looked up when they are
/// wanted.
QList<ITunesAppResult> listed(const QList<ITunesAppResult> &results)
{
    QList<ITunesAppResult> kept = results.mid(0, RankedAppsKeeper::mostResults);
    for (ITunesAppResult &app : kept) {
        app.description.reset();
        app.screenshotUrls.reset();
        app.ipadScreenshotUrls.reset();
    }
    return kept;
}

} // namespace

RankedAppsKeeper::RankedAppsKeeper(Arguments arguments) : m_use(std::move(arguments))
{
    if (!m_use.cachePath.isEmpty())
        m_cache = loadRankedAppsCache(m_use.cachePath, m_use.clock->now());
}

Task<QList<ITunesAppResult>> RankedAppsKeeper::search(QString term, QString country,
                                                      std::int64_t limit,
                                                      std::stop_token callersStop)
{
    const ScopedStop stop(m_tasks, callersStop);
    const QList<ITunesAppResult> results =
        co_await m_use.client->search(term, country, limit, stop);
    throwIfStopped(stop);
    if (limit >= mostResults)
        keep(rankedAppsKey(term, country), listed(results));
    co_return results;
}

Task<std::optional<ITunesAppResult>> RankedAppsKeeper::lookup(std::int64_t trackId, QString country,
                                                              std::stop_token stop)
{
    return m_use.client->lookup(trackId, std::move(country), std::move(stop));
}

void RankedAppsKeeper::keep(const QString &key, const QList<ITunesAppResult> &results)
{
    const Date now = m_use.clock->now();
    if (const auto known = m_cache.find(key); known != m_cache.end()) {
        const Seconds age = now - known->second.fetchedAt;
        if (age >= Seconds::zero() && age < remembered && known->second.results == results)
            return;
    }
    m_cache.insert_or_assign(key, SavedResults{now, results});
    if (m_cache.size() > size_t(mostSavedRankedApps))
        m_cache.erase(std::ranges::min_element(
            m_cache, {}, [](const auto &entry) { return entry.second.fetchedAt; }));
    if (!m_use.cachePath.isEmpty())
        saveRankedAppsCache(m_use.cachePath, m_cache);
}

std::optional<SavedResults> RankedAppsKeeper::savedResults(const QString &keyword,
                                                           const QString &country) const
{
    const auto saved = m_cache.find(rankedAppsKey(keyword, country));
    if (saved == m_cache.end())
        return std::nullopt;
    return saved->second;
}

} // namespace veltrix
