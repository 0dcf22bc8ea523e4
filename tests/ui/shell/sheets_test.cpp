// SPDX-License-Identifier: GPL-3.0-or-later
// Focus and keys in the sheets of the program.
#include "ui/competitors/competitors_view.h"
#include "ui/support/research_test.h"
#include "ui_kit/widgets/card_grid.h"

#include <QAccessible>
#include <QApplication>

namespace veltrix
{
namespace
{

class Sheets : public ResearchTest
{
protected:
    QString focused()
    {
        return QApplication::focusWidget() ? QApplication::focusWidget()->objectName() : QString();
    }
    void openRankedApps(const char *keyword)
    {
        Q_EMIT page().rankedAppsRequested(rivals().row(keyword));
        settle();
        window->grab();
    }
};

TEST_F(Sheets, SpaceTwiceOnARetryOfRankedAppsLeavesTheSheetOpen)
{
    appStore().fails = [](const QString &) {
        return true;
    };
    openRankedApps("retro photo");
    tabTo("rankedAppsMessageAction");
    appStore().fails = nullptr;
    appStore().holds = true;
    press(Qt::Key_Space);
    press(Qt::Key_Space);
    ASSERT_TRUE(topSheet());
    EXPECT_EQ(focused(), text("rankedAppsSheet"));
    appStore().holds = false;
    appStore().release();
    settle();
    EXPECT_TRUE(isShown("rankedAppRow1"));
    press(Qt::Key_Space);
    EXPECT_TRUE(topSheet()) << "nor when the apps have come";
    EXPECT_EQ(topSheet()->objectName(), text("rankedAppsSheet"));
}

TEST_F(Sheets, ARetryThatFailsAgainCanBePressedAgain)
{
    appStore().fails = [](const QString &) {
        return true;
    };
    openRankedApps("retro photo");
    tabTo("rankedAppsMessageAction");
    const auto before = appStore().searches.size();
    press(Qt::Key_Space);
    EXPECT_EQ(focused(), text("rankedAppsMessageAction"));
    press(Qt::Key_Space);
    EXPECT_EQ(appStore().searches.size(), before + 2);
}

TEST_F(Sheets, SpaceTwiceOnARetryOfAResearchedAppStaysOnItsPage)
{
    window->showWorkspace(Workspace::Competitors);
    appStore().fails = [](const QString &) {
        return true;
    };
    window->competitors().openResearch(201, text("US"), text("Foxglove Film Camera"));
    settle();
    tabTo("researchMessageAction");
    appStore().fails = nullptr;
    appStore().holds = true;
    press(Qt::Key_Space);
    press(Qt::Key_Space);
    EXPECT_TRUE(window->competitors().research());
}

TEST_F(Sheets, RankedAppsAreWalkedByArrowsAndPages)
{
    openRankedApps("collage maker");
    tabTo("rankedAppRow1");
    press(Qt::Key_Down);
    EXPECT_EQ(focused(), text("rankedAppRow2"));
    press(Qt::Key_End);
    EXPECT_EQ(focused(), text("rankedAppRow25"));
    press(Qt::Key_PageUp);
    EXPECT_NE(focused(), text("rankedAppRow25"));
    press(Qt::Key_Home);
    EXPECT_EQ(focused(), text("rankedAppRow1"));
}

TEST_F(Sheets, CompetitorCardsAreWalkedByArrows)
{
    press(Qt::Key_2, Qt::ControlModifier);
    window->grab();
    auto *grid = find("competitorsView")->findChild<CardGrid *>();
    ASSERT_TRUE(grid);
    QWidget *first = grid->findChildren<QAbstractButton *>().constFirst();
    first->setFocus();
    press(Qt::Key_Right);
    EXPECT_NE(QApplication::focusWidget(), first);
    press(Qt::Key_Home);
    EXPECT_EQ(QApplication::focusWidget(), first);
}

TEST_F(Sheets, DetailsOverRankedAppsShowTheWayBackAndReturnToTheRow)
{
    openRankedApps("collage maker");
    tabTo("rankedAppRow2");
    press(Qt::Key_Return);
    ASSERT_EQ(topSheet()->objectName(), text("appDetailsSheet"));
    EXPECT_EQ(find("appDetailsSheetBack")->accessibleName(),
              text("Back to Top Apps “collage maker” in United States"));
    press(Qt::Key_Escape);
    EXPECT_EQ(topSheet()->objectName(), text("rankedAppsSheet"));
    EXPECT_EQ(focused(), text("rankedAppRow2"));
}

TEST_F(Sheets, AssistiveTechnologyCannotPressTheWindowBehindASheet)
{
    const auto seen = [this](const char *name) {
        return QAccessible::queryAccessibleInterface(find(name));
    };
    ASSERT_TRUE(seen("settingsButton")->actionInterface());
    openRankedApps("collage maker");
    QAccessibleInterface *root = QAccessible::queryAccessibleInterface(window.get());
    EXPECT_EQ(root->childCount(), 1);
    EXPECT_EQ(root->child(0)->role(), QAccessible::Dialog);
    for (const char *name : {"settingsButton", "addAppButton", "keywordSearch", "appList"}) {
        EXPECT_EQ(seen(name)->actionInterface(), nullptr) << name;
        EXPECT_TRUE(seen(name)->state().disabled) << name;
    }
    press(Qt::Key_Escape);
    EXPECT_GT(root->childCount(), 1);
    ASSERT_TRUE(seen("settingsButton")->actionInterface());
    EXPECT_FALSE(seen("settingsButton")->state().disabled);
}

} // namespace
} // namespace veltrix
