// SPDX-License-Identifier: GPL-3.0-or-later
#include "scoring/keyword_survey.h"

#include "scoring/app_table.h"

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

TEST(Median, IsTheMiddleValueOrTheMeanOfTheTwoMiddleOnes)
{
    EXPECT_EQ(median({}), 0);
    EXPECT_EQ(median({4}), 4);
    EXPECT_EQ(median({9, 1, 4}), 4);
    EXPECT_EQ(median({9, 1, 4, 6}), 5);
}

TEST(KeywordSurvey, SamplesTheFirstTwentyFiveResults)
{
    const auto results = appTable(QStringLiteral("name | times\nA | 30"));
    const KeywordSurvey survey(u"a", results);
    EXPECT_EQ(survey.results().size(), 30);
    EXPECT_EQ(survey.apps().size(), 25U);
    EXPECT_EQ(survey.apps().front().record, results.constData());
    EXPECT_EQ(KeywordSurvey(u"a", results.first(3)).apps().size(), 3U);
    EXPECT_TRUE(KeywordSurvey(u"a", {}).apps().empty());
}

TEST(KeywordSurvey, SaysOfEachAppItsRatingsAndWhetherItsTitleSpeaksToTheKeyword)
{
    const KeywordSurvey survey(u"options", appTable(QStringLiteral(R"(
        name            | genre     | ratings
        Options Tracker | Finance   | 50
        Options Tracker | Utilities | -7
        Chess           | Games     | -)")));
    EXPECT_EQ(survey.apps()[0].ratings, 50);
    EXPECT_EQ(survey.apps()[1].ratings, 0);
    EXPECT_EQ(survey.apps()[2].ratings, 0);
    EXPECT_TRUE(survey.apps()[0].title.targetsKeyword());
    EXPECT_FALSE(survey.apps()[1].title.targetsKeyword());
    EXPECT_EQ(survey.relevanceSum(), 1);
}

TEST(KeywordSurvey, ItsSharedTermsAreLimited)
{
    const auto survey = [](int matching, int others) {
        const auto table = QStringLiteral("name | times\nPhoto | %1\nChess | %2");
        return std::make_unique<KeywordSurvey>(u"photo", appTable(table.arg(matching).arg(others)));
    };
    EXPECT_EQ(survey(0, 10)->relevanceFactor(), 0.3);
    EXPECT_EQ(survey(2, 8)->relevanceFactor(), 2.0 / 10 * 2.6);
    EXPECT_EQ(survey(10, 0)->relevanceFactor(), 1);
    EXPECT_EQ(survey(0, 5)->coverage(), 0.5);
    EXPECT_EQ(survey(20, 5)->coverage(), 1);
}

TEST(KeywordSurvey, KeepsTheResultsAlive)
{
    auto results = appTable(QStringLiteral("name\nPhoto"));
    const KeywordSurvey survey(u"photo", results);
    results.clear();
    EXPECT_EQ(survey.apps().front().record->trackName, QStringLiteral("Photo"));
}

} // namespace
} // namespace veltrix
