// SPDX-License-Identifier: GPL-3.0-or-later
// A store whose state file may not grow: whatever happens, it knows what one without a limit knows.
#include "effects/atomic_file.h"
#include "json/json_reader.h"
#include "store/history_fixture.h"

#include <QDir>

#include <map>
#include <random>

namespace veltrix
{
namespace
{

TEST_F(HistoryStore, BelowTheLimitNothingMovesAndTheFileHasTheSameBytes)
{
    limit = ASOStore::usualStateFileLimit;
    restart();
    const TrackedKeyword keyword = addKeyword("moon");
    measureDaily(keyword, 40);
    EXPECT_FALSE(hasMovedDays());
    EXPECT_EQ(stateBytes(), toJson(PersistedState{store->apps(), store->trackedKeywords(),
                                                  store->snapshots(), store->competitors()}));
    EXPECT_EQ(allOf(keyword).size(), 40U);
    // Where others stood, which the file has no place for.
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files),
              (QStringList{text("history.sqlite"), text("state.json")}));
}

TEST_F(HistoryStore, AboveItTheOldestDaysMoveAndEverythingIsStillThere)
{
    const TrackedKeyword keyword = addKeyword("moon");
    std::vector<SharedSnapshot> all;
    for (int day = 0; day < 60; ++day) {
        clock->advance(Seconds(secondsPerDay));
        measure(keyword);
        finishMoving();
        all.push_back(store->newestSnapshot(keyword.id));
        ASSERT_LE(stateBytes().size(), limit);
    }
    EXPECT_TRUE(hasMovedDays());
    EXPECT_LT(store->snapshots().size(), 30U);
    EXPECT_EQ(json(allOf(keyword)), json(all));
    const RankingTimeline timeline = timelineOf(keyword.id);
    EXPECT_EQ(timeline.observations.size(), 60U);
    EXPECT_EQ(timeline.startedAt, all.front()->fetchedAt);
    // The state file alone is an ordinary one.
    EXPECT_EQ(stateOnDisk().snapshots.size(), store->snapshots().size());
    restart();
    EXPECT_EQ(json(allOf(keyword)), json(all));
    EXPECT_EQ(problem(), QString());
}

TEST_F(HistoryStore, AKeywordsNewestTwoDaysStayForItsRowAndItsMovement)
{
    limit = 1;
    restart();
    const TrackedKeyword keyword = addKeyword("moon");
    measureDaily(keyword, 3);
    std::ranges::reverse(client->results);
    client->results.prepend(appResult(5, "Lantern"));
    measureDaily(keyword, 1);
    EXPECT_EQ(store->keywordSnapshots(keyword.id).size(), 2U);
    EXPECT_EQ(allOf(keyword).size(), 4U);
    EXPECT_EQ(store->latestMovement(keyword.id), RankMovement::between(2, 3));
}

TEST_F(HistoryStore, PagesAreWholeThoughDaysMoveBetweenThem)
{
    const TrackedKeyword keyword = addKeyword("moon");
    measureDaily(keyword, 40);
    const size_t inFile = store->snapshots().size();
    std::vector<SharedSnapshot> found;
    std::optional<std::int64_t> next = std::numeric_limits<std::int64_t>::min();
    int pages = 0;
    for (; next; ++pages) {
        MeasurementPage page =
            resultOf(store->measurements(keyword.id, {.firstDay = *next, .size = 5}, {}));
        std::ranges::move(page.measurements, std::back_inserter(found));
        next = page.nextDay;
        if (next)
            measureDaily(keyword, 3);
    }
    EXPECT_GT(pages, 5);
    EXPECT_LT(store->snapshots().size(), inFile + 3U * size_t(pages)) << "nothing has moved";
    EXPECT_EQ(json(found), json(allOf(keyword)));
}

TEST_F(HistoryStore, ADayThatIsMeasuredAgainAfterItHasMovedIsTheNewOne)
{
    const TrackedKeyword keyword = addKeyword("moon");
    measureDaily(keyword, 40);
    const auto before = allOf(keyword);
    // The clock is set back to the first day.
    const Date today = clock->now();
    clock->jumpTo(before.front()->fetchedAt + Seconds(60));
    measure(keyword);
    finishMoving();
    clock->jumpTo(today);
    auto after = allOf(keyword);
    ASSERT_EQ(after.size(), before.size());
    EXPECT_EQ(after.front()->fetchedAt, before.front()->fetchedAt + Seconds(60));
    // And when that day moves in its turn.
    measureDaily(keyword, 40);
    restart();
    EXPECT_EQ(allOf(keyword).front()->id, after.front()->id);
    EXPECT_EQ(allOf(keyword).size(), before.size() + 40);
}

TEST_F(HistoryStore, ARemovedKeywordLeavesNothingInTheHistory)
{
    const TrackedKeyword moon = addKeyword("moon");
    const TrackedKeyword tide = addKeyword("tide");
    measureDaily(moon, 40);
    measureDaily(tide, 40);
    ASSERT_FALSE(history()->records(moon.id).empty());
    store->removeKeyword(moon.id);
    finishMoving();
    // It may be undone until the end.
    EXPECT_EQ(history()->removalNotes(), std::vector{moon.id});
    EXPECT_FALSE(history()->records(moon.id).empty());
    restart();
    waitFor([&] { return history()->removalNotes().empty(); });
    EXPECT_TRUE(history()->records(moon.id).empty());
    EXPECT_EQ(allOf(tide).size(), 40U);
}

TEST_F(HistoryStore, ARemovalThatIsUndoneBringsTheWholeHistoryBack)
{
    const TrackedKeyword moon = addKeyword("moon");
    measureDaily(moon, 40);
    const QByteArray before = json(allOf(moon));
    RemovedTracking removed = store->removeKeyword(moon.id);
    // Other days move meanwhile.
    measureDaily(addKeyword("tide"), 40);
    store->restore(std::move(removed));
    EXPECT_EQ(json(allOf(moon)), before);
    finishMoving();
    EXPECT_TRUE(history()->removalNotes().empty());
    restart();
    finishMoving();
    EXPECT_EQ(json(allOf(moon)), before);
}

TEST_F(HistoryStore, ARemovedKeywordThatWasAddedAnewGetsTheHistoryOfBoth)
{
    const TrackedKeyword old = addKeyword("moon");
    measureDaily(old, 40);
    RemovedTracking removed = store->removeKeyword(old.id);
    const TrackedKeyword anew = addKeyword("moon");
    measureDaily(anew, 40);
    store->restore(std::move(removed));
    finishMoving();
    EXPECT_EQ(allOf(anew).size(), 80U);
    restart();
    finishMoving();
    EXPECT_EQ(allOf(anew).size(), 80U);
    EXPECT_TRUE(history()->removalNotes().empty());
    for (const SharedSnapshot &one : allOf(anew))
        ASSERT_EQ(one->trackedKeywordId, anew.id);
}

TEST_F(HistoryStore, ARemovalThatWasInterruptedIsFinishedAtTheNextStart)
{
    const TrackedKeyword moon = addKeyword("moon");
    const TrackedKeyword tide = addKeyword("tide");
    measureDaily(moon, 40);
    measureDaily(tide, 40);
    const size_t ofTide = history()->records(tide.id).size();
    ASSERT_GT(ofTide, 0U);
    stop();
    // One is gone from the state file, and of the other the note alone was made.
    history()->noteRemoval(std::vector{moon.id, tide.id});
    auto state = fromJson<PersistedState>(readWholeFile(statePath()));
    state.trackedKeywords.removeIf([&](const TrackedKeyword &one) { return one.id == moon.id; });
    std::erase_if(state.snapshots,
                  [&](const SharedSnapshot &one) { return one->trackedKeywordId == moon.id; });
    writeState(state);
    restart();
    waitFor([&] { return history()->removalNotes().empty(); });
    EXPECT_TRUE(history()->records(moon.id).empty());
    EXPECT_GE(history()->records(tide.id).size(), ofTide);
    EXPECT_EQ(allOf(tide).size(), 40U);
}

TEST_F(HistoryStore, AStateThatCouldNotBeReadRemovesNothingFromTheHistory)
{
    const TrackedKeyword moon = addKeyword("moon");
    measureDaily(moon, 40);
    const size_t kept = history()->records(moon.id).size();
    ASSERT_GT(kept, 0U);
    stop();
    writeFileAtomically(statePath(), "{");
    testing::internal::CaptureStdout();
    restart();
    addApp();
    testing::internal::GetCapturedStdout();
    restart();
    finishMoving();
    clock->advance(Seconds(60));
    addApp(2);
    EXPECT_EQ(history()->records(moon.id).size(), kept);
}

TEST_F(HistoryStore, AnythingElseInTheHistorysPlaceIsLeftAloneAndTheFileGrows)
{
    writeFileAtomically(historyPath(), "not a database");
    const TrackedKeyword keyword = addKeyword("moon");
    measureDaily(keyword, 40);
    EXPECT_EQ(readWholeFile(historyPath()), "not a database");
    EXPECT_GT(stateBytes().size(), limit);
    EXPECT_EQ(store->snapshots().size(), 40U);
    EXPECT_TRUE(problem().startsWith(text("Older measurements could not be moved out of the state "
                                          "file, which grows meanwhile. ")))
        << qPrintable(problem());
    EXPECT_FALSE(store->hasUnsavedChange());
    const Outcome<RankingTimeline> timeline(store->rankingTimeline(keyword.id, {}));
    waitFor([&] { return timeline.isDone(); });
    EXPECT_THROW((void)timeline.value(), DatabaseError);
    // When it is gone, everything moves.
    QFile::remove(historyPath());
    measureDaily(keyword, 140);
    EXPECT_LE(stateBytes().size(), limit);
    EXPECT_EQ(allOf(keyword).size(), 180U);
    store->dismissPersistenceNotices();
    EXPECT_EQ(problem(), QString());
}

TEST_F(HistoryStore, AFileOfAnOlderVersionThatIsTooLongMovesAfterTheStart)
{
    const qint64 usual = limit;
    limit = ASOStore::usualStateFileLimit;
    restart();
    const TrackedKeyword keyword = addKeyword("moon");
    measureDaily(keyword, 100);
    const QByteArray all = json(allOf(keyword));
    ASSERT_FALSE(hasMovedDays());
    limit = usual;
    stop();
    store = [&] {
        ASOStore::Arguments changed = arguments();
        changed.stateFileLimit = limit;
        return std::make_unique<ASOStore>(std::move(changed));
    }();
    EXPECT_EQ(store->snapshots().size(), 100U) << "the window comes first";
    clock->advance(ASOStore::historyTidyingDelay);
    waitFor([&] { return store->snapshots().size() < 30; });
    finishMoving();
    EXPECT_LE(stateBytes().size(), limit);
    EXPECT_EQ(json(allOf(keyword)), all);
}

/// What a store without a limit has: of each keyword one measurement a UTC day, the last made.
using Model = std::map<QUuid, std::map<std::int64_t, SharedSnapshot>>;

class HistoryWalk : public HistoryStore, public testing::WithParamInterface<unsigned>
{
protected:
    void requireUnion(const Model &model)
    {
        for (const TrackedKeyword &keyword : store->trackedKeywords()) {
            std::vector<SharedSnapshot> expected;
            if (const auto known = model.find(keyword.id); known != model.end()) {
                for (const auto &[day, snapshot] : known->second)
                    expected.push_back(snapshot);
            }
            ASSERT_EQ(json(allOf(keyword)), json(expected));
        }
    }
};

TEST_P(HistoryWalk, KnowsAfterEachStepAndRestartWhatOneWithoutALimitKnows)
{
    std::mt19937 random(GetParam());
    const auto below = [&](int count) {
        return int(random() % unsigned(count));
    };
    limit = 100'000;
    restart();
    QList<TrackedKeyword> keywords;
    Model model;
    int named = 0;
    const auto add = [&] {
        keywords.append(addKeyword(qPrintable(QStringLiteral("keyword %1").arg(++named))));
    };
    for (int i = 0; i < 4; ++i)
        add();
    Date truth = clock->now();
    Seconds error(0);
    for (int step = 0; step < 400; ++step) {
        const int dice = below(100);
        if (dice < 80) {
            const TrackedKeyword &keyword = keywords[below(int(keywords.size()))];
            truth += Seconds(below(4) * 20'000);
            clock->jumpTo(truth + error);
            std::shuffle(client->results.begin(), client->results.end(), random);
            if (refresh(keyword).hasValue()) {
                for (const SharedSnapshot &one : store->keywordSnapshots(keyword.id)) {
                    if (one->fetchedAt == clock->now())
                        model[keyword.id][utcDay(one->fetchedAt)] = one;
                }
            }
        } else if (dice < 84) {
            // A clock that is wrong, ahead or behind.
            error = Seconds((below(5) - 2) * 20 * secondsPerDay);
        } else if (dice < 90) {
            error = Seconds(0);
        } else if (dice < 92 && keywords.size() > 2) {
            const TrackedKeyword gone = keywords.takeAt(below(int(keywords.size())));
            store->removeKeyword(gone.id);
            model.erase(gone.id);
        } else if (dice < 94) {
            add();
        } else if (dice < 97) {
            restart();
        } else {
            finishMoving();
        }
        if (step % 10 != 0)
            continue;
        ASSERT_NO_FATAL_FAILURE(requireUnion(model)) << "step " << step;
    }
    finishMoving();
    ASSERT_NO_FATAL_FAILURE(requireUnion(model));
    restart();
    ASSERT_NO_FATAL_FAILURE(requireUnion(model));
    EXPECT_TRUE(hasMovedDays());
    EXPECT_EQ(problem(), QString());
}

INSTANTIATE_TEST_SUITE_P(Seeds, HistoryWalk, testing::Range(1U, 9U));

} // namespace
} // namespace veltrix
