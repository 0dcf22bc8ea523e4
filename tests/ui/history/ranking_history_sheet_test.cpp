// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/history/ranking_history_sheet.h"

#include "effects/atomic_file.h"
#include "ui/history/history_export.h"
#include "ui/history/range_control.h"
#include "ui/history/rank_chart.h"
#include "ui/history/rank_movement_label.h"
#include "ui/history/rank_pictures.h"
#include "ui/history/ranking_history_content.h"
#include "ui/support/research_test.h"
#include "ui_kit/text/table_file.h"
#include "ui_kit/theme/typography.h"
#include "ui_kit/widgets/badge.h"

#include <QClipboard>
#include <QPainter>
#include <QScrollArea>
#include <QScrollBar>

namespace veltrix
{
namespace
{

class RankingHistorySheetTest : public ResearchTest
{
protected:
    QWidget *openFor(const char *keyword)
    {
        Q_EMIT page().historyRequested(rivals().row(keyword));
        settle();
        return topSheet();
    }
    RankChart *chart() { return window->findChild<RankChart *>(); }
    QString label(const char *name) { return find<QLabel>(name)->text(); }
};

TEST_F(RankingHistorySheetTest, StartsAtFourteenDays)
{
    QWidget *sheet = openFor("collage maker");
    EXPECT_TRUE(shows(sheet, text("Ranking history")));
    EXPECT_TRUE(shows(sheet, text("collage maker · United States")));
    EXPECT_TRUE(shows(sheet, text("Ranking trend")));
    EXPECT_EQ(label("historyRangeTitle"), text("Last 14 days"));
    EXPECT_EQ(drawn(chart()->data()), text("a31 a29 . a24 a26 x b22 b18 b19 b15 . b12 b11 b9"));
    EXPECT_TRUE(shows(sheet, text("Lower rank is better · Day (UTC)")));
    EXPECT_TRUE(shows(sheet, text("Rank")));
    EXPECT_TRUE(shows(sheet, text("The line connects saved ranked checks; an explicit unranked "
                                  "check breaks it. Missing days are not inferred. Ranks reflect "
                                  "returned App Store results, not verified device positions.")));
}

TEST_F(RankingHistorySheetTest, ShowsTheLatestCheckAndItsMovement)
{
    QWidget *sheet = openFor("collage maker");
    EXPECT_TRUE(shows(sheet, text("Latest saved check · Nov 21, 2026")));
    EXPECT_EQ(label("historyLatest"), text("# 9"));
    EXPECT_EQ(label("rankMovement"), text("↑ 2"));
    EXPECT_EQ(find<RankMovementLabel>("rankMovement")->token(), Token::Green);
}

TEST_F(RankingHistorySheetTest, AHistoryThatCannotBeReadIsToldAboveWhatThereIs)
{
    writeFileAtomically(world->folder.filePath(text("history.sqlite")), "not a database");
    reopen();
    QWidget *sheet = openFor("collage maker");
    waitFor([this] { return isShown("historyIncomplete"); });
    EXPECT_TRUE(label("historyIncomplete")
                    .startsWith(text("Older measurements couldn’t be read, so only the newest days "
                                     "are shown. The database “")))
        << qPrintable(label("historyIncomplete"));
    EXPECT_EQ(label("historyLatest"), text("# 9"));
    EXPECT_EQ(drawn(chart()->data()), text("a31 a29 . a24 a26 x b22 b18 b19 b15 . b12 b11 b9"));
    EXPECT_TRUE(find<QAbstractButton>("historyExport")->isEnabled());
    EXPECT_TRUE(shows(sheet, text("Last 14 days")));
}

TEST_F(RankingHistorySheetTest, AHistoryThatCanBeReadSaysNothingOfTheKind)
{
    openFor("collage maker");
    EXPECT_FALSE(isShown("historyIncomplete"));
}

TEST_F(RankingHistorySheetTest, OtherRangesReachFurtherBack)
{
    openFor("collage maker");
    const std::vector<std::pair<const char *, size_t>> expected{{"historyRange1", 30},
                                                                {"historyRange2", 90},
                                                                {"historyRange3", 121},
                                                                {"historyRange0", 14}};
    for (const auto &[button, days] : expected) {
        click(button);
        EXPECT_EQ(chart()->data().days.size(), days) << button;
        EXPECT_EQ(label("historyRangeTitle"), find(button)->accessibleName());
    }
    // As assistive technology does.
    find<QAbstractButton>("historyRange2")->toggle();
    EXPECT_EQ(chart()->data().days.size(), 90U);
}

TEST_F(RankingHistorySheetTest, HoveringShowsThatDaysCheck)
{
    openFor("collage maker");
    window->grab();
    EXPECT_EQ(label("historyInspection"), text("Hover to inspect a saved check"));
    const auto hover = [&](size_t day) {
        QTest::mouseMove(chart(), QPoint(int(chart()->plot().x(day)), 60));
        return label("historyInspection");
    };
    EXPECT_EQ(hover(11), text("Nov 19: rank 12"));
    EXPECT_EQ(hover(5), text("Nov 13: Not ranked"));
    EXPECT_EQ(hover(10), text("No check saved on Nov 18"));
}

TEST_F(RankingHistorySheetTest, TheHeaderSaysWhichDaysAreShown)
{
    openFor("collage maker");
    click("historyRange3");
    window->grab();
    EXPECT_TRUE(isShown("historyZoomHint"));
    EXPECT_FALSE(isShown("historyWholeRange"));
    chart()->setFocus();
    chart()->showDays({0, 30});
    EXPECT_EQ(label("historyRangeTitle"), text("Jul 24 – Aug 22, 2026"));
    EXPECT_EQ(find("historyRangeTitle")->accessibleName(), text("Jul 24 – Aug 22, 2026"));
    EXPECT_FALSE(isShown("historyZoomHint"));
    QTest::mouseMove(chart(), QPoint(int(chart()->plot().x(3)), 60));
    EXPECT_TRUE(label("historyInspection").startsWith(text("Jul 27: rank ")))
        << label("historyInspection").toStdString();
    click("historyWholeRange");
    EXPECT_EQ(label("historyRangeTitle"), text("All saved checks"));
    EXPECT_TRUE(chart()->hasFocus()) << "the button is gone";
}

TEST_F(RankingHistorySheetTest, ARangeIsAWayBackAlsoWhenItIsTheChosenOne)
{
    openFor("collage maker");
    click("historyRange3");
    chart()->showDays({0, 30});
    click("historyRange3");
    EXPECT_FALSE(chart()->isNarrowed());
    chart()->showDays({0, 30});
    click("historyRange2");
    EXPECT_EQ(chart()->data().days.size(), 90u);
    EXPECT_EQ(label("historyRangeTitle"), text("Last 90 days"));
}

TEST_F(RankingHistorySheetTest, NarrowedToDaysWithoutARankTheChartStays)
{
    QWidget *sheet = openFor("collage maker");
    auto *content = sheet->findChild<RankingHistoryContent *>();
    content->setState({timelineOf("9 8 x x x x x x x x x . x x 7"), std::nullopt, false,
                       noonOf(firstPictureDay + 14)});
    click("historyRange1");
    chart()->showDays({3, 8});
    EXPECT_TRUE(content->hasChart());
    EXPECT_EQ(label("historyRangeTitle"),
              text("Nov 11 – Nov 18, 2026 · No ranked checks in this range"));
    chart()->setFocus();
    press(Qt::Key_Escape);
    EXPECT_FALSE(chart()->isNarrowed());
    EXPECT_TRUE(topSheet()) << "the first Escape leads back, not out";
}

TEST_F(RankingHistorySheetTest, ANewCheckLeavesTheNarrowedDaysAlone)
{
    openFor("collage maker");
    click("historyRange3");
    chart()->showDays({0, 30});
    rivals().clock->advance(Seconds(secondsPerDay));
    store().queueKeywordRefreshes({*store().trackedKeyword(rivals().row("collage maker").id)});
    settle();
    EXPECT_EQ(label("historyRangeTitle"), text("Jul 24 – Aug 22, 2026"));
    EXPECT_EQ(label("historyLatestCaption"), text("Latest saved check · Nov 22, 2026"));
}

TEST_F(RankingHistorySheetTest, TheRedMarkHasItsWordWhereItIsSeen)
{
    openFor("collage maker");
    EXPECT_EQ(label("historyMarkNote"),
              text("A red × marks a check that did not find the app: not ranked."));
    EXPECT_TRUE(isShown("historyMarkNote"));
    QWidget *sheet = topSheet();
    sheet->findChild<RankingHistoryContent *>()->setState(
        {timelineOf("9 8 7"), std::nullopt, false, noonOf(firstPictureDay + 2)});
    EXPECT_FALSE(isShown("historyMarkNote"));
}

TEST_F(RankingHistorySheetTest, TheChartKeepsItsHeightInALowWindow)
{
    window->resize(800, 420);
    openFor("collage maker");
    settle();
    window->grab();
    EXPECT_GE(chart()->height(), 200);
    QScrollBar *bar = find<QScrollArea>("historySheetScroll")->verticalScrollBar();
    EXPECT_GT(bar->maximum(), 0) << "the rest is scrolled to";
    bar->setValue(bar->maximum());
    window->grab();
    QWidget *note = find("historyMarkNote");
    EXPECT_TRUE(note->visibleRegion().boundingRect().height() > 0);
    EXPECT_TRUE(find("historyExport")->isVisible());
}

TEST_F(RankingHistorySheetTest, AHighWindowNeedsNoScrolling)
{
    window->resize(1280, 900);
    openFor("collage maker");
    settle();
    window->grab();
    EXPECT_EQ(find<QScrollArea>("historySheetScroll")->verticalScrollBar()->maximum(), 0);
    EXPECT_GT(chart()->height(), 250);
}

TEST_F(RankingHistorySheetTest, AKeywordWithoutChecksSaysSo)
{
    QWidget *sheet = openFor("grain filter");
    EXPECT_EQ(emptyTitle("historyEmpty"), text("No keyword data yet"));
    EXPECT_EQ(find<EmptyState>("historyEmpty")->content().symbol, text("chart.xyaxis.line"));
    EXPECT_EQ(label("historyLatest"), text("Not checked yet"));
    EXPECT_FALSE(find<Button>("historyCopyImage")->isEnabled());
    EXPECT_FALSE(find<Button>("historyExport")->isEnabled());
    EXPECT_FALSE(shows(sheet, text("Lower rank is better · Day (UTC)")));
}

TEST_F(RankingHistorySheetTest, ChecksWithoutARankInTheRangeSaySo)
{
    QWidget *sheet = openFor("passport photo booth");
    ASSERT_TRUE(sheet);
    auto *content = sheet->findChild<RankingHistoryContent *>();
    content->setState({timelineOf("9 x x"), std::nullopt, false, noonOf(firstPictureDay + 15)});
    EXPECT_EQ(emptyTitle("historyEmpty"), text("No ranked checks in this range"));
    EXPECT_EQ(emptyText("historyEmpty"),
              text("No saved rank is available for the selected period."));
    // A wider range has one.
    click("historyRange1");
    EXPECT_TRUE(content->hasChart());
}

TEST_F(RankingHistorySheetTest, AnErrorTakesTheChartsPlace)
{
    QWidget *sheet = openFor("collage maker");
    auto *content = sheet->findChild<RankingHistoryContent *>();
    content->setState({timelineOf("9 8"), text("The history cannot be read."), false,
                       noonOf(firstPictureDay + 1)});
    EXPECT_EQ(emptyTitle("historyEmpty"), text("The history cannot be read."));
    EXPECT_EQ(find<EmptyState>("historyEmpty")->content().symbol, text("exclamationmark.triangle"));
    EXPECT_FALSE(content->hasChart());
}

TEST_F(RankingHistorySheetTest, SampleDataAreMarked)
{
    QWidget *sheet = openFor("collage maker");
    EXPECT_FALSE(isShown("historySample"));
    EXPECT_FALSE(isShown("historySampleNote"));
    auto *content = sheet->findChild<RankingHistoryContent *>();
    content->setState({timelineOf("9 8"), std::nullopt, true, noonOf(firstPictureDay + 1)});
    settle();
    EXPECT_TRUE(isShown("historySample"));
    EXPECT_EQ(label("historySampleNote"),
              text("Sample data is for preview only. It does not change saved research or "
                   "represent real App Store rankings."));
}

TEST_F(RankingHistorySheetTest, ANewCheckIsChartedAtOnce)
{
    openFor("collage maker");
    rivals().clock->advance(Seconds(secondsPerDay));
    appStore().resultsOf.insert(text("collage maker"), {appResult(101, "Lumen Photo Editor")});
    store().queueKeywordRefreshes({*store().trackedKeyword(rivals().row("collage maker").id)});
    settle();
    EXPECT_EQ(label("historyLatest"), text("1st"));
    EXPECT_EQ(drawn(chart()->data()), text("a29 . a24 a26 x b22 b18 b19 b15 . b12 b11 b9 b1"));
}

TEST_F(RankingHistorySheetTest, IsExportedAsCsv)
{
    openFor("collage maker");
    click("historyExport");
    ASSERT_EQ(world->files.requests.size(), 1);
    EXPECT_EQ(world->files.requests[0].suggestedName, text("collage maker ranking history.csv"));
    QList<QStringList> rows;
    for (const TextRow &row : rowsOfText(textOfFile(world->files.saved)))
        rows << row.cells;
    ASSERT_EQ(rows.size(), 13);
    EXPECT_EQ(rows[0].mid(0, 7),
              (QStringList{text("Keyword"), text("Storefront"), text("Day (UTC)"),
                           text("Checked at"), text("Rank"), text("Movement"), text("Notes")}));
    EXPECT_EQ(rows[1][2], text("2026-11-08"));
    EXPECT_EQ(rows[1][4], text("31"));
    EXPECT_EQ(rows[5].mid(0, 6), (QStringList{text("collage maker"), text("US"), text("2026-11-13"),
                                              text("2026-11-13T11:56:00.000Z"), text("Not ranked"),
                                              text("Left results")}));
    EXPECT_EQ(rows[12][5], text("↑ 2"));
    EXPECT_EQ(find<Button>("historyExport")->text(), text("Exported"));
}

TEST_F(RankingHistorySheetTest, AFailedExportIsToldInTheSheet)
{
    openFor("collage maker");
    world->files.error = text("The disk is full.");
    click("historyExport");
    EXPECT_EQ(label("historyProblem"), text("The disk is full."));
    EXPECT_EQ(find<Button>("historyExport")->text(), text("Export CSV"));
    world->files.error.reset();
    click("historyExport");
    EXPECT_EQ(label("historyProblem"), QString());
}

TEST_F(RankingHistorySheetTest, ACancelledExportChangesNothing)
{
    openFor("collage maker");
    world->files.cancels = true;
    click("historyExport");
    EXPECT_EQ(find<Button>("historyExport")->text(), text("Export CSV"));
    EXPECT_EQ(label("historyProblem"), QString());
}

TEST_F(RankingHistorySheetTest, TheChartIsCopiedAsAPicture)
{
    openFor("collage maker");
    window->grab();
    chart()->setSelectedDay(3);
    click("historyCopyImage");
    const QImage copied = QGuiApplication::clipboard()->image();
    ASSERT_FALSE(copied.isNull());
    EXPECT_GT(copied.width(), 1200);
    EXPECT_EQ(find<Button>("historyCopyImage")->text(), text("Copied"));
    EXPECT_EQ(chart()->selectedDay(), std::optional<size_t>(3));
    EXPECT_TRUE(isShown("historyRange"));
    const QColor accent = Tokens(ColorScheme::Light)[Token::Accent];
    int accented = 0;
    for (int x = 0; x < copied.width(); ++x) {
        for (int y = 0; y < copied.height(); ++y)
            accented += copied.pixelColor(x, y) == accent ? 1 : 0;
    }
    EXPECT_GT(accented, 500);
}

TEST_F(RankingHistorySheetTest, TheLabelOfTheLastDayIsWholeInTheCopiedPicture)
{
    QWidget *sheet = openFor("collage maker");
    std::vector<RankingTimeline::Observation> checks;
    for (const RankingTimeline::Day &day : generatedDays(57, 3, 1'000'000))
        checks.push_back(*day.observation);
    sheet->findChild<RankingHistoryContent *>()->setState(
        {RankingTimeline(checks, checks[0].date), std::nullopt, false, checks.back().date});
    click("historyRange3");
    settle();
    click("historyCopyImage");
    const QImage copied = QGuiApplication::clipboard()->image();

    const QFont font = fontFor(TextStyle::Secondary, chart()->font());
    const RankChartGeometry laidOut =
        layoutRankChart(chart()->rect(), QFontMetricsF(font), chart()->compared());
    RankChartGeometry alone{laidOut.rect, laidOut.plot, {}, {}, {laidOut.days.back()}, {}};
    ASSERT_EQ(alone.days[0].text, text("Jan 3"));
    const Tokens tokens(ColorScheme::Light);
    QImage label(chart()->size() * 2, copied.format());
    label.setDevicePixelRatio(2);
    label.fill(tokens[Token::Raised]);
    QPainter painter(&label);
    paintRankChart(painter, alone, font, tokens);
    painter.end();

    // Without the controls the chart is higher than on screen, and as wide.
    const QRectF rect = alone.days[0].rect;
    const QRect place = QRectF(rect.topLeft() * 2, rect.size() * 2).toAlignedRect();
    const QImage whole = label.copy(place);
    const int left = place.left() + 2 * spacing::xl;
    bool isFound = false;
    for (int top = 0; top < copied.height() && !isFound; ++top)
        isFound = copied.copy(QRect(QPoint(left, top), place.size())) == whole;
    EXPECT_TRUE(isFound);
}

TEST_F(RankingHistorySheetTest, DoneClosesIt)
{
    openFor("collage maker");
    click("historyDone");
    EXPECT_FALSE(Overlay::isOpenOver(window.get()));
}

TEST(RankMovementLabelTest, EachMovementHasItsColour)
{
    QWidget parent;
    auto *label = new RankMovementLabel(&parent);
    const std::vector<std::pair<RankMovement, Token>> expected{
        {RankMovement::improved(3), Token::Green},
        {RankMovement::entered(), Token::Green},
        {RankMovement::declined(2), Token::Red},
        {RankMovement::left(), Token::Red},
        {RankMovement::first(), Token::Secondary},
        {RankMovement::unchanged(), Token::Secondary},
        {RankMovement::stillUnranked(), Token::Secondary}};
    for (const auto &[movement, token] : expected) {
        label->setMovement(movement);
        EXPECT_EQ(label->text(), movement.label());
        EXPECT_EQ(label->token(), token) << movement.label().toStdString();
    }
    label->setMovement(std::nullopt);
    EXPECT_TRUE(label->isHidden());
}

TEST(HistoryTable, LeavesDaysWithoutACheckOut)
{
    const QList<QStringList> table =
        historyTable(text("photo, editor"), text("US"), {rankChartData(daysOf("12 . x"))});
    EXPECT_EQ(table.size(), 3);
    EXPECT_EQ(table[1].mid(0, 3),
              (QStringList{text("photo, editor"), text("US"), text("2026-11-08")}));
    EXPECT_EQ(table[2][4], text("Not ranked"));
}

} // namespace
} // namespace veltrix
