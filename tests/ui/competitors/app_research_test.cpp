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
        const ResearchSelection selection{201, text("US"), world.appId(), text("Foxglove")};
        research = std::make_unique<AppResearch>(*world.store, selection);
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

TEST_F(AppResearchTest, SimilarAppsDoNotWaitForACheckThatFailsOrIsStopped)
{
    appStore.fails = [this](const QString &what) {
        return what == u"foxglove film" && appStore.searches.size() == 1;
    };
    research->start();
    EXPECT_EQ(research->coverage().phase(), KeywordCoverage::Phase::Failed);
    EXPECT_TRUE(research->similar().state().value());
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
