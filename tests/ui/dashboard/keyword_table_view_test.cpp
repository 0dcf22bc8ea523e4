// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/support/ui_test.h"

#include "ui/dashboard/keyword_cells.h"
#include "ui_kit/theme/typography.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QScrollBar>

namespace veltrix
{
namespace
{

class KeywordTableViewTest : public UiTest
{
protected:
    KeywordTableViewTest() { open(); }

    QPoint centreOf(int row, KeywordColumn column)
    {
        return table().visualRect(model().index(row, int(column))).center();
    }
    void addMany(int count)
    {
        QStringList many;
        for (int i = 0; i < count; ++i)
            many << QStringLiteral("m%1").arg(i, 4, 10, QLatin1Char('0'));
        store().addTrackedKeywords(*window->selectedApp(), many, QStringLiteral("US"));
        settle();
    }
};

TEST(KeywordCellGeometry, CentresTwoLines)
{
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(13);
    const QFontMetricsF title(fontFor(TextStyle::BodyMedium, font));
    const QFontMetricsF subtitle(fontFor(TextStyle::Secondary, font));
    const QRectF content(10, 100, 250, 52);
    const KeywordCellGeometry geometry = layoutKeywordCell(content, title, subtitle, 80, {});
    EXPECT_DOUBLE_EQ(geometry.title.bottom(), geometry.subtitle.top());
    EXPECT_NEAR((geometry.title.top() + geometry.subtitle.bottom()) / 2, content.center().y(), 1);
    EXPECT_DOUBLE_EQ(geometry.title.width(), 250);
    EXPECT_GE(geometry.title.top(), content.top());
    EXPECT_LE(geometry.subtitle.bottom(), content.bottom());
}

TEST(KeywordCellGeometry, PutsTheStorefrontBehindTheKeywordWhichGivesWayToIt)
{
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(13);
    const QFontMetricsF title(fontFor(TextStyle::BodyMedium, font));
    const QFontMetricsF subtitle(fontFor(TextStyle::Secondary, font));
    const QRectF content(10, 100, 140, 52);
    const QSizeF badge(26, 17);
    const auto roomy = layoutKeywordCell(content, title, subtitle, 60, badge);
    EXPECT_DOUBLE_EQ(roomy.title.width(), 60);
    EXPECT_GT(roomy.storefront.left(), roomy.title.right());
    EXPECT_LT(roomy.storefront.left(), roomy.title.right() + 10);
    EXPECT_NEAR(roomy.storefront.center().y(), roomy.title.center().y(), 1);
    const auto narrow = layoutKeywordCell(content, title, subtitle, 400, badge);
    EXPECT_DOUBLE_EQ(narrow.storefront.right(), content.right());
    EXPECT_GT(narrow.title.width(), 90);
    EXPECT_TRUE(layoutKeywordCell(content, title, subtitle, 400, {}).storefront.isEmpty());
}

TEST_F(KeywordTableViewTest, RowsAreFiftyTwoHighAndGrowWithTheFont)
{
    EXPECT_EQ(table().rowHeight(0), twoLineRowHeight(table().font()));
    QFont large = table().font();
    large.setPixelSize(large.pixelSize() * 2);
    table().setFont(large);
    EXPECT_EQ(table().rowHeight(0), twoLineRowHeight(large));
}

TEST_F(KeywordTableViewTest, TheColumnsFillTheTable)
{
    EXPECT_EQ(table().horizontalHeader()->length(), table().viewport()->width());
    window->resize(1500, 800);
    settle();
    EXPECT_EQ(table().horizontalHeader()->length(), table().viewport()->width());
    EXPECT_EQ(table().columnWidth(int(KeywordColumn::Target)), 175);
}

TEST_F(KeywordTableViewTest, ADoubleClickAndEnterOpenTheAnalysis)
{
    const QSignalSpy opened(&page(), &DashboardPage::analysisRequested);
    // The second click of a double click follows a first one.
    const QPoint target = centreOf(3, KeywordColumn::Target);
    QTest::mouseClick(table().viewport(), Qt::LeftButton, {}, target);
    QTest::mouseDClick(table().viewport(), Qt::LeftButton, {}, target);
    EXPECT_EQ(opened.size(), 1);
    press(Qt::Key_Escape);
    selectKeywords({QStringLiteral("photo editor")});
    press(Qt::Key_Return);
    ASSERT_EQ(opened.size(), 2);
    EXPECT_EQ(opened[1][0].value<DashboardKeywordRow>().keyword, QStringLiteral("photo editor"));
    press(Qt::Key_Escape);
    EXPECT_EQ(QApplication::focusWidget(), &table()) << "the sheet gives the focus back";
    press(Qt::Key_Enter);
    EXPECT_EQ(opened.size(), 3);
}

TEST_F(KeywordTableViewTest, AClickOnTheIconsOpensTheRankedApps)
{
    const QSignalSpy opened(&page(), &DashboardPage::rankedAppsRequested);
    const int row = int(shownKeywords().indexOf(QStringLiteral("photo editor")));
    QTest::mouseClick(table().viewport(), Qt::LeftButton, {}, centreOf(row, KeywordColumn::Apps));
    ASSERT_EQ(opened.size(), 1);
    EXPECT_EQ(opened[0][0].value<DashboardKeywordRow>().keyword, QStringLiteral("photo editor"));
    const int pending = int(shownKeywords().indexOf(QStringLiteral("grain filter")));
    QTest::mouseClick(table().viewport(), Qt::LeftButton, {},
                      centreOf(pending, KeywordColumn::Apps));
    EXPECT_EQ(opened.size(), 1) << "there are no apps to show yet";
}

TEST_F(KeywordTableViewTest, TheRowUnderThePointerHasItsButtons)
{
    const QSignalSpy history(&page(), &DashboardPage::historyRequested);
    const QSignalSpy apps(&page(), &DashboardPage::rankedAppsRequested);
    EXPECT_FALSE(isShown("rowHistory"));
    QTest::mouseMove(table().viewport(), centreOf(4, KeywordColumn::Target));
    settle();
    EXPECT_EQ(find("rowHistory")->accessibleName(),
              QStringLiteral("View ranking history for light leak effect"));
    EXPECT_EQ(find("rowRankedApps")->accessibleName(),
              QStringLiteral("Show ranked apps for light leak effect in United States"));
    click("rowHistory");
    press(Qt::Key_Escape);
    QTest::mouseMove(table().viewport(), centreOf(4, KeywordColumn::Difficulty));
    settle();
    click("rowRankedApps");
    ASSERT_EQ(history.size(), 1);
    EXPECT_EQ(history[0][0].value<DashboardKeywordRow>().keyword,
              QStringLiteral("light leak effect"));
    EXPECT_EQ(apps.size(), 1);
}

TEST_F(KeywordTableViewTest, CopiesTheSelectedRowsWithTheirHeaders)
{
    selectKeywords({QStringLiteral("collage maker"), QStringLiteral("grain filter")});
    press(Qt::Key_C, Qt::ControlModifier);
    const QStringList lines = QGuiApplication::clipboard()->text().split(u'\n');
    ASSERT_EQ(lines.size(), 4);
    EXPECT_EQ(lines[0], QStringLiteral("Keyword\tStorefront\tTarget\tPopularity (est.)\tDifficulty "
                                       "(est.)\tRanking\tApps"));
    EXPECT_TRUE(lines[1].startsWith(QStringLiteral("collage maker\tUS\tGood Target\t61\t44\t9\t")));
    EXPECT_EQ(lines[2], QStringLiteral("grain filter\tUS\tRefresh required\t\t\tPending\t"));
}

TEST_F(KeywordTableViewTest, AClickOnAHeaderSortsAndASecondTurnsTheOrder)
{
    auto *header = table().horizontalHeader();
    const QPoint popularity(table().columnViewportPosition(int(KeywordColumn::Popularity)) + 20,
                            10);
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, popularity);
    EXPECT_EQ(model().sortedBy(), KeywordColumn::Popularity);
    EXPECT_EQ(shownKeywords().first(), QStringLiteral("passport photo booth"));
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, popularity);
    EXPECT_EQ(shownKeywords().first(), QStringLiteral("photo editor"));
}

TEST_F(KeywordTableViewTest, ColumnsComeBackAtTheNextStart)
{
    auto *header = table().horizontalHeader();
    header->moveSection(header->visualIndex(int(KeywordColumn::Position)), 1);
    header->resizeSection(int(KeywordColumn::Position), 222);
    table().setColumnVisible(KeywordColumn::Difficulty, false);
    header->setSortIndicator(int(KeywordColumn::Popularity), Qt::DescendingOrder);
    reopen();
    EXPECT_EQ(table().shownColumns(),
              (std::vector{KeywordColumn::Keyword, KeywordColumn::Position, KeywordColumn::Target,
                           KeywordColumn::Popularity, KeywordColumn::Apps}));
    EXPECT_EQ(table().columnWidth(int(KeywordColumn::Position)), 222);
    EXPECT_EQ(model().sortedBy(), KeywordColumn::Popularity);
    EXPECT_EQ(shownKeywords().first(), QStringLiteral("photo editor"));
    EXPECT_EQ(table().horizontalHeader()->sortIndicatorSection(), int(KeywordColumn::Popularity));
}

TEST_F(KeywordTableViewTest, AHiddenColumnIsNeitherCopiedNorLost)
{
    table().setColumnVisible(KeywordColumn::Apps, false);
    table().setColumnVisible(KeywordColumn::Target, false);
    selectKeywords({QStringLiteral("grain filter")});
    press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_TRUE(QGuiApplication::clipboard()->text().startsWith(
        QStringLiteral("Keyword\tStorefront\tPopularity (est.)\tDifficulty (est.)\tRanking\n")));
    table().setColumnVisible(KeywordColumn::Target, true);
    EXPECT_EQ(table().shownColumns().size(), 5U);
    table().setColumnVisible(KeywordColumn::Keyword, false);
    EXPECT_EQ(table().shownColumns().front(), KeywordColumn::Keyword);
}

TEST_F(KeywordTableViewTest, RowsThatComeInAboveDoNotMoveWhatIsShown)
{
    addMany(60);
    QScrollBar *bar = table().verticalScrollBar();
    bar->setValue(30 * table().rowHeight(0) + 7);
    const int top = table().rowAt(0);
    const QString before = model().entryAt(top).row.keyword;
    const int offset = table().rowViewportPosition(top);
    store().addTrackedKeyword(*window->selectedApp(), QStringLiteral("aaa"), QStringLiteral("US"));
    settle();
    EXPECT_EQ(model().entryAt(table().rowAt(0)).row.keyword, before);
    EXPECT_EQ(table().rowViewportPosition(table().rowAt(0)), offset);
    store().removeKeyword(model().entryAt(0).row.id);
    settle();
    EXPECT_EQ(model().entryAt(table().rowAt(0)).row.keyword, before);
}

TEST_F(KeywordTableViewTest, MeasuringMovesNeitherTheSelectionNorTheRows)
{
    addMany(60);
    table().horizontalHeader()->setSortIndicator(int(KeywordColumn::Popularity),
                                                 Qt::DescendingOrder);
    table().verticalScrollBar()->setValue(20 * table().rowHeight(0));
    QTest::mouseMove(table().viewport(), centreOf(24, KeywordColumn::Target));
    table().QTableView::selectRow(25);
    const QList<QUuid> selected = table().selectedIds();
    const QStringList before = shownKeywords();
    world->client->holds = true;
    store().queueKeywordRefreshes(store().trackedKeywords());
    for (int i = 0; i < 20; ++i) {
        world->client->release();
        settle();
    }
    EXPECT_EQ(shownKeywords(), before);
    EXPECT_EQ(table().selectedIds(), selected);
    EXPECT_EQ(table().verticalScrollBar()->value(), 20 * table().rowHeight(0));
}

TEST_F(KeywordTableViewTest, AFilterKeepsTheSelectionOfWhatStays)
{
    selectKeywords({QStringLiteral("photo editor"), QStringLiteral("collage maker")});
    model().setSearch(QStringLiteral("photo"));
    ASSERT_EQ(table().selectedIds().size(), 1);
    EXPECT_EQ(store().trackedKeyword(table().selectedIds().first())->keyword,
              QStringLiteral("photo editor"));
}

TEST_F(KeywordTableViewTest, TheMenuKeyOpensTheActionsOfTheRow)
{
    selectKeywords({QStringLiteral("collage maker")});
    QContextMenuEvent event(QContextMenuEvent::Keyboard, {}, {});
    QCoreApplication::sendEvent(&table(), &event);
    auto *menu = find<QMenu>("rowMenu");
    ASSERT_TRUE(menu);
    QStringList entries;
    for (const QAction *action : menu->actions())
        entries << action->text().section(u'\t', 0, 0);
    entries.removeAll(QString());
    EXPECT_EQ(entries,
              (QStringList{QStringLiteral("Keyword Analysis"), QStringLiteral("View ranked apps"),
                           QStringLiteral("Ranking history"), QStringLiteral("Who is above you"),
                           QStringLiteral("Tags…"), QStringLiteral("Refresh Keyword"),
                           QStringLiteral("Copy"), QStringLiteral("Remove Keyword…")}));
    menu->close();
}

TEST_F(KeywordTableViewTest, KeysThatActOnASelectionTakeTheCurrentRowWhereThereIsNone)
{
    const QString current = shownKeywords().at(2);
    const auto moveTo = [this] {
        table().clearSelection();
        table().selectionModel()->setCurrentIndex(model().index(2, 0),
                                                  QItemSelectionModel::NoUpdate);
    };
    moveTo();
    QContextMenuEvent event(QContextMenuEvent::Keyboard, {}, {});
    QCoreApplication::sendEvent(&table(), &event);
    auto *menu = find<QMenu>("rowMenu");
    ASSERT_TRUE(menu);
    EXPECT_EQ(menu->accessibleName(), QStringLiteral("Actions for %1").arg(current));
    menu->close();
    settle();

    moveTo();
    QTest::keyClick(&table(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_TRUE(QGuiApplication::clipboard()->text().contains(current));

    moveTo();
    QTest::keyClick(&table(), Qt::Key_Delete);
    EXPECT_TRUE(find<TextLabel>("confirmMessage")->text().contains(current));
}

} // namespace
} // namespace veltrix
