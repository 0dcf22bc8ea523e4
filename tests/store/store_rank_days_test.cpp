// SPDX-License-Identifier: GPL-3.0-or-later
// What the store knows of ranks without reading measurements is what all measurements say.
#include "effects/atomic_file.h"
#include "store/history_database.h"
#include "store/store_fixture.h"

#include <QSignalSpy>

#include <map>
#include <random>

namespace veltrix
{
namespace
{

class StoreRankDays : public StoreTest
{
protected:
    StoreRankDays() { restart(); }
    ~StoreRankDays() override { stop(); }

    void restart()
    {
        stop();
        ASOStore::Arguments changed = arguments();
        changed.stateFileLimit = limit;
        store = std::make_unique<ASOStore>(std::move(changed));
    }
    [[nodiscard]] QString historyPath() const { return folder.filePath(text("history.sqlite")); }
    void finishMoving()
    {
        store->waitUntilSaved();
        waitFor([this] { return !store->historyMove(); });
    }
    void readAll()
    {
        const Outcome<Done> ended(finished(store->rankDaysRead({})));
        waitFor([&] { return ended.isDone(); });
    }
    /// Places the app there, or not at all.
    void rankAt(int position)
    {
        client->results.clear();
        for (int i = 1; i <= 100; ++i)
            client->results.append(appResult(i == position ? 1 : 1'000 + i, "Another"));
    }
    void measureAt(const TrackedKeyword &keyword, int position)
    {
        rankAt(position);
        measure(keyword);
    }
    void measureDaily(const TrackedKeyword &keyword, const std::vector<int> &positions)
    {
        for (const int position : positions) {
            clock->advance(Seconds(secondsPerDay));
            measureAt(keyword, position);
        }
        finishMoving();
    }
    [[nodiscard]] std::int64_t today() const { return utcDay(clock->now()); }
    [[nodiscard]] const RankDays &ranks(const TrackedKeyword &keyword) const
    {
        return store->rankDays(keyword.id);
    }
    /// Made of all measurements, by the words of the rules alone.
    void requireSameAsAllMeasurements(const TrackedKeyword &keyword)
    {
        const Outcome<RankingTimeline> timeline(store->rankingTimeline(keyword.id, {}));
        waitFor([&] { return timeline.isDone(); });
        std::map<std::int64_t, std::optional<std::int64_t>> byDay;
        for (const auto &observation : timeline.value().observations)
            byDay[utcDay(observation.date)] = observation.position;
        const RankDays &known = ranks(keyword);
        ASSERT_TRUE(known.isWhole());
        ASSERT_EQ(known.today(), today());
        for (int ago = 0; ago < RankDays::daysShown; ++ago) {
            std::optional<RankCheck> expected;
            if (const auto day = byDay.find(today() - ago); day != byDay.end())
                expected = RankCheck{day->first, day->second};
            ASSERT_EQ(known.onDay(ago), expected) << ago;
            for (int earlier = 1; !expected && earlier <= 7; ++earlier) {
                if (const auto day = byDay.find(today() - ago - earlier); day != byDay.end())
                    expected = RankCheck{day->first, day->second};
            }
            ASSERT_EQ(known.daysAgo(ago), expected) << ago;
        }
        const auto fromTheEnd = [&](size_t count) -> std::optional<RankCheck> {
            if (byDay.size() <= count)
                return std::nullopt;
            const auto day = std::next(byDay.rbegin(), std::ptrdiff_t(count));
            return RankCheck{day->first, day->second};
        };
        ASSERT_EQ(known.latest(), fromTheEnd(0));
        ASSERT_EQ(known.before(), fromTheEnd(1));
        std::optional<RankCheck> best;
        for (const auto &[day, rank] : byDay) {
            if (rank && (!best || *rank < *best->rank))
                best = RankCheck{day, rank};
        }
        ASSERT_EQ(known.best(), best);
        ASSERT_EQ(known.movement(), timeline.value().latestMovement());
    }

    qint64 limit = 20'000;
};

TEST_F(StoreRankDays, AreThereAtOnceFromTheStateFile)
{
    limit = ASOStore::usualStateFileLimit;
    restart();
    addApp();
    const TrackedKeyword keyword = addKeyword("moon");
    EXPECT_EQ(ranks(keyword).latest(), std::nullopt);
    EXPECT_EQ(ranks(keyword).today(), today());
    measureDaily(keyword, {9, 4, 0, 7});
    restart();
    EXPECT_EQ(ranks(keyword).latest(), (RankCheck{today(), 7}));
    EXPECT_EQ(ranks(keyword).before(), (RankCheck{today() - 1, std::nullopt}));
    EXPECT_EQ(ranks(keyword).best(), (RankCheck{today() - 2, 4}));
    EXPECT_EQ(ranks(keyword).movement(), store->latestMovement(keyword.id));
}

TEST_F(StoreRankDays, AreRightBeforeTheCheckIsAnnounced)
{
    addApp();
    const TrackedKeyword keyword = addKeyword("moon");
    std::optional<RankCheck> seen;
    QObject::connect(store.get(), &ASOStore::keywordChanged, store.get(),
                     [&](QUuid id) { seen = store->rankDays(id).latest(); });
    const QSignalSpy changes(store.get(), &ASOStore::rankDaysChanged);
    measureAt(keyword, 5);
    EXPECT_EQ(seen, (RankCheck{today(), 5}));
    ASSERT_EQ(changes.size(), 1);
    EXPECT_EQ(changes.front().front().value<QList<QUuid>>(), QList{keyword.id});
}

TEST_F(StoreRankDays, TheHistoryIsReadAfterTheStartAndThenTheyAreWhole)
{
    addApp();
    const TrackedKeyword keyword = addKeyword("moon");
    std::vector<int> positions(60, 40);
    positions[3] = 2;
    measureDaily(keyword, positions);
    ASSERT_TRUE(QFileInfo::exists(historyPath()));
    EXPECT_EQ(ranks(keyword).best(), (RankCheck{today() - 56, 2})) << "what moved stays known";
    EXPECT_TRUE(ranks(keyword).isWhole());
    restart();
    EXPECT_FALSE(ranks(keyword).isWhole());
    EXPECT_EQ(ranks(keyword).best()->rank, 40) << "the best of those in the state file";
    const QSignalSpy changes(store.get(), &ASOStore::rankDaysChanged);
    clock->advance(RankDaysKeeper::readingDelay);
    waitFor([&] { return ranks(keyword).isWhole(); });
    EXPECT_EQ(ranks(keyword).best(), (RankCheck{today() - 56, 2}));
    EXPECT_EQ(ranks(keyword).movementSince(30), RankMovement::unchanged());
    EXPECT_EQ(changes.size(), 1);
    requireSameAsAllMeasurements(keyword);
}

TEST_F(StoreRankDays, AHistoryThatCannotBeReadLeavesTheBestUnknownUntilItCan)
{
    addApp();
    const TrackedKeyword keyword = addKeyword("moon");
    measureDaily(keyword, std::vector<int>(60, 40));
    stop();
    const QByteArray history = readWholeFile(historyPath());
    writeFileAtomically(historyPath(), "not a database");
    restart();
    readAll();
    EXPECT_FALSE(ranks(keyword).isWhole());
    EXPECT_EQ(ranks(keyword).latest(), (RankCheck{today(), 40}));
    EXPECT_EQ(ranks(keyword).onDay(1), (RankCheck{today() - 1, 40}));
    writeFileAtomically(historyPath(), history);
    clock->advance(RankDaysKeeper::longestWait);
    waitFor([&] { return ranks(keyword).isWhole(); });
    requireSameAsAllMeasurements(keyword);
}

TEST_F(StoreRankDays, AtMidnightUtcEveryDayIsOneFurtherBack)
{
    addApp();
    const TrackedKeyword keyword = addKeyword("moon");
    measureDaily(keyword, {9, 4});
    EXPECT_EQ(ranks(keyword).movementSince(1), RankMovement::improved(5));
    const QSignalSpy changes(store.get(), &ASOStore::rankDaysChanged);
    const Seconds untilMidnight = startOfUtcDay(today() + 1) - clock->now();
    clock->advance(untilMidnight - Seconds(1));
    EXPECT_TRUE(ranks(keyword).isCheckedToday());
    EXPECT_EQ(changes.size(), 0);
    clock->advance(Seconds(1));
    EXPECT_FALSE(ranks(keyword).isCheckedToday());
    EXPECT_EQ(ranks(keyword).today(), today());
    EXPECT_EQ(ranks(keyword).onDay(1), (RankCheck{today() - 1, 4}));
    EXPECT_EQ(ranks(keyword).movementSince(1), std::nullopt);
    EXPECT_EQ(ranks(keyword).movement(), RankMovement::improved(5));
    EXPECT_EQ(changes.size(), 1);
}

TEST_F(StoreRankDays, WhatWasMeasuredByAWrongClockCountsWhenItsTimeHasCome)
{
    addApp();
    const TrackedKeyword keyword = addKeyword("moon");
    measureDaily(keyword, {9, 4});
    const Date now = clock->now();
    clock->jumpTo(now + Seconds(28'800));
    measureAt(keyword, 1);
    clock->jumpTo(now);
    clock->advance(RankDaysKeeper::longestWait);
    EXPECT_EQ(ranks(keyword).latest(), (RankCheck{today() - 1, 9})) << "as the table says";
    clock->advance(Seconds(28'800));
    EXPECT_EQ(ranks(keyword).latest(), (RankCheck{today(), 1}));
    requireSameAsAllMeasurements(keyword);
}

TEST_F(StoreRankDays, ADayThatIsMeasuredAgainCountsAsMeasuredLast)
{
    addApp();
    const TrackedKeyword keyword = addKeyword("moon");
    measureDaily(keyword, {9, 4});
    clock->advance(ASOStore::keywordRefreshTTL);
    measureAt(keyword, 6);
    EXPECT_EQ(ranks(keyword).latest(), (RankCheck{today(), 6}));
    EXPECT_EQ(ranks(keyword).best(), (RankCheck{today(), 6}));
    EXPECT_EQ(ranks(keyword).movement(), RankMovement::improved(3));
}

TEST_F(StoreRankDays, ADayThatHasMovedAndIsMeasuredAgainIsNotItsOldBestAnyMore)
{
    addApp();
    const TrackedKeyword keyword = addKeyword("moon");
    std::vector<int> positions(60, 40);
    positions[3] = 2;
    positions[5] = 30;
    measureDaily(keyword, positions);
    const Date now = clock->now();
    clock->jumpTo(now - Seconds(56 * secondsPerDay) + Seconds(60));
    measureAt(keyword, 50);
    clock->jumpTo(now);
    clock->advance(RankDaysKeeper::longestWait);
    readAll();
    EXPECT_EQ(ranks(keyword).best(), (RankCheck{today() - 54, 30}));
    requireSameAsAllMeasurements(keyword);
}

TEST_F(StoreRankDays, ARemovalLeavesNothingAndItsUndoBringsEverythingBack)
{
    addApp();
    const TrackedKeyword moon = addKeyword("moon");
    std::vector<int> positions(60, 40);
    positions[3] = 2;
    measureDaily(moon, positions);
    const RankDays before = ranks(moon);
    RemovedTracking removed = store->removeKeyword(moon.id);
    EXPECT_EQ(ranks(moon).latest(), std::nullopt);
    store->restore(std::move(removed));
    EXPECT_EQ(ranks(moon), before);
    requireSameAsAllMeasurements(moon);
    // And before the history was read.
    restart();
    removed = store->removeApp(moon.appId);
    clock->advance(RankDaysKeeper::readingDelay);
    readAll();
    store->restore(std::move(removed));
    readAll();
    EXPECT_EQ(ranks(moon), before);
}

TEST_F(StoreRankDays, AKeywordThatWasAddedAnewGetsTheRanksOfBoth)
{
    addApp();
    const TrackedKeyword old = addKeyword("moon");
    std::vector<int> positions(40, 40);
    positions[3] = 2;
    measureDaily(old, positions);
    RemovedTracking removed = store->removeKeyword(old.id);
    const TrackedKeyword anew = addKeyword("moon");
    measureDaily(anew, std::vector<int>(40, 50));
    EXPECT_EQ(ranks(anew).best()->rank, 50);
    store->restore(std::move(removed));
    readAll();
    EXPECT_EQ(ranks(anew).best(), (RankCheck{today() - 76, 2}));
    requireSameAsAllMeasurements(anew);
}

TEST_F(StoreRankDays, AKeywordThatComesBackAfterTheClockWasSetHasAllOfItsRanks)
{
    addApp();
    const TrackedKeyword moon = addKeyword("moon");
    measureDaily(moon, std::vector<int>(60, 40));
    RemovedTracking removed = store->removeKeyword(moon.id);
    const Date now = clock->now();
    clock->jumpTo(now - Seconds(3 * secondsPerDay));
    clock->advance(RankDaysKeeper::longestWait);
    readAll();
    clock->jumpTo(now);
    store->restore(std::move(removed));
    readAll();
    requireSameAsAllMeasurements(moon);
}

class RankDaysWalk : public StoreRankDays, public testing::WithParamInterface<unsigned>
{
};

TEST_P(RankDaysWalk, SaysAfterEachStepAndRestartWhatAllMeasurementsSay)
{
    std::mt19937 random(GetParam());
    const auto below = [&](int count) {
        return int(random() % unsigned(count));
    };
    limit = 60'000;
    restart();
    addApp();
    QList<TrackedKeyword> keywords;
    int named = 0;
    const auto add = [&] {
        keywords.append(addKeyword(qPrintable(QStringLiteral("keyword %1").arg(++named))));
    };
    for (int i = 0; i < 4; ++i)
        add();
    RemovedTracking removed;
    for (int step = 0; step < 400; ++step) {
        const int dice = below(100);
        if (dice < 75) {
            clock->advance(Seconds(below(5) * 15'000));
            rankAt(below(120));
            (void)refresh(keywords[below(int(keywords.size()))]);
        } else if (dice < 79) {
            clock->jumpTo(clock->now() + Seconds((below(5) - 2) * 20 * secondsPerDay));
        } else if (dice < 85 && keywords.size() > 2 && removed.isEmpty()) {
            removed = store->removeKeyword(keywords.takeAt(below(int(keywords.size()))).id);
            if (below(2) == 0) {
                const TrackedKeyword &gone = removed.keywords.front().record;
                keywords.append(addKeyword(qPrintable(gone.keyword)));
            }
        } else if (dice < 89 && !removed.isEmpty()) {
            for (const TrackedKeyword &back : store->restore(std::exchange(removed, {})).keywords) {
                if (!keywords.contains(back))
                    keywords.append(back);
            }
        } else if (dice < 91) {
            add();
        } else if (dice < 95) {
            removed = {};
            restart();
        } else {
            finishMoving();
        }
        if (step % 5 != 0)
            continue;
        clock->advance(RankDaysKeeper::longestWait);
        readAll();
        for (const TrackedKeyword &keyword : store->trackedKeywords()) {
            ASSERT_NO_FATAL_FAILURE(requireSameAsAllMeasurements(keyword)) << "step " << step;
        }
    }
    finishMoving();
    EXPECT_TRUE(QFileInfo::exists(historyPath()));
    EXPECT_EQ(problem(), QString());
}

INSTANTIATE_TEST_SUITE_P(Seeds, RankDaysWalk, testing::Range(1U, 9U));

} // namespace
} // namespace veltrix
