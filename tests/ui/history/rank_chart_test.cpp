// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/history/rank_chart.h"

#include "ui/history/rank_pictures.h"
#include "ui/support/ui_test.h"

#include <QAccessible>
#include <QtCharts/QCategoryAxis>
#include <QtCharts/QChartView>
#include <QtCharts/QLineSeries>
#include <QtCharts/QScatterSeries>

namespace veltrix
{
namespace
{

class RankChartTest : public UiTest
{
protected:
    RankChartTest()
    {
        frame.resize(700, 320);
        chart = new RankChart(&frame);
        chart->setGeometry(frame.rect());
        frame.show();
        frame.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&frame));
        chart->setFocus();
    }
    void show(const char *picture)
    {
        chart->setData(rankChartData(daysOf(picture)));
        settle();
    }
    QChart *drawn() { return frame.findChild<QChartView *>()->chart(); }
    std::vector<QLineSeries *> runs()
    {
        std::vector<QLineSeries *> lines;
        for (QAbstractSeries *series : drawn()->series()) {
            // A scatter series is none, though both hold points.
            if (series->type() == QAbstractSeries::SeriesTypeLine)
                lines.push_back(static_cast<QLineSeries *>(series));
        }
        return lines;
    }
    QCategoryAxis *axis(Qt::Orientation orientation)
    {
        return static_cast<QCategoryAxis *>(drawn()->axes(orientation).constFirst());
    }
    QColor pixelAt(QPointF position)
    {
        return frame.grab().toImage().pixelColor(position.toPoint());
    }
    /// The strongest red, or accent, in a small square: lines are thinner than a pixel is square.
    bool hasColorNear(QPointF position, const QColor &color)
    {
        const QImage picture = frame.grab().toImage();
        for (int dx = -4; dx <= 4; ++dx) {
            for (int dy = -4; dy <= 4; ++dy) {
                const QPoint place = position.toPoint() + QPoint(dx, dy);
                if (!picture.rect().contains(place))
                    continue;
                const QColor seen = picture.pixelColor(place);
                if (std::abs(seen.red() - color.red()) + std::abs(seen.green() - color.green()) +
                        std::abs(seen.blue() - color.blue()) <
                    40)
                    return true;
            }
        }
        return false;
    }
    void key(Qt::Key pressed, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(chart, pressed, modifiers);
    }

    QWidget frame;
    RankChart *chart = nullptr;
    const Tokens tokens{ColorScheme::Light};
};

TEST_F(RankChartTest, EachSegmentIsALineOfItsOwn)
{
    show("31 29 . 24 26 x 22 18");
    const auto lines = runs();
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[0]->name(), text("Ranked run"));
    EXPECT_EQ(lines[0]->points(), (QList<QPointF>{{0, 31}, {1, 29}, {3, 24}, {4, 26}}));
    EXPECT_EQ(lines[1]->points(), (QList<QPointF>{{6, 22}, {7, 18}}));
}

TEST_F(RankChartTest, TheRankAxisIsReversed)
{
    show("31 9");
    EXPECT_TRUE(axis(Qt::Vertical)->isReverse());
    EXPECT_EQ(axis(Qt::Vertical)->categoriesLabels(),
              (QStringList{text("1"), text("10"), text("20"), text("30")}));
    EXPECT_LT(chart->plot().y(9), chart->plot().y(31));
}

TEST_F(RankChartTest, DaysAreLabelled)
{
    show("31 9 8 . . 5");
    EXPECT_EQ(axis(Qt::Horizontal)->categoriesLabels().constFirst(), text("Nov 8"));
}

TEST_F(RankChartTest, PointsLieWhereThePlotSaysTheyDo)
{
    show("31 29 . 24 x 22 18 1");
    QAbstractSeries *line = runs().front();
    const RankPlot plot = chart->plot();
    for (const RankPoint &point : chart->data().points) {
        const QPointF drawnAt =
            drawn()->mapToPosition({double(point.day), double(point.rank)}, line);
        EXPECT_NEAR(drawnAt.x(), plot.at(point.day, point.rank).x(), 0.6);
        EXPECT_NEAR(drawnAt.y(), plot.at(point.day, point.rank).y(), 0.6);
    }
}

TEST_F(RankChartTest, PointsAreHollow)
{
    show("31 9");
    const QPointF point = chart->plot().at(1, 9);
    EXPECT_EQ(pixelAt(point), tokens[Token::Raised]);
    EXPECT_TRUE(hasColorNear(point, tokens[Token::Accent]));
}

TEST_F(RankChartTest, AnUnrankedCheckIsMarkedAndAMissingDayIsNot)
{
    show("31 x . 9");
    EXPECT_TRUE(hasColorNear(chart->plot().unrankedMark(1), tokens[Token::Red]));
    EXPECT_FALSE(hasColorNear(chart->plot().unrankedMark(2), tokens[Token::Red]));
}

TEST_F(RankChartTest, TheInspectedPointIsFilledUnderACrosshair)
{
    show("31 9");
    chart->setSelectedDay(1);
    EXPECT_EQ(pixelAt(chart->plot().at(1, 9)), tokens[Token::Accent]);
    bool isCrossed = false;
    for (int dy = 0; dy < 20; ++dy)
        isCrossed = isCrossed || hasColorNear({chart->plot().x(1), chart->plot().y(25) + dy},
                                              tokens[Token::Secondary]);
    EXPECT_TRUE(isCrossed);
}

TEST_F(RankChartTest, ThePointerInspectsTheDayItIsOver)
{
    show("31 x . 9");
    QSignalSpy changes(chart, &RankChart::selectedDayChanged);
    QTest::mouseMove(chart, chart->plot().at(1, 20).toPoint());
    EXPECT_EQ(chart->selectedDay(), std::optional<size_t>(1));
    QTest::mouseMove(chart, chart->plot().at(2, 20).toPoint());
    EXPECT_EQ(chart->selectedDay(), std::optional<size_t>(2));
    EXPECT_EQ(changes.size(), 2);
}

TEST_F(RankChartTest, WhatWasPointedAtGoesWithThePointer)
{
    show("31 x . 9");
    chart->clearFocus();
    QTest::mouseMove(chart, chart->plot().at(1, 20).toPoint());
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(chart, &leave);
    EXPECT_EQ(chart->selectedDay(), std::nullopt);
}

TEST_F(RankChartTest, KeysMoveTheInspectedDay)
{
    show("31 x . 9");
    key(Qt::Key_Left);
    EXPECT_EQ(chart->selectedDay(), std::optional<size_t>(3));
    key(Qt::Key_Left);
    EXPECT_EQ(chart->selectedDay(), std::optional<size_t>(2));
    key(Qt::Key_Left, Qt::ControlModifier);
    EXPECT_EQ(chart->selectedDay(), std::optional<size_t>(1));
    key(Qt::Key_Home);
    EXPECT_EQ(chart->selectedDay(), std::optional<size_t>(0));
    key(Qt::Key_Right);
    key(Qt::Key_Right, Qt::ControlModifier);
    EXPECT_EQ(chart->selectedDay(), std::optional<size_t>(3));
    key(Qt::Key_Home);
    key(Qt::Key_End);
    EXPECT_EQ(chart->selectedDay(), std::optional<size_t>(3));
    key(Qt::Key_Escape);
    EXPECT_EQ(chart->selectedDay(), std::nullopt);
}

TEST_F(RankChartTest, NewDataKeepTheInspectedDay)
{
    show("31 x . 9");
    chart->setSelectedDay(3);
    std::vector<RankingTimeline::Day> later = daysOf("31 x . 9 8");
    later.erase(later.begin());
    chart->setData(rankChartData(later));
    EXPECT_EQ(chart->selectedDay(), std::optional<size_t>(2));
    chart->setData(rankChartData({}));
    EXPECT_EQ(chart->selectedDay(), std::nullopt);
}

TEST_F(RankChartTest, AScreenReaderWalksThroughTheChecks)
{
    show("31 x . 9");
    QAccessibleInterface *whole = QAccessible::queryAccessibleInterface(chart);
    ASSERT_TRUE(whole);
    EXPECT_EQ(whole->role(), QAccessible::Chart);
    EXPECT_EQ(whole->text(QAccessible::Name), text("Ranking trend"));
    ASSERT_EQ(whole->childCount(), 3);
    QStringList names;
    QStringList days;
    for (int i = 0; i < whole->childCount(); ++i) {
        names << whole->child(i)->text(QAccessible::Name);
        days << whole->child(i)->text(QAccessible::Description);
        EXPECT_EQ(whole->indexOfChild(whole->child(i)), i);
        EXPECT_EQ(whole->child(i)->parent(), whole);
    }
    EXPECT_EQ(names, (QStringList{text("Rank 31"), text("Not ranked"), text("Rank 9")}));
    EXPECT_EQ(days, (QStringList{text("Nov 8"), text("Nov 9"), text("Nov 11")}));
}

TEST_F(RankChartTest, AnAccessiblePointLiesWhereItIsDrawn)
{
    show("31 x . 9");
    QAccessibleInterface *whole = QAccessible::queryAccessibleInterface(chart);
    const QPoint place = chart->mapToGlobal(chart->plot().at(3, 9).toPoint());
    EXPECT_TRUE(whole->child(2)->rect().contains(place));
    EXPECT_EQ(whole->childAt(place.x(), place.y()), whole->child(2));
    EXPECT_EQ(whole->childAt(place.x() + 60, place.y()), nullptr);
}

TEST_F(RankChartTest, TheInspectedPointIsTheFocusedOne)
{
    show("31 x . 9");
    key(Qt::Key_End);
    QAccessibleInterface *whole = QAccessible::queryAccessibleInterface(chart);
    EXPECT_EQ(whole->focusChild(), whole->child(2));
    EXPECT_TRUE(whole->child(2)->state().focused);
    EXPECT_FALSE(whole->child(0)->state().selected);
    EXPECT_EQ(whole->text(QAccessible::Value), text("Nov 11: rank 9"));
}

TEST_F(RankChartTest, AccessiblePointsFollowTheData)
{
    show("31 x . 9");
    QAccessibleInterface *whole = QAccessible::queryAccessibleInterface(chart);
    ASSERT_TRUE(whole->child(2));
    show("5");
    ASSERT_EQ(whole->childCount(), 1);
    EXPECT_EQ(whole->child(0)->text(QAccessible::Name), text("Rank 5"));
    show(".");
    EXPECT_EQ(whole->childCount(), 0);
    EXPECT_EQ(whole->child(0), nullptr);
}

TEST_F(RankChartTest, TwoYearsOfChecksAreDrawn)
{
    QByteArray picture;
    for (int day = 0; day < 731; ++day)
        picture += day % 50 == 7 ? "x " : QByteArray::number(1 + day % 100) + ' ';
    show(picture.constData());
    EXPECT_EQ(runs().size(), 15u + 1u);
    EXPECT_TRUE(axis(Qt::Horizontal)->categoriesLabels().constFirst().endsWith(text("2026")));
    key(Qt::Key_End);
    EXPECT_EQ(chart->selectedDay(), std::optional<size_t>(730));
    EXPECT_FALSE(frame.grab().isNull());
}

TEST_F(RankChartTest, OnePointAndARankOfOneAreDrawn)
{
    show("1");
    ASSERT_EQ(runs().size(), 1u);
    EXPECT_TRUE(hasColorNear(chart->plot().at(0, 1), tokens[Token::Accent]));
}

TEST_F(RankChartTest, ColoursFollowTheScheme)
{
    show("31 9");
    chart->setSelectedDay(1);
    testTheme().set(ColorScheme::Dark);
    settle();
    EXPECT_EQ(pixelAt(chart->plot().at(1, 9)), Tokens(ColorScheme::Dark)[Token::Accent]);
}

} // namespace
} // namespace veltrix
