// SPDX-License-Identifier: GPL-3.0-or-later
// One measurement a UTC day, and rows that go on after failures.
#include "store/keyword_refreshes_fixture.h"

namespace veltrix
{
namespace
{

using Due = KeywordRefreshes::Due;
using Reuse = KeywordRefreshes::Reuse;

class KeywordDue : public KeywordRefreshesTest
{
protected:
    /// The virtual clock at this hour of a UTC day, some days on.
    void moveTo(int days, double hourOfDay)
    {
        const Date then = startOfUtcDay(utcDay(clock->now()) + days) + hourOfDay * hour;
        clock->advance(then - clock->now());
    }
};

TEST_F(KeywordDue, ARankingIsDueWhenTheUtcDayHasNoMeasurement)
{
    addThree();
    moveTo(1, 23);
    refreshes().setDue(Due::EachDay);
    EXPECT_EQ(refreshStale().value().measured, 3);
    moveTo(0, 23.9);
    EXPECT_EQ(refreshStale().value().measured, 0);
    moveTo(1, 0.1);
    EXPECT_EQ(refreshStale().value().measured, 3) << "an hour later, but on the next day";
    EXPECT_EQ(measuredAt(keywords[0]).size(), 2U);
}

TEST_F(KeywordDue, TheNextRankingIsDueAtMidnight)
{
    addThree();
    moveTo(1, 9);
    refreshes().setDue(Due::EachDay);
    EXPECT_EQ(refreshStale().value().nextStale, startOfUtcDay(utcDay(clock->now()) + 1));
}

TEST_F(KeywordDue, ADayLaterIsNotYet24HoursLater)
{
    addThree();
    moveTo(1, 23);
    refreshStale();
    moveTo(1, 0.5);
    EXPECT_EQ(refreshStale().value().measured, 0);
    EXPECT_TRUE(refreshes().isDue(keywords[0].id, Due::EachDay));
    EXPECT_FALSE(refreshes().isDue(keywords[0].id, Due::After24Hours));
}

TEST_F(KeywordDue, AnotherModelMakesARankingDueAtOnce)
{
    addThree();
    refreshes().setDue(Due::EachDay);
    refreshStale();
    popularity->version = text("popularity-8");
    EXPECT_EQ(refreshStale().value().measured, 3);
}

TEST_F(KeywordDue, WhatCanNeverBeMeasuredIsNeverDue)
{
    addThree();
    PersistedState state{store->apps(), store->trackedKeywords(), {}, {}};
    state.trackedKeywords.prepend({QUuid::createUuid(), state.apps.constFirst().id, text("kettle"),
                                   text("UK"), clock->now()});
    writeState(state);
    start();
    EXPECT_FALSE(refreshes().isDue(store->trackedKeywords().constFirst().id, Due::EachDay));
    EXPECT_TRUE(refreshes().isDue(keywords[0].id, Due::EachDay));
}

TEST_F(KeywordDue, RowsOfTheDayAreReusedAndThoseOfYesterdayAreNot)
{
    addThree();
    moveTo(1, 23);
    measure(keywords[0]);
    moveTo(1, 0.5);
    measure(keywords[1]);
    searched();
    EXPECT_TRUE(refreshRows(keywords, view, {{}, Reuse::Today}).hasValue());
    EXPECT_EQ(searched(), (QStringList{text("moon"), text("harbour")}));
    EXPECT_TRUE(refreshRows(keywords, view, {{}, Reuse::None}).hasValue());
    EXPECT_EQ(searched().size(), 3);
}

TEST_F(KeywordDue, RowsGoOnUntilSoManyInARowHaveFailed)
{
    addThree();
    for (const char *name : {"lamp", "wick", "oil", "jar"})
        keywords.append(addKeyword(name));
    failAt({text("moon"), text("tide"), text("lamp"), text("wick"), text("oil")});
    EXPECT_TRUE(refreshRows(keywords, view, {{}, Reuse::SixHours, 3}).hasValue());
    EXPECT_EQ(searched(), (QStringList{text("moon"), text("tide"), text("harbour"), text("lamp"),
                                       text("wick"), text("oil")}))
        << "two failures, a success, then three";
}

} // namespace
} // namespace veltrix
