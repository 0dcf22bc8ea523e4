// SPDX-License-Identifier: GPL-3.0-or-later
// Adding keywords, measuring one, and the row that the dashboard shows of it.
#include "store/store_fixture.h"

namespace veltrix
{
namespace
{

using StoreRefresh = StoreTest;
using DashboardRow = StoreTest;
using AddKeyword = StoreTest;

constexpr Seconds minute{60};
constexpr Seconds hour{3600};

// Adding

TEST_F(AddKeyword, KeepsTheTextAndUpperCasesTheStorefront)
{
    const TrackedKeyword keyword = addKeyword(" Moon Phase ", "de");
    EXPECT_EQ(keyword.keyword, text(" Moon Phase "));
    EXPECT_EQ(keyword.country, text("DE"));
    EXPECT_EQ(keyword.createdAt, clock->now());
    EXPECT_EQ(keyword.appId, store->apps().constFirst().id);
    EXPECT_EQ(keyword.id.version(), QUuid::Random);
    EXPECT_EQ(stateOnDisk().trackedKeywords, QList<TrackedKeyword>{keyword});
}

TEST_F(AddKeyword, TheSameTextInAnotherCaseIsTheKeywordThatIsThere)
{
    const TrackedKeyword keyword = addKeyword("photo editor", "US");
    const QByteArray before = stateBytes();
    EXPECT_EQ(addKeyword("Photo Editor", "us"), keyword);
    EXPECT_EQ(store->trackedKeywords().size(), 1);
    EXPECT_EQ(stateBytes(), before);
}

TEST_F(AddKeyword, CaseIsFoldedBeyondAscii)
{
    const TrackedKeyword keyword = addKeyword("ПРОГНОЗ погоды", "PL");
    EXPECT_EQ(addKeyword("прогноз ПОГОДЫ", "PL"), keyword);
    const TrackedKeyword sigma = addKeyword("ΟΔΟΣ", "GR");
    EXPECT_EQ(addKeyword("οδος", "GR"), sigma);
}

TEST_F(AddKeyword, AnotherAppOrStorefrontOrAccentIsAnotherKeyword)
{
    const AppProfile other = addApp(2, "Second");
    addApp(1, "First");
    store->addTrackedKeyword(other.id, text("moon"), text("US"));
    store->addTrackedKeyword(store->apps()[1].id, text("moon"), text("US"));
    store->addTrackedKeyword(other.id, text("moon"), text("DE"));
    store->addTrackedKeyword(other.id, text("moón"), text("US"));
    EXPECT_EQ(store->trackedKeywords().size(), 4);
}

TEST_F(AddKeyword, SeveralAreSavedAtOnceAndAnnouncedEach)
{
    const AppProfile app = addApp();
    const TrackedKeyword known = addKeyword("tide");
    QList<QUuid> announced;
    QObject::connect(store.get(), &ASOStore::keywordAdded, [&](QUuid id) {
        announced.append(id);
        EXPECT_TRUE(store->trackedKeyword(id).has_value());
    });
    const auto kept =
        store
            ->addTrackedKeywords(
                app.id, {text("moon"), text("TIDE"), text("harbour"), text("Moon")}, text("us"))
            .kept;
    ASSERT_EQ(kept.size(), 3);
    EXPECT_EQ(kept[1], known);
    EXPECT_EQ(announced, (QList<QUuid>{kept[0].id, kept[2].id}));
    EXPECT_EQ(stateOnDisk().trackedKeywords.size(), 3);
}

// Measuring

TEST_F(StoreRefresh, AMeasurementIsStoredSavedAndAnnounced)
{
    const TrackedKeyword keyword = addKeyword("moon phase", "de");
    QList<QUuid> changed;
    QObject::connect(store.get(), &ASOStore::keywordChanged, [&](QUuid id) {
        changed.append(id);
        EXPECT_NE(store->newestSnapshot(id), nullptr);
    });
    const DashboardKeywordRow row = refresh(keyword).value();
    EXPECT_EQ(client->searches, QStringList{text("moon phase/DE/100")});
    EXPECT_EQ(discovery->searches, QStringList());
    EXPECT_EQ(changed, QList<QUuid>{keyword.id});
    EXPECT_FALSE(row.awaitingMetrics);
    EXPECT_EQ(row.position, 2);
    EXPECT_EQ(row.lastUpdate, clock->now());
    EXPECT_EQ(row, store->dashboardRow(keyword));
    const PersistedState state = stateOnDisk();
    ASSERT_EQ(state.snapshots.size(), 1U);
    EXPECT_EQ(state.snapshots[0]->trackedKeywordId, keyword.id);
    EXPECT_EQ(state.snapshots[0]->scoringModelVersion, text("quorvin-opportunity-v1"));
}

TEST_F(StoreRefresh, AYoungSnapshotIsReusedUntilItIsSixHoursOld)
{
    const TrackedKeyword keyword = addKeyword("moon phase");
    measure(keyword);
    clock->advance(6 * hour - minute);
    const QByteArray before = stateBytes();
    EXPECT_EQ(refresh(keyword).value(), store->dashboardRow(keyword));
    EXPECT_EQ(client->searches.size(), 1);
    EXPECT_EQ(stateBytes(), before);
    clock->advance(minute - Seconds(0.001));
    measure(keyword);
    EXPECT_EQ(client->searches.size(), 1);
    clock->advance(Seconds(0.001));
    measure(keyword);
    EXPECT_EQ(client->searches.size(), 2);
}

TEST_F(StoreRefresh, ASnapshotOfAnotherModelIsMeasuredAgainAtOnce)
{
    const TrackedKeyword keyword = addKeyword("moon phase");
    measure(keyword);
    popularity->version = text("popularity-8");
    measure(keyword);
    EXPECT_EQ(client->searches.size(), 2);
    EXPECT_EQ(store->newestSnapshot(keyword.id)->popularityModelVersion, text("popularity-8"));
}

TEST_F(StoreRefresh, ASnapshotOfAnOlderScoringModelOrOfNoneIsMeasuredAgain)
{
    const TrackedKeyword keyword = addKeyword("moon phase");
    int expected = 0;
    for (const std::optional<QString> &version :
         {std::optional(text("quorvin-opportunity-v0")), std::optional<QString>()}) {
        KeywordSnapshot snapshot = snapshotOf(keyword, -Seconds(++expected));
        snapshot.scoringModelVersion = version;
        plant(snapshot);
        measure(keyword);
        EXPECT_EQ(client->searches.size(), expected);
    }
    KeywordSnapshot withoutPopularity = snapshotOf(keyword, Seconds(-10));
    withoutPopularity.popularityModelVersion.reset();
    plant(withoutPopularity);
    measure(keyword);
    EXPECT_EQ(client->searches.size(), 3);
}

TEST_F(StoreRefresh, TwoMeasurementsOfAUtcDayKeepTheSecondOnly)
{
    clock->jumpTo(*parseInternetDateTime(u"2026-11-21T00:01:00Z"));
    const TrackedKeyword keyword = addKeyword("moon phase");
    measure(keyword);
    // Eight in the evening and the next morning in Tokyo; one day in UTC.
    clock->jumpTo(*parseInternetDateTime(u"2026-11-21T23:59:00Z"));
    measure(keyword);
    EXPECT_EQ(measuredAt(keyword), std::vector{clock->now()});
    EXPECT_EQ(stateOnDisk().snapshots.size(), 1U);
}

TEST_F(StoreRefresh, MeasurementsOnEitherSideOfMidnightUtcAreBothKept)
{
    clock->jumpTo(*parseInternetDateTime(u"2026-11-21T23:59:00Z"));
    const TrackedKeyword keyword = addKeyword("moon phase");
    measure(keyword);
    popularity->version = text("another");
    clock->advance(2 * minute);
    measure(keyword);
    EXPECT_EQ(measuredAt(keyword), (std::vector{clock->now() - 2 * minute, clock->now()}));
}

TEST_F(StoreRefresh, TheDayIsUtcWhateverTheUsersTimeZone)
{
    const QByteArray zone = qgetenv("TZ");
    qputenv("TZ", "Pacific/Auckland");
    tzset();
    clock->jumpTo(*parseInternetDateTime(u"2026-11-21T05:00:00Z"));
    const TrackedKeyword keyword = addKeyword("moon phase");
    measure(keyword);
    clock->advance(8 * hour);
    measure(keyword);
    EXPECT_EQ(store->keywordSnapshots(keyword.id).size(), 1U);
    qputenv("TZ", zone);
    tzset();
}

TEST_F(StoreRefresh, ReplacingKeepsTheOrderOfTheOthersAndAppends)
{
    const TrackedKeyword moon = addKeyword("moon");
    const TrackedKeyword tide = addKeyword("tide");
    measure(moon);
    measure(tide);
    popularity->version = text("another");
    measure(moon);
    const auto snapshots = store->snapshots();
    ASSERT_EQ(snapshots.size(), 2U);
    EXPECT_EQ(snapshots[0]->trackedKeywordId, tide.id);
    EXPECT_EQ(snapshots[1]->trackedKeywordId, moon.id);
    stateOnDisk();
}

TEST_F(StoreRefresh, AnUnknownKeywordIsNotFound)
{
    const Outcome<DashboardKeywordRow> outcome(
        store->refreshKeyword(QUuid::createUuid(), view.get_token()));
    try {
        static_cast<void>(outcome.value());
        FAIL() << "no error";
    } catch (const StoreError &error) {
        EXPECT_EQ(error.code(), 404);
        EXPECT_EQ(StoreError::domain, QLatin1String("ASOStore"));
        EXPECT_EQ(error.description(), text("Tracked keyword not found"));
    }
}

TEST_F(StoreRefresh, AKeywordWithoutItsAppIsNotFoundEither)
{
    TrackedKeyword keyword = addKeyword("moon");
    keyword.appId = QUuid::createUuid();
    writeState({store->apps(), {keyword}, {}, {}});
    start();
    const auto outcome = refresh(keyword);
    EXPECT_TRUE(outcome.holds<StoreError>());
    EXPECT_EQ(outcome.failureText(), text("App not found"));
}

TEST_F(StoreRefresh, ThePipelinesFailureIsPassedOnUnchanged)
{
    const TrackedKeyword keyword = addKeyword("moon");
    client->fails = [](const QString &) {
        return true;
    };
    const auto outcome = refresh(keyword);
    EXPECT_TRUE(outcome.holds<FakeFailure>());
    EXPECT_TRUE(store->snapshots().empty());
    EXPECT_EQ(store->historyRefreshError(), std::nullopt);
}

TEST_F(StoreRefresh, AKeywordDeletedWhileItIsMeasuredEndsInSilence)
{
    const TrackedKeyword keyword = addKeyword("moon");
    client->holds = true;
    const auto outcome = refresh(keyword);
    store->removeKeyword(keyword.id);
    client->release();
    EXPECT_TRUE(outcome.isCancelled());
    EXPECT_TRUE(store->snapshots().empty());
    EXPECT_TRUE(stateOnDisk().snapshots.empty());
}

TEST_F(StoreRefresh, AStoppedMeasurementStoresNothing)
{
    const TrackedKeyword keyword = addKeyword("moon");
    client->holds = true;
    const auto outcome = refresh(keyword);
    view.request_stop();
    EXPECT_TRUE(outcome.isCancelled());
    client->release();
    EXPECT_TRUE(store->snapshots().empty());
}

TEST_F(StoreRefresh, TheStoreMayDieWhileAViewWaitsForAMeasurement)
{
    const TrackedKeyword keyword = addKeyword("moon");
    client->holds = true;
    const auto outcome = refresh(keyword);
    stop();
    EXPECT_TRUE(outcome.isCancelled()) << "the measurement belongs to the store";
    client->release();
    start();
    EXPECT_TRUE(store->snapshots().empty());
}

TEST_F(StoreRefresh, AnObserverMayRemoveTheKeywordThatWasJustMeasured)
{
    const TrackedKeyword keyword = addKeyword("moon");
    QObject::connect(store.get(), &ASOStore::keywordChanged,
                     [&](QUuid id) { store->removeKeyword(id); });
    EXPECT_EQ(refresh(keyword).value().position, 2);
    EXPECT_TRUE(stateOnDisk().trackedKeywords.isEmpty());
}

// Rows

TEST_F(DashboardRow, AKeywordWithoutSnapshotsAwaitsItsMetrics)
{
    const TrackedKeyword keyword = addKeyword("moon", "de");
    clock->advance(hour);
    DashboardKeywordRow expected;
    expected.id = keyword.id;
    expected.keyword = text("moon");
    expected.country = text("DE");
    expected.lastUpdate = keyword.createdAt;
    expected.awaitingMetrics = true;
    EXPECT_EQ(store->dashboardRow(keyword), expected);
}

TEST_F(DashboardRow, ShowsTheNewestSnapshotUnderTheKeywordsOwnText)
{
    const TrackedKeyword keyword = addKeyword("moon");
    KeywordSnapshot newest = snapshotOf(keyword, hour);
    newest.keyword = text("an older spelling");
    newest.position = 4;
    newest.competitorIcons = {*Url::fromText(text("https://icons.example/7.png"))};
    newest.opportunity = OpportunityAssessment{61, text("Good Target"), text("Why."), 50.5, false};
    plant(snapshotOf(keyword, 24 * hour));
    plant(newest);
    plant(snapshotOf(keyword, 48 * hour));
    DashboardKeywordRow expected;
    expected.id = keyword.id;
    expected.keyword = text("moon");
    expected.country = text("US");
    expected.lastUpdate = newest.fetchedAt;
    expected.difficulty = 33;
    expected.position = 4;
    expected.appsInRanking = newest.competitorIcons;
    expected.opportunity = newest.opportunity;
    EXPECT_EQ(store->dashboardRow(keyword), expected);
}

TEST_F(DashboardRow, APopularityScoreShowsOnlyFromAnAcceptedSourceAndRange)
{
    struct Case {
        QLatin1String source;
        std::int64_t score;
        std::optional<std::int64_t> popularity;
        std::optional<std::int64_t> visibility;
    };
    namespace source = popularity_source;
    const Case cases[] = {
        {source::appleSearchPopularity, 40, 40, {}},
        {source::calibratedSearchDemand, 5, 5, {}},
        {source::quorvinCalibratedEstimate, 100, 100, {}},
        {source::quorvinCalibratedEstimate, 101, {}, {}},
        {source::quorvinCalibratedEstimate, 4, {}, {}},
        {source::appleAutocompleteEstimate, 40, {}, 40},
        {source::appleAutocompleteEstimate, 4, {}, {}},
        {QLatin1String("hearsay"), 40, {}, {}},
    };
    const TrackedKeyword keyword = addKeyword("moon");
    Seconds age{1000};
    for (const Case &one : cases) {
        KeywordSnapshot snapshot = snapshotOf(keyword, age -= Seconds(1));
        snapshot.popularityScore = 77;
        snapshot.popularityMeasurement =
            PopularityMeasurement{one.score, QString(one.source), {}, 1, 1, 1.0};
        plant(snapshot);
        const DashboardKeywordRow row = store->dashboardRow(keyword);
        EXPECT_EQ(row.popularity, one.popularity) << one.source.data() << one.score;
        EXPECT_EQ(row.autocompleteVisibility, one.visibility) << one.source.data() << one.score;
    }
}

TEST_F(DashboardRow, DifficultyOfNoAppsIsNoDifficulty)
{
    const TrackedKeyword keyword = addKeyword("moon");
    KeywordSnapshot snapshot = snapshotOf(keyword, Seconds(3));
    snapshot.difficultyComponents.sampledAppCount = 0;
    plant(snapshot);
    EXPECT_EQ(store->dashboardRow(keyword).difficulty, std::nullopt);
    snapshot.fetchedAt += Seconds(1);
    snapshot.difficultyComponents.sampledAppCount = 1;
    plant(snapshot);
    EXPECT_EQ(store->dashboardRow(keyword).difficulty, 33);
    snapshot.fetchedAt += Seconds(1);
    snapshot.difficultyComponents.sampledAppCount.reset();
    plant(snapshot);
    EXPECT_EQ(store->dashboardRow(keyword).difficulty, 33);
}

// The history of a keyword

TEST_F(StoreRefresh, SnapshotsOfAKeywordAreOldestFirst)
{
    const TrackedKeyword keyword = addKeyword("moon");
    plant(snapshotOf(keyword, 24 * hour));
    plant(snapshotOf(keyword, 72 * hour));
    plant(snapshotOf(keyword, 48 * hour));
    EXPECT_EQ(measuredAt(keyword), (std::vector{clock->now() - 72 * hour, clock->now() - 48 * hour,
                                                clock->now() - 24 * hour}));
}

TEST_F(StoreRefresh, TheTimelineHasOneObservationASnapshot)
{
    const TrackedKeyword keyword = addKeyword("moon");
    EXPECT_EQ(timelineOf(keyword.id), RankingTimeline({}, keyword.createdAt));
    KeywordSnapshot ranked = snapshotOf(keyword, 24 * hour);
    ranked.position = 12;
    plant(ranked);
    plant(snapshotOf(keyword, Seconds(0)));
    const RankingTimeline timeline = timelineOf(keyword.id);
    ASSERT_EQ(timeline.observations.size(), 2U);
    EXPECT_EQ(timeline.observations[0],
              (RankingTimeline::Observation{ranked.id, ranked.fetchedAt, 12}));
    EXPECT_EQ(timeline.latestMovement(), RankMovement::left());
    EXPECT_EQ(timeline.startedAt, ranked.fetchedAt);
}

TEST_F(StoreRefresh, TheTimelineOfAnUnknownKeywordStartsNow)
{
    EXPECT_EQ(timelineOf(QUuid::createUuid()), RankingTimeline({}, clock->now()));
}

} // namespace
} // namespace veltrix
