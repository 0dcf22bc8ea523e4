// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/competitors/coverage_tracking.h"

#include "ui/support/research_world.h"

#include <QSignalSpy>

namespace veltrix
{
namespace
{

class CoverageTrackingTest : public testing::Test
{
protected:
    void make(const char *country = "us")
    {
        tracking = std::make_unique<CoverageTracking>(*world.store, text(country), world.appId());
    }
    CoverageTracking::Outcome outcome() { return tracking->outcome(); }

    ResearchWorld world;
    std::unique_ptr<CoverageTracking> tracking;
};

TEST_F(CoverageTrackingTest, KnowsTheKeywordsOfItsStorefrontAlone)
{
    world.store->addTrackedKeyword(world.appId(), text("film camera"), text("US"));
    world.store->addTrackedKeyword(world.appId(), text("filmkamera"), text("DE"));
    make();
    EXPECT_TRUE(tracking->tracked().contains(text("film camera")));
    EXPECT_FALSE(tracking->tracked().contains(text("filmkamera")));
}

TEST_F(CoverageTrackingTest, PromisesMeasuringUntilItHasEnded)
{
    make();
    world.appStore->holds = true;
    const QSignalSpy ended(tracking.get(), &CoverageTracking::promiseEnded);
    tracking->track({text("film camera"), text("foxglove")});
    EXPECT_EQ(outcome().message, text("Keywords saved. Metrics will update in the background."));
    EXPECT_EQ(outcome().lines, QStringList{text("2 added")});
    EXPECT_EQ(ended.size(), 0);
    world.appStore->holds = false;
    world.appStore->release();
    EXPECT_EQ(ended.size(), 1);
    EXPECT_EQ(outcome().message, QString());
    EXPECT_EQ(outcome().lines, QStringList{text("2 added")}) << "that stays true";
}

TEST_F(CoverageTrackingTest, ARefusalIsNoPromise)
{
    make("UK");
    const QSignalSpy ended(tracking.get(), &CoverageTracking::promiseEnded);
    tracking->track({text("film camera")});
    EXPECT_EQ(outcome(), (CoverageTracking::Outcome{
                             text("None added, 1 refused"),
                             true,
                             {text("“film camera”: “UK” is not a supported storefront")}}));
    world.store->queueKeywordRefreshes(world.store->trackedKeywords());
    EXPECT_EQ(ended.size(), 0);
}

TEST_F(CoverageTrackingTest, WhatCannotBeSavedIsNoPromise)
{
    make();
    world.appStore->holds = true;
    world.folder.remove();
    const QSignalSpy ended(tracking.get(), &CoverageTracking::promiseEnded);
    tracking->track({text("film camera")});
    world.store->waitUntilSaved();
    EXPECT_EQ(outcome().message, text("The new keywords are not saved yet."));
    EXPECT_TRUE(outcome().isProblem);
    EXPECT_EQ(ended.size(), 0);
}

TEST_F(CoverageTrackingTest, AnotherAppHasItsOwnKeywordsAndIsToldNothingOfTheOneBefore)
{
    world.appStore->holds = true;
    make();
    tracking->track({text("film camera")});
    EXPECT_TRUE(tracking->tracked().contains(text("film camera")));
    const QUuid other = world.store->apps()[1].id;
    const QSignalSpy changed(tracking.get(), &CoverageTracking::trackedChanged);
    tracking->setApp(other);
    EXPECT_EQ(changed.size(), 1);
    EXPECT_FALSE(tracking->tracked().contains(text("film camera")));
    EXPECT_EQ(outcome(), CoverageTracking::Outcome());
    tracking->track({text("foxglove")});
    EXPECT_EQ(world.store->keywordsOfApp(other).constLast().keyword, text("foxglove"));
    tracking->setApp(std::nullopt);
    EXPECT_FALSE(tracking->hasApp());
}

TEST_F(CoverageTrackingTest, WithoutAnAppNothingIsTracked)
{
    make();
    world.store->removeApp(world.appId());
    const auto before = world.store->trackedKeywords().size();
    EXPECT_FALSE(tracking->hasApp());
    tracking->track({text("film camera")});
    EXPECT_EQ(world.store->trackedKeywords().size(), before);
    EXPECT_EQ(outcome(), CoverageTracking::Outcome());
}

} // namespace
} // namespace veltrix
