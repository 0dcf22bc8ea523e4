// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/store_fixture.h"

#include "effects/atomic_file.h"
#include "json/json_reader.h"

namespace veltrix
{

Task<void> FakeITunesClient::pass(std::stop_token stop)
{
    throwIfStopped(stop);
    if (!holds)
        co_return;
    const OneShot<Done> gate;
    m_held.push_back(gate);
    co_await gate.wait(stop);
}

void FakeITunesClient::release()
{
    for (const OneShot<Done> &gate : std::exchange(m_held, {}))
        gate.resolve({});
}

Task<QList<ITunesAppResult>> FakeITunesClient::search(QString term, QString country,
                                                      std::int64_t limit, std::stop_token stop)
{
    searches.append(QStringLiteral("%1/%2/%3").arg(term, country).arg(limit));
    const QList<ITunesAppResult> answer = results;
    const bool failing = fails && fails(term);
    co_await pass(stop);
    if (failing)
        throw FakeFailure();
    co_return answer;
}

Task<std::optional<ITunesAppResult>> FakeITunesClient::lookup(std::int64_t trackId, QString country,
                                                              std::stop_token stop)
{
    lookups.append(QStringLiteral("%1/%2").arg(trackId).arg(country));
    const std::optional<ITunesAppResult> answer = found;
    const bool failing = fails && fails(QString::number(trackId));
    co_await pass(stop);
    if (failing)
        throw FakeFailure();
    co_return answer;
}

Task<PopularityAssessment> FakePopularity::assess(std::shared_ptr<const KeywordSurvey>, QString,
                                                  std::stop_token)
{
    PopularityAssessment assessment;
    assessment.measurement = PopularityMeasurement{
        42, QString(popularity_source::quorvinCalibratedEstimate), version, 25, 11, 318.5};
    assessment.message = QStringLiteral("Measured.");
    co_return assessment;
}

Task<std::optional<SavedResults>>
FakeRankedApps::savedResults(QString askedKeyword, QString askedCountry, std::stop_token)
{
    if (askedKeyword != keyword || askedCountry != country)
        co_return std::nullopt;
    co_return saved;
}

ITunesAppResult appResult(std::int64_t trackId, const char *name)
{
    ITunesAppResult result;
    result.trackId = trackId;
    result.trackName = text(name);
    result.artworkUrl100 = QStringLiteral("https://icons.example/%1.png").arg(trackId);
    result.userRatingCount = 1000 + trackId;
    result.averageUserRating = 4.5;
    result.releaseDate = QStringLiteral("2020-05-01T00:00:00Z");
    return result;
}

StoreTest::StoreTest()
{
    client->results = {appResult(7, "Harbour Clock"), appResult(1, "Tideline"),
                       appResult(9, "Moon Phase")};
    start();
}

StoreTest::~StoreTest() = default;

ASOStore::Arguments StoreTest::arguments() const
{
    return {statePath(), client, KeywordPipeline{popularity, client, clock},
            discovery,   clock,  rankedApps};
}

void StoreTest::start()
{
    store.reset();
    store = std::make_unique<ASOStore>(arguments());
}

QByteArray StoreTest::stateBytes() const
{
    store->waitUntilSaved();
    return readWholeFile(statePath());
}

void StoreTest::writeState(const PersistedState &state) const
{
    writeFileAtomically(statePath(), toJson(state));
}

PersistedState StoreTest::stateOnDisk() const
{
    PersistedState state = fromJson<PersistedState>(stateBytes());
    EXPECT_EQ(toJson(state.apps), toJson(store->apps()));
    EXPECT_EQ(toJson(state.trackedKeywords), toJson(store->trackedKeywords()));
    EXPECT_EQ(toJson(state.snapshots), toJson(store->snapshots()));
    EXPECT_EQ(toJson(state.competitors), toJson(store->competitors()));
    return state;
}

AppProfile StoreTest::addApp(std::int64_t trackId, const char *name)
{
    AppProfile added = store->addApp(appResult(trackId, name), text("US"));
    store->waitUntilSaved();
    return added;
}

TrackedKeyword StoreTest::addKeyword(const char *keyword, const char *country)
{
    const QUuid appId = store->apps().isEmpty() ? addApp().id : store->apps().constFirst().id;
    TrackedKeyword added = store->addTrackedKeyword(appId, text(keyword), text(country));
    store->waitUntilSaved();
    return added;
}

void StoreTest::retryPersistence()
{
    store->retryPersistence();
    store->waitUntilSaved();
}

Outcome<DashboardKeywordRow> StoreTest::refresh(const TrackedKeyword &keyword)
{
    Outcome<DashboardKeywordRow> outcome(store->refreshKeyword(keyword.id, view.get_token()));
    store->waitUntilSaved();
    return outcome;
}

KeywordSnapshot StoreTest::snapshotOf(const TrackedKeyword &keyword, Seconds age) const
{
    KeywordSnapshot snapshot;
    snapshot.id = QUuid::createUuid();
    snapshot.trackedKeywordId = keyword.id;
    snapshot.keyword = keyword.keyword;
    snapshot.country = keyword.country;
    snapshot.fetchedAt = clock->now() - age;
    snapshot.difficultyScore = 33;
    snapshot.popularityModelVersion = popularity->version;
    snapshot.scoringModelVersion = QString(currentScoringModelVersion);
    return snapshot;
}

void StoreTest::plant(const KeywordSnapshot &snapshot)
{
    std::vector<SharedSnapshot> snapshots = store->snapshots();
    snapshots.push_back(std::make_shared<const KeywordSnapshot>(snapshot));
    const PersistedState planted{store->apps(), store->trackedKeywords(), snapshots,
                                 store->competitors()};
    stop();
    writeState(planted);
    start();
}

QString StoreTest::problem() const
{
    store->waitUntilSaved();
    const auto told = store->persistenceProblem();
    return told ? told->text : QString();
}

RankingTimeline StoreTest::timelineOf(QUuid keywordId) const
{
    const Outcome<RankingTimeline> timeline(store->rankingTimeline(keywordId, {}));
    waitFor([&] { return timeline.isDone(); });
    return timeline.value();
}

std::vector<Date> StoreTest::measuredAt(const TrackedKeyword &keyword) const
{
    std::vector<Date> dates;
    for (const SharedSnapshot &snapshot : store->keywordSnapshots(keyword.id))
        dates.push_back(snapshot->fetchedAt);
    return dates;
}

} // namespace veltrix
