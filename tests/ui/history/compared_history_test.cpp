// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/history/compared_history.h"

#include "ui/history/compared_pictures.h"
#include "ui/history/compared_text.h"

#include <rapidcheck/gtest.h>

namespace veltrix
{
namespace
{

const QLocale english(QLocale::English, QLocale::UnitedStates);

QStringList namesOf(const std::vector<const ComparedLine *> &lines)
{
    QStringList names;
    for (const ComparedLine *line : lines)
        names << line->name;
    return names;
}

TEST(RivalObservations, SayNothingOfMeasurementsBeforeTheAppWasTracked)
{
    const RivalApp app{201, text("Foxglove"), {rivalId(1)}};
    const auto checks = rivalObservations(app, standingsOf({{1, "- - 7 x 5"}}));
    ASSERT_EQ(checks.size(), 3U);
    EXPECT_EQ(checks[0].position, std::optional<std::int64_t>(7));
    EXPECT_EQ(checks[1].position, std::nullopt);
    EXPECT_EQ(utcDay(checks[0].date), firstPictureDay + 2);
}

TEST(RivalObservations, OfOneAppInTwoStorefrontsAreOneADay)
{
    const RivalApp app{201, text("Foxglove"), {rivalId(1), rivalId(2)}};
    const auto checks = rivalObservations(app, standingsOf({{1, "- 7 x"}, {2, "3 7 4"}}));
    ASSERT_EQ(checks.size(), 3U);
    EXPECT_EQ(checks[0].position, std::optional<std::int64_t>(3));
    EXPECT_EQ(checks[2].position, std::optional<std::int64_t>(4));
}

TEST(ComparedChart, GapsStandWhereACheckFoundNothing)
{
    const ComparedChart chart =
        chartOf("9 8 . 7 6", comparisonOf({rival(1, "Foxglove")}, standingsOf({{1, "3 x . 2 4"}})));
    EXPECT_EQ(drawn(chart.own.data), text("a9 a8 . a7 a6"));
    EXPECT_EQ(drawn(chart.rivals[0].data), text("a3 x . b2 b4"));
}

TEST(ComparedChart, ALineThatBeginsLaterSaysFromWhen)
{
    const ComparedChart chart =
        chartOf("9 8 7 6", comparisonOf({rival(1, "Foxglove"), rival(2, "Grainy")},
                                        standingsOf({{1, "3 3 3 3"}, {2, "- - 5 5"}})));
    EXPECT_EQ(chart.rivals[0].trackedSince, std::nullopt);
    EXPECT_EQ(chart.rivals[1].trackedSince, std::optional(startOfUtcDay(firstPictureDay + 2)));
}

TEST(ComparedChart, BeginsWithTheFirstThreeThatRankInTheRange)
{
    const ComparedChart chart = chartOf(
        "9 8",
        comparisonOf({rival(1, "A"), rival(2, "B"), rival(3, "C"), rival(4, "D"), rival(5, "E")},
                     standingsOf({{1, "x x"}, {2, "1 2"}, {3, "- 4"}, {4, "5 x"}, {5, "6 6"}})));
    EXPECT_EQ(namesOf(chart.shownLines()).join(u' '), text("Lumen Photo Editor B C D"));
}

TEST(ComparedChart, TheChoiceIsKeptWhateverRanks)
{
    LineChoice choice;
    choice.turn(201, true);
    const Comparison comparison =
        comparisonOf({rival(1, "A"), rival(2, "B")}, standingsOf({{1, "x x"}, {2, "1 2"}}));
    EXPECT_EQ(namesOf(chartOf("9 8", comparison, choice).shownLines()).join(u' '),
              text("Lumen Photo Editor A"));
    choice.turn(ownLine, false);
    choice.turn(202, true);
    EXPECT_EQ(namesOf(chartOf("9 8", comparison, choice).shownLines()).join(u' '), text("A B"));
}

TEST(ComparedChart, LooksStayWhenAnAppGoesAndAnotherComes)
{
    LineChoice choice;
    const auto lookOf = [&](const QList<TrackedCompetitor> &apps, int number) {
        const ComparedChart chart = chartOf("9", comparisonOf(apps, {}), choice);
        return std::ranges::find(chart.rivals, 200 + number, &ComparedLine::key)->look;
    };
    const TrackedCompetitor a = rival(1, "A");
    const TrackedCompetitor b = rival(2, "B");
    EXPECT_EQ(lookOf({a, b}, 2), (LineLook{Token::Teal, MarkShape::Triangle, false}));
    EXPECT_EQ(lookOf({b}, 2), (LineLook{Token::Teal, MarkShape::Triangle, false}));
    EXPECT_EQ(lookOf({rival(3, "C"), b}, 3), (LineLook{Token::Pink, MarkShape::Diamond, false}));
    EXPECT_EQ(lookOf({a, b}, 1), (LineLook{Token::Orange, MarkShape::Square, false}));
}

TEST(ComparedChart, TheScaleSpansAllLinesThatAreOn)
{
    LineChoice choice;
    const Comparison comparison = comparisonOf({rival(1, "A")}, standingsOf({{1, "44 2"}}));
    EXPECT_EQ(chartOf("9 8", comparison, choice).worstRank(), 44);
    choice.turn(201, false);
    EXPECT_EQ(chartOf("9 8", comparison, choice).worstRank(), 9);
}

TEST(ComparedChart, ADayMeasuredTwiceIsOnePoint)
{
    std::vector<KeywordStandings> standings = standingsOf({{1, "4 3"}});
    KeywordStandings again = standings.back();
    again.fetchedAt = again.fetchedAt + Seconds(60);
    again.rivals[0].rank = 2;
    standings.push_back(again);
    const ComparedChart chart = chartOf("9 8", comparisonOf({rival(1, "A")}, standings));
    EXPECT_EQ(drawn(chart.rivals[0].data), text("a4 a2"));
}

TEST(ComparedChart, MarksOfCompetitorsComeAndGoWithTheirLines)
{
    Comparison comparison = comparisonOf({rival(1, "Foxglove")}, standingsOf({{1, "3 3 3"}}));
    comparison.notes = {noteOn(firstPictureDay + 1, "New subtitle")};
    comparison.listing.changes = {{ListingChangeKind::Version, noonOf(firstPictureDay + 1),
                                   text("DE"), text("3.1"), text("3.2")}};
    comparison.rivalListings.insert(rivalId(1),
                                    {std::nullopt,
                                     {{ListingChangeKind::Price, noonOf(firstPictureDay),
                                       text("US"), text("$1.99"), text("Free")}}});
    LineChoice choice;
    const auto labels = [&] {
        QStringList shown;
        for (const DayMark &mark : chartOf("9 8 7", comparison, choice).shownMarks())
            shown << mark.symbol() + u' ' + mark.label;
        return shown.join(u'|');
    };
    EXPECT_EQ(labels(), text("dollarsign.circle Foxglove: $1.99 to Free|flag New subtitle|"
                             "arrow.up.circle Version 3.2"));
    choice.turn(201, false);
    EXPECT_EQ(labels(), text("flag New subtitle|arrow.up.circle Version 3.2"));
    choice.turn(ownLine, false);
    EXPECT_EQ(labels(), text("flag New subtitle|arrow.up.circle Version 3.2"))
        << "what one did oneself explains the others, too";
}

TEST(MarksOfChanges, NamesAndPricesAreThoseOfTheKeywordsStorefront)
{
    const Date seen = noonOf(firstPictureDay);
    const std::vector<ListingChange> changes{
        {ListingChangeKind::Name, seen, text("DE"), text("Linse"), text("Lumen")},
        {ListingChangeKind::Name, seen, text("US"), text("Lens"), text("Lumen")},
        {ListingChangeKind::Version, seen, text("DE"), text("1"), text("2")},
        {ListingChangeKind::Version, seen + Seconds(60), text("US"), text("1"), text("2")},
        {ListingChangeKind::Icon, seen, text("US"), text("a"), text("b")}};
    QStringList texts;
    for (const DayMark &mark : marksOfChanges(changes, text("US"), ownLine))
        texts << mark.text;
    EXPECT_EQ(texts.join(u'|'), text("New name: “Lens” to “Lumen”|Version 2|New icon"));
}

TEST(SpokenDay, NamesEveryLineAndTheNotes)
{
    Comparison comparison =
        comparisonOf({rival(1, "Foxglove Film Camera"), rival(2, "Grainy"), rival(3, "Late")},
                     standingsOf({{1, "5 5"}, {2, "7 x"}, {3, "4 -"}}));
    comparison.notes = {noteOn(firstPictureDay + 1, "New subtitle")};
    const ComparedChart chart = chartOf("9 12", comparison);
    EXPECT_EQ(spokenDay(chart, 1, english),
              text("Nov 9: Lumen Photo Editor rank 12, Foxglove Film Camera rank 5, Grainy not "
                   "ranked, note: New subtitle"));
    EXPECT_EQ(comparedInspection(chart, 1, english), text("Nov 9: rank 12 · New subtitle"));
}

TEST(SpokenDay, OfANoteOnADayWithoutACheckSaysBoth)
{
    Comparison comparison = comparisonOf({}, {});
    comparison.notes = {noteOn(firstPictureDay + 1, "New subtitle")};
    const ComparedChart chart = chartOf("9 . 8", comparison);
    EXPECT_EQ(spokenDay(chart, 1, english), text("Nov 9: no check saved, note: New subtitle"));
    EXPECT_EQ(comparedInspection(chart, 1, english),
              text("No check saved on Nov 9 · New subtitle"));
    EXPECT_EQ(spokenDay(chart, 0, english), text("Nov 8: rank 9")) << "alone, as it ever was";
}

QString legendOf(const ComparedChart &chart, std::optional<size_t> day)
{
    QStringList lines;
    for (const LegendEntry &entry : legendEntries(chart, day, english))
        lines << (entry.isOn ? text("+") : text("-")) + entry.name + u' ' + entry.rank;
    return lines.join(u'|');
}

TEST(LegendEntries, GiveTheRanksOfTheInspectedDayOrOfTheLatestCheck)
{
    const ComparedChart chart =
        chartOf("9 8 7 .", comparisonOf({rival(1, "A"), rival(2, "B")},
                                        standingsOf({{1, "1 x 4 ."}, {2, "- 6 5 ."}})));
    EXPECT_EQ(legendCaption(chart, std::nullopt, english),
              text("Ranks of the latest check · Nov 10"));
    EXPECT_EQ(legendOf(chart, std::nullopt), text("+Lumen Photo Editor # 7|+A # 4|+B # 5"));
    EXPECT_EQ(legendCaption(chart, 0, english), text("Ranks on Nov 8"));
    EXPECT_EQ(legendOf(chart, 0), text("+Lumen Photo Editor # 9|+A 1st|+B —"));
    EXPECT_EQ(legendOf(chart, 1), text("+Lumen Photo Editor # 8|+A Not ranked|+B # 6"));
    EXPECT_EQ(legendEntries(chart, 1, english)[2].spoken,
              text("B, teal triangles, rank 6, Tracked since Nov 9"));
}

TEST(LegendEntries, AChosenOneThatNeverRankedSaysSo)
{
    LineChoice choice;
    choice.turn(201, true);
    const Comparison comparison = comparisonOf({rival(1, "A"), rival(2, "B"), rival(3, "C")},
                                               standingsOf({{1, "x x"}, {2, "1 1"}}));
    EXPECT_EQ(legendOf(chartOf("9 8", comparison, choice), std::nullopt),
              text("+Lumen Photo Editor # 8|+A Not ranked in these 2 days|-B |-C "));
    choice.turn(203, true);
    EXPECT_TRUE(legendOf(chartOf("9 8", comparison, choice), 0)
                    .endsWith(text("+C Not checked in these 2 days")));
}

TEST(RivalLooks, DifferInColourAndShapeAndThenInFilling)
{
    std::vector<LineLook> looks{ownLook()};
    for (size_t place = 0; place < rivalLookCount; ++place)
        looks.push_back(rivalLook(place));
    for (size_t i = 0; i < looks.size(); ++i) {
        for (size_t j = 0; j < i; ++j) {
            EXPECT_NE(looks[i], looks[j]);
            EXPECT_NE(std::pair(looks[i].shape, looks[i].isFilled),
                      std::pair(looks[j].shape, looks[j].isFilled))
                << "without colours, too";
        }
    }
    EXPECT_EQ(rivalLook(rivalLookCount), rivalLook(0));
}

RC_GTEST_PROP(ComparedChartProperty, EveryLineHasTheDaysOfTheOwnOne, ())
{
    const auto count = *rc::gen::inRange<size_t>(1, 400);
    const auto range = *rc::gen::elementOf(
        std::vector<HistoryRange>(allHistoryRanges.begin(), allHistoryRanges.end()));
    const auto own = generatedDays(count, *rc::gen::arbitrary<unsigned>(), 7);
    std::vector<RankingTimeline::Observation> checks;
    std::vector<KeywordStandings> standings;
    const auto rivals = *rc::gen::inRange(0, 14);
    QList<TrackedCompetitor> competitors;
    for (int i = 0; i < rivals; ++i)
        competitors.append(rival(i, "A"));
    for (const RankingTimeline::Day &day : own) {
        if (!day.observation)
            continue;
        checks.push_back(*day.observation);
        KeywordStandings measured;
        measured.fetchedAt = day.observation->date;
        for (int i = 0; i < rivals; ++i) {
            const int rank = *rc::gen::inRange(-20, 100);
            if (rank >= -10)
                measured.rivals.push_back(
                    {rivalId(i), rank > 0 ? std::optional<std::int64_t>(rank) : std::nullopt});
        }
        standings.push_back(measured);
    }
    LineChoice choice;
    const Date now = noonOf(firstPictureDay + std::int64_t(count) - 1);
    const RankingTimeline timeline(checks, noonOf(firstPictureDay));
    const ComparedChart chart =
        comparedChart(timeline, comparisonOf(competitors, standings), range, now, choice);
    RC_ASSERT(chart.rivals.size() == size_t(rivals));
    RC_ASSERT(chart.shownLines().size() <= 1 + LineChoice::firstLines);
    for (const ComparedLine &line : chart.rivals) {
        RC_ASSERT(line.data.days.size() == chart.days().size());
        for (size_t day = 0; day < line.data.days.size(); ++day)
            RC_ASSERT(line.data.days[day].date == chart.days()[day].date);
        RC_ASSERT(line.data.worstRank() <= 99);
    }
    const size_t first = *rc::gen::inRange<size_t>(0, chart.days().size());
    const DaySpan span = spanBetween(first, chart.days().size() - 1, chart.days().size());
    const ComparedChart part = slicedChart(chart, span);
    for (size_t i = 0; i < part.rivals.size(); ++i) {
        RC_ASSERT(part.rivals[i].data.days.size() == span.count);
        RC_ASSERT(part.rivals[i].look == chart.rivals[i].look);
    }
}

} // namespace
} // namespace veltrix
