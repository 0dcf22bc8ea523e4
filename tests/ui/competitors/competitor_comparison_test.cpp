// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/competitors/competitor_comparison.h"

#include "support/task_outcome.h"
#include "ui/support/rival_world.h"

#include <QFile>
#include <QSignalSpy>

namespace veltrix
{
namespace
{

class CompetitorComparisonTest : public testing::Test
{
protected:
    void start()
    {
        comparison = std::make_unique<CompetitorComparison>(*world.store, 201, world.appId());
        QObject::connect(comparison.get(), &CompetitorComparison::sharedChanged, comparison.get(),
                         [this] { older += comparison->shared().olderText(); });
        comparison->unpause();
        settle();
    }
    void settle()
    {
        waitFor([this] {
            return !comparison->checks().isUnderWay() && !comparison->past().isUnderWay();
        });
        QCoreApplication::processEvents();
    }
    void waitForLead(const char *lead)
    {
        waitFor([&] { return comparison->shared().leadText() == text(lead); });
    }

    RivalWorld world;
    std::unique_ptr<CompetitorComparison> comparison;
    /// What was said of ranks of earlier checks, at any time.
    QString older;
};

TEST_F(CompetitorComparisonTest, AsksForNothingUntilItIsLookedAt)
{
    world.track();
    comparison = std::make_unique<CompetitorComparison>(*world.store, 201, world.appId());
    EXPECT_TRUE(comparison->isTracked());
    EXPECT_TRUE(comparison->checks().is<NotAsked>());
    comparison->unpause();
    settle();
    EXPECT_TRUE(comparison->checks().value());
    EXPECT_TRUE(comparison->past().value());
}

TEST_F(CompetitorComparisonTest, OfAnAppThatIsNotTrackedItAsksNothing)
{
    start();
    EXPECT_FALSE(comparison->isTracked());
    EXPECT_TRUE(comparison->checks().is<NotAsked>());
    EXPECT_TRUE(comparison->log().empty());
}

TEST_F(CompetitorComparisonTest, WhatIsKeptWhileItIsNotLookedAtIsAskedForAfterwards)
{
    world.track();
    start();
    comparison->pause();
    world.measure("retro photo");
    QCoreApplication::processEvents();
    EXPECT_EQ(comparison->shared().leadText(), QString());
    EXPECT_FALSE(comparison->checks().isUnderWay());
    comparison->unpause();
    waitForLead("You lead on 0 of 1 keyword");
}

TEST_F(CompetitorComparisonTest, ANewDaysMeasurementIsNeverComparedWithTheRankOfAnotherDay)
{
    world.track();
    world.measure("retro photo");
    start();
    waitForLead("You lead on 0 of 1 keyword");
    for (int day = 22; day <= 26; ++day) {
        world.goTo(8, day);
        world.rank({"retro photo", "US", day % 2 == 0 ? 2 : 9, 5});
        world.measure("retro photo");
        waitForLead(day % 2 == 0 ? "You lead on 1 of 1 keyword" : "You lead on 0 of 1 keyword");
    }
    EXPECT_EQ(older, QString()) << "what a check finds of others is kept with it";
}

TEST_F(CompetitorComparisonTest, WhereNothingOfOthersCanBeKeptTheRanksAreSaidToBeOfAnEarlierCheck)
{
    world.track();
    world.measure("retro photo");
    start();
    waitForLead("You lead on 0 of 1 keyword");
    // The history becomes unreadable while the program runs.
    QFile history(world.folder.filePath(QStringLiteral("history.sqlite")));
    ASSERT_TRUE(history.open(QIODevice::WriteOnly | QIODevice::Truncate));
    history.write("this is no database, and long enough to be looked at as if it were one");
    history.close();
    world.goTo(8, 22);
    world.rank({"retro photo", "US", 1, 5});
    world.measure("retro photo");
    waitFor([this] { return !comparison->shared().olderText().isEmpty(); });
    EXPECT_EQ(comparison->shared().leadText(), text("You lead on 0 of 1 keyword"))
        << "both ranks are those of the day before";
}

TEST_F(CompetitorComparisonTest, UntrackedItForgetsAndTrackedAgainItAsks)
{
    world.track();
    world.measure("retro photo");
    start();
    waitForLead("You lead on 0 of 1 keyword");
    QSignalSpy changed(comparison.get(), &CompetitorComparison::competitorsChanged);
    const RemovedTracking removed =
        world.store->removeCompetitor(world.store->competitors().constFirst().id);
    EXPECT_EQ(changed.size(), 1);
    EXPECT_FALSE(comparison->isTracked());
    EXPECT_EQ(comparison->shared(), SharedKeywords());
    EXPECT_TRUE(comparison->log().empty());
    world.store->restore(removed);
    waitForLead("You lead on 0 of 1 keyword");
    settle();
    EXPECT_EQ(comparison->log().size(), 1U);
}

TEST_F(CompetitorComparisonTest, ItEndsWhileItIsAsking)
{
    world.track();
    world.measure("retro photo");
    comparison = std::make_unique<CompetitorComparison>(*world.store, 201, world.appId());
    comparison->unpause();
    EXPECT_TRUE(comparison->checks().isUnderWay());
    comparison.reset();
    QCoreApplication::processEvents();
}

} // namespace
} // namespace veltrix
