// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/competitors/above_you.h"

#include "store/rank_days.h"
#include "store/store_fixture.h"
#include "ui/competitors/above_you_model.h"

#include <QAbstractItemModelTester>

#include <rapidcheck/gtest.h>

namespace veltrix
{
namespace
{

/// UTC day of 2026-11-22.
constexpr std::int64_t today = 9'456;
constexpr std::int64_t ownApp = 101;
const QLocale english(QLocale::English, QLocale::UnitedStates);

Date noon(std::int64_t day)
{
    return startOfUtcDay(day) + Seconds(43'200);
}

QUuid id(uint number)
{
    return QUuid(number, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0);
}

/// What is kept of one keyword, made up day by day.
struct Kept {
    AboveYou::Sources sources;

    Kept()
    {
        sources.ownTrackId = ownApp;
        sources.now = noon(today);
    }
    /// Competitor number n is the app n.
    Kept &track(std::int64_t trackId, const char *name = "")
    {
        TrackedCompetitor competitor;
        competitor.id = id(uint(trackId));
        competitor.trackId = trackId;
        competitor.name = text(name);
        sources.competitors.append(competitor);
        return *this;
    }
    /// A check: the user's rank (0: not ranked, -1: not known), the leaders by their ids, and the
    /// ranks of competitors (0: not among the results).
    Kept &check(int daysAgo, int own, const std::vector<std::int64_t> &leaders,
                const std::vector<std::pair<std::int64_t, int>> &rivals = {})
    {
        KeywordStandings standings{id(1), noon(today - daysAgo), {}, {}};
        for (const std::int64_t leader : leaders)
            standings.leaders.push_back(
                {leader, leader == 0 ? QString() : QStringLiteral("App%1").arg(leader)});
        for (const auto &[rival, rank] : rivals)
            standings.rivals.push_back(
                {id(uint(rival)), rank > 0 ? std::optional<std::int64_t>(rank) : std::nullopt});
        sources.standings.push_back(standings);
        if (own >= 0) {
            RankingTimeline::Observation observation;
            observation.date = standings.fetchedAt;
            if (own > 0)
                observation.position = own;
            sources.own.push_back(observation);
        }
        return *this;
    }
    [[nodiscard]] AboveYou above() const { return AboveYou::of(sources); }
    /// "1 App11 · 7 days ago … · … · since …", a line each.
    [[nodiscard]] QStringList lines() const
    {
        QStringList lines;
        for (const AppAbove &app : above().apps)
            lines << QStringLiteral("%1 %2 | %3 | %4 | %5")
                         .arg(app.rank)
                         .arg(app.shownName(), app.weekAgoText(), app.movementText(),
                              app.sinceText(sources.now, english));
        return lines;
    }
};

const std::vector<std::int64_t> ten{11, 12, 13, 14, 15, 16, 17, 18, 19, 20};

TEST(AboveYou, NothingIsKeptBeforeTheNextMeasurement)
{
    const AboveYou above = Kept().above();
    EXPECT_TRUE(above.apps.empty());
    EXPECT_EQ(above.emptyText(), text("Ranks of others are kept from the next measurement on."));
    EXPECT_EQ(above.ownText(english), QString());
}

TEST(AboveYou, LeadersAboveTheUsersRankStandInTheirOrder)
{
    const Kept kept = Kept().check(0, 3, {11, 12, ownApp, 14, 15});
    EXPECT_EQ(kept.lines(), (QStringList{text("1 App11 | — | — | Nov 22 or earlier"),
                                         text("2 App12 | — | — | Nov 22 or earlier")}));
    EXPECT_EQ(kept.above().ownText(english), text("Your rank 3 on Nov 22"));
    EXPECT_EQ(kept.above().emptyText(), QString());
}

TEST(AboveYou, OfAnAppThatIsNotRankedAllAreAbove)
{
    const Kept kept = Kept().track(30).check(0, 0, {11, 12}, {{30, 0}});
    EXPECT_EQ(kept.above().apps.size(), 2U);
    EXPECT_EQ(kept.above().ownText(english), text("Your app was not ranked on Nov 22"));
    EXPECT_EQ(Kept().check(0, 0, {11, ownApp}).above().apps.size(), 1U)
        << "the user's app is never above itself";
}

TEST(AboveYou, TheFirstHasNobodyAbove)
{
    EXPECT_EQ(Kept().check(0, 1, {ownApp, 12, 13}).above().emptyText(),
              text("No app is above yours."));
}

TEST(AboveYou, BelowTenTrackedCompetitorsAloneAreKnown)
{
    const Kept kept = Kept()
                          .track(30, "Grainy")
                          .track(31)
                          .track(32)
                          .check(0, 24, ten, {{30, 17}, {31, 40}, {32, 0}});
    const AboveYou above = kept.above();
    ASSERT_EQ(above.apps.size(), 11U);
    EXPECT_EQ(above.apps.back().rank, 17);
    EXPECT_EQ(above.apps.back().shownName(), text("Grainy"));
    EXPECT_TRUE(above.apps.back().isTracked);
    EXPECT_FALSE(above.apps.front().isTracked);
    EXPECT_EQ(above.noteText(),
              text("Ranks below ten are kept of your tracked competitors alone."));
}

TEST(AboveYou, ACompetitorAmongTheLeadersStandsOnce)
{
    const AboveYou above = Kept().track(12).check(0, 5, {11, 12}, {{12, 2}}).above();
    ASSERT_EQ(above.apps.size(), 2U);
    EXPECT_TRUE(above.apps[1].isTracked);
}

TEST(AboveYou, AResultWithoutANumberKeepsItsPlace)
{
    const AboveYou above = Kept().check(0, 5, {11, 0, 0, 12}).above();
    ASSERT_EQ(above.apps.size(), 4U);
    EXPECT_EQ(above.apps[1].rank, 2);
    EXPECT_EQ(above.apps[2].shownName(), text("Unknown app"));
    EXPECT_EQ(above.apps[2].sinceText(noon(today), english), text("—"));
}

TEST(AboveYou, TheWeekIsThatOfRankDays)
{
    // The check of that day; else the nearest of the seven days before it; else nothing.
    EXPECT_EQ(Kept().check(7, 9, {12, 11}).check(0, 9, {11, 12}).lines().front(),
              text("1 App11 | 2nd | ↑ 1 | Nov 15 or earlier"));
    EXPECT_EQ(Kept().check(6, 9, {12, 11}).check(0, 9, {11, 12}).lines().front(),
              text("1 App11 | — | — | Nov 16 or earlier"));
    EXPECT_EQ(Kept().check(14, 9, {12, 11}).check(0, 9, {11, 12}).lines().front(),
              text("1 App11 | 2nd | ↑ 1 | Nov 8 or earlier"));
    EXPECT_EQ(Kept().check(15, 9, {12, 11}).check(0, 9, {11, 12}).lines().front(),
              text("1 App11 | — | — | Nov 7 or earlier"));
    EXPECT_EQ(Kept().check(9, 9, {12, 11}).check(8, 9, {13, 12, 11}).check(0, 9, {11}).lines(),
              QStringList{text("1 App11 | 3rd | ↑ 2 | Nov 13 or earlier")});
}

TEST(AboveYou, WhatWasNotCheckedForAWeekHasNotMoved)
{
    EXPECT_EQ(Kept().check(8, 9, {11}).lines(),
              QStringList{text("1 App11 | 1st | — | Nov 14 or earlier")});
}

TEST(AboveYou, AnAppThatWasBelowTenIsSaidToBeUnlessAllResultsWereKept)
{
    EXPECT_EQ(Kept().check(7, 30, ten).check(0, 30, {55}).lines(),
              QStringList{text("1 App55 | Below 10 | — | Nov 22 or earlier")});
    EXPECT_EQ(Kept().check(7, 3, {11, 12}).check(0, 3, {55}).lines(),
              QStringList{text("1 App55 | Not ranked | Entered results | Nov 22")});
    EXPECT_EQ(Kept().track(55).check(7, 30, ten, {{55, 40}}).check(0, 30, {55}, {{55, 1}}).lines(),
              QStringList{text("1 App55 | # 40 | ↑ 39 | Nov 22")});
}

TEST(AboveYou, SinceIsTheFirstOfAllChecksUpToNowAtWhichItWasAbove)
{
    const Kept kept = Kept()
                          .check(5, 2, {11, ownApp, 12})
                          .check(4, 2, {12, ownApp, 11})
                          .check(2, 3, {12, 11, ownApp})
                          .check(0, 3, {12, 11, ownApp});
    EXPECT_EQ(kept.lines(),
              (QStringList{text("1 App12 | — | — | Nov 18"), text("2 App11 | — | — | Nov 20")}));
}

TEST(AboveYou, ACheckThatCannotTellEndsWhatIsKnown)
{
    // Below ten, as the user's app was.
    EXPECT_EQ(Kept().check(3, 30, ten).check(1, 30, {55}).check(0, 30, {55}).lines(),
              QStringList{text("1 App55 | — | — | Nov 21 or earlier")});
    // The user's app was among the ten, so the other was not above it.
    EXPECT_EQ(Kept().check(3, 10, ten).check(1, 30, {55}).check(0, 30, {55}).lines(),
              QStringList{text("1 App55 | — | — | Nov 21")});
    // Where the user's app stood is not known.
    EXPECT_EQ(Kept().check(3, -1, {55}).check(1, 30, {55}).check(0, 30, {55}).lines(),
              QStringList{text("1 App55 | — | — | Nov 21 or earlier")});
}

TEST(AboveYou, TheUsersRankIsThatOfTheSameCheck)
{
    Kept kept = Kept().check(2, 4, {11, 12, 13, ownApp});
    RankingTimeline::Observation newer;
    newer.date = noon(today);
    newer.position = 1;
    kept.sources.own.push_back(newer);
    const AboveYou above = kept.above();
    EXPECT_EQ(above.ownText(english), text("Your rank 4 on Nov 20"));
    EXPECT_EQ(above.apps.size(), 3U);
    EXPECT_TRUE(above.noteText().endsWith(text(
        "What the newest check found of others could not be kept, so this is an earlier one.")));
}

TEST(AboveYou, WithoutTheUsersRankOfThatCheckNothingIsSaidToBeAbove)
{
    const AboveYou above = Kept().check(0, -1, {11, 12}).above();
    EXPECT_TRUE(above.apps.empty());
    EXPECT_EQ(above.emptyText(),
              text("Where your app stood at the last check isn't known any more."));
}

TEST(AboveYou, NamesAndIconsComeFromWhatIsAtHand)
{
    Kept kept = Kept().check(0, 0, {11, 12});
    kept.sources.standings.back().leaders[1].name.clear();
    ITunesAppResult result = appResult(12, "Hazel \u202EPresets");
    result.artworkUrl100 = text("https://icons.example/hazel.png");
    kept.sources.results = {result};
    const AboveYou above = kept.above();
    EXPECT_EQ(above.apps[0].icon, std::nullopt);
    EXPECT_EQ(above.apps[1].shownName(), text("Hazel Presets"));
    EXPECT_TRUE(above.apps[1].icon);
    kept.sources.results.clear();
    EXPECT_EQ(kept.above().apps[1].shownName(), text("App 12"));
}

RC_GTEST_PROP(AboveYou, EveryAppHasABetterRankAndHasBeenAboveAtEveryCheckSince, ())
{
    Kept kept;
    kept.track(12).track(13);
    const int checks = *rc::gen::inRange(1, 12);
    for (int daysAgo = checks - 1; daysAgo >= 0; --daysAgo) {
        const auto leaders = *rc::gen::unique<std::vector<std::int64_t>>(
            *rc::gen::inRange<std::size_t>(0, 6), rc::gen::inRange<std::int64_t>(11, 20));
        kept.check(daysAgo, *rc::gen::inRange(-1, 30), leaders,
                   {{12, *rc::gen::inRange(0, 40)}, {13, *rc::gen::inRange(0, 40)}});
    }
    const AboveYou above = kept.above();
    for (const AppAbove &app : above.apps) {
        RC_ASSERT((!above.ownRank || app.rank < *above.ownRank));
        RC_ASSERT(app.trackId != ownApp);
        RC_ASSERT(app.sinceDay <= today);
        // Nothing that is known of the time since then contradicts it.
        for (const KeywordStandings &check : kept.sources.standings) {
            if (utcDay(check.fetchedAt) < app.sinceDay)
                continue;
            const auto own = std::ranges::find_if(kept.sources.own, [&](const auto &observation) {
                return observation.date == check.fetchedAt;
            });
            RC_ASSERT(own != kept.sources.own.end());
            const auto place = std::ranges::find_if(check.leaders, [&](const LeadingApp &leader) {
                return leader.trackId == app.trackId;
            });
            if (place != check.leaders.end() && own->position)
                RC_ASSERT(std::distance(check.leaders.begin(), place) + 1 < *own->position);
        }
    }
    RC_ASSERT(std::ranges::is_sorted(above.apps, {}, &AppAbove::rank));
}

/// A competitor that every check has looked for moves as the user's own keywords do.
RC_GTEST_PROP(AboveYou, TheWeekOfACompetitorIsWhatRankDaysSayOfTheSameRanks, ())
{
    Kept kept;
    kept.track(30);
    RankDays days(today);
    const auto daysAgo = *rc::gen::unique<std::vector<int>>(rc::gen::inRange(0, 25));
    std::set<int, std::greater<>> ordered(daysAgo.begin(), daysAgo.end());
    for (const int ago : ordered) {
        const int rank = *rc::gen::inRange(0, 60);
        kept.check(ago, 0, {}, {{30, rank}});
        days.add({today - ago, rank > 0 ? std::optional<std::int64_t>(rank) : std::nullopt});
    }
    const AboveYou above = kept.above();
    if (above.apps.empty())
        return;
    RC_ASSERT(above.apps.size() == 1U);
    RC_ASSERT(above.apps[0].movement == days.movementSince(7));
    RC_ASSERT(above.apps[0].weekAgo.has_value() == days.daysAgo(7).has_value());
}

class AboveYouModelTest : public testing::Test
{
protected:
    static AppAbove app(std::int64_t trackId, const char *name, std::int64_t rank)
    {
        AppAbove made;
        made.trackId = trackId;
        made.name = text(name);
        made.rank = rank;
        made.sinceDay = today - 3;
        return made;
    }
    QString sentence(int row)
    {
        QStringList cells;
        for (int column = 0; column < model.columnCount(); ++column)
            cells << model.index(row, column).data(Qt::AccessibleTextRole).toString();
        return cells.join(text(", "));
    }

    AboveYouModel model;
    QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

TEST_F(AboveYouModelTest, ARowReadsAsOneSentence)
{
    AppAbove grainy = app(12, "Grainy", 4);
    grainy.weekAgo = CheckedRank{CheckedRank::Kind::Ranked, 6};
    grainy.movement = RankMovement::improved(2);
    grainy.isTracked = true;
    model.setApps({grainy}, noon(today));
    EXPECT_EQ(sentence(0), text("Rank 4, Grainy, 7 days ago rank 6, up 2, above you since Nov 19, "
                                "tracked as competitor"));
}

TEST_F(AboveYouModelTest, AnAppThatStaysKeepsItsRowWhileOthersComeAndGo)
{
    model.setApps({app(11, "Aster", 1), app(12, "Birch", 2), app(0, "", 3)}, noon(today));
    const QPersistentModelIndex birch = model.index(1, 0);
    model.setApps({app(12, "Birch", 1), app(13, "Cedar", 2), app(0, "", 3)}, noon(today));
    EXPECT_EQ(birch.row(), 0);
    EXPECT_EQ(model.rowCount(), 3);
    EXPECT_EQ(model.entryAt(1).app.name, text("Cedar"));
}

} // namespace
} // namespace veltrix
