// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/competitors/above_you_loading.h"

#include "ui_kit/text/shown_text.h"

#include <algorithm>

namespace veltrix
{

namespace
{

Task<AboveYou::Sources> readSources(ASOStore *store, DashboardKeywordRow keyword,
                                    std::stop_token stop)
{
    AboveYou::Sources sources;
    sources.standings = co_await store->standings(keyword.id, stop);
    RankingTimeline timeline = co_await store->rankingTimeline(keyword.id, stop);
    sources.own = std::move(timeline.observations);
    std::optional<SavedResults> saved = co_await store->savedRankedApps(keyword, stop);
    if (saved)
        sources.results = std::move(saved->results);
    co_return sources;
}

} // namespace

AboveYouLoading::AboveYouLoading(ASOStore &store, const DashboardKeywordRow &keyword,
                                 QObject *parent)
    : QObject(parent), m_store(store), m_keyword(keyword)
{
    connect(&m_sources, &LoaderSignals::changed, this, &AboveYouLoading::changed);
    connect(&m_lookUp, &LoaderSignals::changed, this, [this] {
        if (const ITunesAppResult *app = m_lookUp.state().value())
            addCompetitor(*app);
        Q_EMIT trackingChanged();
    });
    connect(&m_store, &ASOStore::competitorsChanged, this, &AboveYouLoading::changed);
    connect(&m_store, &ASOStore::standingsKept, this, [this](const QList<QUuid> &keywordIds) {
        if (keywordIds.contains(m_keyword.id))
            retry();
    });
    connect(&m_store, &ASOStore::keywordRemoved, this, [this](const QUuid &id) {
        if (id == m_keyword.id)
            Q_EMIT keywordGone();
    });
}

void AboveYouLoading::start()
{
    m_sources.ask([this](std::stop_token stop) { return readSources(&m_store, m_keyword, stop); });
}

AboveYou AboveYouLoading::above() const
{
    const AboveYou::Sources *read = m_sources.state().value();
    const auto keyword = m_store.trackedKeyword(m_keyword.id);
    const auto app = keyword ? m_store.app(keyword->appId) : std::nullopt;
    if (!read || !app)
        return {};
    AboveYou::Sources sources = *read;
    sources.ownTrackId = app->trackId;
    sources.competitors = m_store.competitorsOfApp(app->id);
    sources.now = m_store.clock().now();
    return AboveYou::of(sources);
}

void AboveYouLoading::track(const AppAbove &app)
{
    if (app.trackId == 0 || app.isTracked || isLookingUp())
        return;
    m_lookUp.clear();
    if (const AboveYou::Sources *read = m_sources.state().value()) {
        const auto known = std::ranges::find_if(read->results, [&](const ITunesAppResult &result) {
            return result.trackId == app.trackId;
        });
        if (known != read->results.cend()) {
            addCompetitor(*known);
            return;
        }
    }
    m_lookedUp = app.shownName();
    m_lookUp.ask([this, trackId = app.trackId](std::stop_token stop) {
        return m_store.appDetails(trackId, m_keyword.country, stop);
    });
}

void AboveYouLoading::addCompetitor(const ITunesAppResult &app)
{
    if (const auto keyword = m_store.trackedKeyword(m_keyword.id))
        m_store.addCompetitor(app, keyword->appId, m_keyword.country);
}

QString AboveYouLoading::trackingText() const
{
    if (isLookingUp())
        return tr("Looking up %1…").arg(inSentence(m_lookedUp));
    return isTrackingFailed() ? tr("%1 couldn't be tracked. %2")
                                    .arg(inSentence(m_lookedUp), m_lookUp.state().error())
                              : QString();
}

} // namespace veltrix
