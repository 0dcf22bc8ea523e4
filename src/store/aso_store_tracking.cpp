// SPDX-License-Identifier: GPL-3.0-or-later
// Apps, competitors, and what views ask the App Store through the store.
#include "store/aso_store.h"

namespace veltrix
{

namespace
{

/// The seller's name without surrounding white space; absent when nothing is left.
std::optional<QString> trimmedSeller(const ITunesAppResult &result)
{
    const QString name = result.sellerName.value_or(QString()).trimmed();
    return name.isEmpty() ? std::nullopt : std::optional(name);
}

} // namespace

void ASOStore::renumberApps()
{
    for (qsizetype i = 0; i < m_apps.size(); ++i)
        m_apps[i].sortOrder = i;
}

AppProfile ASOStore::addApp(const ITunesAppResult &result, QString country)
{
    if (!result.trackId)
        throw StoreError(422, QStringLiteral("Missing trackId on selected result"));
    requireStateRead();
    for (const AppProfile &known : std::as_const(m_apps)) {
        if (known.trackId == *result.trackId)
            return known;
    }
    const AppProfile added{
        QUuid::createUuid(), *result.trackId,   displayName(result), QStringLiteral("iPhone"),
        iconUrl(result),     country.toUpper(), m_apps.size()};
    m_apps.append(added);
    Q_EMIT appsChanged();
    save();
    return added;
}

Task<AppProfile> ASOStore::addApp(std::int64_t trackId, QString country,
                                  std::stop_token callersStop)
{
    const ScopedStop stop(m_tasks, callersStop);
    const std::optional<ITunesAppResult> found =
        co_await m_discoveryClient->lookup(trackId, country, stop);
    throwIfStopped(stop);
    if (!found)
        throw StoreError(404, QStringLiteral("App not found on iTunes Lookup"));
    co_return addApp(*found, country);
}

QList<TrackedCompetitor> ASOStore::competitorsOfApp(QUuid appId) const
{
    QList<TrackedCompetitor> result;
    for (const TrackedCompetitor &competitor : m_competitors) {
        if (competitor.appId == appId)
            result.append(competitor);
    }
    return result;
}

void ASOStore::addCompetitor(const ITunesAppResult &result, QUuid appId, QString country)
{
    const std::optional<AppProfile> owner = app(appId);
    // An app never competes with itself.
    if (!result.trackId || !owner || owner->trackId == *result.trackId)
        return;
    const TrackedCompetitor added{QUuid::createUuid(),  appId,           *result.trackId,
                                  displayName(result),  iconUrl(result), country.toUpper(),
                                  trimmedSeller(result)};
    for (const TrackedCompetitor &known : std::as_const(m_competitors)) {
        if (known.isSameRivalAs(added))
            return;
    }
    m_competitors.append(added);
    m_edits.push_back(BeginWatching{added.id, m_clock->now()});
    Q_EMIT competitorsChanged();
    save();
}

Task<void> ASOStore::updateCompetitorSeller(QUuid competitorId, std::stop_token callersStop)
{
    const ScopedStop stop(m_tasks, callersStop);
    const auto isIt = [=](const TrackedCompetitor &competitor) {
        return competitor.id == competitorId;
    };
    const auto known = std::ranges::find_if(std::as_const(m_competitors), isIt);
    if (known == m_competitors.cend())
        co_return;
    const std::int64_t trackId = known->trackId;
    const QString country = known->country;
    const std::optional<ITunesAppResult> found =
        co_await m_discoveryClient->lookup(trackId, country, stop);
    throwIfStopped(stop);
    const auto competitor = std::ranges::find_if(m_competitors, isIt);
    if (!found || competitor == m_competitors.end())
        co_return;
    competitor->sellerName = trimmedSeller(*found);
    Q_EMIT competitorsChanged();
    save();
}

Task<QList<ITunesAppResult>> ASOStore::searchApps(QString term, QString country, std::int64_t limit,
                                                  std::stop_token callersStop)
{
    const ScopedStop stop(m_tasks, callersStop);
    co_return co_await m_discoveryClient->search(term, country, limit, stop);
}

Task<ITunesAppResult> ASOStore::appDetails(std::int64_t trackId, QString country,
                                           std::stop_token callersStop)
{
    const ScopedStop stop(m_tasks, callersStop);
    std::optional<ITunesAppResult> found =
        co_await m_discoveryClient->lookup(trackId, country, stop);
    if (!found)
        throw StoreError(404, QStringLiteral("App unavailable in this storefront."));
    co_return std::move(*found);
}

Task<QList<ITunesAppResult>> ASOStore::searchKeyword(QString keyword, QString country,
                                                     std::int64_t limit,
                                                     std::stop_token callersStop)
{
    const ScopedStop stop(m_tasks, callersStop);
    co_return co_await m_iTunesClient->search(keyword, country, limit, stop);
}

Task<QList<ITunesAppResult>> ASOStore::rankedApps(DashboardKeywordRow row,
                                                  std::stop_token callersStop)
{
    const ScopedStop stop(m_tasks, callersStop);
    const std::optional<SavedResults> saved = co_await savedRankedApps(row, stop);
    if (saved && saved->fetchedAt + rankedAppsReuse > m_clock->now())
        co_return saved->results;
    co_return co_await m_discoveryClient->search(row.keyword, row.country, keywordSearchLimit,
                                                 stop);
}

Task<std::optional<SavedResults>> ASOStore::savedRankedApps(DashboardKeywordRow row,
                                                            std::stop_token callersStop)
{
    const ScopedStop stop(m_tasks, callersStop);
    if (!m_rankedAppsCache)
        co_return std::nullopt;
    co_return co_await m_rankedAppsCache->savedResults(row.keyword, row.country, stop);
}

} // namespace veltrix
