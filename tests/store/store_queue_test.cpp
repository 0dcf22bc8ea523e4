// SPDX-License-Identifier: GPL-3.0-or-later
// The background queue of keyword refreshes.
#include "store/store_fixture.h"

namespace veltrix
{
namespace
{

const QString queueFailure =
    text("Keywords are saved. Metrics couldn't be loaded; use Refresh to retry.");

class StoreQueue : public StoreTest
{
protected:
    StoreQueue()
    {
        client->holds = true;
        for (const char *name : {"moon", "tide", "harbour"})
            keywords.append(addKeyword(name));
        watch();
    }

    void watch()
    {
        QObject::connect(store.get(), &ASOStore::refreshProgressChanged, [this] {
            const QString state = progress();
            if (states.isEmpty() || states.constLast() != state)
                states.append(state);
        });
        QObject::connect(store.get(), &ASOStore::historyRefreshErrorChanged, [this] {
            states.append(store->historyRefreshError().value_or(QString()));
        });
    }

    /// "1 done, moon, 2 waiting", or "idle".
    [[nodiscard]] QString progress() const
    {
        const RefreshProgress now = store->refreshProgress();
        if (now.isIdle() && now.done == 0)
            return text("idle");
        return QStringLiteral("%1 done, %2, %3 waiting")
            .arg(now.done)
            .arg(now.current ? now.current->keyword : text("-"))
            .arg(now.waiting);
    }

    QList<TrackedKeyword> keywords;
    QStringList states;
};

TEST_F(StoreQueue, GoesFromIdleThroughQueuedAndMeasuringBackToIdle)
{
    EXPECT_EQ(progress(), text("idle"));
    store->queueKeywordRefreshes(keywords);
    EXPECT_EQ(states, (QStringList{text("0 done, -, 3 waiting"), text("0 done, moon, 2 waiting")}));
    EXPECT_EQ(store->refreshProgress().total(), 3);
    states.clear();
    client->release();
    EXPECT_EQ(states, (QStringList{text("1 done, -, 2 waiting"), text("1 done, tide, 1 waiting")}));
    states.clear();
    client->release();
    client->release();
    EXPECT_EQ(states, (QStringList{text("2 done, -, 1 waiting"), text("2 done, harbour, 0 waiting"),
                                   text("idle")}));
    EXPECT_EQ(client->searches,
              (QStringList{text("moon/US/100"), text("tide/US/100"), text("harbour/US/100")}));
    EXPECT_EQ(stateOnDisk().snapshots.size(), 3U);
    EXPECT_EQ(store->historyRefreshError(), std::nullopt);
}

TEST_F(StoreQueue, NeverMeasuresTwoAtOnceAndNoneTwice)
{
    store->queueKeywordRefreshes({keywords[0], keywords[1], keywords[0]});
    store->queueKeywordRefreshes(keywords);
    EXPECT_EQ(progress(), text("0 done, moon, 2 waiting"));
    EXPECT_EQ(client->searches.size(), 1);
    for (int i = 0; i < 3; ++i)
        client->release();
    EXPECT_EQ(client->searches.size(), 3);
    EXPECT_EQ(progress(), text("idle"));
}

TEST_F(StoreQueue, AYoungSnapshotCountsAsDoneWithoutASearch)
{
    client->holds = false;
    measure(keywords[0]);
    client->searches.clear();
    store->queueKeywordRefreshes({keywords[0]});
    EXPECT_EQ(client->searches, QStringList());
    EXPECT_EQ(progress(), text("idle"));
}

TEST_F(StoreQueue, AKeywordDeletedWhileQueuedIsSkipped)
{
    store->queueKeywordRefreshes(keywords);
    store->removeKeyword(keywords[1].id);
    client->release();
    EXPECT_EQ(progress(), text("1 done, harbour, 0 waiting"));
    client->release();
    EXPECT_EQ(client->searches, (QStringList{text("moon/US/100"), text("harbour/US/100")}));
    EXPECT_EQ(progress(), text("idle"));
}

TEST_F(StoreQueue, AKeywordDeletedWhileMeasuredIsNoFailure)
{
    store->queueKeywordRefreshes(keywords);
    store->removeKeyword(keywords[0].id);
    client->release();
    EXPECT_EQ(progress(), text("0 done, tide, 1 waiting"));
    EXPECT_EQ(store->historyRefreshError(), std::nullopt);
}

TEST_F(StoreQueue, AFailureOfAKeywordDeletedMeanwhileIsIgnored)
{
    client->fails = [](const QString &term) {
        return term == u"moon";
    };
    store->queueKeywordRefreshes(keywords);
    store->removeKeyword(keywords[0].id);
    client->release();
    EXPECT_EQ(progress(), text("0 done, tide, 1 waiting"));
    EXPECT_EQ(store->historyRefreshError(), std::nullopt);
}

TEST_F(StoreQueue, TheFirstFailureDropsTheQueueAndSaysSo)
{
    client->fails = [](const QString &term) {
        return term == u"tide";
    };
    store->queueKeywordRefreshes(keywords);
    client->release();
    states.clear();
    client->release();
    EXPECT_EQ(states, (QStringList{text("idle"), queueFailure}));
    EXPECT_EQ(store->historyRefreshError(), queueFailure);
    EXPECT_EQ(client->searches.size(), 2);
    EXPECT_EQ(stateOnDisk().trackedKeywords.size(), 3);
    EXPECT_EQ(stateOnDisk().snapshots.size(), 1U);
}

TEST_F(StoreQueue, WorksAgainAfterAFailureAndKeepsTheErrorUntilAHistoryRefresh)
{
    client->fails = [](const QString &) {
        return true;
    };
    store->queueKeywordRefreshes({keywords[0]});
    client->release();
    client->fails = nullptr;
    store->queueKeywordRefreshes({keywords[1]});
    client->release();
    EXPECT_EQ(stateOnDisk().snapshots.size(), 1U);
    EXPECT_EQ(store->historyRefreshError(), queueFailure);
    client->holds = false;
    const Outcome<Done> history(finished(store->refreshHistory(view.get_token())));
    EXPECT_TRUE(history.hasValue());
    EXPECT_EQ(store->historyRefreshError(), std::nullopt);
}

TEST_F(StoreQueue, KeywordsQueuedWhileItRunsAreReached)
{
    store->queueKeywordRefreshes({keywords[0]});
    store->queueKeywordRefreshes({keywords[2]});
    client->release();
    EXPECT_EQ(progress(), text("1 done, harbour, 0 waiting"));
    client->release();
    EXPECT_EQ(progress(), text("idle"));
}

TEST_F(StoreQueue, StoppingDropsTheQueueAndKeepsTheKeywords)
{
    store->queueKeywordRefreshes(keywords);
    client->release();
    states.clear();
    store->stopKeywordRefreshes();
    EXPECT_EQ(states, QStringList{text("idle")});
    client->release();
    EXPECT_EQ(client->searches.size(), 2);
    EXPECT_EQ(stateOnDisk().trackedKeywords.size(), 3);
    EXPECT_EQ(stateOnDisk().snapshots.size(), 1U);
    EXPECT_EQ(store->historyRefreshError(), std::nullopt);
    store->stopKeywordRefreshes();
    EXPECT_EQ(states, QStringList{text("idle")});
}

TEST_F(StoreQueue, CanBeFilledAgainAfterAStop)
{
    store->queueKeywordRefreshes(keywords);
    store->stopKeywordRefreshes();
    store->queueKeywordRefreshes({keywords[2]});
    EXPECT_EQ(progress(), text("0 done, harbour, 0 waiting"));
    client->release();
    EXPECT_EQ(progress(), text("idle"));
    EXPECT_EQ(stateOnDisk().snapshots.size(), 1U);
}

TEST_F(StoreQueue, AnObserverMayStopItInTheMiddleOfAStep)
{
    QObject::connect(store.get(), &ASOStore::keywordChanged, [this] {
        store->stopKeywordRefreshes();
        store->queueKeywordRefreshes({keywords[2]});
    });
    store->queueKeywordRefreshes({keywords[0], keywords[1]});
    client->release();
    // The measurement is stored; the old queue is gone; the new one is at work.
    EXPECT_EQ(stateOnDisk().snapshots.size(), 1U);
    EXPECT_EQ(progress(), text("0 done, harbour, 0 waiting"));
    EXPECT_EQ(client->searches, (QStringList{text("moon/US/100"), text("harbour/US/100")}));
}

TEST_F(StoreQueue, AnObserverOfTheProgressMayStopIt)
{
    QObject::connect(store.get(), &ASOStore::refreshProgressChanged, [this] {
        if (store->refreshProgress().current)
            store->stopKeywordRefreshes();
    });
    store->queueKeywordRefreshes(keywords);
    EXPECT_EQ(progress(), text("idle"));
    EXPECT_EQ(client->searches, QStringList());
}

TEST_F(StoreQueue, TheStoreMayDieWhileTheWorkerWaits)
{
    store->queueKeywordRefreshes(keywords);
    stop();
    client->release();
    EXPECT_EQ(client->searches.size(), 1);
    start();
    EXPECT_EQ(store->trackedKeywords().size(), 3);
    EXPECT_TRUE(store->snapshots().empty());
}

} // namespace
} // namespace veltrix
