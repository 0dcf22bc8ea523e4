// SPDX-License-Identifier: GPL-3.0-or-later
// What the three ways of measuring share: measurements, rows, progress.
#include "store/keyword_refreshes_fixture.h"

namespace veltrix
{
namespace
{

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

} // namespace
} // namespace veltrix
