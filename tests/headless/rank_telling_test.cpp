// SPDX-License-Identifier: GPL-3.0-or-later
// What runs without a window tell from day to day.
#include "headless/rank_telling.h"

#include "effects/atomic_file.h"
#include "headless/measure_run.h"
#include "store/store_fixture.h"

#include <QDir>
#include <QFile>

namespace veltrix
{
namespace
{

class Telling : public StoreTest
{
protected:
    Telling() { addKeyword("moon"); }

    /// Where the app stands from now on; 0 when it is not ranked.
    void rankIs(int rank)
    {
        client->results.clear();
        for (int i = 1; i < std::max(rank, 12); ++i)
            client->results.append(appResult(100 + i, "Another"));
        if (rank > 0)
            client->results.insert(rank - 1, appResult(1, "Tideline"));
    }
    void nextDay(int days = 1)
    {
        const Date then = startOfUtcDay(utcDay(clock->now()) + days) + Seconds(9 * 3600);
        clock->advance(then - clock->now());
    }
    /// Measures, and gives the title of what is told; empty when that is nothing.
    QString run(bool all = false)
    {
        MeasureWish wish;
        wish.all = all;
        wish.notify = true;
        MeasureRun measuring(*store, telling, [](const MeasureMessage &) {});
        Outcome<MeasureSummary> outcome(measuring.run(wish, view.get_token()));
        const auto notice = outcome.wait().value().notice;
        return notice ? notice->title : QString();
    }
    QString runAt(int rank, bool all = false)
    {
        rankIs(rank);
        return run(all);
    }

    DigestChoice choice;
    QString path = RankTelling::pathIn(folder.path());
    RankTelling telling{*store, path, [this] {
                            return choice;
                        }};
};

TEST_F(Telling, BeginsWithTheSecondDay)
{
    EXPECT_EQ(runAt(20), QString());
    nextDay();
    EXPECT_EQ(runAt(15), text("1 keyword rose"));
    nextDay();
    EXPECT_EQ(runAt(15), QString());
}

TEST_F(Telling, ComparesWithTheWindowsMeasurementsWhereNothingWasTold)
{
    rankIs(20);
    measure(store->trackedKeywords().constFirst());
    nextDay();
    EXPECT_EQ(runAt(30), text("1 keyword fell"));
}

TEST_F(Telling, ASecondRunOfADayTellsOnlyWhatIsNew)
{
    runAt(20);
    nextDay();
    EXPECT_EQ(runAt(15), text("1 keyword rose"));
    clock->advance(Seconds(3600));
    EXPECT_EQ(runAt(15, true), QString()) << "not even the new best rank";
    clock->advance(Seconds(3600));
    EXPECT_EQ(runAt(14, true), text("1 new best rank"));
    clock->advance(Seconds(3600));
    EXPECT_EQ(run(), QString()) << "nothing was measured";
}

TEST_F(Telling, WhatARunThatFailedHasFoundIsToldByTheNext)
{
    addKeyword("tide");
    runAt(20);
    nextDay();
    client->fails = [](const QString &term) {
        return term == text("tide");
    };
    EXPECT_EQ(runAt(12), QString());
    nextDay();
    client->fails = nullptr;
    rankIs(12);
    EXPECT_EQ(run(), text("2 keywords rose"));
    nextDay();
    EXPECT_EQ(runAt(12), QString()) << "once";
}

TEST_F(Telling, ANewBestOfADayThatWasNotToldIsToldByTheNextIfItStands)
{
    choice = {false, 3, false, false, true};
    addKeyword("tide");
    runAt(20);
    nextDay();
    client->fails = [](const QString &term) {
        return term == text("tide");
    };
    runAt(12);
    nextDay();
    client->fails = nullptr;
    EXPECT_EQ(runAt(12), text("2 new best ranks"));
    nextDay();
    EXPECT_EQ(runAt(12), QString());
    nextDay();
    EXPECT_EQ(runAt(13), QString());
}

TEST_F(Telling, EnteringAndLeavingIsToldOnceEach)
{
    runAt(0);
    nextDay();
    EXPECT_EQ(runAt(10), text("1 keyword entered the top 10"));
    nextDay();
    EXPECT_EQ(runAt(13), text("1 keyword fell"));
    nextDay();
    EXPECT_EQ(runAt(0), text("1 keyword left the results"));
    nextDay();
    EXPECT_EQ(runAt(0), QString());
}

TEST_F(Telling, AKeywordThatGoesToAndFroAtTheEdgeOfTheTopTenIsToldOnce)
{
    choice = {false, 3, true, false, false};
    runAt(11);
    nextDay();
    EXPECT_EQ(runAt(10), text("1 keyword entered the top 10"));
    for (const int rank : {11, 10, 12, 9, 11}) {
        nextDay();
        EXPECT_EQ(runAt(rank), QString()) << rank;
    }
    nextDay();
    EXPECT_EQ(runAt(13), text("1 keyword left the top 10"));
    nextDay();
    EXPECT_EQ(runAt(11), QString());
}

TEST_F(Telling, ForgetsAfterAWeekWhatItToldAndComparesWithTheCheckBefore)
{
    runAt(40);
    nextDay(RankTelling::longestMemory);
    rankIs(20);
    EXPECT_EQ(run(), text("1 keyword rose"));
    nextDay(5);
    rankIs(30);
    measure(store->trackedKeywords().constFirst());
    nextDay(3);
    EXPECT_EQ(runAt(29), QString()) << "since the check of the window";
}

TEST_F(Telling, WhatIsNotToBeToldIsNotKeptForLater)
{
    choice = {false, 3, false, false, false};
    runAt(40);
    nextDay();
    EXPECT_EQ(runAt(2), QString());
    choice = DigestChoice();
    nextDay();
    EXPECT_EQ(runAt(2), QString());
}

TEST_F(Telling, WithoutAPlaceToRememberItTellsNothing)
{
    runAt(40);
    QFile::remove(path);
    QDir().mkpath(path);
    nextDay();
    EXPECT_EQ(runAt(2), QString());
}

TEST_F(Telling, ADamagedMemoryIsNone)
{
    runAt(40);
    writeFileAtomically(path, "{\"ranks\":[{");
    nextDay();
    EXPECT_EQ(runAt(2), text("1 keyword rose"));
    EXPECT_TRUE(readWholeFile(path).contains("\"rank\":2"));
}

TEST_F(Telling, KeywordsThatAreGoneAreForgotten)
{
    addKeyword("tide");
    runAt(40);
    store->removeKeyword(store->trackedKeywords().constLast().id);
    nextDay();
    runAt(40);
    EXPECT_EQ(readWholeFile(path).count("\"keyword\""), 1);
}

TEST_F(Telling, ARunThatNobodyIsToBeToldOfIsNotRemembered)
{
    rankIs(40);
    MeasureRun measuring(*store, telling, [](const MeasureMessage &) {});
    Outcome<MeasureSummary> outcome(measuring.run({}, view.get_token()));
    EXPECT_EQ(outcome.wait().value().notice, std::nullopt);
    EXPECT_FALSE(QFile::exists(path));
}

} // namespace
} // namespace veltrix
