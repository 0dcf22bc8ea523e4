// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/overview/app_standing.h"

#include "ui/overview/overview_card.h"

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

constexpr std::int64_t today = 9'456;

/// Ranks from the oldest day to today; 0 is not ranked, -1 no check.
RankDays ranksOf(const std::vector<int> &ranks)
{
    RankDays days(today);
    for (size_t i = 0; i < ranks.size(); ++i) {
        const std::int64_t day = today - std::int64_t(ranks.size() - 1 - i);
        if (ranks[i] >= 0)
            days.add({day, ranks[i] ? std::optional<std::int64_t>(ranks[i]) : std::nullopt});
    }
    return days;
}

AppStanding standingOf(const std::vector<RankDays> &keywords)
{
    AppStanding standing;
    standing.name = QStringLiteral("Lumen Photo Editor");
    for (const RankDays &ranks : keywords)
        standing.add({ranks, ranks.latest() ? std::optional(startOfUtcDay(today)) : std::nullopt});
    standing.finish();
    return standing;
}

TEST(AppStanding, CountsKeywordsByTopsAndAveragesThoseThatRank)
{
    const AppStanding standing = standingOf(
        {ranksOf({1}), ranksOf({3}), ranksOf({10}), ranksOf({50}), ranksOf({0}), ranksOf({})});
    EXPECT_EQ(standing.keywords, 6);
    EXPECT_EQ(standing.inTop, (std::array{1, 2, 3, 4}));
    EXPECT_EQ(standing.averageRank, 16.0);
    EXPECT_EQ(standingOf({ranksOf({0}), ranksOf({})}).averageRank, std::nullopt);
}

TEST(AppStanding, EnteringTheResultsIsARiseAndLeavingThemAFall)
{
    const AppStanding standing =
        standingOf({ranksOf({40, 30}), ranksOf({0, 44}), ranksOf({20, 0}), ranksOf({5, 6}),
                    ranksOf({5, 5}), ranksOf({0, 0}), ranksOf({7})});
    EXPECT_EQ(standing.movesIn(Period::Yesterday), (AppStanding::Moves{6, 2, 2}));
    EXPECT_EQ(standing.movesIn(Period::Week), AppStanding::Moves{}) << "nothing is so old";
    const std::vector<int> long_{40, -1, -1, -1, -1, -1, -1, -1, 50};
    EXPECT_EQ(standingOf({ranksOf(long_)}).movesIn(Period::Week), (AppStanding::Moves{1, 0, 1}));
}

TEST(AppStanding, TheLineIsTheAverageOfWhatStoodOnEachDay)
{
    const AppStanding standing = standingOf({ranksOf({10, 20, 30}), ranksOf({30, -1, 10})});
    ASSERT_EQ(standing.averages.checks.size(), 3U);
    EXPECT_EQ(standing.averages.checks[0].rank, 20.0);
    EXPECT_EQ(standing.averages.checks[1].rank, 25.0) << "30 still stood on the second day";
    EXPECT_EQ(standing.averages.checks[2].rank, 20.0);
    EXPECT_EQ(standing.averages.checks[2].day, RankDays::daysShown - 1);
}

TEST(AppStanding, SaysWhatIsMissingToday)
{
    AppStanding standing;
    const RankDays measured = ranksOf({4});
    const RankDays missing = ranksOf({4, -1});
    standing.add({measured, startOfUtcDay(today)});
    standing.add({missing, startOfUtcDay(today - 1)});
    standing.add({missing, startOfUtcDay(today - 1), false});
    standing.finish();
    EXPECT_EQ(standing.measurable, 2);
    EXPECT_EQ(standing.missingToday, 1);
    EXPECT_EQ(standing.measuredAt, startOfUtcDay(today));
    const CardTexts texts = CardTexts::of(standing, Period::Yesterday, QStringLiteral("1 hr. ago"));
    EXPECT_EQ(texts.measured, QStringLiteral("1 of 2 not measured today"));
    EXPECT_TRUE(texts.isWarning);
}

TEST(OverviewCard, IsReadAsOneSentenceAndItsLineAsAnother)
{
    const AppStanding standing = standingOf({ranksOf({21, 1}), ranksOf({30, 40}), ranksOf({9, 0})});
    const CardTexts texts =
        CardTexts::of(standing, Period::Yesterday, QStringLiteral("4 min. ago"));
    EXPECT_EQ(texts.sentence,
              QStringLiteral("Lumen Photo Editor, 3 keywords, 1 in the top 1, 1 in the top 3, 1 in "
                             "the top 10, 2 in the top 50, average rank 20.5, 1 risen and 2 fallen "
                             "since yesterday, measured 4 min. ago"));
    EXPECT_EQ(texts.lineSentence, QStringLiteral("Average rank over 30 days: from 20.0 to 20.5"));
    EXPECT_EQ(texts.measured, QStringLiteral("Measured 4 min. ago"));
    EXPECT_FALSE(texts.isWarning);
}

TEST(OverviewCard, BeforeTheFirstMeasurementItSaysSoAndShowsNoFigures)
{
    const CardTexts texts =
        CardTexts::of(standingOf({ranksOf({}), ranksOf({})}), Period::Month, QString());
    EXPECT_EQ(texts.sentence, QStringLiteral("Lumen Photo Editor, 2 keywords, not measured yet"));
    EXPECT_EQ(texts.measured, QStringLiteral("Not measured yet"));
    EXPECT_EQ(texts.average, QStringLiteral("—"));
    EXPECT_EQ(texts.lineSentence, QString());
}

} // namespace
} // namespace veltrix
