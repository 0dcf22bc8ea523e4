// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/competitors/competitor_comparison.h"

#include <algorithm>

namespace veltrix
{

namespace
{

Task<std::vector<TheirCheck>> readChecks(ASOStore *store, QUuid appId, QSet<QUuid> competitorIds,
                                         std::stop_token stop)
{
    const std::vector<KeywordStandings> newest = co_await store->newestStandings(appId, stop);
    co_return theirChecks(newest, competitorIds);
}

Task<ListingPast> readPast(ASOStore *store, QList<TrackedCompetitor> competitors,
                           std::stop_token stop)
{
    ListingPast past;
    for (const TrackedCompetitor &competitor : competitors) {
        ListingHistory history = co_await store->listingHistory(competitor.id, stop);
        past.histories.push_back(std::move(history));
        past.storefronts.append(competitor.country);
    }
    co_return past;
}

} // namespace

CompetitorComparison::CompetitorComparison(ASOStore &store, std::int64_t trackId,
                                           const std::optional<QUuid> &appId, QObject *parent)
    : QObject(parent), m_store(store), m_trackId(trackId), m_appId(appId)
{
    for (QTimer *timer : {&m_compareSoon, &m_askSoon}) {
        timer->setSingleShot(true);
        timer->setInterval(0);
    }
    connect(&m_compareSoon, &QTimer::timeout, this, [this] {
        // An answer that is awaited is compared when it comes.
        if (m_isPaused || m_isAwaitingSave || m_checks.state().isUnderWay())
            return;
        const SharedKeywords before = m_shared;
        compare();
        if (m_shared != before)
            Q_EMIT sharedChanged();
    });
    connect(&m_askSoon, &QTimer::timeout, this, &CompetitorComparison::askWhatIsWanted);
    connect(&m_checks, &LoaderSignals::changed, this, [this] {
        // While an answer is awaited, what is there belongs to an older measurement.
        if (!m_checks.state().is<Refreshing<std::vector<TheirCheck>>>())
            compare();
        Q_EMIT sharedChanged();
        m_askSoon.start();
    });
    connect(&m_past, &LoaderSignals::changed, this, [this] {
        Q_EMIT pastChanged();
        m_askSoon.start();
    });
    follow();
    findCompetitors();
}

void CompetitorComparison::follow()
{
    connect(&m_store, &ASOStore::keywordChanged, this, [this](const QUuid &keywordId) {
        if (isOfApp(keywordId) && !std::exchange(m_isAwaitingSave, true))
            m_tasks.own(compareWhenSaved(m_tasks.token()));
    });
    connect(&m_store, &ASOStore::keywordAdded, this, [this](const QUuid &keywordId) {
        if (isOfApp(keywordId))
            askChecks();
    });
    connect(&m_store, &ASOStore::standingsKept, this, [this](const QList<QUuid> &keywordIds) {
        if (std::ranges::any_of(keywordIds, [this](const QUuid &id) { return isOfApp(id); }))
            askChecks();
    });
    const auto compareSoon = [this] {
        m_compareSoon.start();
    };
    connect(&m_store, &ASOStore::keywordRemoved, this, compareSoon);
    connect(&m_store, &ASOStore::rankDaysChanged, this, compareSoon);
    connect(&m_store, &ASOStore::listingsChanged, this, [this](const QList<QUuid> &ownerIds) {
        if (std::ranges::any_of(m_competitors, [&](const TrackedCompetitor &competitor) {
                return ownerIds.contains(competitor.id);
            }))
            askPast();
    });
    for (const auto changed :
         {&ASOStore::competitorsChanged, &ASOStore::appsChanged, &ASOStore::stateRead})
        connect(&m_store, changed, this, &CompetitorComparison::findCompetitors);
}

bool CompetitorComparison::isOfApp(const QUuid &keywordId) const
{
    const auto keyword = m_store.trackedKeyword(keywordId);
    return keyword && m_appId && keyword->appId == *m_appId;
}

void CompetitorComparison::setApp(const std::optional<QUuid> &appId)
{
    if (std::exchange(m_appId, appId) == appId)
        return;
    findCompetitors();
}

void CompetitorComparison::findCompetitors()
{
    QList<TrackedCompetitor> found;
    if (m_appId) {
        found = m_store.competitorsOfApp(*m_appId);
        found.removeIf([this](const TrackedCompetitor &competitor) {
            return competitor.trackId != m_trackId;
        });
    }
    const auto idsOf = [](const QList<TrackedCompetitor> &competitors) {
        QList<QUuid> ids;
        for (const TrackedCompetitor &competitor : competitors)
            ids.append(competitor.id);
        return ids;
    };
    const bool areOthers = idsOf(found) != idsOf(m_competitors);
    if (std::exchange(m_competitors, found) == found)
        return;
    if (areOthers) {
        m_wantsChecks = false;
        m_wantsPast = false;
        m_checks.clear();
        m_past.clear();
        askChecks();
        askPast();
    }
    Q_EMIT competitorsChanged();
}

RivalIcons CompetitorComparison::icons() const
{
    RivalIcons icons;
    const auto own = m_appId ? m_store.app(*m_appId) : std::nullopt;
    if (own)
        icons.own = own->iconURL;
    for (const TrackedCompetitor &competitor : m_competitors) {
        if (!icons.theirs)
            icons.theirs = competitor.iconURL;
    }
    return icons;
}

void CompetitorComparison::pause()
{
    m_isPaused = true;
}

void CompetitorComparison::unpause()
{
    m_isPaused = false;
    m_compareSoon.start();
    askWhatIsWanted();
}

void CompetitorComparison::askWhatIsWanted()
{
    if (m_wantsChecks)
        askChecks();
    if (m_wantsPast)
        askPast();
}

void CompetitorComparison::retry()
{
    if (!m_checks.state().error().isEmpty())
        askChecks();
    if (!m_past.state().error().isEmpty())
        askPast();
}

void CompetitorComparison::askChecks()
{
    m_wantsChecks = isTracked() && (m_isPaused || m_checks.state().isUnderWay());
    if (!isTracked() || m_wantsChecks)
        return;
    QSet<QUuid> ids;
    for (const TrackedCompetitor &competitor : std::as_const(m_competitors))
        ids.insert(competitor.id);
    m_checks.refresh(
        [this, ids](std::stop_token stop) { return readChecks(&m_store, *m_appId, ids, stop); });
}

void CompetitorComparison::askPast()
{
    m_wantsPast = isTracked() && (m_isPaused || m_past.state().isUnderWay());
    if (!isTracked() || m_wantsPast)
        return;
    m_past.refresh(
        [this](std::stop_token stop) { return readPast(&m_store, m_competitors, stop); });
}

Task<void> CompetitorComparison::compareWhenSaved(std::stop_token stop)
{
    co_await m_store.saved(stop);
    m_isAwaitingSave = false;
    m_compareSoon.start();
}

void CompetitorComparison::compare()
{
    const std::vector<TheirCheck> *checks = m_checks.state().value();
    m_shared = checks ? SharedKeywords::of(
                            *checks,
                            [this](const TheirCheck &check) { return ownStanding(m_store, check); })
                      : SharedKeywords();
}

std::vector<ChangeLogEntry> CompetitorComparison::log() const
{
    const ListingPast *past = m_past.state().value();
    return past ? changeLog(*past, m_store.clock().now()) : std::vector<ChangeLogEntry>();
}

} // namespace veltrix
