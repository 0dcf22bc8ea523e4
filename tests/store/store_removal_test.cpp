// SPDX-License-Identifier: GPL-3.0-or-later
// What is removed can be put back.
#include "store/store_fixture.h"

#include <array>
#include <chrono>

namespace veltrix
{
namespace
{

class StoreRemoval : public StoreTest
{
protected:
    StoreRemoval()
    {
        app = addApp(1, "Tideline");
        other = addApp(2, "Moonlit");
        moon = addKeyword("moon");
        tide = addKeyword("tide", "DE");
        harbour = addKeyword("harbour");
        alien = store->addTrackedKeyword(other.id, text("moon"), text("US"));
        store->addCompetitor(appResult(7, "Rival"), app.id, text("us"));
        store->addCompetitor(appResult(7, "Rival"), other.id, text("us"));
        store->addCompetitor(appResult(8, "Second"), app.id, text("de"));
        for (int day = 0; day < 3; ++day) {
            for (const TrackedKeyword &keyword : {harbour, alien, moon})
                measure(keyword);
            clock->advance(std::chrono::hours(24));
        }
        QObject::connect(store.get(), &ASOStore::appsChanged, [this] { signal("apps"); });
        QObject::connect(store.get(), &ASOStore::competitorsChanged,
                         [this] { signal("competitors"); });
        QObject::connect(store.get(), &ASOStore::keywordAdded, [this](QUuid id) {
            signal(qUtf8Printable(text("+") + store->trackedKeyword(id)->keyword));
        });
        QObject::connect(store.get(), &ASOStore::keywordChanged, [this](QUuid id) {
            signal(qUtf8Printable(text("~") + store->trackedKeyword(id)->keyword));
        });
    }

    /// Signals come before the file is written.
    void signal(const char *what)
    {
        signalled.append(text(what));
        bytesAtSignal = stateBytes();
    }

    /// Measures at another rank than before.
    void measureAt(const TrackedKeyword &keyword, int rank)
    {
        client->results.clear();
        for (int place = 1; place < rank; ++place)
            client->results.append(appResult(100 + place, "Somebody"));
        client->results.append(appResult(1, "Tideline"));
        measure(keyword);
    }

    [[nodiscard]] std::vector<std::optional<std::int64_t>> positions(QUuid keyword) const
    {
        std::vector<std::optional<std::int64_t>> list;
        for (const SharedSnapshot &snapshot : store->keywordSnapshots(keyword)) {
            EXPECT_EQ(snapshot->trackedKeywordId, keyword);
            list.push_back(snapshot->position);
        }
        return list;
    }

    AppProfile app;
    AppProfile other;
    TrackedKeyword moon;
    TrackedKeyword tide;
    TrackedKeyword harbour;
    TrackedKeyword alien;
    QStringList signalled;
    QByteArray bytesAtSignal;
};

TEST_F(StoreRemoval, KeywordsPutBackGiveTheFileByteForByte)
{
    const QByteArray before = stateBytes();
    RemovedTracking removed = store->removeKeywords({harbour.id, moon.id, QUuid::createUuid()});
    EXPECT_EQ(removed.keywords.size(), 2U);
    EXPECT_EQ(removed.snapshots.size(), 6U);
    const QByteArray without = stateBytes();
    EXPECT_NE(without, before);
    EXPECT_EQ(store->restore(std::move(removed)).keywords, (QList{moon, harbour}));
    EXPECT_EQ(stateBytes(), before);
    EXPECT_EQ(signalled, (QStringList{text("+moon"), text("+harbour")}));
    EXPECT_EQ(bytesAtSignal, without);
    start();
    EXPECT_EQ(store->trackedKeywords(), (QList{moon, tide, harbour, alien}));
}

TEST_F(StoreRemoval, AnAppPutBackGivesTheFileByteForByte)
{
    const QByteArray before = stateBytes();
    RemovedTracking removed = store->removeApp(app.id);
    ASSERT_EQ(store->apps().size(), 1);
    ASSERT_EQ(store->competitors().size(), 1);
    signalled.clear();
    EXPECT_EQ(store->restore(std::move(removed)).appIds, QList{app.id});
    EXPECT_EQ(stateBytes(), before);
    EXPECT_EQ(signalled, (QStringList{text("apps"), text("+moon"), text("+tide"), text("+harbour"),
                                      text("competitors")}));
}

TEST_F(StoreRemoval, ACompetitorPutBackGivesTheFileByteForByte)
{
    const QByteArray before = stateBytes();
    RemovedTracking removed = store->removeCompetitor(store->competitors().constFirst().id);
    signalled.clear();
    store->restore(std::move(removed));
    EXPECT_EQ(stateBytes(), before);
    EXPECT_EQ(signalled, QStringList{text("competitors")});
}

TEST_F(StoreRemoval, SeveralRemovalsPutBackNewestFirstGiveTheFileByteForByte)
{
    const QByteArray before = stateBytes();
    std::vector<RemovedTracking> removals;
    removals.push_back(store->removeKeyword(tide.id));
    removals.push_back(store->removeKeywords({moon.id, alien.id}));
    removals.push_back(store->removeCompetitor(store->competitors().constLast().id));
    removals.push_back(store->removeApp(other.id));
    removals.push_back(store->removeApp(app.id));
    EXPECT_TRUE(store->snapshots().empty());
    while (!removals.empty()) {
        store->restore(std::move(removals.back()));
        removals.pop_back();
    }
    EXPECT_EQ(stateBytes(), before);
}

TEST_F(StoreRemoval, WhatWasAddedMeanwhileStays)
{
    RemovedTracking removed = store->removeKeyword(tide.id);
    const TrackedKeyword reef = addKeyword("reef");
    store->restore(std::move(removed));
    EXPECT_EQ(store->trackedKeywords(), (QList{moon, tide, harbour, alien, reef}));
    stateOnDisk();
}

TEST_F(StoreRemoval, AKeywordThatWasAddedAnewIsOneWithTheMeasurementsOfBoth)
{
    RemovedTracking removed = store->removeKeyword(moon.id);
    measureAt(addKeyword("reef"), 2);
    const TrackedKeyword anew = addKeyword("MOON");
    measureAt(anew, 5);
    signalled.clear();
    EXPECT_EQ(store->restore(std::move(removed)).keywords, QList{anew});
    EXPECT_EQ(store->trackedKeyword(moon.id), std::nullopt);
    EXPECT_EQ(positions(anew.id), (std::vector<std::optional<std::int64_t>>{2, 2, 2, 5}));
    EXPECT_EQ(signalled, QStringList{text("~MOON")});
    stateOnDisk();
}

TEST_F(StoreRemoval, OfOneDayTheNewerMeasurementStays)
{
    measureAt(moon, 3);
    clock->advance(std::chrono::minutes(10));
    RemovedTracking removed = store->removeKeyword(moon.id);
    const TrackedKeyword anew = addKeyword("moon");
    measureAt(anew, 4);
    store->restore(std::move(removed));
    EXPECT_EQ(positions(anew.id), (std::vector<std::optional<std::int64_t>>{2, 2, 2, 4}));
    stateOnDisk();
}

TEST_F(StoreRemoval, AnAppThatWasAddedAnewIsOneWithTheKeywordsOfBoth)
{
    RemovedTracking removed = store->removeApp(app.id);
    const AppProfile anew = store->addApp(appResult(1, "Tideline 2"), text("DE"));
    const TrackedKeyword newMoon = store->addTrackedKeyword(anew.id, text("Moon"), text("us"));
    store->addCompetitor(appResult(7, "Rival"), anew.id, text("us"));
    signalled.clear();
    const RestoredTracking restored = store->restore(std::move(removed));
    EXPECT_EQ(restored.appIds, QList{anew.id});
    EXPECT_EQ(store->apps().size(), 2);
    ASSERT_EQ(store->keywordsOfApp(anew.id).size(), 3);
    EXPECT_EQ(store->competitorsOfApp(anew.id).size(), 2);
    EXPECT_EQ(store->keywordSnapshots(newMoon.id).size(), 3U);
    EXPECT_EQ(store->keywordSnapshots(harbour.id).size(), 3U);
    EXPECT_TRUE(store->keywordsWithoutApp().isEmpty());
    EXPECT_EQ(signalled,
              (QStringList{text("+tide"), text("+harbour"), text("~Moon"), text("competitors")}));
    stateOnDisk();
}

TEST_F(StoreRemoval, AKeywordFindsItsAppUnderAnotherId)
{
    RemovedTracking removed = store->removeKeyword(moon.id);
    store->removeApp(app.id);
    const AppProfile anew = addApp(1, "Tideline");
    store->restore(std::move(removed));
    ASSERT_EQ(store->keywordsOfApp(anew.id).size(), 1);
    EXPECT_EQ(store->keywordSnapshots(moon.id).size(), 3U);
}

TEST_F(StoreRemoval, AKeywordWhoseAppIsGoneIsNotPutBack)
{
    RemovedTracking removed = store->removeKeyword(moon.id);
    store->removeApp(app.id);
    const QByteArray before = stateBytes();
    try {
        store->restore(std::move(removed));
        FAIL();
    } catch (const StoreError &error) {
        EXPECT_EQ(error.code(), 404);
        EXPECT_EQ(error.description(), text("App not found"));
    }
    EXPECT_EQ(stateBytes(), before);
}

TEST_F(StoreRemoval, EveryRemovalIsToldOnceWithWhatItTook)
{
    std::vector<std::array<size_t, 4>> told;
    QObject::connect(store.get(), &ASOStore::trackingRemoved, [&](const RemovedTracking &removed) {
        told.push_back({removed.apps.size(), removed.keywords.size(), removed.competitors.size(),
                        removed.snapshots.size()});
    });
    store->removeKeywords({moon.id, tide.id});
    store->removeKeyword(tide.id);
    store->removeCompetitor(store->competitors().constFirst().id);
    store->removeApp(app.id);
    EXPECT_EQ(told, (decltype(told){{0, 2, 0, 3}, {0, 0, 1, 0}, {1, 1, 1, 3}}));
}

TEST_F(StoreRemoval, PuttingBackTwiceIsPuttingBackOnce)
{
    const QByteArray before = stateBytes();
    const RemovedTracking removed = store->removeApp(app.id);
    store->restore(removed);
    store->restore(removed);
    EXPECT_EQ(stateBytes(), before);
}

TEST_F(StoreRemoval, NothingRemovedIsNothingPutBack)
{
    EXPECT_TRUE(store->removeApp(QUuid::createUuid()).isEmpty());
    EXPECT_TRUE(store->restore({}).keywords.isEmpty());
    EXPECT_TRUE(signalled.isEmpty());
}

TEST_F(StoreRemoval, AMeasurementOfAKeywordThatIsPutBackWhileItRunsIsNotLost)
{
    client->holds = true;
    clock->advance(std::chrono::hours(24));
    auto running = refresh(moon);
    store->restore(store->removeKeyword(moon.id));
    client->release();
    EXPECT_EQ(store->keywordSnapshots(moon.id).size(), 4U);
}

} // namespace
} // namespace veltrix
