// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/ranking_timeline.h"
#include "support/generators.h"
#include "support/json_printers.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <limits>
#include <sstream>

namespace veltrix
{
namespace
{

using Observation = RankingTimeline::Observation;

Date at(const char *utc)
{
    const auto date = parseInternetDateTime(QString::fromUtf8(utc));
    EXPECT_TRUE(date) << utc;
    return date.value_or(Date());
}

/// "2026-11-02T08:00 5, 2026-11-03T08:00 -" as observations; "-" is not ranked.
std::vector<Observation> observations(const char *table)
{
    std::vector<Observation> result;
    for (const QString &line : QString::fromUtf8(table).split(u',', Qt::SkipEmptyParts)) {
        const QStringList parts = line.simplified().split(u' ');
        Observation observation{
            QUuid::createUuid(), at(qPrintable(parts[0] + QStringLiteral(":00Z"))), {}};
        if (parts[1] != u"-")
            observation.position = parts[1].toLongLong();
        result.push_back(observation);
    }
    return result;
}

/// One line a day: "02 9 First observation", or "03 · ·" for a day without a check.
std::string print(const std::vector<RankingTimeline::Day> &days)
{
    std::ostringstream out;
    for (const RankingTimeline::Day &day : days) {
        out << formatInternetDateTime(day.date).mid(8, 2).toStdString() << ' ';
        if (!day.observation)
            out << "·";
        else if (day.observation->position)
            out << *day.observation->position;
        else
            out << '-';
        out << ' ' << (day.movement ? day.movement->label().toStdString() : "·") << '\n';
    }
    return out.str();
}

const Date longAgo = at("2020-01-01T00:00:00Z");

TEST(RankMovement, LabelsAreTheWordsOfTheHistory)
{
    EXPECT_EQ(RankMovement::improved(3).label(), QStringLiteral("↑ 3"));
    EXPECT_EQ(RankMovement::declined(2).label(), QStringLiteral("↓ 2"));
    EXPECT_EQ(RankMovement::first().label(), QStringLiteral("First observation"));
    EXPECT_EQ(RankMovement::unchanged().label(), QStringLiteral("No change"));
    EXPECT_EQ(RankMovement::entered().label(), QStringLiteral("Entered results"));
    EXPECT_EQ(RankMovement::left().label(), QStringLiteral("Left results"));
    EXPECT_EQ(RankMovement::stillUnranked().label(), QStringLiteral("Still not ranked"));
}

TEST(RankMovement, FromSevenToFourIsAnImprovementByThree)
{
    EXPECT_EQ(RankMovement::between(7, 4), RankMovement::improved(3));
    EXPECT_EQ(RankMovement::between(4, 7), RankMovement::declined(3));
    EXPECT_EQ(RankMovement::between(4, 4), RankMovement::unchanged());
    EXPECT_EQ(RankMovement::between(std::nullopt, 12), RankMovement::entered());
    EXPECT_EQ(RankMovement::between(12, std::nullopt), RankMovement::left());
    EXPECT_EQ(RankMovement::between(std::nullopt, std::nullopt), RankMovement::stillUnranked());
}

TEST(RankingTimeline, ADayKeepsItsLastObservation)
{
    const RankingTimeline timeline(observations("2026-11-02T20:00 9, 2026-11-02T08:00 5"), longAgo);
    EXPECT_EQ(print(timeline.days(1, at("2026-11-02T23:00:00Z"))), "02 9 First observation\n");
    EXPECT_EQ(timeline.observations.size(), 1U);
    EXPECT_EQ(timeline.startedAt, at("2026-11-02T08:00:00Z"));
}

TEST(RankingTimeline, OfTwoObservationsAtOneInstantTheFirstGivenIsKept)
{
    const RankingTimeline timeline(
        observations("2026-11-02T08:00 5, 2026-11-02T08:00 6, 2026-11-02T07:00 1"), longAgo);
    ASSERT_EQ(timeline.observations.size(), 1U);
    EXPECT_EQ(timeline.observations.front().position, 5);
}

TEST(RankingTimeline, AMissingDayIsNotInferred)
{
    const RankingTimeline timeline(observations("2026-11-02T09:00 10, 2026-11-04T09:00 7"),
                                   longAgo);
    EXPECT_EQ(print(timeline.days(3, at("2026-11-04T10:00:00Z"))),
              "02 10 First observation\n03 · ·\n04 7 ↑ 3\n");
}

TEST(RankingTimeline, UnrankedDaysHaveTheirOwnMovements)
{
    const RankingTimeline timeline(
        observations("2026-11-01T09:00 -, 2026-11-02T09:00 -, 2026-11-03T09:00 12, "
                     "2026-11-04T09:00 -, 2026-11-05T09:00 3, 2026-11-06T09:00 3, "
                     "2026-11-07T09:00 5"),
        longAgo);
    EXPECT_EQ(print(timeline.days(7, at("2026-11-07T10:00:00Z"))),
              "01 - First observation\n02 - Still not ranked\n03 12 Entered results\n"
              "04 - Left results\n05 3 Entered results\n06 3 No change\n07 5 ↓ 2\n");
}

TEST(RankingTimeline, AtMostFourteenDaysAreListed)
{
    const RankingTimeline timeline({}, longAgo);
    const auto days = timeline.days(30, at("2026-11-30T10:00:00Z"));
    ASSERT_EQ(days.size(), 14U);
    EXPECT_EQ(days.front().date, at("2026-11-17T00:00:00Z"));
    EXPECT_EQ(days.back().date, at("2026-11-30T00:00:00Z"));
    EXPECT_TRUE(timeline.days(0, at("2026-11-30T10:00:00Z")).empty());
    EXPECT_TRUE(timeline.days(-1, at("2026-11-30T10:00:00Z")).empty());
}

TEST(RankingTimeline, DaysBeforeTrackingBeganAreNotListed)
{
    const RankingTimeline timeline({}, at("2026-11-29T23:59:00Z"));
    EXPECT_EQ(print(timeline.days(7, at("2026-11-30T00:01:00Z"))), "29 · ·\n30 · ·\n");
}

TEST(RankingTimeline, AStartAfterTodayListsNothing)
{
    const RankingTimeline timeline(observations("2026-11-05T09:00 4"), longAgo);
    EXPECT_TRUE(timeline.days(14, at("2026-11-04T23:59:59Z")).empty());
}

TEST(RankingTimeline, MidnightBelongsToTheDayThatStartsThen)
{
    const RankingTimeline timeline(observations("2026-11-02T23:59 5, 2026-11-03T00:00 4"), longAgo);
    EXPECT_EQ(print(timeline.days(2, at("2026-11-03T00:00:00Z"))),
              "02 5 First observation\n03 4 ↑ 1\n");
}

TEST(RankingTimeline, TheOldestDayListedIsComparedWithTheObservationBeforeIt)
{
    const RankingTimeline timeline(
        observations("2026-10-01T09:00 20, 2026-11-02T09:00 5, 2026-11-03T09:00 6"), longAgo);
    EXPECT_EQ(print(timeline.days(2, at("2026-11-03T10:00:00Z"))), "02 5 ↑ 15\n03 6 ↓ 1\n");
}

TEST(RankingTimeline, TheLatestMovementIsThatOfTheNewestObservation)
{
    EXPECT_EQ(RankingTimeline({}, longAgo).latestMovement(), std::nullopt);
    EXPECT_EQ(RankingTimeline(observations("2026-11-02T09:00 5"), longAgo).latestMovement(),
              RankMovement::first());
    EXPECT_EQ(RankingTimeline(observations("2026-11-02T09:00 5, 2026-10-02T09:00 8"), longAgo)
                  .latestMovement(),
              RankMovement::improved(3));
}

TEST(RankingTimeline, WithoutObservationsItStartsWhenTrackingBegan)
{
    EXPECT_EQ(RankingTimeline({}, longAgo).startedAt, longAgo);
}

TEST(RankingTimeline, DatesAtTheEndsOfTheRangeDoNoHarm)
{
    const Date wild = dateFromReferenceSeconds(1e300);
    const Date wildest = dateFromReferenceSeconds(-1e300);
    EXPECT_EQ(RankingTimeline({}, wildest).days(14, wild).size(), 14U);
    EXPECT_EQ(RankingTimeline({}, wildest).days(14, wildest).size(), 1U);
    EXPECT_EQ(RankingTimeline({}, wild).days(14, wild).size(), 1U);
    EXPECT_TRUE(RankingTimeline({}, wild).days(14, wildest).empty());
}

/// Observations scattered over some three weeks around the beginning of 2001.
rc::Gen<std::vector<Observation>> scattered()
{
    return rc::gen::container<std::vector<Observation>>(rc::gen::map(
        rc::gen::tuple(rc::gen::inRange(-1'000'000, 1'000'000),
                       rc::gen::arbitrary<std::optional<std::uint8_t>>()),
        [](const std::tuple<int, std::optional<std::uint8_t>> &values) {
            Observation observation{
                QUuid::createUuid(), dateFromReferenceSeconds(std::get<0>(values)), {}};
            if (const auto position = std::get<1>(values))
                observation.position = *position + 1;
            return observation;
        }));
}

RC_GTEST_PROP(RankingTimeline, KeepsOneObservationADayInOrder, ())
{
    const std::vector<Observation> given = *scattered();
    const RankingTimeline timeline(given, Date());
    std::set<std::int64_t> days;
    for (const Observation &observation : given)
        days.insert(utcDay(observation.date));
    RC_ASSERT(timeline.observations.size() == days.size());
    for (size_t i = 1; i < timeline.observations.size(); ++i) {
        RC_ASSERT(utcDay(timeline.observations[i - 1].date) <
                  utcDay(timeline.observations[i].date));
    }
    for (const Observation &observation : given) {
        const auto kept = std::ranges::find_if(timeline.observations, [&](const auto &candidate) {
            return utcDay(candidate.date) == utcDay(observation.date);
        });
        RC_ASSERT(kept != timeline.observations.end());
        RC_ASSERT(kept->date >= observation.date);
        RC_ASSERT(timeline.startedAt <= observation.date);
    }
}

RC_GTEST_PROP(RankingTimeline, DaysAreConsecutiveAndEndToday, ())
{
    const RankingTimeline timeline(*scattered(), Date());
    const Date now = dateFromReferenceSeconds(*rc::gen::inRange(-1'500'000, 1'500'000));
    const auto count = *rc::gen::inRange<std::int64_t>(-2, 20);
    const auto days = timeline.days(count, now);
    const std::int64_t tracked = utcDay(now) - utcDay(timeline.startedAt) + 1;
    const std::int64_t expected =
        std::max<std::int64_t>(0, std::min({count, std::int64_t(14), tracked}));
    RC_ASSERT(std::int64_t(days.size()) == expected);
    for (size_t i = 0; i < days.size(); ++i) {
        const std::int64_t day = utcDay(now) - std::int64_t(days.size() - 1 - i);
        RC_ASSERT(days[i].date == startOfUtcDay(day));
        RC_ASSERT(days[i].observation.has_value() == days[i].movement.has_value());
        const bool hasOne = std::ranges::any_of(
            timeline.observations, [&](const auto &o) { return utcDay(o.date) == day; });
        RC_ASSERT(days[i].observation.has_value() == hasOne);
    }
}

TEST(RankMovementExtremes, PositionsOfADamagedFileDoNotOverflow)
{
    constexpr auto most = std::numeric_limits<std::int64_t>::max();
    constexpr auto least = std::numeric_limits<std::int64_t>::min();
    EXPECT_EQ(RankMovement::between(least, most), RankMovement::declined(most));
    EXPECT_EQ(RankMovement::between(most, least), RankMovement::improved(most));
    EXPECT_EQ(RankMovement::between(-1, most), RankMovement::declined(most));
    EXPECT_EQ(RankMovement::between(1, most), RankMovement::declined(most - 1));
    EXPECT_EQ(RankMovement::between(0, -5), RankMovement::improved(5));
    EXPECT_EQ(RankMovement::between(least, least), RankMovement::unchanged());
}

} // namespace
} // namespace veltrix
