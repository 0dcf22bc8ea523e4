// SPDX-License-Identifier: GPL-3.0-or-later
// Apps, competitors, and what views ask the App Store.
#include "store/store_fixture.h"

namespace veltrix
{
namespace
{

class StoreTracking : public StoreTest
{
protected:
    StoreTracking()
    {
        connectTo(&ASOStore::appsChanged, "apps");
        connectTo(&ASOStore::competitorsChanged, "competitors");
        QObject::connect(store.get(), &ASOStore::keywordRemoved, [this](QUuid id) {
            EXPECT_FALSE(store->trackedKeyword(id).has_value());
            signalled.append(text("keyword"));
        });
    }

    void connectTo(void (ASOStore::*changed)(), const char *name)
    {
        QObject::connect(store.get(), changed, [this, name] { signalled.append(text(name)); });
    }

    Outcome<AppProfile> addById(std::int64_t trackId, const char *country = "us")
    {
        return Outcome<AppProfile>(store->addApp(trackId, text(country), view.get_token()));
    }

    Outcome<Done> updateSeller()
    {
        return Outcome<Done>(finished(
            store->updateCompetitorSeller(store->competitors().constFirst().id, view.get_token())));
    }

    std::optional<SavedResults> savedRankedApps(const DashboardKeywordRow &row)
    {
        return Outcome(store->savedRankedApps(row, {})).value();
    }

    [[nodiscard]] std::optional<QString> seller() const
    {
        return store->competitors().constFirst().sellerName;
    }

    DashboardKeywordRow row() { return store->dashboardRow(addKeyword("moon", "de")); }

    QStringList signalled;
};

QStringList names(const QList<ITunesAppResult> &results)
{
    QStringList list;
    for (const ITunesAppResult &result : results)
        list.append(displayName(result));
    return list;
}

// Apps

TEST_F(StoreTracking, AnAppIsMadeFromASearchResult)
{
    const AppProfile app = store->addApp(appResult(17, "Tideline"), text("de"));
    EXPECT_EQ(app,
              (AppProfile{app.id, 17, text("Tideline"), text("iPhone"),
                          Url::fromText(text("https://icons.example/17.png")), text("DE"), 0}));
    EXPECT_EQ(app.id.version(), QUuid::Random);
    EXPECT_EQ(store->addApp(appResult(18, "Moon"), text("us")).sortOrder, 1);
    EXPECT_EQ(signalled, (QStringList{text("apps"), text("apps")}));
    EXPECT_EQ(stateOnDisk().apps.size(), 2);
    EXPECT_EQ(store->app(app.id), app);
}

TEST_F(StoreTracking, AnAppWithoutNameOrIconIsUnknownApp)
{
    ITunesAppResult bare;
    bare.trackId = 5;
    const AppProfile app = store->addApp(bare, text("US"));
    EXPECT_EQ(app.appName, text("Unknown App"));
    EXPECT_EQ(app.iconURL, std::nullopt);
}

TEST_F(StoreTracking, AResultWithoutTrackIdIsRefused)
{
    try {
        store->addApp(ITunesAppResult(), text("US"));
        FAIL() << "no error";
    } catch (const StoreError &error) {
        EXPECT_EQ(error.code(), 422);
        EXPECT_EQ(error.description(), text("Missing trackId on selected result"));
    }
    EXPECT_TRUE(store->apps().isEmpty());
}

TEST_F(StoreTracking, TheSameAppTwiceIsOneAppWhateverTheStorefront)
{
    const AppProfile app = store->addApp(appResult(17, "Tideline"), text("US"));
    const QByteArray before = stateBytes();
    EXPECT_EQ(store->addApp(appResult(17, "Gezeiten"), text("DE")), app);
    discovery->found = appResult(17, "Marea");
    EXPECT_EQ(addById(17, "IT").value(), app);
    EXPECT_EQ(store->apps().size(), 1);
    EXPECT_EQ(stateBytes(), before);
    EXPECT_EQ(signalled, QStringList{text("apps")});
}

TEST_F(StoreTracking, AnAppIsLookedUpByItsId)
{
    discovery->found = appResult(17, "Tideline");
    const AppProfile app = addById(17).value();
    EXPECT_EQ(discovery->lookups, QStringList{text("17/us")});
    EXPECT_EQ(app.appName, text("Tideline"));
    EXPECT_EQ(app.country, text("US"));
    EXPECT_EQ(stateOnDisk().apps, QList<AppProfile>{app});
}

TEST_F(StoreTracking, AnIdThatIsNotFoundIsAnError)
{
    const auto outcome = addById(17);
    ASSERT_TRUE(outcome.holds<StoreError>());
    EXPECT_EQ(outcome.failureText(), text("App not found on iTunes Lookup"));
    try {
        static_cast<void>(outcome.value());
    } catch (const StoreError &error) {
        EXPECT_EQ(error.code(), 404);
    }
    discovery->fails = [](const QString &) {
        return true;
    };
    EXPECT_TRUE(addById(17).holds<FakeFailure>());
}

TEST_F(StoreTracking, AnAddingThatIsStoppedOrOutlivesTheStoreAddsNothing)
{
    discovery->holds = true;
    discovery->found = appResult(17, "Tideline");
    const auto stopped = addById(17);
    view.request_stop();
    EXPECT_TRUE(stopped.isCancelled());
    view = std::stop_source();
    const auto orphan = addById(17);
    stop();
    discovery->release();
    EXPECT_TRUE(orphan.isCancelled());
    EXPECT_FALSE(QFile::exists(statePath()));
}

TEST_F(StoreTracking, RemovingAnAppTakesWhatBelongsToItAndNothingElse)
{
    const AppProfile first = addApp(1, "First");
    const AppProfile second = addApp(2, "Second");
    const TrackedKeyword moon = addKeyword("moon");
    const TrackedKeyword tide = store->addTrackedKeyword(second.id, text("tide"), text("US"));
    measure(moon);
    measure(tide);
    store->addCompetitor(appResult(7, "Rival"), first.id, text("US"));
    store->addCompetitor(appResult(7, "Rival"), second.id, text("US"));
    signalled.clear();
    store->removeApp(first.id);
    const PersistedState state = stateOnDisk();
    ASSERT_EQ(state.apps.size(), 1);
    EXPECT_EQ(state.apps[0].id, second.id);
    EXPECT_EQ(state.apps[0].sortOrder, 0);
    EXPECT_EQ(state.trackedKeywords, QList<TrackedKeyword>{tide});
    ASSERT_EQ(state.snapshots.size(), 1U);
    EXPECT_EQ(state.snapshots[0]->trackedKeywordId, tide.id);
    ASSERT_EQ(state.competitors.size(), 1);
    EXPECT_EQ(state.competitors[0].appId, second.id);
    EXPECT_EQ(signalled, (QStringList{text("keyword"), text("apps"), text("competitors")}));
}

TEST_F(StoreTracking, RemovingWhatIsNotThereChangesNothing)
{
    addApp();
    addKeyword("moon");
    const QByteArray before = stateBytes();
    QFile::remove(statePath());
    signalled.clear();
    store->removeApp(QUuid::createUuid());
    store->removeKeyword(QUuid::createUuid());
    store->removeKeywords({});
    store->removeCompetitor(QUuid::createUuid());
    EXPECT_EQ(signalled, QStringList());
    EXPECT_FALSE(QFile::exists(statePath()));
    EXPECT_EQ(store->trackedKeywords().size(), 1);
}

TEST_F(StoreTracking, RemovingKeywordsTakesTheirSnapshots)
{
    const TrackedKeyword moon = addKeyword("moon");
    const TrackedKeyword tide = addKeyword("tide");
    const TrackedKeyword harbour = addKeyword("harbour");
    for (const TrackedKeyword &keyword : {moon, tide, harbour})
        measure(keyword);
    signalled.clear();
    store->removeKeywords({moon.id, harbour.id, QUuid::createUuid()});
    EXPECT_EQ(signalled, (QStringList{text("keyword"), text("keyword")}));
    EXPECT_EQ(store->keywordsOfApp(moon.appId), QList<TrackedKeyword>{tide});
    EXPECT_EQ(stateOnDisk().snapshots.size(), 1U);
}

// Competitors

TEST_F(StoreTracking, ACompetitorIsMadeFromASearchResult)
{
    const AppProfile app = addApp(1, "Own");
    ITunesAppResult rival = appResult(7, "Harbour Clock");
    rival.sellerName = text(" \n Quayside Ltd\t\u2028");
    store->addCompetitor(rival, app.id, text("de"));
    const auto found = store->competitorsOfApp(app.id);
    ASSERT_EQ(found.size(), 1);
    EXPECT_EQ(found[0], (TrackedCompetitor{found[0].id, app.id, 7, text("Harbour Clock"),
                                           Url::fromText(text("https://icons.example/7.png")),
                                           text("DE"), text("Quayside Ltd")}));
    EXPECT_EQ(signalled, (QStringList{text("apps"), text("competitors")}));
    EXPECT_EQ(stateOnDisk().competitors, found);
}

TEST_F(StoreTracking, ACompetitorWithoutNameOrSellerHasDefaults)
{
    ITunesAppResult bare;
    bare.trackId = 5;
    bare.sellerName = text("  \n");
    store->addCompetitor(bare, addApp().id, text("US"));
    EXPECT_EQ(store->competitors()[0].name, text("Unknown App"));
    EXPECT_EQ(seller(), std::nullopt);
}

TEST_F(StoreTracking, WhatCannotBeACompetitorIsIgnored)
{
    const AppProfile app = addApp(1, "Own");
    store->addCompetitor(appResult(7, "Rival"), app.id, text("US"));
    const QByteArray before = stateBytes();
    signalled.clear();
    store->addCompetitor(ITunesAppResult(), app.id, text("US"));
    store->addCompetitor(appResult(8, "Other"), QUuid::createUuid(), text("US"));
    store->addCompetitor(appResult(1, "Own"), app.id, text("US"));
    store->addCompetitor(appResult(7, "Rival"), app.id, text("us"));
    EXPECT_EQ(store->competitors().size(), 1);
    EXPECT_EQ(signalled, QStringList());
    EXPECT_EQ(stateBytes(), before);
}

TEST_F(StoreTracking, TheSameRivalMayCompeteElsewhere)
{
    const AppProfile first = addApp(1, "First");
    const AppProfile second = addApp(2, "Second");
    store->addCompetitor(appResult(7, "Rival"), first.id, text("US"));
    store->addCompetitor(appResult(7, "Rival"), first.id, text("DE"));
    store->addCompetitor(appResult(7, "Rival"), second.id, text("US"));
    store->addCompetitor(appResult(1, "First"), second.id, text("US"));
    EXPECT_EQ(store->competitors().size(), 4);
}

TEST_F(StoreTracking, TheSellerIsLookedUpInTheCompetitorsStorefront)
{
    store->addCompetitor(appResult(7, "Rival"), addApp().id, text("de"));
    discovery->found = appResult(7, "Rival");
    discovery->found->sellerName = text(" Quayside Ltd ");
    EXPECT_TRUE(updateSeller().hasValue());
    EXPECT_EQ(discovery->lookups, QStringList{text("7/DE")});
    EXPECT_EQ(seller(), text("Quayside Ltd"));
    stateOnDisk();
    discovery->found->sellerName.reset();
    EXPECT_TRUE(updateSeller().hasValue());
    EXPECT_EQ(seller(), std::nullopt);
    stateOnDisk();
}

TEST_F(StoreTracking, AnEmptyLookupLeavesTheSeller)
{
    ITunesAppResult rival = appResult(7, "Rival");
    rival.sellerName = text("Quayside Ltd");
    store->addCompetitor(rival, addApp().id, text("de"));
    EXPECT_TRUE(updateSeller().hasValue());
    EXPECT_EQ(seller(), text("Quayside Ltd"));
    discovery->fails = [](const QString &) {
        return true;
    };
    EXPECT_TRUE(updateSeller().holds<FakeFailure>());
}

TEST_F(StoreTracking, ACompetitorRemovedDuringTheLookupStaysRemoved)
{
    store->addCompetitor(appResult(7, "Rival"), addApp().id, text("de"));
    discovery->found = appResult(7, "Rival");
    discovery->holds = true;
    const auto outcome = updateSeller();
    store->removeCompetitor(store->competitors()[0].id);
    discovery->release();
    EXPECT_TRUE(outcome.hasValue());
    EXPECT_TRUE(stateOnDisk().competitors.isEmpty());
    EXPECT_TRUE(Outcome<Done>(
                    finished(store->updateCompetitorSeller(QUuid::createUuid(), view.get_token())))
                    .hasValue());
}

TEST_F(StoreTracking, TheStoreMayDieDuringTheLookupOfASeller)
{
    store->addCompetitor(appResult(7, "Rival"), addApp().id, text("de"));
    discovery->holds = true;
    discovery->found = appResult(7, "Rival");
    const auto outcome = updateSeller();
    stop();
    discovery->release();
    EXPECT_TRUE(outcome.isCancelled());
}

// The App Store

TEST_F(StoreTracking, RankedAppsAreTheSavedOnesForHalfAnHour)
{
    const DashboardKeywordRow moon = row();
    discovery->results = {appResult(3, "Fresh")};
    rankedApps->keyword = text("moon");
    rankedApps->country = text("DE");
    rankedApps->saved = {clock->now() - Seconds(29 * 60), {appResult(4, "Saved")}};
    const auto ranked = [&] {
        return names(
            Outcome<QList<ITunesAppResult>>(store->rankedApps(moon, view.get_token())).value());
    };
    EXPECT_EQ(ranked(), QStringList{text("Saved")});
    EXPECT_EQ(discovery->searches, QStringList());
    clock->advance(Seconds(60));
    EXPECT_EQ(ranked(), QStringList{text("Fresh")});
    EXPECT_EQ(discovery->searches, QStringList{text("moon/DE/100")});
    // The search through the other client never replaces what the research saved.
    EXPECT_EQ(savedRankedApps(moon)->results, rankedApps->saved.results);
    EXPECT_EQ(client->searches, QStringList());
}

TEST_F(StoreTracking, RankedAppsOfAnUnsavedKeywordAreSearched)
{
    discovery->results = {appResult(3, "Fresh"), appResult(4, "Second")};
    EXPECT_EQ(savedRankedApps(row()), std::nullopt);
    EXPECT_EQ(
        names(Outcome<QList<ITunesAppResult>>(store->rankedApps(row(), view.get_token())).value()),
        (QStringList{text("Fresh"), text("Second")}));
    discovery->fails = [](const QString &) {
        return true;
    };
    EXPECT_TRUE(Outcome<QList<ITunesAppResult>>(store->rankedApps(row(), view.get_token()))
                    .holds<FakeFailure>());
}

TEST_F(StoreTracking, WithoutACacheThereAreNoSavedRankedApps)
{
    rankedApps = nullptr;
    start();
    EXPECT_EQ(savedRankedApps(row()), std::nullopt);
}

TEST_F(StoreTracking, AppSearchAndDetailsGoThroughTheDiscoveryClient)
{
    discovery->results = {appResult(3, "Found")};
    discovery->found = appResult(3, "Detailed");
    const Outcome<QList<ITunesAppResult>> found(
        store->searchApps(text("moon"), text("DE"), 25, view.get_token()));
    EXPECT_EQ(names(found.value()), QStringList{text("Found")});
    const Outcome<ITunesAppResult> details(store->appDetails(3, text("FR"), view.get_token()));
    EXPECT_EQ(displayName(details.value()), text("Detailed"));
    EXPECT_EQ(discovery->searches, QStringList{text("moon/DE/25")});
    EXPECT_EQ(discovery->lookups, QStringList{text("3/FR")});
    EXPECT_EQ(client->searches, QStringList());
}

TEST_F(StoreTracking, DetailsOfAnAppThatIsNotThereAreAnError)
{
    const Outcome<ITunesAppResult> details(store->appDetails(3, text("FR"), view.get_token()));
    EXPECT_EQ(details.failureText(), text("App unavailable in this storefront."));
    try {
        static_cast<void>(details.value());
        FAIL() << "no error";
    } catch (const StoreError &error) {
        EXPECT_EQ(error.code(), 404);
    }
}

TEST_F(StoreTracking, KeywordSearchesGoThroughTheClientThatMeasures)
{
    const Outcome<QList<ITunesAppResult>> found(
        store->searchKeyword(text("moon"), text("DE"), 100, view.get_token()));
    EXPECT_EQ(found.value(), client->results);
    EXPECT_EQ(client->searches, QStringList{text("moon/DE/100")});
    EXPECT_EQ(discovery->searches, QStringList());
}

TEST_F(StoreTracking, WhatViewsWaitForEndsWithTheStore)
{
    discovery->holds = true;
    client->holds = true;
    const DashboardKeywordRow moon = row();
    const Outcome found(store->searchApps(text("moon"), text("DE"), 25, view.get_token()));
    const Outcome ranked(store->rankedApps(moon, view.get_token()));
    const Outcome details(store->appDetails(3, text("DE"), view.get_token()));
    const Outcome keyword(store->searchKeyword(text("moon"), text("DE"), 100, view.get_token()));
    stop();
    EXPECT_TRUE(found.isCancelled());
    EXPECT_TRUE(ranked.isCancelled());
    EXPECT_TRUE(details.isCancelled());
    EXPECT_TRUE(keyword.isCancelled());
}

} // namespace
} // namespace veltrix
