// SPDX-License-Identifier: GPL-3.0-or-later
// Which keyword is measured when: order, failures, age, clocks that were wrong.
#include "store/keyword_refreshes_fixture.h"

namespace veltrix
{
namespace
{

using KeywordRefreshOrder = KeywordRefreshesTest;

TEST_F(KeywordRefreshOrder, AKeywordWhoseLastAttemptFailedComesLastInTheNextRefresh)
{
    addThree();
    failAt({text("moon")});
    EXPECT_EQ(refreshStale().value().failure->keyword, keywords[0]);
    EXPECT_EQ(searched(), QStringList{text("moon")});
    EXPECT_TRUE(refreshStale().value().failure.has_value());
    EXPECT_EQ(searched(), (QStringList{text("tide"), text("harbour"), text("moon")}));
    client->fails = nullptr;
    clock->advance(25 * hour);
    refreshStale();
    EXPECT_EQ(searched(), (QStringList{text("tide"), text("harbour"), text("moon")}));
    clock->advance(25 * hour);
    refreshStale();
    EXPECT_EQ(searched(), (QStringList{text("moon"), text("tide"), text("harbour")}))
        << "once it succeeded it has its place again";
}

TEST_F(KeywordRefreshOrder, TwoThatNeverSucceedDoNotKeepAThirdFromItsTurn)
{
    addThree();
    failAt({text("moon"), text("tide"), text("harbour")});
    for (int i = 0; i < 3; ++i)
        refreshStale();
    EXPECT_EQ(searched(), (QStringList{text("moon"), text("tide"), text("harbour")}));
    failAt({text("moon"), text("tide")});
    refreshStale();
    refreshStale();
    refreshStale();
    EXPECT_NE(store->newestSnapshot(keywords[2].id), nullptr);
}

TEST_F(KeywordRefreshOrder, AStopIsNoFailedAttempt)
{
    addThree();
    client->holds = true;
    {
        const auto history = refreshStale();
        refreshes().stop();
    }
    client->holds = false;
    searched();
    refreshStale();
    EXPECT_EQ(searched(), (QStringList{text("moon"), text("tide"), text("harbour")}));
}

TEST_F(KeywordRefreshOrder, AFailureNamesTheKeywordAndTheReason)
{
    addThree();
    failAt({text("tide")});
    refreshStale();
    EXPECT_EQ(store->historyRefreshError(), historyFailure);
    ASSERT_TRUE(refreshes().failure());
    EXPECT_EQ(refreshes().failure()->keyword, keywords[1]);
    EXPECT_EQ(refreshes().failure()->reason, text("The network is down."));
    client->fails = nullptr;
    refreshStale();
    EXPECT_EQ(refreshes().failure(), std::nullopt);
    failAt({text("tide")});
    clock->advance(25 * hour);
    store->queueKeywordRefreshes({keywords[1]});
    EXPECT_EQ(store->historyRefreshError(), queueFailure);
    EXPECT_EQ(refreshes().failure()->keyword, keywords[1]);
}

TEST_F(KeywordRefreshOrder, WhatCannotBeMeasuredIsSkipped)
{
    const AppProfile app = addApp();
    PersistedState state{store->apps(), {}, {}, {}};
    const auto add = [&](const QString &keyword, const char *country, QUuid appId) {
        state.trackedKeywords.append(
            {QUuid::createUuid(), appId, keyword, text(country), clock->now()});
    };
    add(QString(101, u'a'), "US", app.id);
    add(text("kettle"), "UK", app.id);
    add(text("orphan"), "US", QUuid::createUuid());
    add(text("tab\there"), "US", app.id);
    add(text("  "), "US", app.id);
    add(text("moon"), "US", app.id);
    writeState(state);
    start();
    const auto history = refreshStale();
    EXPECT_EQ(history.value().failure, std::nullopt);
    EXPECT_EQ(history.value().measured, 1);
    EXPECT_EQ(searched(), QStringList{text("moon")});
    clock->advance(25 * hour);
    store->queueKeywordRefreshes(store->trackedKeywords());
    EXPECT_EQ(searched(), QStringList{text("moon")});
    EXPECT_EQ(store->historyRefreshError(), std::nullopt);
}

// Taking over

TEST_F(KeywordRefreshOrder, ARefreshThatSeveralWantGoesOnWhenOneLeaves)
{
    addThree();
    client->holds = true;
    std::stop_source window;
    const Outcome<HistoryRefresh> automatic(
        refreshes().refreshStale(std::nullopt, window.get_token()));
    const auto byUser = refreshStale();
    window.request_stop();
    EXPECT_TRUE(automatic.isCancelled());
    EXPECT_TRUE(store->isRefreshingHistory());
    for (int i = 0; i < 3; ++i)
        client->release();
    EXPECT_EQ(byUser.value().measured, 3);
    EXPECT_EQ(searched(), (QStringList{text("moon"), text("tide"), text("harbour")}));
}

TEST_F(KeywordRefreshOrder, TheAppInViewIsMeasuredFirst)
{
    addThree();
    const AppProfile other = addApp(2, "Second");
    for (const char *name : {"lamp", "wick"})
        store->addTrackedKeyword(other.id, text(name), text("US"));
    client->holds = true;
    const auto automatic = refreshStale();
    const auto byUser = refreshStale(other.id);
    for (int i = 0; i < 5; ++i)
        client->release();
    EXPECT_EQ(searched(), (QStringList{text("moon"), text("lamp"), text("wick"), text("tide"),
                                       text("harbour")}));
    clock->advance(25 * hour);
    client->holds = false;
    refreshStale(other.id);
    EXPECT_EQ(searched().first(2), (QStringList{text("lamp"), text("wick")}));
}

TEST_F(KeywordRefreshOrder, NothingStaleIsToldAsNothingMeasured)
{
    addThree();
    EXPECT_EQ(refreshStale().value().measured, 3);
    clock->advance(hour);
    const auto again = refreshStale();
    EXPECT_EQ(again.value().measured, 0);
    EXPECT_EQ(again.value().failure, std::nullopt);
    EXPECT_EQ(again.value().nextStale, clock->now() + 23 * hour);
}

TEST_F(KeywordRefreshOrder, WhatBecomesStaleDuringARefreshIsMeasuredInIt)
{
    addThree();
    measure(keywords[0]);
    clock->advance(24 * hour - Seconds(10));
    client->holds = true;
    const auto history = refreshStale();
    clock->advance(Seconds(20));
    for (int i = 0; i < 3; ++i)
        client->release();
    EXPECT_EQ(history.value().measured, 3);
}

// Clocks that were wrong

TEST_F(KeywordRefreshOrder, ASnapshotDatedAheadIsNeitherFreshNorShownNorLost)
{
    addThree();
    KeywordSnapshot yesterday = snapshotOf(keywords[0], 25 * hour);
    yesterday.position = 5;
    plant(yesterday);
    KeywordSnapshot ahead = snapshotOf(keywords[0], -400 * 24 * hour);
    ahead.position = 77;
    plant(ahead);
    EXPECT_EQ(store->dashboardRow(keywords[0]).position, 5);
    EXPECT_EQ(store->newestSnapshot(keywords[0].id)->id, yesterday.id);
    EXPECT_EQ(timelineOf(keywords[0].id).observations.size(), 1U);
    EXPECT_EQ(refreshStale().value().measured, 3);
    EXPECT_EQ(store->dashboardRow(keywords[0]).position, 2);
    EXPECT_EQ(store->latestMovement(keywords[0].id), RankMovement::between(5, 2));
    EXPECT_EQ(stateOnDisk().snapshots.size(), 5U) << "nothing is deleted";
    EXPECT_EQ(store->keywordSnapshots(keywords[0].id).size(), 3U);
}

TEST_F(KeywordRefreshOrder, ASnapshotAheadByFiveMinutesIsFresh)
{
    addThree();
    plant(snapshotOf(keywords[0], Seconds(-300)));
    EXPECT_FALSE(refresh(keywords[0]).value().awaitingMetrics);
    EXPECT_EQ(searched(), QStringList());
}

// Popularity that was out of reach

TEST_F(KeywordRefreshOrder, UnavailablePopularityIsMeasuredAgainAtOnce)
{
    addThree();
    KeywordSnapshot snapshot = snapshotOf(keywords[0], Seconds(60));
    snapshot.popularityStatus =
        text("Popularity unavailable. Rankings were saved; try popularity again later.");
    plant(snapshot);
    EXPECT_EQ(refresh(keywords[0]).value().popularity, 42);
    EXPECT_EQ(searched(), QStringList{text("moon")});
}

TEST_F(KeywordRefreshOrder, AnotherReasonForNoPopularityIsNotMeasuredAgainForSixHours)
{
    addThree();
    KeywordSnapshot snapshot = snapshotOf(keywords[0], Seconds(60));
    snapshot.popularityStatus = text("No rated apps.");
    plant(snapshot);
    refresh(keywords[0]);
    EXPECT_EQ(searched(), QStringList());
}

} // namespace
} // namespace veltrix
