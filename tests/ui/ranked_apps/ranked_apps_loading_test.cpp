// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/ranked_apps/ranked_apps_loading.h"

#include "support/task_outcome.h"
#include "ui/support/research_world.h"

namespace veltrix
{
namespace
{

class RankedAppsLoadingTest : public testing::Test
{
protected:
    RankedAppsLoadingTest() { make(); }

    void make()
    {
        loading = std::make_unique<RankedAppsLoading>(RankedAppsLoading::Source{
            [this](std::stop_token stop) { return readSaved(stop); },
            [this](std::stop_token stop) {
                return client.search(text("collage maker"), text("US"), 100, stop);
            },
            std::chrono::milliseconds(0)});
    }
    /// Takes as long as the test says.
    Task<std::optional<SavedResults>> readSaved(std::stop_token stop)
    {
        if (isDiskSlow)
            co_await disk.wait(stop);
        co_return saved;
    }
    RankedAppsState state() { return loading->state(); }
    void save(int count)
    {
        saved = SavedResults{dateFromUnixSeconds(1795254060), rankedApps(count)};
    }
    static QString savedText(const RankedAppsState &state)
    {
        return state.savedText(QLocale(QLocale::English, QLocale::UnitedStates), QTimeZone::utc());
    }

    FakeAppStore client;
    std::optional<SavedResults> saved;
    bool isDiskSlow = false;
    OneShot<Done> disk;
    std::unique_ptr<RankedAppsLoading> loading;
};

TEST_F(RankedAppsLoadingTest, SavedResultsAreThereAtOnceWhileTheRefreshRuns)
{
    save(40);
    client.holds = true;
    loading->start();
    EXPECT_TRUE(state().apps.value());
    EXPECT_EQ(state().results().size(), 40);
    EXPECT_EQ(savedText(state()), text("Results from Nov 21, 2026, 9:41\u00A0AM · Refreshing…"));
}

TEST_F(RankedAppsLoadingTest, SavedResultsThatComeWithinAMomentAreTheFirstThatIsShown)
{
    save(40);
    client.holds = true;
    isDiskSlow = true;
    int changes = 0;
    QObject::connect(loading.get(), &RankedAppsLoading::changed, [&changes] { ++changes; });
    loading->start();
    EXPECT_EQ(changes, 0);
    disk.resolve({});
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(state().results().size(), 40);
}

TEST_F(RankedAppsLoadingTest, OnASlowDiskItIsSaidThatTheyAreWaitedFor)
{
    save(40);
    client.holds = true;
    isDiskSlow = true;
    int changes = 0;
    QObject::connect(loading.get(), &RankedAppsLoading::changed, [&changes] { ++changes; });
    loading->start();
    waitFor([&] { return changes == 1; });
    EXPECT_FALSE(state().apps.value());
    EXPECT_TRUE(client.searches.isEmpty());
    disk.resolve({});
    EXPECT_EQ(state().results().size(), 40);
    EXPECT_EQ(client.searches.size(), 1);
}

TEST_F(RankedAppsLoadingTest, GoingAwayStopsTheWaitForTheDisk)
{
    isDiskSlow = true;
    loading->start();
    loading.reset();
    EXPECT_FALSE(disk.isOpen());
}

TEST_F(RankedAppsLoadingTest, ASuccessReplacesTheListAndClearsTheSavedDate)
{
    save(40);
    client.results = rankedApps(60);
    client.holds = true;
    loading->start();
    client.release();
    EXPECT_FALSE(state().apps.isUnderWay());
    EXPECT_EQ(state().results().size(), 60);
    EXPECT_EQ(state().apps.value()->savedDate, std::nullopt);
    EXPECT_EQ(savedText(state()), QString());
}

TEST_F(RankedAppsLoadingTest, AFailureKeepsTheSavedResults)
{
    save(40);
    client.fails = [](const QString &) {
        return true;
    };
    loading->start();
    EXPECT_TRUE(state().apps.value());
    EXPECT_EQ(state().results().size(), 40);
    EXPECT_EQ(state().failureText(), text("Showing saved results. The network is down."));
    EXPECT_EQ(savedText(state()), text("Results from Nov 21, 2026, 9:41\u00A0AM"));
}

TEST_F(RankedAppsLoadingTest, ARetryAfterAFailureStartsTheLoadingAgain)
{
    save(40);
    client.fails = [](const QString &) {
        return true;
    };
    loading->start();
    client.fails = nullptr;
    client.results = rankedApps(3);
    client.holds = true;
    loading->retry();
    EXPECT_EQ(state().attempt, 1);
    EXPECT_EQ(state().failureText(), text("Showing saved results. The network is down."))
        << "it stands until there is an answer";
    EXPECT_TRUE(state().apps.isUnderWay());
    client.release();
    EXPECT_EQ(state().failureText(), QString());
    EXPECT_EQ(state().results().size(), 3);
    EXPECT_EQ(client.searches.size(), 2);
}

TEST_F(RankedAppsLoadingTest, WithNothingToShowItIsLoadingThenFailed)
{
    client.fails = [](const QString &) {
        return true;
    };
    client.holds = true;
    loading->start();
    EXPECT_TRUE(state().apps.is<Loading>());
    client.release();
    EXPECT_TRUE(state().apps.is<LoadFailed>());
    EXPECT_EQ(state().apps.error(), text("The network is down."));
    EXPECT_EQ(state().failureText(), QString());
}

TEST_F(RankedAppsLoadingTest, AnEmptySavedResultIsNothingToShow)
{
    save(0);
    client.holds = true;
    loading->start();
    EXPECT_TRUE(state().apps.is<Loading>());
}

TEST_F(RankedAppsLoadingTest, AnEmptyAnswerIsAScreenOfItsOwn)
{
    loading->start();
    ASSERT_TRUE(state().apps.value());
    EXPECT_TRUE(state().results().isEmpty());
}

TEST_F(RankedAppsLoadingTest, AnEmptyAnswerReplacesSavedResults)
{
    save(40);
    loading->start();
    ASSERT_TRUE(state().apps.value());
    EXPECT_TRUE(state().results().isEmpty());
}

TEST_F(RankedAppsLoadingTest, TwentyFiveAreVisibleAtFirst)
{
    client.results = rankedApps(55);
    loading->start();
    EXPECT_EQ(state().countText(), text("Showing 25 of 55 results"));
    EXPECT_EQ(state().moreText(), text("View more (25)"));
    EXPECT_EQ(state().more(), 25);
}

TEST_F(RankedAppsLoadingTest, ViewMoreNamesWhatIsHiddenAtMostTwentyFive)
{
    client.results = rankedApps(32);
    loading->start();
    EXPECT_EQ(state().moreText(), text("View more (7)"));
    loading->showMore();
    EXPECT_EQ(state().countText(), text("Showing 32 of 32 results"));
    EXPECT_EQ(state().more(), 0);
}

TEST_F(RankedAppsLoadingTest, WhatWasMadeVisibleStaysVisibleOverARefresh)
{
    save(60);
    client.results = rankedApps(100);
    client.holds = true;
    loading->start();
    loading->showMore();
    EXPECT_EQ(state().shown(), 50);
    client.release();
    EXPECT_EQ(state().shown(), 50);
    EXPECT_EQ(state().more(), 25);
}

TEST_F(RankedAppsLoadingTest, AShortListIsShownWhole)
{
    client.results = rankedApps(3);
    loading->start();
    EXPECT_EQ(state().countText(), text("Showing 3 of 3 results"));
    EXPECT_EQ(state().more(), 0);
}

TEST_F(RankedAppsLoadingTest, GoingAwayStopsTheRefresh)
{
    client.holds = true;
    loading->start();
    EXPECT_EQ(client.inFlight, 1);
    loading.reset();
    EXPECT_EQ(client.inFlight, 0);
    client.release();
}

TEST_F(RankedAppsLoadingTest, ARetryStopsTheRefreshBeforeIt)
{
    client.holds = true;
    loading->start();
    loading->retry();
    EXPECT_EQ(client.inFlight, 1);
    client.release();
    EXPECT_FALSE(state().apps.isUnderWay());
}

} // namespace
} // namespace veltrix
