// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/overview/rank_overview.h"

#include "model/keyword_rule.h"
#include "model/text_folding.h"

#include <algorithm>

namespace veltrix
{

namespace
{

/// So many changed keywords at once are all of them, or nearly: going through all is less work.
constexpr qsizetype manyChanges = 500;

} // namespace

RankOverview::RankOverview(ASOStore &store, QObject *parent) : QObject(parent), m_store(store)
{
    const auto followOne = [this](QUuid id) {
        follow({id});
    };
    connect(&m_store, &ASOStore::rankDaysChanged, this, &RankOverview::follow);
    connect(&m_store, &ASOStore::keywordChanged, this, followOne);
    connect(&m_store, &ASOStore::keywordAdded, this, followOne);
    connect(&m_store, &ASOStore::keywordRemoved, this, followOne);
    connect(&m_store, &ASOStore::appsChanged, this, &RankOverview::followApps);
    connect(&m_store, &ASOStore::stateRead, this, &RankOverview::followApps);
}

void RankOverview::setActive(bool isActive)
{
    m_isActive = isActive;
    if (m_isActive && (m_hasOtherApps || !m_changed.isEmpty()))
        apply();
}

const AppStanding *RankOverview::standing(const QUuid &appId) const
{
    const auto found = m_known.constFind(appId);
    return found == m_known.cend() ? nullptr : &found->standing;
}

bool RankOverview::matches(const QUuid &appId, const QString &folded) const
{
    const auto found = m_known.constFind(appId);
    return found != m_known.cend() && found->folded.contains(folded);
}

bool RankOverview::canCompare(Period period) const
{
    return std::any_of(m_known.cbegin(), m_known.cend(), [=](const Known &known) {
        return known.standing.movesIn(period).compared > 0;
    });
}

void RankOverview::follow(const QList<QUuid> &keywordIds)
{
    for (const QUuid &id : keywordIds)
        m_changed.insert(id);
    schedule();
}

void RankOverview::followApps()
{
    m_hasOtherApps = true;
    schedule();
}

void RankOverview::schedule()
{
    if (m_isActive && !std::exchange(m_isScheduled, true))
        QMetaObject::invokeMethod(this, &RankOverview::apply, Qt::QueuedConnection);
}

void RankOverview::apply()
{
    m_isScheduled = false;
    QSet<QUuid> changed = std::exchange(m_changed, {});
    if (std::exchange(m_hasOtherApps, false) || changed.size() > manyChanges) {
        for (auto known = m_appOf.keyBegin(); known != m_appOf.keyEnd(); ++known)
            changed.insert(*known);
        rebuild();
        for (auto known = m_appOf.keyBegin(); known != m_appOf.keyEnd(); ++known)
            changed.insert(*known);
        Q_EMIT appsChanged();
        Q_EMIT keywordsChanged(changed);
        return;
    }
    QSet<QUuid> apps;
    for (const QUuid &id : std::as_const(changed)) {
        const auto keyword = m_store.trackedKeyword(id);
        apps.insert(keyword ? keyword->appId : m_appOf.value(id));
        if (keyword)
            m_appOf.insert(id, keyword->appId);
        else
            m_appOf.remove(id);
    }
    for (const QUuid &id : std::as_const(apps)) {
        if (m_known.contains(id))
            renew(id);
    }
    Q_EMIT keywordsChanged(changed);
}

void RankOverview::rebuild()
{
    m_apps.clear();
    m_known.clear();
    m_appOf.clear();
    QHash<QUuid, std::vector<const TrackedKeyword *>> keywords;
    for (const TrackedKeyword &keyword : m_store.trackedKeywords())
        keywords[keyword.appId].push_back(&keyword);
    for (const AppProfile &app : m_store.apps()) {
        m_apps.append(app.id);
        const auto &own = keywords[app.id];
        for (const TrackedKeyword *keyword : own)
            m_appOf.insert(keyword->id, app.id);
        m_known.insert(app.id, known(app, own));
    }
}

void RankOverview::renew(const QUuid &appId)
{
    const auto app = m_store.app(appId);
    if (!app)
        return;
    std::vector<const TrackedKeyword *> keywords;
    for (const TrackedKeyword &keyword : m_store.trackedKeywords()) {
        if (keyword.appId == appId)
            keywords.push_back(&keyword);
    }
    Known fresh = known(*app, keywords);
    Known &old = m_known[appId];
    const bool isOther = old.standing != fresh.standing;
    old = std::move(fresh);
    if (isOther)
        Q_EMIT standingChanged(appId);
}

RankOverview::Known RankOverview::known(const AppProfile &app,
                                        const std::vector<const TrackedKeyword *> &keywords) const
{
    Known made;
    made.standing.appId = app.id;
    made.standing.name = app.appName;
    made.standing.icon = app.iconURL;
    made.folded = foldedForSearch(app.appName);
    for (const TrackedKeyword *keyword : keywords) {
        const SharedSnapshot newest = m_store.newestSnapshot(keyword->id);
        made.standing.add({m_store.rankDays(keyword->id),
                           newest ? std::optional(newest->fetchedAt) : std::nullopt,
                           !keywordRefusal(keyword->keyword, keyword->country)});
        made.folded += u'\n' + foldedForSearch(keyword->keyword);
    }
    made.standing.finish();
    return made;
}

} // namespace veltrix
