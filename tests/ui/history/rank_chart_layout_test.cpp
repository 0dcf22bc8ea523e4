// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/history/rank_chart_layout.h"

#include "ui/history/compared_pictures.h"

#include <QImage>
#include <QPainter>

#include <rapidcheck/gtest.h>

namespace veltrix
{

namespace
{

const QLocale english(QLocale::English, QLocale::UnitedStates);

QFont fontOf(int pixels)
{
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(pixels);
    return font;
}

RankChartGeometry laidOut(const RankChartData &data, QSize size, int pixels = 12)
{
    return layoutRankChart(QRectF({0, 0}, size), QFontMetricsF(fontOf(pixels)), {data}, english);
}

QString textsOf(const std::vector<RankChartLabel> &labels)
{
    QStringList texts;
    for (const RankChartLabel &label : labels)
        texts.append(label.text);
    return texts.join(u' ');
}

QImage painted(const RankChartGeometry &chart, qreal scale)
{
    QImage image((chart.rect.size() * scale).toSize(), QImage::Format_RGB32);
    image.setDevicePixelRatio(scale);
    const Tokens tokens(ColorScheme::Light);
    image.fill(tokens[Token::Raised]);
    QPainter painter(&image);
    paintRankChart(painter, chart, fontOf(12), tokens);
    return image;
}

} // namespace

TEST(RankChartLayout, LabelsTheLinesOfItsGrid)
{
    const RankChartGeometry chart = laidOut(rankChartData(daysOf("31 9")), {680, 290});
    EXPECT_EQ(textsOf(chart.ranks), text("1 10 20 30"));
    ASSERT_EQ(chart.grid.size(), 4U);
    for (size_t i = 0; i < 4; ++i)
        EXPECT_NEAR(chart.ranks[i].rect.center().y(), chart.grid[i], 0.001);
    EXPECT_EQ(chart.grid[0], chart.plot.y(1));
    EXPECT_LT(chart.grid[0], chart.grid[3]) << "rank 1 is at the top";
}

TEST(RankChartLayout, LabelsDaysBelowThePlot)
{
    const RankChartGeometry chart = laidOut(rankChartData(daysOf("31 9 8 . . 5")), {680, 290});
    EXPECT_TRUE(textsOf(chart.days).startsWith(text("Nov 8 Nov 9 ")));
    EXPECT_GT(chart.days.front().rect.top(), chart.plot.area.bottom());
    EXPECT_NEAR(chart.days.front().rect.center().x(), chart.plot.x(0), 0.001);
}

TEST(RankChartLayout, OfALowChartHasFewerRanks)
{
    const RankChartData data = rankChartData(daysOf("31 9"));
    EXPECT_EQ(textsOf(laidOut(data, {680, 90}).ranks), text("1 20"));
    EXPECT_EQ(textsOf(laidOut(data, {680, 160}, 24).ranks), text("1 20"));
}

TEST(RankChartLayout, WithoutDaysThereIsOnlyTheGrid)
{
    const RankChartGeometry chart = laidOut({}, {680, 290});
    EXPECT_EQ(textsOf(chart.ranks), text("1 2 3 4 5"));
    EXPECT_TRUE(chart.days.empty());
    EXPECT_TRUE(chart.line.runs.empty());
}

TEST(RankChartLayout, WithoutRoomNoDateIsCut)
{
    for (const QSize size : {QSize(0, 0), QSize(20, 20), QSize(40, 290)}) {
        const RankChartGeometry chart = laidOut(rankChartData(daysOf("5 4 x 3")), size);
        EXPECT_TRUE(chart.days.empty());
        EXPECT_EQ(chart.line.runs.size(), 2U);
    }
}

TEST(RankChartLayout, EveryLabelIsPaintedWhole)
{
    const RankChartGeometry chart =
        laidOut(rankChartData(generatedDays(57, 3, 5, firstPictureDay + 13 - 56)), {680, 290});
    EXPECT_EQ(chart.days.back().text, text("Nov 21"));
    for (const qreal scale : {1.0, 1.5, 2.0}) {
        const QImage whole = painted(chart, scale);
        RankChartGeometry alone{chart.rect, chart.plot, {}, {}, {}, {}};
        const QRectF rect = chart.days.back().rect;
        // In the middle of the chart, where nothing could cut it.
        const QPointF moved(std::round(200 - rect.left()), std::round(-100));
        alone.days = {{rect.translated(moved), text("Nov 21")}};
        const auto excerpt = [&](const QImage &image, const QRectF &place) {
            const QRectF scaled(place.topLeft() * scale, place.size() * scale);
            return image.copy(scaled.toAlignedRect());
        };
        EXPECT_EQ(excerpt(whole, rect.adjusted(-4, 0, 4, 0)),
                  excerpt(painted(alone, scale), rect.translated(moved).adjusted(-4, 0, 4, 0)))
            << scale;
    }
}

RC_GTEST_PROP(RankChartLayout, KeepsLabelsWholeInsideAndApart, ())
{
    const auto days = *rc::gen::inRange<size_t>(1, 3654);
    const auto seed = *rc::gen::arbitrary<unsigned>();
    const QSize size(*rc::gen::inRange(300, 1601), *rc::gen::inRange(160, 700));
    const auto pixels = *rc::gen::element(12, 18, 24);
    const RankChartData data =
        rankChartData(generatedDays(days, seed, 5, *rc::gen::inRange<std::int64_t>(0, 20'000)));
    const RankChartGeometry chart = laidOut(data, size, pixels);
    const QFontMetricsF metrics(fontOf(pixels));
    std::vector<RankChartLabel> labels = chart.ranks;
    std::ranges::copy(chart.days, std::back_inserter(labels));
    RC_ASSERT(!chart.days.empty() && chart.ranks.size() >= 2U);
    for (size_t i = 0; i < labels.size(); ++i) {
        RC_ASSERT(chart.rect.contains(labels[i].rect));
        RC_ASSERT(labels[i].rect.width() >= metrics.horizontalAdvance(labels[i].text));
        for (size_t j = 0; j < i; ++j)
            RC_ASSERT(!labels[i].rect.intersects(labels[j].rect));
    }
    for (const RankPoint &point : data.points)
        RC_ASSERT(chart.plot.area.contains(chart.plot.at(point.day, point.rank)));
    for (const size_t day : data.unranked)
        RC_ASSERT(chart.plot.area.contains(chart.plot.unrankedMark(day)));
}

TEST(ComparedChartLayout, LaysOutEveryLineThatIsOnOnOneScale)
{
    LineChoice choice;
    choice.turn(201, true);
    choice.turn(203, true);
    const ComparedChart compared =
        chartOf("9 8 7",
                comparisonOf({rival(1, "A"), rival(2, "B"), rival(3, "C")},
                             standingsOf({{1, "40 2 1"}, {2, "99 1 1"}, {3, "5 x 5"}})),
                choice);
    const RankChartGeometry chart =
        layoutRankChart({0, 0, 680, 290}, QFontMetricsF(fontOf(12)), compared, english);
    EXPECT_EQ(chart.plot.bottom, 40);
    ASSERT_EQ(chart.rivals.size(), 2U);
    EXPECT_EQ(chart.rivals[0].key, 201);
    EXPECT_EQ(chart.rivals[1].look, rivalLook(2));
    EXPECT_EQ(chart.rivals[1].line.runs.size(), 2U);
    EXPECT_EQ(chart.line.runs.size(), 1U);
}

TEST(ComparedChartLayout, SaysAtALineThatBeginsLaterSinceWhen)
{
    const auto laid = [](const char *rivals) {
        return layoutRankChart(
            {0, 0, 680, 290}, QFontMetricsF(fontOf(12)),
            chartOf("9 8 7 6 7 8 9", comparisonOf({rival(1, "A")}, standingsOf({{1, rivals}}))),
            english);
    };
    const RankChartGeometry chart = laid("- - 20 20 20 21 20");
    EXPECT_EQ(textsOf(chart.beginnings), text("Tracked since Nov 10"));
    EXPECT_TRUE(chart.plot.area.contains(chart.beginnings[0].rect));
    EXPECT_NEAR(chart.beginnings[0].rect.left(), chart.plot.x(2), 1);
    EXPECT_TRUE(laid("20 20 20 20 20 21 20").beginnings.empty());
}

TEST(ComparedChartLayout, MarksTakeARowBetweenPlotAndDates)
{
    Comparison comparison = comparisonOf({}, {});
    const RankChartGeometry without = layoutRankChart({0, 0, 680, 290}, QFontMetricsF(fontOf(12)),
                                                      chartOf("9 8 7", comparison), english);
    comparison.notes = {noteOn(firstPictureDay + 1, "New subtitle")};
    const RankChartGeometry chart = layoutRankChart({0, 0, 680, 290}, QFontMetricsF(fontOf(12)),
                                                    chartOf("9 8 7", comparison), english);
    ASSERT_EQ(chart.marks.size(), 1U);
    EXPECT_TRUE(without.marks.empty());
    EXPECT_GT(chart.marks[0].rect.top(), chart.plot.area.bottom());
    EXPECT_LT(chart.marks[0].rect.bottom(), chart.days[0].rect.top());
    EXPECT_LT(chart.plot.area.height(), without.plot.area.height() - 15);
}

} // namespace veltrix
