// SPDX-License-Identifier: GPL-3.0-or-later
// The refresh of all rankings, once and every hour of a month.
#include "store/store_fixture.h"

#include <map>
#include <random>
#include <set>

namespace veltrix
{
namespace
{

constexpr Seconds hour{3600};
const QString historyFailure = text("Some rankings couldn't be updated. Try again later.");

class StoreHistory : public StoreTest
{
protected:
    Outcome<Done> refreshHistory()
    {
        return Outcome<Done>(finished(store->refreshHistory(view.get_token())));
    }
    void addThree()
    {
        for (const char *name : {"moon", "tide", "harbour"})
            keywords.append(addKeyword(name));
    }

    QList<TrackedKeyword> keywords;
};

TEST_F(StoreHistory, MeasuresWhatIsStaleInTheOrderOfTheKeywords)
{
    addThree();
    plant(snapshotOf(keywords[0], 23 * hour));
    plant(snapshotOf(keywords[1], 24 * hour));
    EXPECT_TRUE(refreshHistory().hasValue());
    EXPECT_EQ(client->searches, (QStringList{text("tide/US/100"), text("harbour/US/100")}));
    EXPECT_EQ(store->historyRefreshError(), std::nullopt);
    EXPECT_FALSE(store->isRefreshingHistory());
}

TEST_F(StoreHistory, AnotherModelMakesAKeywordStale)
{
    addThree();
    KeywordSnapshot oldScores = snapshotOf(keywords[0], hour);
    oldScores.scoringModelVersion = text("quorvin-opportunity-v0");
    plant(oldScores);
    KeywordSnapshot noPopularity = snapshotOf(keywords[1], hour);
    noPopularity.popularityModelVersion.reset();
    plant(noPopularity);
    plant(snapshotOf(keywords[2], hour));
    EXPECT_TRUE(refreshHistory().hasValue());
    EXPECT_EQ(client->searches, (QStringList{text("moon/US/100"), text("tide/US/100")}));
}

TEST_F(StoreHistory, TheFirstFailureStopsIt)
{
    addThree();
    client->fails = [](const QString &term) {
        return term == u"tide";
    };
    QStringList errors;
    QObject::connect(store.get(), &ASOStore::historyRefreshErrorChanged, [&] {
        errors.append(store->historyRefreshError().value_or(QString()));
        EXPECT_TRUE(store->isRefreshingHistory());
    });
    EXPECT_TRUE(refreshHistory().hasValue());
    EXPECT_EQ(client->searches, (QStringList{text("moon/US/100"), text("tide/US/100")}));
    EXPECT_EQ(errors, QStringList{historyFailure});
    EXPECT_FALSE(store->isRefreshingHistory());
    EXPECT_EQ(stateOnDisk().snapshots.size(), 1U);

    client->fails = nullptr;
    EXPECT_TRUE(refreshHistory().hasValue());
    EXPECT_EQ(errors, (QStringList{historyFailure, QString()}));
    EXPECT_EQ(stateOnDisk().snapshots.size(), 3U);
}

TEST_F(StoreHistory, ASecondRequestWhileOneRunsIsIgnored)
{
    addThree();
    client->holds = true;
    int announced = 0;
    QObject::connect(store.get(), &ASOStore::isRefreshingHistoryChanged, [&] { ++announced; });
    const auto first = refreshHistory();
    EXPECT_TRUE(store->isRefreshingHistory());
    EXPECT_TRUE(refreshHistory().hasValue());
    EXPECT_EQ(client->searches.size(), 1);
    for (int i = 0; i < 3; ++i)
        client->release();
    EXPECT_TRUE(first.hasValue());
    EXPECT_EQ(announced, 2);
}

TEST_F(StoreHistory, AStopIsNoFailure)
{
    addThree();
    client->holds = true;
    const auto outcome = refreshHistory();
    client->release();
    view.request_stop();
    EXPECT_TRUE(outcome.isCancelled());
    EXPECT_FALSE(store->isRefreshingHistory());
    EXPECT_EQ(store->historyRefreshError(), std::nullopt);
    EXPECT_EQ(client->searches.size(), 2);
    EXPECT_EQ(stateOnDisk().snapshots.size(), 1U);
}

TEST_F(StoreHistory, AKeywordDeletedBeforeItsTurnIsSkipped)
{
    addThree();
    client->holds = true;
    const auto outcome = refreshHistory();
    store->removeKeyword(keywords[1].id);
    client->release();
    client->release();
    EXPECT_TRUE(outcome.hasValue());
    EXPECT_EQ(client->searches, (QStringList{text("moon/US/100"), text("harbour/US/100")}));
    EXPECT_EQ(store->historyRefreshError(), std::nullopt);
}

TEST_F(StoreHistory, AKeywordDeletedWhileItIsMeasuredDoesNotEndTheLoop)
{
    addThree();
    client->holds = true;
    const auto outcome = refreshHistory();
    store->removeKeyword(keywords[0].id);
    client->release();
    EXPECT_EQ(client->searches, (QStringList{text("moon/US/100"), text("tide/US/100")}));
    client->release();
    client->release();
    EXPECT_TRUE(outcome.hasValue());
    EXPECT_EQ(store->historyRefreshError(), std::nullopt);
    EXPECT_EQ(stateOnDisk().snapshots.size(), 2U);
}

TEST_F(StoreHistory, TheStoreMayDieWhileItRuns)
{
    addThree();
    client->holds = true;
    const auto outcome = refreshHistory();
    stop();
    client->release();
    EXPECT_TRUE(outcome.isCancelled());
    EXPECT_EQ(client->searches.size(), 1);
}

TEST_F(StoreHistory, AMonthOfHourlyRefreshesLosesNothing)
{
    constexpr int keywordCount = 40;
    constexpr int dayCount = 31;
    for (int i = 0; i < keywordCount; ++i)
        keywords.append(addKeyword(qPrintable(QStringLiteral("keyword %1").arg(i))));
    std::mt19937 random(20261121);
    int failures = 0;
    client->fails = [&](const QString &) {
        const bool failing = std::uniform_int_distribution<int>(0, 19)(random) == 0;
        failures += failing ? 1 : 0;
        return failing;
    };
    int reported = 0;
    QObject::connect(store.get(), &ASOStore::historyRefreshErrorChanged, [&] {
        if (const auto error = store->historyRefreshError()) {
            EXPECT_EQ(error, historyFailure);
            ++reported;
        }
    });

    // Every keyword is measured as soon as its ranking is a day old, or an hour or more later when
    // a failure came first.
    std::map<QUuid, Date> lastMeasured;
    Seconds longestGap{0};
    QObject::connect(store.get(), &ASOStore::keywordChanged, [&](QUuid id) {
        if (lastMeasured.contains(id))
            longestGap = std::max(longestGap, clock->now() - lastMeasured[id]);
        lastMeasured[id] = clock->now();
    });
    for (int i = 0; i < dayCount * 24; ++i) {
        EXPECT_TRUE(refreshHistory().hasValue());
        EXPECT_FALSE(store->isRefreshingHistory());
        clock->advance(hour);
    }

    EXPECT_GT(failures, 40);
    EXPECT_EQ(reported, failures);
    EXPECT_EQ(client->searches.size(), int(store->snapshots().size()) + failures);
    EXPECT_EQ(lastMeasured.size(), size_t(keywordCount));
    EXPECT_LE(longestGap, 30 * hour);
    for (const TrackedKeyword &keyword : std::as_const(keywords)) {
        std::set<std::int64_t> days;
        const auto dates = measuredAt(keyword);
        for (const Date date : dates)
            days.insert(utcDay(date));
        EXPECT_EQ(days.size(), dates.size()) << "two snapshots on one day";
        EXPECT_GE(days.size(), size_t(dayCount - 6)) << qPrintable(keyword.keyword);
    }
    stateOnDisk();
    start();
    stateOnDisk();
}

} // namespace
} // namespace veltrix
