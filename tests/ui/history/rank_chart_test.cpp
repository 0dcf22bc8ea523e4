// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/history/rank_chart.h"

#include "ui/history/rank_pictures.h"
#include "ui/support/ui_test.h"

#include <QAccessible>

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
        chart->setData({rankChartData(daysOf(picture))});
        settle();
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
    const auto isJoined = [&](size_t from, size_t to) {
        const RankPlot &plot = chart->plot();
        const QPointF middle =
            (plot.markOf(chart->data(), from) + plot.markOf(chart->data(), to)) / 2;
        return hasColorNear(middle, tokens[Token::Accent]);
    };
    EXPECT_TRUE(isJoined(0, 1));
    EXPECT_TRUE(isJoined(1, 3)) << "a missing day breaks nothing";
    EXPECT_FALSE(isJoined(4, 6)) << "an unranked check breaks the line";
    EXPECT_TRUE(isJoined(6, 7));
}

TEST_F(RankChartTest, RankOneIsAtTheTop)
{
    show("31 9");
    EXPECT_LT(chart->plot().y(9), chart->plot().y(31));
    EXPECT_TRUE(
        hasColorNear({chart->plot().x(0) + 40, chart->plot().y(1)}, tokens[Token::Hairline]));
}

TEST_F(RankChartTest, LooksTheSameInLanguagesFromRightToLeft)
{
    show("31 9 8 . x 5");
    const QImage leftToRight = frame.grab().toImage();
    frame.setLayoutDirection(Qt::RightToLeft);
    settle();
    EXPECT_EQ(frame.grab().toImage(), leftToRight);
}

TEST_F(RankChartTest, ALargerFontGetsMoreRoomAtOnce)
{
    show("31 9");
    const qreal before = chart->plot().area.bottom();
    QFont large = chart->font();
    large.setPixelSize(26);
    chart->setFont(large);
    EXPECT_LT(chart->plot().area.bottom(), before - 10);
}

TEST_F(RankChartTest, FollowsItsSize)
{
    show("31 9");
    const qreal before = chart->plot().x(1);
    chart->resize(350, 320);
    EXPECT_LT(chart->plot().x(1), before - 150);
    EXPECT_TRUE(hasColorNear(chart->plot().at(1, 9), tokens[Token::Accent]));
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
    chart->setData({rankChartData(later)});
    EXPECT_EQ(chart->selectedDay(), std::optional<size_t>(2));
    chart->setData({rankChartData({})});
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

TEST_F(RankChartTest, TenYearsOfChecksAreDrawnWithTheirGaps)
{
    std::vector<RankingTimeline::Day> days = generatedDays(3650, 5, 1'000'000);
    for (size_t day = 0; day < days.size(); ++day)
        days[day].observation->position = 37;
    days[1825].observation->position.reset();
    chart->setData({rankChartData(std::move(days))});
    const RankPlot &plot = chart->plot();
    EXPECT_TRUE(hasColorNear(plot.unrankedMark(1825), tokens[Token::Red]));
    EXPECT_EQ(pixelAt(plot.at(1825, 37)), tokens[Token::Window]);
    EXPECT_TRUE(hasColorNear(plot.at(1825, 37) - QPointF(8, 0), tokens[Token::Accent]));
    EXPECT_TRUE(hasColorNear(plot.at(1825, 37) + QPointF(8, 0), tokens[Token::Accent]));
    key(Qt::Key_End);
    EXPECT_EQ(chart->selectedDay(), std::optional<size_t>(3649));
}

TEST_F(RankChartTest, ThePointerFindsAnUnrankedCheckOfTenYears)
{
    std::vector<RankingTimeline::Day> days = generatedDays(3650, 5, 1'000'000);
    days[1825].observation->position.reset();
    chart->setData({rankChartData(std::move(days))});
    settle();
    QTest::mouseMove(chart, chart->plot().unrankedMark(1825).toPoint());
    EXPECT_EQ(chart->selectedDay(), std::optional<size_t>(1825));
}

TEST_F(RankChartTest, OnePointAndARankOfOneAreDrawn)
{
    show("1");
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
