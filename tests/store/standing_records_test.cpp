// SPDX-License-Identifier: GPL-3.0-or-later
// Where others stood: what results say of it, and what the history keeps.
#include "effects/atomic_file.h"
#include "json/json_error.h"
#include "store/history_database.h"
#include "store/scratch_folder.h"
#include "store/standing_records.h"

#include <QFileInfo>

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

constexpr std::int64_t firstDay = 9'000;

QUuid numbered(int number)
{
    return {uint(number), 0, 0, 0, 0, 0, 0, 0, 0, 0, 0};
}

QList<ITunesAppResult> resultsOf(std::initializer_list<std::int64_t> ids)
{
    QList<ITunesAppResult> results;
    for (const std::int64_t id : ids) {
        ITunesAppResult result;
        result.trackId = id;
        result.trackName = QStringLiteral("App %1").arg(id);
        results.append(result);
    }
    return results;
}

TrackedCompetitor rival(int number, std::int64_t trackId)
{
    TrackedCompetitor competitor;
    competitor.id = numbered(number);
    competitor.trackId = trackId;
    return competitor;
}

KeywordSnapshot measured(int keyword = 1, int day = 0, double hour = 8)
{
    KeywordSnapshot snapshot;
    snapshot.trackedKeywordId = numbered(keyword);
    snapshot.fetchedAt = startOfUtcDay(firstDay + day) + Seconds(hour * 3'600);
    return snapshot;
}

std::vector<std::int64_t> idsOf(const std::vector<LeadingApp> &leaders)
{
    std::vector<std::int64_t> ids;
    for (const LeadingApp &leader : leaders)
        ids.push_back(leader.trackId);
    return ids;
}

TEST(Standings, NameTheKeywordTheMomentAndTheFirstTen)
{
    const KeywordSnapshot snapshot = measured();
    const auto standings =
        standingsOf(snapshot, resultsOf({9, 8, 7, 6, 5, 4, 3, 2, 1, 11, 12}), {});
    EXPECT_EQ(standings.keywordId, snapshot.trackedKeywordId);
    EXPECT_EQ(standings.fetchedAt, snapshot.fetchedAt);
    EXPECT_EQ(idsOf(standings.leaders), (std::vector<std::int64_t>{9, 8, 7, 6, 5, 4, 3, 2, 1, 11}));
    EXPECT_EQ(standings.leaders[0].name, QStringLiteral("App 9"));
}

TEST(Standings, AResultWithoutAnIdLeavesItsPlace)
{
    auto results = resultsOf({5, 6});
    results.insert(1, ITunesAppResult());
    EXPECT_EQ(idsOf(standingsOf(measured(), results, {}).leaders),
              (std::vector<std::int64_t>{5, 0, 6}));
}

TEST(Standings, ACompetitorThatIsNotAmongTheResultsIsKeptAsSuch)
{
    const auto standings =
        standingsOf(measured(), resultsOf({5, 6, 7}), {rival(1, 7), rival(2, 70)});
    EXPECT_EQ(standings.rivals,
              (std::vector<RivalStanding>{{numbered(1), 3}, {numbered(2), std::nullopt}}));
}

class StandingRecordsTest : public testing::Test
{
protected:
    [[nodiscard]] QString path() const { return folder->filePath(QStringLiteral("h.sqlite")); }
    [[nodiscard]] HistoryDatabase open() const { return HistoryDatabase::openOrCreate(path()); }

    void keep(const KeywordSnapshot &snapshot, const QList<ITunesAppResult> &results,
              const QList<TrackedCompetitor> &rivals = {}) const
    {
        const HistoryEdit edit = KeepStandings{standingsOf(snapshot, results, rivals), {}, {}};
        open().apply(std::span(&edit, 1));
    }

    std::unique_ptr<QTemporaryDir> folder = scratchFolder();
};

TEST_F(StandingRecordsTest, ComeOutAsTheyWentInAndInTheOrderOfTheirDays)
{
    keep(measured(1, 2), resultsOf({5, 6}), {rival(11, 6), rival(12, 60)});
    keep(measured(1, 1), resultsOf({6, 5}), {rival(11, 6)});
    keep(measured(2, 1), resultsOf({}));
    const auto found = open().standings(numbered(1));
    ASSERT_EQ(found.size(), 2);
    EXPECT_EQ(found[0], standingsOf(measured(1, 1), resultsOf({6, 5}), {rival(11, 6)}));
    EXPECT_EQ(found[1],
              standingsOf(measured(1, 2), resultsOf({5, 6}), {rival(11, 6), rival(12, 60)}));
    EXPECT_EQ(open().standings(numbered(2)).size(), 1) << "nothing found is a finding";
    EXPECT_TRUE(open().standings(numbered(3)).empty());
}

TEST_F(StandingRecordsTest, ADayThatIsMeasuredAgainIsReplaced)
{
    keep(measured(1, 1, 8), resultsOf({5, 6}), {rival(11, 6), rival(12, 5)});
    keep(measured(1, 1, 20), resultsOf({6, 5}), {rival(11, 6)});
    const auto found = open().standings(numbered(1));
    ASSERT_EQ(found.size(), 1);
    EXPECT_EQ(found[0].fetchedAt, measured(1, 1, 20).fetchedAt);
    EXPECT_EQ(found[0].rivals, (std::vector<RivalStanding>{{numbered(11), 1}}));
}

TEST_F(StandingRecordsTest, AnAppIsCalledWhatItWasCalledLast)
{
    keep(measured(1, 1), resultsOf({5}));
    auto renamed = resultsOf({5});
    renamed[0].trackName = QStringLiteral("Grainy Pro");
    keep(measured(1, 2), renamed);
    EXPECT_EQ(open().standings(numbered(1)).front().leaders[0].name, QStringLiteral("Grainy Pro"));
}

TEST_F(StandingRecordsTest, TheNewestLeaveOutWhatLiesAhead)
{
    keep(measured(1, 1), resultsOf({5}), {rival(11, 5)});
    keep(measured(1, 2), resultsOf({6}), {rival(11, 5)});
    keep(measured(1, 400), resultsOf({7}));
    keep(measured(2, 1), resultsOf({8}));
    const std::vector ids{numbered(1), numbered(2), numbered(3)};
    const auto found = open().newestStandings(ids, startOfUtcDay(firstDay + 3));
    ASSERT_EQ(found.size(), 2);
    EXPECT_EQ(found[0], standingsOf(measured(1, 2), resultsOf({6}), {rival(11, 5)}));
    EXPECT_EQ(found[1], standingsOf(measured(2, 1), resultsOf({8}), {}));
}

TEST_F(StandingRecordsTest, ACompetitorThatGoesTakesItsRanksAlong)
{
    keep(measured(1, 1), resultsOf({5, 6}), {rival(11, 5), rival(12, 6)});
    open().remove(numbered(11));
    EXPECT_EQ(open().standings(numbered(1)).front().rivals,
              (std::vector<RivalStanding>{{numbered(12), 2}}));
}

TEST_F(StandingRecordsTest, AKeywordThatGoesTakesItsStandingsAlong)
{
    keep(measured(1, 1), resultsOf({5}), {rival(11, 5)});
    keep(measured(2, 1), resultsOf({5}), {rival(11, 5)});
    open().remove(numbered(1));
    EXPECT_TRUE(open().standings(numbered(1)).empty());
    EXPECT_EQ(open().standings(numbered(2)).size(), 1);
    SqliteDatabase database(path());
    SqliteStatement count = database.prepare("SELECT count(*) FROM place");
    ASSERT_TRUE(count.step());
    EXPECT_EQ(count.integer(0), 1);
}

TEST_F(StandingRecordsTest, AKeywordThatJoinsAnotherBringsTheDaysThatAreNewer)
{
    keep(measured(1, 1, 8), resultsOf({1}), {rival(11, 1)});
    keep(measured(1, 2, 20), resultsOf({2}), {rival(11, 2)});
    keep(measured(2, 2, 8), resultsOf({3}), {rival(11, 3)});
    keep(measured(1, 3, 8), resultsOf({4}));
    keep(measured(2, 3, 20), resultsOf({5}));
    open().join(numbered(1), numbered(2));
    const auto found = open().standings(numbered(2));
    ASSERT_EQ(found.size(), 3);
    EXPECT_EQ(idsOf(found[0].leaders), (std::vector<std::int64_t>{1}));
    EXPECT_EQ(idsOf(found[1].leaders), (std::vector<std::int64_t>{2}));
    EXPECT_EQ(found[1].rivals.size(), 1);
    EXPECT_EQ(idsOf(found[2].leaders), (std::vector<std::int64_t>{5}));
    EXPECT_TRUE(open().standings(numbered(1)).empty());
}

TEST_F(StandingRecordsTest, ACompetitorThatJoinsAnotherBringsItsRanks)
{
    keep(measured(1, 1), resultsOf({5}), {rival(11, 5)});
    keep(measured(1, 2), resultsOf({5}), {rival(11, 5), rival(12, 50)});
    open().join(numbered(11), numbered(12));
    const auto found = open().standings(numbered(1));
    EXPECT_EQ(found[0].rivals, (std::vector<RivalStanding>{{numbered(12), 1}}));
    EXPECT_EQ(found[1].rivals, (std::vector<RivalStanding>{{numbered(12), std::nullopt}}));
}

TEST_F(StandingRecordsTest, MovedMeasurementsOfADayLeaveItsStandings)
{
    keep(measured(1, 1), resultsOf({5}));
    auto snapshot = std::make_shared<KeywordSnapshot>(measured(1, 1));
    snapshot->id = QUuid::createUuid();
    open().insert(std::vector<SharedSnapshot>{snapshot});
    EXPECT_EQ(open().standings(numbered(1)).size(), 1);
}

TEST_F(StandingRecordsTest, ADamagedRowIsAnErrorAndNoGuess)
{
    keep(measured(1, 1), resultsOf({5}));
    for (const char *damage : {"[1,", "{}", "[\"a\"]", "[-4]", "[1,2,3,4,5,6,7,8,9,10,11]"}) {
        SqliteDatabase database(path());
        SqliteStatement spoil = database.prepare("UPDATE leader SET apps = ?1");
        spoil.bind(1, QString::fromLatin1(damage));
        spoil.run();
        EXPECT_THROW((void)open().standings(numbered(1)), DecodingError) << damage;
    }
}

TEST_F(StandingRecordsTest, AMeasurementWithTwentyCompetitorsTakesLessThanAKilobyte)
{
    QList<ITunesAppResult> results;
    QList<TrackedCompetitor> rivals;
    for (int i = 0; i < 100; ++i)
        results.append(resultsOf({6'400'000'000 + i}));
    for (int i = 0; i < 20; ++i)
        rivals.append(rival(100 + i, 6'400'000'080 + i));
    std::vector<HistoryEdit> edits;
    for (int day = 0; day < 365; ++day) {
        for (int keyword = 0; keyword < 10; ++keyword) {
            edits.emplace_back(
                KeepStandings{standingsOf(measured(keyword, day), results, rivals), {}, {}});
        }
    }
    open().apply(edits);
    EXPECT_LT(QFileInfo(path()).size() / qint64(edits.size()), 1'000);
}

} // namespace
} // namespace veltrix
