// SPDX-License-Identifier: GPL-3.0-or-later
// The small drawings of the table: what they say and where their parts lie.
#include "support/json_printers.h"
#include "ui_kit/theme/typography.h"
#include "ui_kit/widgets/badge.h"
#include "ui_kit/widgets/overlapping_icons.h"
#include "ui_kit/widgets/position_badge.h"
#include "ui_kit/widgets/score_ring.h"

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

const QRectF cell(100, 200, 160, 52);

QFont body()
{
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(13);
    return font;
}

ScoreRing popularity(std::optional<std::int64_t> value)
{
    return {value, ScoreRing::Mode::Popularity};
}

ScoreRing difficulty(std::optional<std::int64_t> value)
{
    return {value, ScoreRing::Mode::Difficulty};
}

std::optional<OpportunityAssessment> tier(const char *label)
{
    OpportunityAssessment assessment;
    assessment.label = QString::fromUtf8(label);
    return assessment;
}

TEST(ScoreRing, PopularityIsGreenFrom66YellowFrom16AndRedBelow)
{
    EXPECT_EQ(popularity(100).token(), Token::Green);
    EXPECT_EQ(popularity(66).token(), Token::Green);
    EXPECT_EQ(popularity(65).token(), Token::Yellow);
    EXPECT_EQ(popularity(16).token(), Token::Yellow);
    EXPECT_EQ(popularity(15).token(), Token::Red);
    EXPECT_EQ(popularity(5).token(), Token::Red);
}

TEST(ScoreRing, DifficultyIsGreenTo33YellowTo66AndRedAbove)
{
    EXPECT_EQ(difficulty(0).token(), Token::Green);
    EXPECT_EQ(difficulty(33).token(), Token::Green);
    EXPECT_EQ(difficulty(34).token(), Token::Yellow);
    EXPECT_EQ(difficulty(66).token(), Token::Yellow);
    EXPECT_EQ(difficulty(67).token(), Token::Red);
}

TEST(ScoreRing, AMissingScoreIsADashInGreyAndNeverZero)
{
    for (const ScoreRing &ring : {popularity(std::nullopt), difficulty(std::nullopt)}) {
        EXPECT_EQ(ring.text(), QStringLiteral("—"));
        EXPECT_EQ(ring.token(), Token::Secondary);
        EXPECT_EQ(ring.fraction(), 0);
        EXPECT_EQ(ring.accessibleHint(), QStringLiteral("Unavailable—not a zero score"));
    }
    EXPECT_EQ(popularity(std::nullopt).accessibleText(), QStringLiteral("Popularity: unavailable"));
    EXPECT_EQ(difficulty(std::nullopt).accessibleText(),
              QStringLiteral("Estimated difficulty: unavailable"));
}

TEST(ScoreRing, IsReadAsItsMetricAndItsValue)
{
    EXPECT_EQ(popularity(61).accessibleText(), QStringLiteral("Popularity: 61"));
    EXPECT_EQ(difficulty(0).accessibleText(), QStringLiteral("Estimated difficulty: 0"));
    EXPECT_EQ(popularity(61).accessibleHint(),
              QStringLiteral("Popularity. Directional estimate, not an official Apple metric."));
    EXPECT_EQ(difficulty(61).accessibleHint(),
              QStringLiteral(
                  "Estimated difficulty. Directional estimate, not an official Apple metric."));
}

TEST(ScoreRing, TheArcCoversTheShareOfTheCircle)
{
    EXPECT_EQ(difficulty(0).fraction(), 0);
    EXPECT_EQ(difficulty(1).fraction(), 0.01);
    EXPECT_EQ(popularity(50).fraction(), 0.5);
    EXPECT_EQ(popularity(100).fraction(), 1);
    EXPECT_EQ(popularity(140).fraction(), 1);
}

TEST(ScoreRingGeometry, IsTwentyAcrossWithAStrokeOfThreeAtTheStandardFont)
{
    QFont inter(QStringLiteral("Inter"));
    inter.setPixelSize(13);
    const QFontMetricsF metrics(fontFor(TextStyle::BodySemibold, inter));
    if (std::round(metrics.height()) != 16)
        GTEST_SKIP() << "the font Inter is not installed";
    const ScoreRingGeometry geometry = layoutScoreRing(cell, metrics, popularity(78));
    EXPECT_DOUBLE_EQ(geometry.ring.width() + geometry.stroke, 20);
    EXPECT_DOUBLE_EQ(geometry.stroke, 3);
}

TEST(ScoreRingGeometry, RingAndNumberAreCentredAndDoNotOverlap)
{
    for (const int pixels : {13, 20, 26}) {
        QFont font = body();
        font.setPixelSize(pixels);
        const QFontMetricsF metrics(fontFor(TextStyle::BodySemibold, font));
        const ScoreRingGeometry geometry = layoutScoreRing(cell, metrics, popularity(100));
        EXPECT_DOUBLE_EQ(geometry.ring.width(), geometry.ring.height());
        EXPECT_NEAR(geometry.ring.center().y(), cell.center().y(), 1);
        EXPECT_GE(geometry.ring.left() - geometry.stroke / 2, cell.left());
        EXPECT_GT(geometry.baseline.x(), geometry.ring.right() + geometry.stroke / 2);
        EXPECT_GE(geometry.bounds.right(),
                  geometry.baseline.x() + tabularWidth(metrics, QStringLiteral("100")) - 0.01);
    }
}

TEST(TargetBadge, TakesItsColourFromTheTier)
{
    EXPECT_EQ(targetBadge(tier("Sweet Spot")), (Badge{QStringLiteral("Sweet Spot"), Token::Green}));
    EXPECT_EQ(targetBadge(tier("Good Target")).token, Token::Green);
    EXPECT_EQ(targetBadge(tier("Supporting")).token, Token::Blue);
    EXPECT_EQ(targetBadge(tier("Worth Climbing")).token, Token::Orange);
    EXPECT_EQ(targetBadge(tier("Low Volume")).token, Token::Gray);
    EXPECT_EQ(targetBadge(tier("Something New")).token, Token::Gray);
}

TEST(TargetBadge, WithoutAnAssessmentAsksForARefresh)
{
    EXPECT_EQ(targetBadge(std::nullopt), (Badge{QStringLiteral("Refresh required"), Token::Gray}));
    EXPECT_EQ(targetBadgeHelp(std::nullopt),
              QStringLiteral("Refresh to calculate Target. Popularity, search results and a "
                             "supported storefront are required."));
    EXPECT_TRUE(targetBadgeHelp(tier("Sweet Spot")).isEmpty());
}

TEST(BadgeGeometry, HoldsItsTextAndStaysInItsCell)
{
    const QFontMetricsF metrics(fontFor(TextStyle::SecondarySemibold, body()));
    const Badge badge{QStringLiteral("Worth Climbing"), Token::Orange};
    const BadgeGeometry wide = layoutBadge(cell, metrics, badge);
    EXPECT_GE(wide.text.width(), metrics.horizontalAdvance(badge.text));
    EXPECT_TRUE(wide.capsule.contains(wide.text));
    EXPECT_NEAR(wide.capsule.center().y(), cell.center().y(), 1);
    const BadgeGeometry narrow = layoutBadge(QRectF(0, 0, 40, 52), metrics, badge);
    EXPECT_DOUBLE_EQ(narrow.capsule.width(), 40);
}

TEST(PositionBadge, TheFirstThreeHaveATrophyAndAnOrdinal)
{
    EXPECT_EQ(PositionBadge{1}.text(), QStringLiteral("1st"));
    EXPECT_EQ(PositionBadge{2}.text(), QStringLiteral("2nd"));
    EXPECT_EQ(PositionBadge{3}.text(), QStringLiteral("3rd"));
    EXPECT_TRUE(PositionBadge{3}.hasTrophy());
    EXPECT_FALSE(PositionBadge{4}.hasTrophy());
    EXPECT_EQ(PositionBadge{4}.text(), QStringLiteral("# 4"));
    EXPECT_EQ(PositionBadge{100}.text(), QStringLiteral("# 100"));
}

TEST(PositionBadge, NoPositionIsWordsAndNeverZero)
{
    const PositionBadge badge{std::nullopt};
    EXPECT_EQ(badge.text(), QStringLiteral("Not ranked"));
    EXPECT_EQ(badge.accessibleText(),
              QStringLiteral("Absent from returned search results (up to 100 apps)"));
    EXPECT_FALSE(badge.hasTrophy());
}

TEST(MovementLabel, IsGreenForAGainRedForALossAndGreyForNeither)
{
    EXPECT_EQ(movementToken(RankMovement::improved(3)), Token::Green);
    EXPECT_EQ(movementToken(RankMovement::entered()), Token::Green);
    EXPECT_EQ(movementToken(RankMovement::declined(2)), Token::Red);
    EXPECT_EQ(movementToken(RankMovement::left()), Token::Red);
    EXPECT_EQ(movementToken(RankMovement::first()), Token::Secondary);
    EXPECT_EQ(movementToken(RankMovement::unchanged()), Token::Secondary);
    EXPECT_EQ(movementToken(RankMovement::stillUnranked()), Token::Secondary);
}

TEST(MovementLabel, IsSpokenWithoutArrows)
{
    EXPECT_EQ(movementSentence(RankMovement::improved(3)), QStringLiteral("up 3"));
    EXPECT_EQ(movementSentence(RankMovement::declined(2)), QStringLiteral("down 2"));
    EXPECT_EQ(movementSentence(RankMovement::entered()), QStringLiteral("Entered results"));
}

TEST(PositionGeometry, TrophyRankAndMovementFollowEachOther)
{
    const QFontMetricsF rank(fontFor(TextStyle::BodySemibold, body()));
    const QFontMetricsF moved(fontFor(TextStyle::SecondaryMedium, body()));
    const PositionGeometry medal = layoutPosition(cell, rank, {2}, moved, 20);
    EXPECT_DOUBLE_EQ(medal.trophy.left(), cell.left());
    EXPECT_GT(medal.baseline.x(), medal.trophy.right());
    EXPECT_GT(medal.movementBaseline.x(), medal.baseline.x());
    EXPECT_DOUBLE_EQ(medal.movementBaseline.y(), medal.baseline.y());
    const PositionGeometry plain = layoutPosition(cell, rank, {21}, moved, 20);
    EXPECT_TRUE(plain.trophy.isNull());
    EXPECT_DOUBLE_EQ(plain.baseline.x(), cell.left());
    EXPECT_GE(layoutPosition(QRectF(0, 0, 10, 52), rank, {21}, moved, 20).movementWidth, 0);
}

TEST(PositionGeometry, AMovementWithoutRoomBesideTheRankGoesBelowIt)
{
    const QFontMetricsF rank(fontFor(TextStyle::BodySemibold, body()));
    const QFontMetricsF moved(fontFor(TextStyle::SecondaryMedium, body()));
    const qreal words = moved.horizontalAdvance(QStringLiteral("Entered results"));
    const QRectF narrow(100, 50, words + 10, 52);
    const PositionGeometry below = layoutPosition(narrow, rank, {2}, moved, words);
    EXPECT_DOUBLE_EQ(below.movementBaseline.x(), narrow.left());
    EXPECT_GT(below.movementBaseline.y() - moved.ascent(), below.baseline.y());
    EXPECT_GE(below.trophy.top(), narrow.top());
    EXPECT_LE(below.movementBaseline.y() + moved.descent(), narrow.bottom());
    EXPECT_GE(below.movementWidth, words);
    const PositionGeometry none = layoutPosition(narrow, rank, {2}, moved, 0);
    EXPECT_NEAR(none.trophy.center().y(), narrow.center().y(), 1) << "nothing to make room for";
    const QRectF low(100, 50, words + 10, 20);
    EXPECT_DOUBLE_EQ(layoutPosition(low, rank, {2}, moved, words).movementBaseline.y(),
                     layoutPosition(low, rank, {2}, moved, words).baseline.y())
        << "no room for a second line";
}

TEST(OverlappingIcons, AreAtMostFiveEachOverTheOneBefore)
{
    const auto squares = layoutOverlappingIcons(cell, 24, 9);
    ASSERT_EQ(squares.size(), 5U);
    for (size_t i = 1; i < squares.size(); ++i)
        EXPECT_DOUBLE_EQ(squares[i].left() - squares[i - 1].right(), -6);
    EXPECT_DOUBLE_EQ(squares[0].left(), cell.left());
    EXPECT_NEAR(squares[0].center().y(), cell.center().y(), 1);
    EXPECT_EQ(layoutOverlappingIcons(cell, 24, 2).size(), 2U);
    EXPECT_TRUE(layoutOverlappingIcons(cell, 24, 0).empty());
}

} // namespace
} // namespace veltrix
