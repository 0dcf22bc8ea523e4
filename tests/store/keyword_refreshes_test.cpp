// SPDX-License-Identifier: GPL-3.0-or-later
// What the three ways of measuring share: measurements, progress, order, failures.
#include "store/store_fixture.h"

namespace veltrix
{
namespace
{

constexpr Seconds hour{3600};
const QString historyFailure = text("Some rankings couldn't be updated. Try again later.");
const QString queueFailure =
    text("Keywords are saved. Metrics couldn't be loaded; use Refresh to retry.");

class KeywordRefreshesTest : public StoreTest
{
protected:
    void addThree()
    {
        for (const char *name : {"moon", "tide", "harbour"})
            keywords.append(addKeyword(name));
    }
    KeywordRefreshes &refreshes() { return store->refreshes(); }
    Outcome<HistoryRefresh> refreshStale(std::optional<QUuid> first = {})
    {
        return Outcome<HistoryRefresh>(refreshes().refreshStale(first, view.get_token()));
    }
    Outcome<Done> refreshRows(const QList<TrackedKeyword> &rows, const std::stop_source &whose)
    {
        QList<QUuid> ids;
        for (const TrackedKeyword &row : rows)
            ids.append(row.id);
        const auto ended = [this](const TrackedKeyword &keyword,
                                  const std::optional<QString> &problem) {
            told.append(keyword.keyword + text(": ") + problem.value_or(text("measured")));
        };
        return Outcome<Done>(finished(refreshes().refreshRows(ids, ended, whose.get_token())));
    }
    /// The terms searched since the last call.
    QStringList searched()
    {
        QStringList terms;
        for (const QString &search : std::exchange(client->searches, {}))
            terms.append(search.section(u'/', 0, 0));
        return terms;
    }
    /// "1 of 3, moon", or "idle".
    [[nodiscard]] QString progress() const
    {
        const RefreshProgress &now = store->refreshProgress();
        if (now.isIdle())
            return text("idle");
        return QStringLiteral("%1 of %2, %3")
            .arg(now.done + 1)
            .arg(now.total())
            .arg(now.current ? now.current->keyword : text("-"));
    }
    void failAt(const QStringList &terms)
    {
        client->fails = [terms](const QString &term) {
            return terms.contains(term);
        };
    }

    QList<TrackedKeyword> keywords;
    QStringList told;
};

// One measurement a keyword

TEST_F(KeywordRefreshesTest, QueueHistoryAndRowShareTheMeasurementInFlight)
{
    addThree();
    client->holds = true;
    store->queueKeywordRefreshes({keywords[0]});
    const auto history = refreshStale();
    const auto row = refresh(keywords[0]);
    EXPECT_EQ(searched(), QStringList{text("moon")});
    client->release();
    EXPECT_EQ(row.value().position, 2);
    EXPECT_EQ(searched(), QStringList{text("tide")}) << "the history goes on, the queue is done";
    client->release();
    client->release();
    EXPECT_EQ(history.value().measured, 3);
    EXPECT_EQ(stateOnDisk().snapshots.size(), 3U);
}

TEST_F(KeywordRefreshesTest, AMeasurementEndsOnlyWhenNobodyWaitsForItAnyMore)
{
    addThree();
    client->holds = true;
    std::stop_source other;
    const auto first = refresh(keywords[0]);
    const Outcome<DashboardKeywordRow> second(
        store->refreshKeyword(keywords[0].id, other.get_token()));
    view.request_stop();
    EXPECT_TRUE(first.isCancelled());
    EXPECT_FALSE(second.isDone());
    client->release();
    EXPECT_TRUE(second.hasValue());
    EXPECT_EQ(searched().size(), 1);
}

TEST_F(KeywordRefreshesTest, StoppingTheQueueLeavesTheMeasurementToTheRowThatWaits)
{
    addThree();
    client->holds = true;
    store->queueKeywordRefreshes(keywords);
    const auto row = refresh(keywords[0]);
    store->stopKeywordRefreshes();
    client->release();
    EXPECT_TRUE(row.hasValue());
    EXPECT_EQ(searched(), QStringList{text("moon")});
}

TEST_F(KeywordRefreshesTest, AFailureReachesEveryoneWhoWaitsForIt)
{
    addThree();
    client->holds = true;
    failAt({text("moon")});
    store->queueKeywordRefreshes({keywords[0]});
    const auto row = refresh(keywords[0]);
    client->release();
    EXPECT_EQ(row.failureText(), text("The network is down."));
    EXPECT_EQ(store->historyRefreshError(), queueFailure);
}

TEST_F(KeywordRefreshesTest, TheStoreMayDieWhileAllOfThemWait)
{
    addThree();
    client->holds = true;
    store->queueKeywordRefreshes(keywords);
    const auto history = refreshStale();
    const auto rows = refreshRows(keywords, view);
    const auto row = refresh(keywords[1]);
    stop();
    EXPECT_TRUE(history.isCancelled());
    EXPECT_TRUE(rows.isCancelled());
    EXPECT_TRUE(row.isCancelled());
}

// Rows

TEST_F(KeywordRefreshesTest, DeletingOneOfSeveralRowsDoesNotEndTheRest)
{
    addThree();
    client->holds = true;
    const auto rows = refreshRows(keywords, view);
    store->removeKeyword(keywords[0].id);
    client->release();
    EXPECT_EQ(searched(), (QStringList{text("moon"), text("tide")}));
    client->release();
    client->release();
    EXPECT_TRUE(rows.hasValue());
    EXPECT_EQ(told, (QStringList{text("tide: measured"), text("harbour: measured")}));
    EXPECT_EQ(progress(), text("idle"));
}

TEST_F(KeywordRefreshesTest, ARowDeletedBeforeItsTurnIsLeftOut)
{
    addThree();
    client->holds = true;
    const auto rows = refreshRows(keywords, view);
    store->removeKeyword(keywords[1].id);
    client->release();
    client->release();
    EXPECT_TRUE(rows.hasValue());
    EXPECT_EQ(searched(), (QStringList{text("moon"), text("harbour")}));
}

TEST_F(KeywordRefreshesTest, RowsEndAtTheFirstFailureAndSayWhichItWas)
{
    addThree();
    failAt({text("tide")});
    EXPECT_TRUE(refreshRows(keywords, view).hasValue());
    EXPECT_EQ(told, (QStringList{text("moon: measured"), text("tide: The network is down.")}));
    EXPECT_EQ(searched(), (QStringList{text("moon"), text("tide")}));
}

TEST_F(KeywordRefreshesTest, ARowThatCannotBeMeasuredDoesNotEndTheRest)
{
    addThree();
    PersistedState state{store->apps(), store->trackedKeywords(), {}, {}};
    state.trackedKeywords.prepend(
        {QUuid::createUuid(), QUuid::createUuid(), text("orphan"), text("US"), clock->now()});
    writeState(state);
    start();
    EXPECT_TRUE(refreshRows(store->trackedKeywords().first(2), view).hasValue());
    EXPECT_EQ(told, (QStringList{text("orphan: App not found"), text("moon: measured")}));
}

// Progress

TEST_F(KeywordRefreshesTest, EveryKindOfRefreshTellsKeywordNumberAndCount)
{
    addThree();
    client->holds = true;
    const auto history = refreshStale();
    EXPECT_EQ(progress(), text("1 of 3, moon"));
    client->release();
    EXPECT_EQ(progress(), text("2 of 3, tide"));
    client->release();
    client->release();
    EXPECT_TRUE(history.hasValue());
    EXPECT_EQ(progress(), text("idle"));

    clock->advance(7 * hour);
    std::stop_source rowView;
    const auto rows = refreshRows({keywords[2], keywords[0]}, rowView);
    EXPECT_EQ(progress(), text("1 of 2, harbour"));
    client->release();
    EXPECT_EQ(progress(), text("2 of 2, moon"));
    rowView.request_stop();
    EXPECT_EQ(progress(), text("idle"));
}

TEST_F(KeywordRefreshesTest, AKeywordThatTwoWaysWaitForIsCountedOnce)
{
    addThree();
    client->holds = true;
    const auto history = refreshStale();
    store->queueKeywordRefreshes({keywords[0], keywords[1]});
    EXPECT_EQ(progress(), text("1 of 3, moon"));
    client->release();
    EXPECT_EQ(progress(), text("2 of 3, tide"));
    client->release();
    EXPECT_EQ(progress(), text("3 of 3, harbour"));
    client->release();
    EXPECT_EQ(progress(), text("idle"));
}

TEST_F(KeywordRefreshesTest, StopEndsWhateverIsMeasured)
{
    addThree();
    client->holds = true;
    const auto history = refreshStale();
    store->queueKeywordRefreshes({keywords[1]});
    const auto rows = refreshRows({keywords[2]}, view);
    refreshes().stop();
    EXPECT_TRUE(history.isCancelled());
    EXPECT_TRUE(rows.isCancelled());
    EXPECT_EQ(progress(), text("idle"));
    EXPECT_FALSE(store->isRefreshingHistory());
    EXPECT_EQ(store->historyRefreshError(), std::nullopt);
    client->release();
    EXPECT_TRUE(store->snapshots().empty());
}

TEST_F(KeywordRefreshesTest, AnObserverMayStopEverythingAtAnyStep)
{
    addThree();
    QObject::connect(store.get(), &ASOStore::refreshProgressChanged, [this] {
        if (store->refreshProgress().current)
            refreshes().stop();
    });
    EXPECT_TRUE(refreshStale().isCancelled());
    EXPECT_TRUE(refreshRows(keywords, view).isCancelled());
    EXPECT_EQ(progress(), text("idle"));
    EXPECT_EQ(searched(), QStringList());
}

TEST_F(KeywordRefreshesTest, AnObserverMayDeleteTheKeywordWhoseTurnItIs)
{
    addThree();
    QObject::connect(store.get(), &ASOStore::refreshProgressChanged, [this] {
        if (const auto &current = store->refreshProgress().current;
            current && current->keyword == u"moon")
            store->removeKeyword(current->id);
    });
    store->queueKeywordRefreshes(keywords);
    EXPECT_EQ(store->historyRefreshError(), std::nullopt);
    EXPECT_EQ(searched(), (QStringList{text("tide"), text("harbour")}));
}

// Order and failures

TEST_F(KeywordRefreshesTest, AKeywordWhoseLastAttemptFailedComesLastInTheNextRefresh)
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

TEST_F(KeywordRefreshesTest, TwoThatNeverSucceedDoNotKeepAThirdFromItsTurn)
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

TEST_F(KeywordRefreshesTest, AStopIsNoFailedAttempt)
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

TEST_F(KeywordRefreshesTest, AFailureNamesTheKeywordAndTheReason)
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

TEST_F(KeywordRefreshesTest, WhatCannotBeMeasuredIsSkipped)
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

TEST_F(KeywordRefreshesTest, ARefreshThatSeveralWantGoesOnWhenOneLeaves)
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

TEST_F(KeywordRefreshesTest, TheAppInViewIsMeasuredFirst)
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

TEST_F(KeywordRefreshesTest, NothingStaleIsToldAsNothingMeasured)
{
    addThree();
    EXPECT_EQ(refreshStale().value().measured, 3);
    clock->advance(hour);
    const auto again = refreshStale();
    EXPECT_EQ(again.value().measured, 0);
    EXPECT_EQ(again.value().failure, std::nullopt);
    EXPECT_EQ(again.value().nextStale, clock->now() + 23 * hour);
}

TEST_F(KeywordRefreshesTest, WhatBecomesStaleDuringARefreshIsMeasuredInIt)
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

TEST_F(KeywordRefreshesTest, ASnapshotDatedAheadIsNeitherFreshNorShownNorLost)
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

TEST_F(KeywordRefreshesTest, ASnapshotAheadByFiveMinutesIsFresh)
{
    addThree();
    plant(snapshotOf(keywords[0], Seconds(-300)));
    EXPECT_FALSE(refresh(keywords[0]).value().awaitingMetrics);
    EXPECT_EQ(searched(), QStringList());
}

// Popularity that was out of reach

TEST_F(KeywordRefreshesTest, UnavailablePopularityIsMeasuredAgainAtOnce)
{
    addThree();
    KeywordSnapshot snapshot = snapshotOf(keywords[0], Seconds(60));
    snapshot.popularityStatus =
        text("Popularity unavailable. Rankings were saved; try popularity again later.");
    plant(snapshot);
    EXPECT_EQ(refresh(keywords[0]).value().popularity, 42);
    EXPECT_EQ(searched(), QStringList{text("moon")});
}

TEST_F(KeywordRefreshesTest, AnotherReasonForNoPopularityIsNotMeasuredAgainForSixHours)
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
