// SPDX-License-Identifier: GPL-3.0-or-later
// What is removed from the store, and put back.
#include "store/aso_store.h"

#include <algorithm>

namespace veltrix
{

RemovedTracking ASOStore::removeKeyword(QUuid id)
{
    return removeKeywords({id});
}

RemovedTracking ASOStore::removeKeywords(const QList<QUuid> &ids)
{
    RemovedTracking removed;
    takeKeywords(QSet<QUuid>(ids.begin(), ids.end()), removed);
    if (removed.isEmpty())
        return removed;
    announceRemoved(removed.keywords);
    Q_EMIT trackingRemoved(removed);
    save();
    return removed;
}

RemovedTracking ASOStore::removeApp(QUuid id)
{
    RemovedTracking removed;
    if (!app(id))
        return removed;
    QSet<QUuid> keywordIds;
    for (const TrackedKeyword &keyword : m_keywords.all()) {
        if (keyword.appId == id)
            keywordIds.insert(keyword.id);
    }
    takeKeywords(keywordIds, removed);
    takeCompetitors([&](const TrackedCompetitor &rival) { return rival.appId == id; }, removed);
    removed.apps = takeOut(m_apps, [&](const AppProfile &known) { return known.id == id; });
    m_removals.removed.push_back(id);
    renumberApps();
    announceRemoved(removed.keywords);
    Q_EMIT appsChanged();
    if (!removed.competitors.empty())
        Q_EMIT competitorsChanged();
    Q_EMIT trackingRemoved(removed);
    save();
    return removed;
}

RemovedTracking ASOStore::removeCompetitor(QUuid id)
{
    RemovedTracking removed;
    takeCompetitors([&](const TrackedCompetitor &rival) { return rival.id == id; }, removed);
    if (removed.isEmpty())
        return removed;
    Q_EMIT competitorsChanged();
    Q_EMIT trackingRemoved(removed);
    save();
    return removed;
}

void ASOStore::takeKeywords(const QSet<QUuid> &ids, RemovedTracking &removed)
{
    removed.keywords = m_keywords.take(ids);
    for (const auto &[place, keyword] : removed.keywords) {
        std::ranges::move(m_snapshots.takeKeyword(keyword.id),
                          std::back_inserter(removed.snapshots));
        m_rankDays->remove(keyword.id);
        rememberOwner(keyword.appId, removed);
        m_removals.removed.push_back(keyword.id);
    }
}

template <class IsTaken>
void ASOStore::takeCompetitors(IsTaken &&isTaken, RemovedTracking &removed)
{
    removed.competitors = takeOut(m_competitors, isTaken);
    for (const auto &[place, competitor] : removed.competitors) {
        rememberOwner(competitor.appId, removed);
        m_removals.removed.push_back(competitor.id);
    }
}

void ASOStore::rememberOwner(QUuid appId, RemovedTracking &removed) const
{
    if (removed.trackIds.contains(appId))
        return;
    if (const auto owner = app(appId))
        removed.trackIds.insert(appId, owner->trackId);
}

void ASOStore::announceRemoved(const std::vector<Placed<TrackedKeyword>> &keywords)
{
    for (const auto &[place, keyword] : keywords)
        Q_EMIT keywordRemoved(keyword.id);
}

RestoredTracking ASOStore::restore(RemovedTracking removed)
{
    requireStateRead();
    const QHash<QUuid, QUuid> appIds = presentApps(removed);
    RestoredTracking restored;
    for (const auto &[place, profile] : removed.apps) {
        restored.appIds.append(appIds[profile.id]);
        rejoin(profile.id, appIds[profile.id]);
    }
    // What came anew meanwhile stays, and what was removed joins it.
    const auto hasOther = [&](const Placed<AppProfile> &placed) {
        return app(appIds[placed.record.id]).has_value();
    };
    std::erase_if(removed.apps, hasOther);
    putBack(m_apps, removed.apps);
    renumberApps();
    const QSet<QUuid> joined = restoreKeywords(std::move(removed.keywords),
                                               std::move(removed.snapshots), appIds, restored);
    QList<QUuid> back;
    for (const TrackedKeyword &keyword : std::as_const(restored.keywords))
        back.append(keyword.id);
    m_rankDays->follow(back);
    const bool hasCompetitors = restoreCompetitors(std::move(removed.competitors), appIds);
    if (!removed.apps.empty())
        Q_EMIT appsChanged();
    for (const TrackedKeyword &keyword : std::as_const(restored.keywords)) {
        if (!joined.contains(keyword.id))
            Q_EMIT keywordAdded(keyword.id);
    }
    for (const QUuid &id : joined)
        Q_EMIT keywordChanged(id);
    if (hasCompetitors)
        Q_EMIT competitorsChanged();
    // What came anew meanwhile gets the past of what was removed.
    const bool hasJoined = !m_removals.joined.empty();
    if (!removed.apps.empty() || !restored.keywords.isEmpty() || hasCompetitors || hasJoined)
        save();
    m_rankDays->readAgain(joined);
    return restored;
}

/// What was removed is back, under its own id or as part of what came anew meanwhile.
void ASOStore::rejoin(const QUuid &removed, const QUuid &present)
{
    if (removed == present) {
        m_removals.restored.push_back(removed);
        return;
    }
    m_removals.joined.push_back({removed, present});
    m_annotations.join(removed, present);
}

QHash<QUuid, QUuid> ASOStore::presentApps(const RemovedTracking &removed) const
{
    QHash<QUuid, std::int64_t> trackIds = removed.trackIds;
    for (const auto &[place, profile] : removed.apps)
        trackIds.insert(profile.id, profile.trackId);
    QHash<QUuid, QUuid> present;
    for (auto entry = trackIds.cbegin(); entry != trackIds.cend(); ++entry) {
        const QUuid id = entry.key();
        const auto anew = std::ranges::find(m_apps, entry.value(), &AppProfile::trackId);
        const auto comesBack = [&](const auto &placed) {
            return placed.record.id == id;
        };
        if (!app(id) && anew != m_apps.cend())
            present.insert(id, anew->id);
        else if (app(id) || std::ranges::any_of(removed.apps, comesBack))
            present.insert(id, id);
        else
            throw StoreError(404, QStringLiteral("App not found"));
    }
    return present;
}

QSet<QUuid> ASOStore::restoreKeywords(std::vector<Placed<TrackedKeyword>> keywords,
                                      std::vector<FiledSnapshot> snapshots,
                                      const QHash<QUuid, QUuid> &appIds, RestoredTracking &restored)
{
    QHash<QUuid, QUuid> joins;
    std::vector<Placed<TrackedKeyword>> back;
    for (Placed<TrackedKeyword> &placed : keywords) {
        TrackedKeyword &keyword = placed.record;
        keyword.appId = appIds.value(keyword.appId, keyword.appId);
        const TrackedKeyword *known = m_keywords.find(keyword.id);
        if (!known)
            known = m_keywords.findSame(keyword.appId, keyword.keyword, keyword.country);
        if (known)
            joins.insert(keyword.id, known->id);
        rejoin(keyword.id, known ? known->id : keyword.id);
        restored.keywords.append(known ? *known : keyword);
        if (!known)
            back.push_back(std::move(placed));
    }
    m_keywords.putBack(back);
    for (FiledSnapshot &filed : snapshots) {
        const QUuid other = joins.value(filed.snapshot->trackedKeywordId);
        if (other.isNull() || other == filed.snapshot->trackedKeywordId)
            continue;
        auto moved = std::make_shared<KeywordSnapshot>(*filed.snapshot);
        moved->trackedKeywordId = other;
        filed.snapshot = std::move(moved);
    }
    m_snapshots.putBack(std::move(snapshots));
    return {joins.cbegin(), joins.cend()};
}

bool ASOStore::restoreCompetitors(std::vector<Placed<TrackedCompetitor>> competitors,
                                  const QHash<QUuid, QUuid> &appIds)
{
    std::vector<Placed<TrackedCompetitor>> back;
    for (Placed<TrackedCompetitor> &placed : competitors) {
        TrackedCompetitor &competitor = placed.record;
        competitor.appId = appIds.value(competitor.appId, competitor.appId);
        const auto known =
            std::ranges::find_if(std::as_const(m_competitors), [&](const TrackedCompetitor &other) {
                return other.id == competitor.id || other.isSameRivalAs(competitor);
            });
        const bool isThere = known != m_competitors.cend();
        rejoin(competitor.id, isThere ? known->id : competitor.id);
        if (!isThere)
            back.push_back(std::move(placed));
    }
    putBack(m_competitors, back);
    return !back.empty();
}

} // namespace veltrix
