// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/competitors/app_research.h"

#include "ui/support/research_world.h"

namespace veltrix
{
namespace
{

class AppResearchTest : public testing::Test
{
protected:
    AppResearchTest()
    {
        const ResearchSelection selection{201, text("US"), text("Foxglove")};
        research = std::make_unique<AppResearch>(*world.store, selection, world.appId());
    }
    /// Holds back what is asked once that many searches were made.
    void holdAfter(qsizetype searches)
    {
        appStore.fails = [this, searches](const QString &) {
            appStore.holds = appStore.searches.size() > searches;
            return false;
        };
    }

    ResearchWorld world;
    FakeAppStore &appStore = *world.appStore;
    std::unique_ptr<AppResearch> research;
};

TEST_F(AppResearchTest, LoadsTheAppAndTakesItsName)
{
    research->start();
    ASSERT_TRUE(research->app().value());
    EXPECT_EQ(*research->app().value(), foxglove());
    EXPECT_EQ(research->selection().name, text("Foxglove Film Camera"));
}

TEST_F(AppResearchTest, NothingIsCheckedBeforeTheAppIsThere)
{
    appStore.holds = true;
    research->start();
    EXPECT_TRUE(appStore.searches.isEmpty());
    EXPECT_EQ(research->coverage().phase(), KeywordCoverage::Phase::Idle);
    EXPECT_TRUE(research->similar().state().is<NotAsked>());
}

TEST_F(AppResearchTest, AFailureIsRetried)
{
    appStore.fails = [](const QString &) {
        return true;
    };
    research->start();
    EXPECT_EQ(research->app().error(), text("The network is down."));
    appStore.fails = nullptr;
    research->retry();
    EXPECT_EQ(research->coverage().phase(), KeywordCoverage::Phase::Finished);
}

TEST_F(AppResearchTest, SimilarAppsWaitForTheFirstCheck)
{
    holdAfter(0);
    research->start();
    EXPECT_EQ(appStore.searches, QStringList{text("foxglove film/US/100")});
    EXPECT_TRUE(research->similar().state().is<NotAsked>());
    appStore.release();
    EXPECT_EQ(appStore.searches.mid(0, 2),
              (QStringList{text("foxglove film/US/100"), text("foxglove film/US/25")}));
}

TEST_F(AppResearchTest, SimilarAppsDoNotWaitForAStoppedCheck)
{
    holdAfter(0);
    research->start();
    appStore.holds = false;
    appStore.fails = nullptr;
    research->coverage().stop();
    EXPECT_TRUE(research->similar().state().value());
}

TEST_F(AppResearchTest, WhatFailsForTheFirstCheckIsNotAskedForAgainForSimilarApps)
{
    appStore.fails = [](const QString &what) {
        return what == u"foxglove film";
    };
    research->start();
    EXPECT_EQ(research->coverage().phase(), KeywordCoverage::Phase::Failed);
    EXPECT_EQ(appStore.searches.size(), 1);
    EXPECT_TRUE(research->isSimilarFailureTold());
    appStore.fails = nullptr;
    research->retryChecks();
    EXPECT_EQ(research->coverage().phase(), KeywordCoverage::Phase::Finished);
    EXPECT_TRUE(research->similar().state().value());
    EXPECT_FALSE(research->isSimilarFailureTold());
}

TEST_F(AppResearchTest, ANetworkThatGoesIsToldOnceAndRetriedForBoth)
{
    appStore.fails = [this](const QString &) {
        return appStore.searches.size() > 1;
    };
    research->start();
    EXPECT_EQ(research->coverage().checks().size(), 1);
    EXPECT_EQ(research->similar().state().error(), research->coverage().error());
    EXPECT_TRUE(research->isSimilarFailureTold());
    appStore.fails = nullptr;
    research->retryChecks();
    EXPECT_EQ(research->coverage().phase(), KeywordCoverage::Phase::Finished);
    EXPECT_TRUE(research->similar().state().value());
}

TEST_F(AppResearchTest, ASimilarSearchThatFailsOnItsOwnIsNotRetriedBehindTheUsersBack)
{
    int calls = 0;
    appStore.fails = [&calls](const QString &what) {
        return what == u"foxglove film" && ++calls == 2;
    };
    research->start();
    EXPECT_EQ(research->coverage().phase(), KeywordCoverage::Phase::Finished);
    EXPECT_EQ(research->similar().state().error(), text("The network is down."));
    EXPECT_FALSE(research->isSimilarFailureTold());
}

TEST_F(AppResearchTest, AnotherOwnAppChangesItsRanksWithoutASearch)
{
    ITunesAppResult second = rankedApps(1).constFirst();
    second.trackId = world.store->apps()[1].trackId;
    appStore.resultsOf.insert(text("foxglove film"), {foxglove(), rankedApps(1).first(), second});
    research->start();
    const QStringList searches = appStore.searches;
    EXPECT_EQ(research->coverage().checks().constFirst().ownPosition, std::nullopt);
    research->setApp(world.store->apps()[1].id);
    EXPECT_EQ(research->coverage().checks().constFirst().ownPosition, 3);
    EXPECT_EQ(research->coverage().checks().constFirst().position, 1);
    research->setApp(std::nullopt);
    EXPECT_EQ(research->coverage().checks().constFirst().ownPosition, std::nullopt);
    EXPECT_EQ(appStore.searches, searches);
}

TEST_F(AppResearchTest, WhilePausedNothingNewIsSearchedAndNothingIsLost)
{
    holdAfter(1);
    research->start();
    ASSERT_EQ(appStore.inFlight, 2) << "the second check, and similar apps";
    research->pause();
    appStore.release();
    EXPECT_EQ(research->coverage().checks().size(), 2) << "what was under way is not thrown away";
    EXPECT_EQ(appStore.inFlight, 0);
    const qsizetype before = appStore.searches.size();
    appStore.fails = nullptr;
    appStore.holds = false;
    research->unpause();
    EXPECT_EQ(research->coverage().phase(), KeywordCoverage::Phase::Finished);
    EXPECT_EQ(appStore.searches.size(), before + 8);
    EXPECT_EQ(QSet(appStore.searches.begin(), appStore.searches.end()).size(), 11)
        << "ten phrases and the similar apps, none twice";
}

TEST_F(AppResearchTest, AnAppThatArrivesWhilePausedIsCheckedAfterwards)
{
    appStore.holds = true;
    research->start();
    research->pause();
    appStore.holds = false;
    appStore.release();
    EXPECT_TRUE(research->app().value());
    EXPECT_TRUE(appStore.searches.isEmpty());
    research->unpause();
    EXPECT_EQ(research->coverage().phase(), KeywordCoverage::Phase::Finished);
    EXPECT_TRUE(research->similar().state().value());
}

TEST_F(AppResearchTest, WhatTheUserStoppedStaysStoppedAfterAPause)
{
    holdAfter(2);
    research->start();
    research->coverage().stop();
    research->pause();
    appStore.holds = false;
    appStore.fails = nullptr;
    research->unpause();
    EXPECT_EQ(research->coverage().phase(), KeywordCoverage::Phase::Stopped);
}

TEST_F(AppResearchTest, AnAppWithoutPhrasesStillGetsSimilarApps)
{
    ITunesAppResult bare;
    bare.trackId = 201;
    bare.trackName = text("42");
    bare.primaryGenreName = text("TV");
    appStore.apps.insert(201, bare);
    research->start();
    EXPECT_EQ(appStore.searches, QStringList{text("TV/US/25")});
}

TEST_F(AppResearchTest, TheUsersOwnAppIsCheckedAlong)
{
    ITunesAppResult own = rankedApps(1).constFirst();
    own.trackId = world.store->apps().first().trackId;
    appStore.resultsOf.insert(text("foxglove film"), {foxglove(), own});
    research->start();
    EXPECT_EQ(research->coverage().checks().constFirst().ownPosition, 2);
}

TEST_F(AppResearchTest, LeavingStopsEverything)
{
    holdAfter(2);
    research->start();
    EXPECT_GT(appStore.inFlight, 0);
    research.reset();
    EXPECT_EQ(appStore.inFlight, 0);
    appStore.release();
}

} // namespace
} // namespace veltrix
