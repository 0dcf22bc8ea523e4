// SPDX-License-Identifier: GPL-3.0-or-later
// Choosing among many apps.
#include "ui/support/ui_test.h"

#include "ui/shell/app_list_model.h"

#include <QAccessible>
#include <QListView>

namespace veltrix
{
namespace
{

class AppSelectorTest : public UiTest
{
protected:
    void openWith(int count)
    {
        PersistedState state = sampleState(VirtualClock().now(), FakePopularity().version);
        const AppProfile pattern = state.apps.constFirst();
        while (state.apps.size() < count) {
            AppProfile app = pattern;
            app.id = QUuid::createUuid();
            app.trackId = 5000 + state.apps.size();
            app.appName = QStringLiteral("Sample App %1").arg(state.apps.size() + 1);
            state.apps.append(app);
        }
        open(state);
        window->grab();
    }
    QListView *apps() { return find<QListView>("appList"); }
    QString selectedName() { return store().app(*window->selectedApp())->appName; }
    bool isInView(int row)
    {
        return apps()->viewport()->rect().contains(
            apps()->visualRect(apps()->model()->index(row, 0)));
    }
};

TEST_F(AppSelectorTest, AHundredAppsUseTheHeightThereIs)
{
    openWith(100);
    QWidget *last = find("workspaceCompetitors");
    const int below = window->height() - last->mapTo(window.get(), QPoint(0, last->height())).y();
    EXPECT_LT(below, 30) << "nothing is left free under the list";
    EXPECT_GT(apps()->height(), 400);
    window->resize(800, 500);
    settle();
    window->grab();
    EXPECT_GE(apps()->height(), 100);
    EXPECT_LE(last->mapTo(window.get(), QPoint(0, last->height())).y(), 500);
}

TEST_F(AppSelectorTest, FewAppsLeaveTheRestFree)
{
    openWith(3);
    const int row = apps()->visualRect(apps()->model()->index(0, 0)).height();
    EXPECT_EQ(apps()->height(), 3 * row);
    QWidget *keywords = find("workspaceKeywords");
    EXPECT_LT(keywords->mapTo(window.get(), QPoint()).y(), 360) << "right below the list";
}

TEST_F(AppSelectorTest, TheSelectedAppIsInView)
{
    openWith(100);
    EXPECT_TRUE(isInView(0));
    window->selectApp(store().apps()[80].id);
    settle();
    EXPECT_TRUE(isInView(80));
    window->resize(800, 500);
    settle();
    window->grab();
    EXPECT_TRUE(isInView(80)) << "also when the window gets lower";
    click("appSelector");
    click("appSelector");
    EXPECT_TRUE(isInView(80)) << "and when the list is folded out again";
}

TEST_F(AppSelectorTest, EnterInTheSearchTakesTheFirstAppFound)
{
    openWith(100);
    type("appSelectorSearch", QStringLiteral("app 47"));
    EXPECT_EQ(apps()->model()->rowCount(), 1);
    press(Qt::Key_Return);
    EXPECT_EQ(selectedName(), QStringLiteral("Sample App 47"));
    EXPECT_EQ(apps()->model()->rowCount(), 100) << "the whole list again";
    EXPECT_TRUE(isInView(46));
    EXPECT_TRUE(find("appSelectorSearch")->hasFocus());
}

TEST_F(AppSelectorTest, EnterInAnEmptySearchChangesNothing)
{
    openWith(100);
    find("appSelectorSearch")->setFocus();
    press(Qt::Key_Return);
    EXPECT_EQ(selectedName(), QStringLiteral("Lumen Photo Editor"));
    type("appSelectorSearch", QStringLiteral("zzz"));
    press(Qt::Key_Return);
    EXPECT_EQ(selectedName(), QStringLiteral("Lumen Photo Editor"));
}

TEST_F(AppSelectorTest, DownGoesFromTheSearchIntoTheListAndUpAndEscapeBack)
{
    openWith(100);
    type("appSelectorSearch", QStringLiteral("app 4"));
    press(Qt::Key_Down);
    EXPECT_TRUE(apps()->hasFocus());
    EXPECT_EQ(apps()->currentIndex().row(), 0);
    press(Qt::Key_Up);
    EXPECT_TRUE(find("appSelectorSearch")->hasFocus());
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    press(Qt::Key_Return);
    EXPECT_EQ(selectedName(), QStringLiteral("Sample App 40"));
    apps()->setFocus();
    press(Qt::Key_Escape);
    EXPECT_TRUE(find("appSelectorSearch")->hasFocus());
}

TEST_F(AppSelectorTest, EscapeEmptiesTheSearch)
{
    openWith(100);
    type("appSelectorSearch", QStringLiteral("app 4"));
    press(Qt::Key_Escape);
    EXPECT_EQ(find<QLineEdit>("appSelectorSearch")->text(), QString());
    EXPECT_EQ(apps()->model()->rowCount(), 100);
}

TEST_F(AppSelectorTest, TheListMovesByPagesAndEnds)
{
    openWith(100);
    apps()->setFocus();
    press(Qt::Key_End);
    EXPECT_EQ(apps()->currentIndex().row(), 99);
    press(Qt::Key_PageUp);
    EXPECT_LT(apps()->currentIndex().row(), 95);
    press(Qt::Key_Home);
    EXPECT_EQ(apps()->currentIndex().row(), 0);
    press(Qt::Key_PageDown);
    EXPECT_GT(apps()->currentIndex().row(), 5);
}

TEST_F(AppSelectorTest, TheHeaderTellsWhetherItIsExpandedAsAState)
{
    openWith(3);
    const auto state = [this] {
        return QAccessible::queryAccessibleInterface(find("appSelector"))->state();
    };
    EXPECT_TRUE(state().expandable);
    EXPECT_TRUE(state().expanded);
    find("appSelector")->setFocus();
    press(Qt::Key_Return);
    EXPECT_TRUE(state().collapsed);
    EXPECT_FALSE(state().expanded);
}

TEST_F(AppSelectorTest, KeysGoToTheNextAppAndThePreviousOneAndAround)
{
    openWith(3);
    table().setFocus();
    press(Qt::Key_PageDown, Qt::ControlModifier);
    EXPECT_EQ(selectedName(), QStringLiteral("Tidewater Journal"));
    press(Qt::Key_PageUp, Qt::ControlModifier);
    press(Qt::Key_PageUp, Qt::ControlModifier);
    EXPECT_EQ(selectedName(), QStringLiteral("Orchard Budget"));
    press(Qt::Key_PageDown, Qt::ControlModifier);
    EXPECT_EQ(selectedName(), QStringLiteral("Lumen Photo Editor"));
}

TEST_F(AppSelectorTest, AKeyAddsAnAppAndTheKeysAreToldOf)
{
    openWith(3);
    press(Qt::Key_N, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_TRUE(isShown("appSearchField") || Overlay::isOpenOver(window.get()));
    EXPECT_EQ(Overlay::topOf(window.get())->accessibleName(), QStringLiteral("Add App"));
    press(Qt::Key_Escape);
    EXPECT_EQ(find("addAppButton")->toolTip(), QStringLiteral("Add App (Ctrl+Shift+N)"));
    EXPECT_EQ(find("appSelector")->toolTip(),
              QStringLiteral("Lumen Photo Editor\nNext app: Ctrl+PgDown\nPrevious app: "
                             "Ctrl+PgUp"));
    click("moreButton");
    QStringList keys;
    for (const QAction *action : find<QMenu>("moreMenu")->actions())
        keys << action->text() + u' ' + action->shortcut().toString();
    EXPECT_TRUE(keys.contains(QStringLiteral("Add App… Ctrl+Shift+N")));
    EXPECT_TRUE(keys.contains(QStringLiteral("Next App Ctrl+PgDown")));
    EXPECT_TRUE(keys.contains(QStringLiteral("Previous App Ctrl+PgUp")));
    find<QMenu>("moreMenu")->close();
}

} // namespace
} // namespace veltrix
