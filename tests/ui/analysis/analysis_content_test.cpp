// SPDX-License-Identifier: GPL-3.0-or-later
// What the keyword analysis says above its cards, and as a whole.
#include "ui/analysis/analysis_content.h"

#include "ui/analysis/sample_snapshot.h"

namespace veltrix
{

namespace
{

const AnalysisFormat english{QLocale(QLocale::English, QLocale::UnitedStates), QTimeZone::utc()};

AnalysisContent contentOf(const KeywordSnapshot &snapshot)
{
    return analysisContent(snapshot.keyword, snapshot.country, &snapshot, english);
}

} // namespace

TEST(AnalysisContent, WithoutASnapshotThereIsNothingElse)
{
    const AnalysisContent content = analysisContent(text("collage maker"), text("US"), nullptr);
    EXPECT_FALSE(content.isSaved);
    EXPECT_EQ(content.emptyTitle, text("No saved analysis"));
    EXPECT_EQ(content.emptyText,
              text("A successful keyword refresh is needed before a breakdown can be shown."));
    EXPECT_TRUE(content.observation.isEmpty());
    EXPECT_TRUE(content.figures.isEmpty());
    EXPECT_TRUE(content.cards.isEmpty());
}

TEST(AnalysisContent, SaysWhenTheObservationWasSaved)
{
    EXPECT_EQ(contentOf(completeSnapshot()).observation,
              text("Saved observation: Nov 21, 2026, 9:41\u00A0AM"));
}

TEST(AnalysisContent, GuidanceIsTheOpportunitysLabelAndExplanation)
{
    const KeywordSnapshot snapshot = completeSnapshot();
    const AnalysisContent content = contentOf(snapshot);
    EXPECT_EQ(content.guidanceTitle, text("Target guidance"));
    EXPECT_EQ(content.guidance, (Badge{text("Good Target"), Token::Green}));
    EXPECT_EQ(content.guidanceText, snapshot.opportunity->explanation);
}

TEST(AnalysisContent, WithoutAnOpportunityARefreshIsAskedForAndNoScoreIsZero)
{
    KeywordSnapshot snapshot = completeSnapshot();
    snapshot.opportunity.reset();
    const AnalysisContent content = contentOf(snapshot);
    EXPECT_EQ(content.guidance, (Badge{text("Refresh required / insufficient data"), Token::Gray}));
    EXPECT_EQ(
        content.guidanceText,
        text("Refresh this keyword to calculate the new opportunity model. Popularity, search "
             "results and a supported storefront are required."));
}

TEST(AnalysisContent, TheFourFiguresStandFirst)
{
    QStringList figures;
    for (const Figure &figure : contentOf(completeSnapshot()).figures)
        figures << figure.text();
    EXPECT_EQ(figures, (QStringList{text("Position: 9"), text("Search popularity: 61 / 100"),
                                    text("Difficulty · estimate: 44 / 100"),
                                    text("Competition: 66 / 100")}));
}

TEST(AnalysisContent, GuidanceAndAFigureSpeakOfTheSameScore)
{
    KeywordSnapshot snapshot = completeSnapshot();
    const AnalysisContent content = contentOf(snapshot);
    const Figure &competition = content.figures.at(3);
    EXPECT_TRUE(content.guidanceText.contains(text("difficulty ") + competition.value + u'.'))
        << content.guidanceText.toStdString();
    EXPECT_FALSE(competition.help.isEmpty());
    EXPECT_EQ(content.targetNote, text("The target comes from popularity and competition; its "
                                       "guidance calls the competition score difficulty."));
    snapshot.opportunity.reset();
    EXPECT_EQ(contentOf(snapshot).targetNote, QString());
}

TEST(AnalysisContent, AnUnrankedAppIsSaidInWords)
{
    KeywordSnapshot snapshot = completeSnapshot();
    snapshot.position.reset();
    const Figure figure = contentOf(snapshot).figures.constFirst();
    EXPECT_EQ(figure.text(), text("Position: Not found in returned results"));
    EXPECT_FALSE(figure.isLarge);
}

TEST(AnalysisContent, ThePositionIsExplained)
{
    EXPECT_EQ(
        contentOf(completeSnapshot()).positionNote,
        text("Position reflects the search API response (up to 100 apps), not verified device "
             "search rankings. This sheet reads saved data and makes no new requests."));
}

TEST(AnalysisPlainText, ReadsFromTopToBottom)
{
    KeywordSnapshot snapshot = completeSnapshot();
    snapshot.autocompleteEvidence.reset();
    snapshot.competition.reset();
    snapshot.opportunity.reset();
    const QString expected = text(
        "Keyword analysis\n"
        "collage maker · United States\n"
        "Saved observation: Nov 21, 2026, 9:41\u00A0AM\n"
        "\n"
        "Target guidance: Refresh required / insufficient data\n"
        "Refresh this keyword to calculate the new opportunity model. Popularity, search results "
        "and a supported storefront are required.\n"
        "\n"
        "Position: 9\n"
        "Position reflects the search API response (up to 100 apps), not verified device search "
        "rankings. This sheet reads saved data and makes no new requests.\n"
        "\n"
        "Search popularity\n"
        "61 / 100\n"
        "Source: quorvin_calibrated_estimate\n"
        "Estimated popularity, not official Apple data.\n"
        "Saved raw value: 61,234.5\n"
        "\n"
        "Autocomplete visibility\n"
        "— Refresh required\n"
        "No autocomplete evidence saved.\n");
    const QString copied = plainText(contentOf(snapshot), english);
    EXPECT_EQ(copied.left(expected.size()), expected);
    EXPECT_TRUE(copied.contains(text("Rating count · 45% weight · 28.4\n  Average 9,912 ratings")));
    EXPECT_TRUE(copied.endsWith(text("\n\nCompetition\n— No app results to score\nThis observation "
                                     "predates the competition model. Refresh this keyword to "
                                     "assess the competition.\n")));
}

TEST(AnalysisPlainText, WithoutASnapshotSaysWhatIsNeeded)
{
    EXPECT_EQ(plainText(analysisContent(text("collage maker"), text("US"), nullptr), english),
              text("Keyword analysis\ncollage maker · United States\n\nNo saved analysis\nA "
                   "successful keyword refresh is needed before a breakdown can be shown.\n"));
}

TEST(AnalysisContent, NumbersFollowTheLocale)
{
    const AnalysisFormat german{QLocale(QLocale::German, QLocale::Germany), QTimeZone::utc()};
    const KeywordSnapshot snapshot = completeSnapshot();
    const QString copied =
        plainText(analysisContent(snapshot.keyword, snapshot.country, &snapshot, german), german);
    EXPECT_TRUE(copied.contains(text("Average 9.912 ratings")));
    EXPECT_TRUE(copied.contains(text("Average 4,2 years")));
    EXPECT_TRUE(copied.contains(text("collage maker · Vereinigte Staaten")));
}

} // namespace veltrix
