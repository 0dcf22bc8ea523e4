// SPDX-License-Identifier: GPL-3.0-or-later
#include "clients/ranked_apps_keeper.h"

namespace veltrix
{

RankedAppsKeeper::RankedAppsKeeper(Arguments arguments)
    : m_client(std::move(arguments.client)), m_clock(std::move(arguments.clock)),
      m_cache(std::move(arguments.cache), m_clock)
{
}

Task<QList<ITunesAppResult>> RankedAppsKeeper::search(QString term, QString country,
                                                      std::int64_t limit,
                                                      std::stop_token callersStop)
{
    const ScopedStop stop(m_tasks, callersStop);
    const QList<ITunesAppResult> results = co_await m_client->search(term, country, limit, stop);
    throwIfStopped(stop);
    if (limit >= mostResults) {
        const SavedResults saved{m_clock->now(), listedResults(results.mid(0, mostResults))};
        m_cache.keep(rankedAppsKey(term, country), saved, remembered);
    }
    co_return results;
}

Task<std::optional<ITunesAppResult>> RankedAppsKeeper::lookup(std::int64_t trackId, QString country,
                                                              std::stop_token stop)
{
    return m_client->lookup(trackId, std::move(country), std::move(stop));
}

Task<std::optional<SavedResults>> RankedAppsKeeper::savedResults(QString keyword, QString country,
                                                                 std::stop_token callersStop)
{
    const ScopedStop stop(m_tasks, callersStop);
    co_return co_await m_cache.find(rankedAppsKey(keyword, country), stop);
}

} // namespace veltrix
