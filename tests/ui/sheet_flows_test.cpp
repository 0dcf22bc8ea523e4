// SPDX-License-Identifier: GPL-3.0-or-later
// What people do with the sheets and the Competitors workspace, from the first key to the last.
#include "ui/competitors/competitors_view.h"
#include "ui/competitors/keyword_check_table.h"
#include "ui/competitors/tracked_competitor_card.h"
#include "ui/history/rank_chart.h"
#include "ui/support/research_test.h"

#include <QApplication>

namespace veltrix
{
namespace
{

class SheetFlows : public ResearchTest
{
protected:
    QString focused() { return QApplication::focusWidget()->objectName(); }
    /// Chooses an entry of the row's menu with the keyboard.
    void chooseWithKeys(const QString &entry)
    {
        QContextMenuEvent menuKey(QContextMenuEvent::Keyboard, QPoint(5, 5), QPoint(5, 5));
        QCoreApplication::sendEvent(table().viewport(), &menuKey);
        settle();
        auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        ASSERT_TRUE(menu);
        for (int step = 0; step < 20; ++step) {
            QTest::keyClick(menu, Qt::Key_Down);
            if (menu->activeAction() &&
                menu->activeAction()->text().section(u'\t', 0, 0) == entry) {
                QTest::keyClick(menu, Qt::Key_Return);
                settle();
                return;
            }
        }
        ADD_FAILURE() << "no entry " << entry.toStdString();
    }
};

TEST_F(SheetFlows, AnalyseAKeyword)
{
    table().setFocus();
    table().setCurrentIndex(model().index(0, 0));
    while (model().entryAt(table().currentIndex().row()).row.keyword != text("collage maker"))
        press(Qt::Key_Down);
    press(Qt::Key_Return);
    ASSERT_TRUE(topSheet());
    EXPECT_TRUE(shows(topSheet(), text("collage maker · United States")));
    EXPECT_TRUE(shows(topSheet(), text("Good Target")) || find("guidanceCard"));
    tabTo("analysisCopy");
    press(Qt::Key_Space);
    EXPECT_EQ(find<Button>("analysisCopy")->text(), text("Copied"));
    press(Qt::Key_Escape);
    EXPECT_FALSE(Overlay::isOpenOver(window.get()));
    EXPECT_TRUE(table().hasFocus()) << "the focus goes back where it came from";
}

TEST_F(SheetFlows, ReadTheHistoryWithTheKeyboardAlone)
{
    selectKeywords({text("collage maker")});
    chooseWithKeys(text("Ranking history"));
    ASSERT_TRUE(topSheet());
    EXPECT_EQ(topSheet()->objectName(), text("historySheet"));
    tabTo("rankChart");
    press(Qt::Key_Left);
    EXPECT_EQ(find<QLabel>("historyInspection")->text(), text("Nov 21: rank 9"));
    press(Qt::Key_Left, Qt::ControlModifier);
    press(Qt::Key_Left, Qt::ControlModifier);
    press(Qt::Key_Left);
    EXPECT_EQ(find<QLabel>("historyInspection")->text(), text("No check saved on Nov 18"));
    press(Qt::Key_Home);
    EXPECT_EQ(find<QLabel>("historyInspection")->text(), text("Nov 8: rank 31"));
    // One stop for the whole group; arrows choose in it, as among radio buttons.
    tabTo("historyRange0");
    press(Qt::Key_Right);
    EXPECT_EQ(find<QLabel>("historyRangeTitle")->text(), text("Last 30 days"));
    tabTo("historyExport");
    press(Qt::Key_Space);
    EXPECT_FALSE(world->files.saved.isEmpty());
    press(Qt::Key_Escape);
    EXPECT_FALSE(Overlay::isOpenOver(window.get()));
    EXPECT_TRUE(table().hasFocus());
}

TEST_F(SheetFlows, SeeRankedAppsWhileTheServiceFails)
{
    appStore().fails = [](const QString &) {
        return true;
    };
    selectKeywords({text("collage maker")});
    chooseWithKeys(text("View ranked apps"));
    ASSERT_TRUE(topSheet());
    EXPECT_EQ(find<QLabel>("rankedAppsCount")->text(), text("Showing 25 of 40 results"));
    EXPECT_TRUE(isShown("rankedAppsFailure"));
    tabTo("rankedAppsFailureAction");
    press(Qt::Key_Space);
    EXPECT_EQ(appStore().searches.size(), 2);
    EXPECT_TRUE(isShown("rankedAppsFailure"));
    EXPECT_EQ(find<QLabel>("rankedAppsCount")->text(), text("Showing 25 of 40 results"));
    appStore().fails = nullptr;
    press(Qt::Key_Space);
    EXPECT_FALSE(isShown("rankedAppsFailure"));
    EXPECT_EQ(find<QLabel>("rankedAppsCount")->text(), text("Showing 25 of 61 results"));
}

TEST_F(SheetFlows, ResearchACompetitorTrackItMeasureItsKeywordsAndRemoveIt)
{
    // Search and research it.
    press(Qt::Key_2, Qt::ControlModifier);
    EXPECT_EQ(window->workspace(), Workspace::Competitors);
    type("competitorSearch", text("film camera"));
    press(Qt::Key_Return);
    tabTo("searchResult4");
    press(Qt::Key_Return);
    window->grab();
    ASSERT_TRUE(window->competitors().research());

    // Track it.
    tabTo("trackCompetitor");
    press(Qt::Key_Space);
    EXPECT_EQ(store().competitorsOfApp(appId()).constLast().name, text("Foxglove Film Camera"));

    // Choose two of its keywords and track them.
    auto *checks = find<KeywordCheckTable>("keywordChecks");
    tabTo("keywordChecks");
    press(Qt::Key_Down);
    press(Qt::Key_Space);
    press(Qt::Key_Down);
    press(Qt::Key_Space);
    auto *checkModel = static_cast<KeywordCheckModel *>(checks->model());
    const QStringList chosen = checkModel->chosen();
    ASSERT_EQ(chosen.size(), 2);
    const int before = model().rowCount();
    find("trackKeywords")->setFocus();
    press(Qt::Key_Space);

    // See them measured.
    press(Qt::Key_1, Qt::ControlModifier);
    EXPECT_EQ(model().rowCount(), before + 2);
    for (const QString &keyword : chosen) {
        EXPECT_NE(cell(qPrintable(keyword), KeywordColumn::Position), text("Pending"));
        EXPECT_FALSE(rivals().row(qPrintable(keyword)).awaitingMetrics);
    }

    // Everything is still there after a restart; then remove it.
    reopen();
    EXPECT_EQ(model().rowCount(), before + 2);
    press(Qt::Key_2, Qt::ControlModifier);
    window->grab();
    QList<TrackedCompetitorCard *> cards = window->findChildren<TrackedCompetitorCard *>();
    ASSERT_EQ(cards.size(), 6);
    EXPECT_EQ(cards.constLast()->accessibleName(), text("Research Foxglove Film Camera"));
    QTest::mouseClick(cards.constLast()->findChild<Button *>(text("competitorManage")),
                      Qt::LeftButton);
    choose("competitorMenu", text("Remove competitor"));
    EXPECT_EQ(window->findChildren<TrackedCompetitorCard *>().size(), 5);
    EXPECT_EQ(store().competitorsOfApp(appId()).size(), 5);
}

} // namespace
} // namespace veltrix
