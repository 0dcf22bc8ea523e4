// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/suggestions/rival_ideas.h"

#include "model/text_folding.h"
#include "ui_kit/text/shown_text.h"

#include <algorithm>
#include <iterator>

namespace veltrix
{

RivalIdeas::RivalIdeas(ASOStore &store, QUuid appId, QObject *parent)
    : QObject(parent), m_store(store), m_appId(appId), m_tracking(store, appId)
{
    connect(&m_gathered, &LoaderSignals::changed, this, &RivalIdeas::update);
    connect(&m_reading, &LoaderSignals::changed, this, &RivalIdeas::update);
    connect(&m_tracking, &KeywordTracking::trackedChanged, this, &RivalIdeas::update);
    connect(&m_store, &ASOStore::competitorsChanged, this, [this] {
        findRivals();
        update();
    });
}

void RivalIdeas::start()
{
    findRivals();
    collectSuggested();
    m_gathered.ask([this](std::stop_token stop) { return gather(std::move(stop)); });
}

void RivalIdeas::readListings()
{
    m_reading.ask([this](std::stop_token stop) { return read(std::move(stop)); });
}

void RivalIdeas::stopReading()
{
    m_reading.clear();
}

qsizetype RivalIdeas::unread() const
{
    return std::count_if(m_rivals.begin(), m_rivals.end(),
                         [](const Rival &rival) { return !rival.isRead; });
}

void RivalIdeas::findRivals()
{
    QList<Rival> rivals;
    for (const TrackedCompetitor &competitor : m_store.competitorsOfApp(m_appId)) {
        const auto known = std::find_if(m_rivals.begin(), m_rivals.end(), [&](const Rival &rival) {
            return rival.known.trackId == competitor.trackId &&
                   rival.known.country == competitor.country;
        });
        if (known != m_rivals.end())
            rivals.append(*known);
        else
            rivals.append({{competitor.trackId, competitor.name, competitor.country, {}}, false});
    }
    m_rivals = rivals;
}

void RivalIdeas::takeListing(const ITunesAppResult &app, const QString &country)
{
    for (Rival &rival : m_rivals) {
        if (rival.known.trackId != app.trackId || rival.known.country != country)
            continue;
        rival.known.listing = app;
        // Some services send no description with a search.
        rival.isRead = app.description.has_value();
    }
}

void RivalIdeas::collectSuggested()
{
    for (const TrackedKeyword &keyword : m_store.keywordsOfApp(m_appId)) {
        const SharedSnapshot newest = m_store.newestSnapshot(keyword.id);
        if (!newest || !newest->autocompleteEvidence)
            continue;
        for (const AutocompleteProbe &probe : newest->autocompleteEvidence->probes) {
            for (const QString &term : probe.suggestions)
                m_evidence.suggested.insert({foldedCase(term.trimmed()), keyword.country});
        }
    }
}

Task<Done> RivalIdeas::gather(std::stop_token stop)
{
    const QList<TrackedKeyword> keywords = m_store.keywordsOfApp(m_appId).mid(0, mostSearches);
    for (const TrackedKeyword &keyword : keywords) {
        if (unread() == 0)
            break;
        DashboardKeywordRow row;
        row.keyword = keyword.keyword;
        row.country = keyword.country;
        const auto saved = co_await m_store.savedRankedApps(row, stop);
        if (!saved)
            continue;
        for (const ITunesAppResult &app : saved->results)
            takeListing(app, keyword.country);
    }
    // Whoever looked at a competitor's coverage has searched for its phrases.
    update();
    const QList<KeywordIdea> found = m_ideas;
    for (const KeywordIdea &idea : found) {
        DashboardKeywordRow row;
        row.keyword = idea.phrase;
        row.country = idea.country;
        const auto saved = co_await m_store.savedRankedApps(row, stop);
        if (!saved)
            continue;
        QStringList ranking;
        for (const Rival &rival : std::as_const(m_rivals)) {
            const bool ranks = rival.known.country == idea.country &&
                               std::any_of(saved->results.begin(), saved->results.end(),
                                           [&rival](const ITunesAppResult &app) {
                                               return app.trackId == rival.known.trackId;
                                           });
            if (ranks)
                ranking.append(rival.known.name);
        }
        m_evidence.ranking.insert({foldedCase(idea.phrase), idea.country}, ranking);
    }
    co_return Done();
}

Task<Done> RivalIdeas::read(std::stop_token stop)
{
    for (;;) {
        const auto next = std::find_if(m_rivals.begin(), m_rivals.end(),
                                       [](const Rival &rival) { return !rival.isRead; });
        if (next == m_rivals.end())
            break;
        const RivalListing wanted = next->known;
        try {
            const ITunesAppResult app =
                co_await m_store.appDetails(wanted.trackId, wanted.country, stop);
            takeListing(app, wanted.country);
        } catch (const StoreError &) {
            // It is gone from the storefront: its name is what there is. The others are read.
        }
        for (Rival &rival : m_rivals) {
            // An answer without a description is all that there is.
            if (rival.known.trackId == wanted.trackId && rival.known.country == wanted.country)
                rival.isRead = true;
        }
        update();
        throwIfStopped(stop);
    }
    co_return Done();
}

void RivalIdeas::update()
{
    QList<RivalListing> listings;
    for (const Rival &rival : std::as_const(m_rivals))
        listings.append(rival.known);
    const auto isTracked = [this](const QString &phrase, const QString &country) {
        return m_tracking.isTracked(phrase, country);
    };
    m_ideas = keywordIdeas(listings, m_evidence, isTracked, mostIdeas);
    Q_EMIT changed();
}

QString RivalIdeas::progressText() const
{
    const auto next = std::find_if(m_rivals.begin(), m_rivals.end(),
                                   [](const Rival &rival) { return !rival.isRead; });
    if (!isReading() || next == m_rivals.end())
        return {};
    return tr("Reading the listing of %1 · %2 of %3")
        .arg(inSentence(next->known.name), QString::number(m_rivals.size() - unread() + 1),
             QString::number(m_rivals.size()));
}

} // namespace veltrix
