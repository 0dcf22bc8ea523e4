// SPDX-License-Identifier: GPL-3.0-or-later
// The store's state: keywords and what is read of them.
#include "store/aso_store.h"

namespace veltrix
{

ASOStore::ASOStore(Arguments arguments, QObject *parent)
    : QObject(parent), m_iTunesClient(std::move(arguments.iTunesClient)),
      m_discoveryClient(std::move(arguments.discoveryClient)), m_clock(std::move(arguments.clock)),
      m_rankedAppsCache(std::move(arguments.rankedAppsCache)),
      m_saver(std::move(arguments.persistenceURL), arguments.folderLock, arguments.stateFileLimit)
{
    connect(&m_saver, &StateSaver::saved, this, &ASOStore::followSaver);
    connect(&m_saver, &StateSaver::moved, this, [this](const MovedDays &moved) {
        m_saver.free(m_snapshots.forget(moved.all));
        m_rankDays->followMove(moved.snapshots);
    });
    m_rankDays = std::make_unique<RankDaysKeeper>(m_keywords, m_snapshots, m_saver, m_clock);
    connect(m_rankDays.get(), &RankDaysKeeper::changed, this, &ASOStore::rankDaysChanged);

    RefreshedKeywords &keywords = *this;
    m_refreshes =
        std::make_unique<KeywordRefreshes>(keywords, std::move(arguments.pipeline), m_clock);
    connect(m_refreshes.get(), &KeywordRefreshes::progressChanged, this,
            &ASOStore::refreshProgressChanged);
    connect(m_refreshes.get(), &KeywordRefreshes::errorChanged, this,
            &ASOStore::historyRefreshErrorChanged);
    connect(m_refreshes.get(), &KeywordRefreshes::isRefreshingHistoryChanged, this,
            &ASOStore::isRefreshingHistoryChanged);
    connect(&m_saver, &StateSaver::applied, this, [this](const AppliedEdits &edits) {
        if (!edits.keywords.isEmpty())
            Q_EMIT standingsKept(edits.keywords.values());
        if (!edits.listings.isEmpty())
            Q_EMIT listingsChanged(edits.listings.values());
    });
    if (arguments.opening == Opening::AtOnce)
        open();
}

ASOStore::~ASOStore() = default;

const QList<AppProfile> &ASOStore::apps() const
{
    return m_apps;
}

const QList<TrackedKeyword> &ASOStore::trackedKeywords() const
{
    return m_keywords.all();
}

const QList<TrackedCompetitor> &ASOStore::competitors() const
{
    return m_competitors;
}

std::vector<SharedSnapshot> ASOStore::snapshots() const
{
    return m_snapshots.inFileOrder();
}

std::optional<AppProfile> ASOStore::app(QUuid id) const
{
    for (const AppProfile &app : m_apps) {
        if (app.id == id)
            return app;
    }
    return std::nullopt;
}

std::optional<TrackedKeyword> ASOStore::trackedKeyword(QUuid id) const
{
    const TrackedKeyword *keyword = m_keywords.find(id);
    return keyword ? std::optional(*keyword) : std::nullopt;
}

QList<TrackedKeyword> ASOStore::keywordsOfApp(QUuid appId) const
{
    QList<TrackedKeyword> result;
    for (const TrackedKeyword &keyword : m_keywords.all()) {
        if (keyword.appId == appId)
            result.append(keyword);
    }
    return result;
}

SharedSnapshot ASOStore::newestSnapshot(QUuid keywordId) const
{
    return m_snapshots.newest(keywordId, m_clock->now());
}

void ASOStore::keepSnapshot(SharedSnapshot snapshot, const QList<ITunesAppResult> &results)
{
    const QUuid keywordId = snapshot->trackedKeywordId;
    if (const TrackedKeyword *keyword = m_keywords.find(keywordId))
        m_edits.push_back(standingsEdit(*snapshot, *keyword, results));
    m_snapshots.store(std::move(snapshot));
    m_rankDays->follow({keywordId});
    Q_EMIT keywordChanged(keywordId);
    save();
}

DashboardKeywordRow ASOStore::dashboardRow(const TrackedKeyword &keyword) const
{
    return rowOf(keyword, newestSnapshot(keyword.id));
}

DashboardKeywordRow ASOStore::rowOf(const TrackedKeyword &keyword, const SharedSnapshot &newest)
{
    DashboardKeywordRow row;
    row.id = keyword.id;
    row.keyword = keyword.keyword;
    row.country = keyword.country;
    row.awaitingMetrics = newest == nullptr;
    row.lastUpdate = newest ? newest->fetchedAt : keyword.createdAt;
    if (!newest)
        return row;
    if (const auto &measurement = newest->popularityMeasurement) {
        if (isSearchPopularity(*measurement))
            row.popularity = measurement->score;
        if (isAutocompleteVisibility(*measurement))
            row.autocompleteVisibility = measurement->score;
    }
    // A score of no apps means nothing; older snapshots do not say how many there were.
    if (newest->difficultyComponents.sampledAppCount != 0)
        row.difficulty = newest->difficultyScore;
    row.position = newest->position;
    row.appsInRanking = newest->competitorIcons;
    row.opportunity = newest->opportunity;
    return row;
}

Clock &ASOStore::clock() const
{
    return *m_clock;
}

} // namespace veltrix
