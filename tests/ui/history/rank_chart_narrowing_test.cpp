// SPDX-License-Identifier: GPL-3.0-or-later
// Narrowing the days of the ranking chart: by wheel, by drag, by keys.
#include "ui/history/rank_chart.h"

#include "ui/history/rank_pictures.h"
#include "ui/support/ui_test.h"

#include <QAccessible>
#include <QWheelEvent>

namespace veltrix
{
namespace
{

class RankChartNarrowingTest : public UiTest
{
protected:
    RankChartNarrowingTest()
    {
        frame.resize(700, 320);
        chart = new RankChart(&frame);
        chart->setGeometry(frame.rect());
        frame.show();
        frame.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&frame));
        chart->setFocus();
    }
    /// So many days, of which one in thirteen has no check and one in seventeen no rank.
    void show(size_t days)
    {
        std::vector<RankingTimeline::Day> all = generatedDays(days, 5, 1'000'000);
        for (size_t day = 0; day < days; ++day) {
            if (day % 13 == 4)
                all[day].observation.reset();
            else if (day % 17 == 5)
                all[day].observation->position.reset();
        }
        chart->setData({rankChartData(std::move(all))});
        settle();
    }
    /// Turns the wheel over a place of the chart; sideways if `aside`.
    bool wheel(QPointF place, int turn, Qt::KeyboardModifiers modifiers, bool aside = false)
    {
        const QPoint angle = aside ? QPoint(turn, 0) : QPoint(0, turn);
        QWheelEvent event(place, chart->mapToGlobal(place), {}, angle, Qt::NoButton, modifiers,
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(chart, &event);
        return event.isAccepted();
    }
    void drag(QPoint from, QPoint to)
    {
        QTest::mousePress(chart, Qt::LeftButton, {}, from);
        moveWithButton((from + to) / 2);
        moveWithButton(to);
        QTest::mouseRelease(chart, Qt::LeftButton, {}, to);
    }
    void moveWithButton(QPoint place)
    {
        QMouseEvent move(QEvent::MouseMove, place, chart->mapToGlobal(QPointF(place)), Qt::NoButton,
                         Qt::LeftButton, {});
        QCoreApplication::sendEvent(chart, &move);
    }
    QPointF over(size_t day) { return {chart->plot().x(day), chart->plot().area.center().y()}; }
    void key(int pressed, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(chart, Qt::Key(pressed), modifiers);
    }
    QString shown() { return spanText(chart->data().days); }
    QString inspected() { return inspectionText(chart->data(), chart->selectedDay()); }

    QWidget frame;
    RankChart *chart = nullptr;
};

TEST_F(RankChartNarrowingTest, TheWheelWithCtrlNarrowsAroundThePointerAndWidensAgain)
{
    show(365);
    const QPointF place = over(300);
    const Date day = chart->data().days[300].date;
    EXPECT_TRUE(wheel(place, 120, Qt::ControlModifier));
    EXPECT_EQ(chart->data().days.size(), 292u);
    for (int i = 0; i < 5; ++i)
        wheel(place, 120, Qt::ControlModifier);
    EXPECT_LT(chart->data().days.size(), 100u);
    ASSERT_TRUE(chart->selectedDay());
    const Date under = chart->data().days[*chart->selectedDay()].date;
    EXPECT_LE(std::abs((under - day).count()), 2 * secondsPerDay);
    for (int i = 0; i < 20; ++i)
        wheel(place, 120, Qt::ControlModifier);
    EXPECT_EQ(chart->data().days.size(), fewestShownDays);
    for (int i = 0; i < 40; ++i)
        wheel(place, -120, Qt::ControlModifier);
    EXPECT_FALSE(chart->isNarrowed());
}

TEST_F(RankChartNarrowingTest, AFineWheelAddsUp)
{
    show(365);
    for (int i = 0; i < 7; ++i)
        wheel(over(100), 8, Qt::ControlModifier);
    EXPECT_FALSE(chart->isNarrowed());
    wheel(over(100), 8, Qt::ControlModifier);
    EXPECT_TRUE(chart->isNarrowed());
}

TEST_F(RankChartNarrowingTest, TheWheelAloneScrollsWhatIsAround)
{
    show(365);
    EXPECT_FALSE(wheel(over(100), -120, {}));
    EXPECT_FALSE(wheel(over(100), -120, {}, true));
    EXPECT_FALSE(chart->isNarrowed());
}

TEST_F(RankChartNarrowingTest, TheWheelSidewaysMovesTheNarrowedDays)
{
    show(365);
    chart->showDays({100, 50});
    EXPECT_TRUE(wheel(over(10), -120, {}, true));
    EXPECT_EQ(chart->shownDays(), (DaySpan{107, 50}));
    wheel(over(10), 240, {}, true);
    EXPECT_EQ(chart->shownDays(), (DaySpan{92, 50}));
}

TEST_F(RankChartNarrowingTest, ADragShowsTheDaysItWentOver)
{
    show(365);
    const Date first = chart->data().days[120].date;
    const Date last = chart->data().days[180].date;
    const QSignalSpy changes(chart, &RankChart::shownDaysChanged);
    drag(over(180).toPoint(), over(120).toPoint());
    EXPECT_EQ(changes.size(), 1);
    EXPECT_NEAR((chart->data().days.front().date - first).count(), 0, secondsPerDay);
    EXPECT_NEAR((chart->data().days.back().date - last).count(), 0, secondsPerDay);
    drag(over(20).toPoint(), over(40).toPoint());
    EXPECT_NEAR(double(chart->data().days.size()), 21, 1) << "from narrowed days on";
}

TEST_F(RankChartNarrowingTest, TheDaysOfADragAreSeenWhileItLastsAndEscapeGivesThemUp)
{
    show(90);
    const QImage before = frame.grab().toImage();
    QTest::mousePress(chart, Qt::LeftButton, {}, over(20).toPoint());
    moveWithButton(over(60).toPoint());
    const QPoint inside(int(chart->plot().x(40)), int(chart->plot().area.top()) + 3);
    EXPECT_NE(frame.grab().toImage().pixelColor(inside), before.pixelColor(inside));
    key(Qt::Key_Escape);
    QTest::mouseRelease(chart, Qt::LeftButton, {}, over(60).toPoint());
    EXPECT_FALSE(chart->isNarrowed());
    EXPECT_EQ(frame.grab().toImage().pixelColor(inside), before.pixelColor(inside));
}

TEST_F(RankChartNarrowingTest, APressThatHardlyMovesOnlyInspects)
{
    show(90);
    drag(over(20).toPoint(), over(20).toPoint() + QPoint(2, 0));
    EXPECT_FALSE(chart->isNarrowed());
    EXPECT_TRUE(chart->selectedDay());
}

TEST_F(RankChartNarrowingTest, ADoubleClickAsksForANoteAndLeavesTheDaysAlone)
{
    show(365);
    chart->showDays({100, 50});
    QSignalSpy asked(chart, &RankChart::noteRequested);
    QTest::mouseDClick(chart, Qt::LeftButton, {}, over(10).toPoint());
    EXPECT_TRUE(chart->isNarrowed());
    ASSERT_EQ(asked.size(), 1);
    EXPECT_EQ(asked[0][0].value<size_t>(), 10U);
    EXPECT_EQ(chart->selectedDay(), std::optional<size_t>(10));
}

TEST_F(RankChartNarrowingTest, KeysNarrowAroundTheInspectedDayAndShowAllAgain)
{
    show(365);
    chart->setSelectedDay(300);
    const QString day = inspected();
    key(Qt::Key_Plus);
    EXPECT_EQ(chart->data().days.size(), 183u);
    EXPECT_EQ(inspected(), day) << "the inspected day stays";
    key(Qt::Key_Equal);
    EXPECT_LT(chart->data().days.size(), 100u);
    key(Qt::Key_Minus);
    EXPECT_NEAR(double(chart->data().days.size()), 183, 2);
    key(Qt::Key_0);
    EXPECT_FALSE(chart->isNarrowed());
    EXPECT_EQ(inspected(), day);
}

TEST_F(RankChartNarrowingTest, EscapeLeadsBackStepByStep)
{
    show(365);
    chart->setSelectedDay(300);
    key(Qt::Key_Plus);
    key(Qt::Key_Escape);
    EXPECT_FALSE(chart->isNarrowed());
    EXPECT_TRUE(chart->selectedDay());
    key(Qt::Key_Escape);
    EXPECT_FALSE(chart->selectedDay());
    QKeyEvent last(QEvent::KeyPress, Qt::Key_Escape, {});
    QCoreApplication::sendEvent(chart, &last);
    EXPECT_FALSE(last.isAccepted()) << "then it belongs to the sheet";
}

TEST_F(RankChartNarrowingTest, StepsOverTheEdgeMoveTheDaysAlong)
{
    show(365);
    chart->showDays({100, 20});
    key(Qt::Key_Home);
    const Date first = chart->data().days.front().date;
    key(Qt::Key_Left);
    EXPECT_EQ(chart->data().days[*chart->selectedDay()].date, first - Seconds(secondsPerDay));
    EXPECT_EQ(chart->shownDays(), (DaySpan{99, 20}));
    key(Qt::Key_End);
    key(Qt::Key_Right);
    EXPECT_EQ(chart->shownDays(), (DaySpan{100, 20}));
    EXPECT_EQ(chart->selectedDay(), std::optional<size_t>(19));
    // 108 has no check.
    chart->showDays({101, 7});
    key(Qt::Key_End);
    key(Qt::Key_Right, Qt::ControlModifier);
    EXPECT_EQ(chart->shownDays().last(), 109u);
    chart->showDays({0, 7});
    key(Qt::Key_Home);
    key(Qt::Key_Left);
    EXPECT_EQ(chart->selectedDay(), std::optional<size_t>(0));
}

TEST_F(RankChartNarrowingTest, PagesMoveByWhatIsShownAndOnlyWhileNarrowed)
{
    show(365);
    QKeyEvent page(QEvent::KeyPress, Qt::Key_PageUp, {});
    QCoreApplication::sendEvent(chart, &page);
    EXPECT_FALSE(page.isAccepted());
    chart->showDays({100, 20});
    key(Qt::Key_PageUp);
    EXPECT_EQ(chart->shownDays(), (DaySpan{80, 20}));
    key(Qt::Key_PageDown);
    key(Qt::Key_PageDown);
    EXPECT_EQ(chart->shownDays(), (DaySpan{120, 20}));
}

TEST_F(RankChartNarrowingTest, NewDataKeepTheDaysThatAreShown)
{
    show(365);
    chart->showDays({100, 20});
    chart->setSelectedDay(5);
    const QString days = shown();
    const QString day = inspected();
    std::vector<RankingTimeline::Day> later = generatedDays(366, 5, 1'000'000);
    later.erase(later.begin());
    chart->setData({rankChartData(std::move(later))});
    EXPECT_EQ(shown(), days);
    EXPECT_EQ(chart->shownDays(), (DaySpan{99, 20}));
    EXPECT_EQ(inspected().left(6), day.left(6));
    chart->setData({rankChartData({})});
    EXPECT_FALSE(chart->isNarrowed());
    EXPECT_TRUE(chart->data().days.empty());
}

TEST_F(RankChartNarrowingTest, AScreenReaderHearsWhichDaysAreShown)
{
    show(365);
    QAccessibleInterface *whole = QAccessible::queryAccessibleInterface(chart);
    EXPECT_TRUE(whole->text(QAccessible::Description)
                    .startsWith(text("Shown: Nov 8, 2026 – Nov 7, 2027. Rank by day (UTC).")));
    chart->showDays({0, 7});
    EXPECT_TRUE(
        whole->text(QAccessible::Description).startsWith(text("Shown: Nov 8 – Nov 14, 2026.")));
    ASSERT_EQ(whole->childCount(), 6) << "the fifth day has no check";
    EXPECT_EQ(whole->child(4)->text(QAccessible::Name), text("Not ranked"));
    EXPECT_EQ(whole->child(5)->text(QAccessible::Description), text("Nov 14"));
}

TEST_F(RankChartNarrowingTest, TenYearsWithGapsAndClockJumpsCanBeNarrowedToADay)
{
    // Two half-years without a check, as when a clock was set ahead and back.
    std::vector<RankingTimeline::Day> years = generatedDays(3650, 9, 11);
    for (size_t day = 0; day < years.size(); ++day) {
        if (day % 1200 < 180)
            years[day].observation.reset();
    }
    const RankChartData all = rankChartData(years);
    chart->setData({all});
    for (const size_t day : {size_t(0), size_t(181), size_t(1825), size_t(2500), size_t(3649)}) {
        chart->showWholeRange();
        while (chart->data().days.size() > fewestShownDays) {
            const QPointF place{
                std::clamp(chart->plot().x(day - std::min(day, chart->shownDays().first)),
                           chart->plot().area.left(), chart->plot().area.right()),
                100};
            wheel(place, 120, Qt::ControlModifier);
            ASSERT_TRUE(chart->shownDays().contains(day)) << day;
        }
        // Each day is told as it is in the whole range.
        for (size_t i = 0; i < chart->data().days.size(); ++i)
            EXPECT_EQ(chart->data().days[i], years[chart->shownDays().first + i]);
    }
    // By keys alone from one end to the other.
    chart->showDays({0, 365});
    key(Qt::Key_End);
    int pages = 0;
    while (chart->shownDays().last() < years.size() - 1 && pages < 20) {
        key(Qt::Key_PageDown);
        ++pages;
    }
    EXPECT_EQ(pages, 9);
}

TEST_F(RankChartNarrowingTest, AShortHistoryIsNotNarrowed)
{
    show(5);
    wheel(over(2), 120, Qt::ControlModifier);
    key(Qt::Key_Plus);
    drag(over(1).toPoint(), over(3).toPoint());
    EXPECT_FALSE(chart->isNarrowed());
    chart->setData({});
    key(Qt::Key_Plus);
    key(Qt::Key_PageUp);
    wheel({100, 100}, 120, Qt::ControlModifier);
    drag({50, 50}, {150, 50});
    EXPECT_FALSE(chart->isNarrowed());
}

} // namespace
} // namespace veltrix
