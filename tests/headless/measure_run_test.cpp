// SPDX-License-Identifier: GPL-3.0-or-later
#include "headless/measure_run.h"

#include "headless/keyword_choice.h"
#include "headless/measure_text.h"
#include "headless/rank_telling.h"
#include "store/store_fixture.h"

#include <QDir>

namespace veltrix
{
namespace
{

constexpr Seconds hour{3600};

MeasureSummary sum(int measured, int notMeasured = 0, int left = 0)
{
    MeasureSummary summary;
    summary.measured = measured;
    summary.notMeasured = notMeasured;
    summary.left = left;
    return summary;
}

MeasureWish wish(const QStringList &storefronts, bool all = false)
{
    return {{}, storefronts, all, false};
}

class MeasuringWithoutWindow : public StoreTest
{
protected:
    void addKeywords(const QStringList &names)
    {
        for (const QString &name : names)
            addKeyword(qUtf8Printable(name));
    }
    void moveToHour(int days, double hourOfDay)
    {
        const Date then = startOfUtcDay(utcDay(clock->now()) + days) + hourOfDay * hour;
        clock->advance(then - clock->now());
    }
    /// To its end, unless the service takes its time.
    Outcome<MeasureSummary> run(const MeasureWish &wished = {})
    {
        Outcome<MeasureSummary> running(measuring.run(wished, view.get_token()));
        if (!client->holds)
            running.wait();
        return running;
    }
    void tell(const MeasureMessage &message)
    {
        if (message.progress)
            told.append(progressText(*message.progress));
        if (message.keyword)
            told.append(turnText(*message.keyword));
        if (message.summary)
            told.append(summaryText(*message.summary));
        if (message.wrongUse)
            told.append(*message.wrongUse);
    }
    /// What was told since the last call.
    QStringList lines() { return std::exchange(told, {}); }
    void failAt(const QStringList &terms)
    {
        client->fails = [terms](const QString &term) {
            return terms.contains(term);
        };
    }

    QStringList told;
    RankTelling telling{*store, folder.filePath(text("told.json")), [] {
                            return DigestChoice();
                        }};
    MeasureRun measuring{*store, telling, [this](const MeasureMessage &message) {
                             tell(message);
                         }};
};

TEST_F(MeasuringWithoutWindow, TellsEachKeywordAndTheSum)
{
    addKeywords({text("moon"), text("tide")});
    EXPECT_TRUE(run().value().isComplete());
    EXPECT_EQ(lines(), (QStringList{
                           text("[1/2] moon"),
                           text("moon · US · Tideline: rank 2, First observation"),
                           text("[2/2] tide"),
                           text("tide · US · Tideline: rank 2, First observation"),
                           text("2 keywords measured."),
                       }));
    EXPECT_EQ(stateOnDisk().snapshots.size(), 2U);
}

TEST_F(MeasuringWithoutWindow, MeasuresOnceADayHoweverShortTheTimeBetween)
{
    addKeywords({text("moon"), text("tide")});
    moveToHour(1, 23);
    run();
    lines();
    moveToHour(0, 23.9);
    EXPECT_TRUE(run().value().isComplete());
    EXPECT_EQ(lines(), QStringList{text("2 were measured today already.")});
    moveToHour(1, 0.2);
    EXPECT_EQ(run().value().measured, 2);
    EXPECT_EQ(measuredAt(store->trackedKeywords().constFirst()).size(), 2U);
}

TEST_F(MeasuringWithoutWindow, MeasuresTheDayAgainWhenAllIsWished)
{
    addKeywords({text("moon"), text("tide")});
    run();
    clock->advance(Seconds(60));
    EXPECT_EQ(run(wish({}, true)).value().measured, 2);
    EXPECT_EQ(measuredAt(store->trackedKeywords().constFirst()).size(), 1U)
        << "in place of the first of the day";
}

TEST_F(MeasuringWithoutWindow, GoesOnAfterAFailureAndSaysWhatItWas)
{
    addKeywords({text("moon"), text("tide"), text("harbour")});
    failAt({text("tide")});
    EXPECT_FALSE(run().value().isComplete());
    EXPECT_EQ(lines().filter(text(": ")),
              (QStringList{text("moon · US · Tideline: rank 2, First observation"),
                           text("tide · US · Tideline: not measured: The network is down."),
                           text("harbour · US · Tideline: rank 2, First observation")}));
    client->fails = nullptr;
    run();
    EXPECT_EQ(lines().constLast(), text("1 keyword measured. 2 were measured today already."));
}

TEST_F(MeasuringWithoutWindow, EndsWhenTheServiceFailsThreeTimesInARow)
{
    addKeywords({text("a"), text("b"), text("c"), text("d"), text("e")});
    failAt({text("b"), text("c"), text("d"), text("e")});
    EXPECT_EQ(run().value(), sum(1, 3, 1));
    EXPECT_EQ(lines().constLast(),
              text("1 keyword measured, 3 not. 1 was left for the next time."));
}

TEST_F(MeasuringWithoutWindow, TellsWhatCanNeverBeMeasured)
{
    addKeywords({text("moon")});
    PersistedState state{store->apps(), store->trackedKeywords(), {}, {}};
    state.trackedKeywords.append({QUuid::createUuid(), state.apps.constFirst().id, text("kettle"),
                                  text("UK"), clock->now()});
    writeState(state);
    start();
    QStringList second;
    MeasureRun again(*store, telling, [&second](const MeasureMessage &message) {
        if (message.keyword)
            second.append(turnText(*message.keyword));
    });
    Outcome<MeasureSummary> summary(again.run({}, view.get_token()));
    EXPECT_EQ(summary.wait().value(), sum(1, 1));
    EXPECT_THAT(second.constFirst().toStdString(),
                testing::StartsWith("kettle · UK · Tideline: not measured: "));
}

TEST_F(MeasuringWithoutWindow, StoppedItKeepsWhatItHasAndTellsTheRest)
{
    addKeywords({text("moon"), text("tide"), text("harbour")});
    client->holds = true;
    auto running = run();
    client->release();
    lines();
    view.request_stop();
    EXPECT_EQ(running.wait().value(), sum(1, 0, 2));
    EXPECT_EQ(lines(), QStringList{text("1 keyword measured. 2 were left for the next time.")});
    EXPECT_EQ(stateOnDisk().snapshots.size(), 1U);
}

TEST_F(MeasuringWithoutWindow, AKeywordDeletedMeanwhileIsNotLeft)
{
    addKeywords({text("moon"), text("tide"), text("harbour")});
    client->holds = true;
    auto running = run();
    store->removeKeyword(store->trackedKeywords().constLast().id);
    for (int i = 0; i < 3; ++i)
        client->release();
    EXPECT_EQ(running.wait().value(), sum(2));
}

TEST_F(MeasuringWithoutWindow, WhatIsMeasuredForTheWindowIsNotMeasuredTwice)
{
    addKeywords({text("moon"), text("tide")});
    client->holds = true;
    auto running = run();
    const Outcome<Done> window(finished(store->refreshHistory(view.get_token())));
    for (int i = 0; i < 3; ++i)
        client->release();
    EXPECT_EQ(running.wait().value().measured, 2);
    EXPECT_EQ(client->searches.size(), 2);
}

TEST_F(MeasuringWithoutWindow, WhatIsNotTrackedIsWrongUse)
{
    addKeywords({text("moon")});
    EXPECT_TRUE(run(wish({text("FR")})).holds<UnknownChoice>());
    EXPECT_EQ(lines(), QStringList{text("No keyword is tracked in the storefront “FR”.")});
}

TEST_F(MeasuringWithoutWindow, NothingTrackedIsSaid)
{
    EXPECT_TRUE(run().value().isComplete());
    EXPECT_EQ(lines(), QStringList{text("No keyword is tracked.")});
}

TEST_F(MeasuringWithoutWindow, AStateThatCouldNotBeReadIsAProblemAndNotNothingTracked)
{
    stop();
    QDir().mkpath(statePath());
    start();
    QStringList said;
    MeasureRun over(*store, telling, [&said](const MeasureMessage &message) {
        if (message.summary)
            said.append(summaryText(*message.summary));
    });
    Outcome<MeasureSummary> summary(over.run({}, view.get_token()));
    EXPECT_FALSE(summary.wait().value().isComplete());
    EXPECT_EQ(said.size(), 1);
    EXPECT_NE(said.constFirst(), text("No keyword is tracked."));
}

TEST_F(MeasuringWithoutWindow, NamesOfTheAppStoreCannotMoveTheCursor)
{
    MeasuredKeyword turn;
    turn.keyword = text("moon");
    turn.storefront = text("US");
    turn.app = text("Evil\x1b[2J\u202e App");
    turn.rank = 3;
    EXPECT_EQ(turnText(turn), text("moon · US · Evil[2J App: rank 3"));
}

} // namespace
} // namespace veltrix
