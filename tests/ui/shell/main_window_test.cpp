// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/support/ui_test.h"

#include "support/task_outcome.h"
#include "ui/app_search/app_search_sheet.h"
#include "ui/shell/app_list_model.h"
#include "ui/shell/app_selector.h"
#include "ui_kit/widgets/storefront_picker.h"

#include <QAccessible>
#include <QListView>

namespace veltrix
{
namespace
{

class MainWindowTest : public UiTest
{
protected:
    QListView *apps() { return find<QListView>("appList"); }
    QString selectedName()
    {
        const auto id = window->selectedApp();
        return id ? store().app(*id)->appName : QString();
    }
    void clickApp(int row)
    {
        QTest::mouseClick(apps()->viewport(), Qt::LeftButton, {},
                          apps()->visualRect(apps()->model()->index(row, 0)).center());
        settle();
    }
    void clickInAppMenu(int row, const QString &entry)
    {
        Q_EMIT apps()->customContextMenuRequested(
            apps()->visualRect(apps()->model()->index(row, 0)).center());
        choose("appMenu", entry);
    }
};

TEST_F(MainWindowTest, OpensOnKeywordsOfTheFirstAppWithAllCountries)
{
    world = UiWorld::sample();
    world->preferences.storefront = QStringLiteral("JP");
    window = std::make_unique<MainWindow>(world->collaborators());
    EXPECT_EQ(window->workspace(), Workspace::Keywords);
    EXPECT_EQ(selectedName(), QStringLiteral("Lumen Photo Editor"));
    EXPECT_EQ(find<StorefrontPicker>("storefrontFilter")->code(), std::nullopt);
    EXPECT_EQ(find<Button>("storefrontFilter")->text(), QStringLiteral("All Countries"));
    EXPECT_EQ(window->searchStorefront(), QStringLiteral("JP"));
}

TEST_F(MainWindowTest, LoadsArtworkAfterItsFirstFrameAndSaysOnceThatItWasShown)
{
    world = UiWorld::sample();
    window = std::make_unique<MainWindow>(world->collaborators());
    const QSignalSpy shown(window.get(), &MainWindow::firstShown);
    window->show();
    EXPECT_EQ(world->artwork.asked.size(), 0);
    EXPECT_TRUE(QTest::qWaitFor([&] { return shown.size() == 1; }));
    EXPECT_GT(world->artwork.asked.size(), 0);

    window->hide();
    window->show();
    settle();
    EXPECT_EQ(shown.size(), 1);
}

TEST_F(MainWindowTest, TheSelectorSaysWhichAppAndWhetherItIsExpanded)
{
    open();
    auto *selector = find("appSelector");
    EXPECT_EQ(selector->accessibleName(),
              QStringLiteral("Choose app, currently Lumen Photo Editor"));
    EXPECT_EQ(selector->accessibleDescription(), QStringLiteral("Expanded"));
    click("appSelector");
    EXPECT_EQ(selector->accessibleDescription(), QStringLiteral("Collapsed"));
    EXPECT_FALSE(isShown("appList"));
    selector->setFocus();
    press(Qt::Key_Space);
    EXPECT_TRUE(isShown("appList"));
}

TEST_F(MainWindowTest, ChoosingAnAppShowsItsKeywords)
{
    open();
    clickApp(1);
    EXPECT_EQ(selectedName(), QStringLiteral("Tidewater Journal"));
    EXPECT_EQ(model().rowCount(), 0);
    EXPECT_EQ(find("appSelector")->accessibleName(),
              QStringLiteral("Choose app, currently Tidewater Journal"));
    apps()->setCurrentIndex(apps()->model()->index(0, 0));
    apps()->setFocus();
    press(Qt::Key_Return);
    EXPECT_EQ(model().rowCount(), 11);
}

TEST_F(MainWindowTest, TheAppListIsFilteredByName)
{
    open();
    type("appSelectorSearch", QStringLiteral("orchard"));
    EXPECT_EQ(apps()->model()->rowCount(), 1);
    EXPECT_FALSE(isShown("noMatchingApps"));
    type("appSelectorSearch", QStringLiteral("zzz"));
    EXPECT_EQ(apps()->model()->rowCount(), 0);
    EXPECT_TRUE(isShown("noMatchingApps"));
    EXPECT_EQ(find<TextLabel>("noMatchingApps")->text(), QStringLiteral("No matching apps."));
    type("appSelectorSearch", QString());
    EXPECT_EQ(apps()->model()->rowCount(), 3);
}

TEST_F(MainWindowTest, DeletingAnAppAsksAndThenShowsAnother)
{
    open();
    clickInAppMenu(0, QStringLiteral("Delete App"));
    EXPECT_EQ(find("confirmSheet")->accessibleName(), QStringLiteral("Delete App?"));
    EXPECT_EQ(find<TextLabel>("confirmMessage")->text(),
              QStringLiteral("This will delete Lumen Photo Editor and all of its saved keywords "
                             "and ranking snapshots.\nThis action cannot be undone."));
    click("confirmCancel");
    EXPECT_EQ(store().apps().size(), 3);
    clickInAppMenu(0, QStringLiteral("Delete App"));
    click("confirmAccept");
    EXPECT_EQ(store().apps().size(), 2);
    EXPECT_TRUE(store().trackedKeywords().isEmpty());
    EXPECT_EQ(selectedName(), QStringLiteral("Tidewater Journal"));
    EXPECT_EQ(apps()->model()->rowCount(), 2);
}

TEST_F(MainWindowTest, DeletingTheLastAppLeavesAnEmptyWindow)
{
    PersistedState state = sampleState(VirtualClock().now(), {});
    state.apps = {state.apps.first()};
    open(state);
    apps()->setCurrentIndex(apps()->model()->index(0, 0));
    apps()->setFocus();
    press(Qt::Key_Delete);
    click("confirmAccept");
    EXPECT_EQ(window->selectedApp(), std::nullopt);
    EXPECT_EQ(find<EmptyState>("keywordsEmpty")->content().title,
              QStringLiteral("Add keywords to discover your next opportunity"));
}

TEST_F(MainWindowTest, ChangingTheWorkspaceByKeysTakesTheFocusToItsContent)
{
    open();
    table().setFocus();
    press(Qt::Key_2, Qt::ControlModifier);
    EXPECT_EQ(QApplication::focusWidget(), find("competitorSearch"));
    press(Qt::Key_1, Qt::ControlModifier);
    EXPECT_EQ(QApplication::focusWidget(), &table());
    // Who is in the sidebar stays there.
    find("workspaceKeywords")->setFocus();
    press(Qt::Key_2, Qt::ControlModifier);
    EXPECT_EQ(QApplication::focusWidget(), find("workspaceKeywords"));
}

TEST_F(MainWindowTest, TheWorkspacesShowTheirCountsAndSwitchByClickAndKey)
{
    open();
    EXPECT_EQ(find("workspaceKeywords")->accessibleDescription(), QStringLiteral("11 tracked"));
    EXPECT_EQ(find("workspaceCompetitors")->accessibleDescription(), QStringLiteral("5 tracked"));
    click("workspaceCompetitors");
    EXPECT_EQ(window->workspace(), Workspace::Competitors);
    EXPECT_FALSE(page().isVisible());
    press(Qt::Key_1, Qt::ControlModifier);
    EXPECT_TRUE(page().isVisible());
    press(Qt::Key_2, Qt::ControlModifier);
    EXPECT_EQ(window->workspace(), Workspace::Competitors);
    click("workspaceKeywords");
    EXPECT_EQ(window->workspace(), Workspace::Keywords);
    EXPECT_EQ(QAccessible::queryAccessibleInterface(find("workspaceKeywords"))->role(),
              QAccessible::RadioButton);
    // As assistive technology does.
    find<QAbstractButton>("workspaceCompetitors")->toggle();
    EXPECT_EQ(window->workspace(), Workspace::Competitors);
    EXPECT_FALSE(page().isVisible());
}

TEST_F(MainWindowTest, IsAWindowToAScreenReader)
{
    open();
    QAccessibleInterface *told = QAccessible::queryAccessibleInterface(window.get());
    EXPECT_EQ(told->role(), QAccessible::Window);
    EXPECT_EQ(told->text(QAccessible::Name), QStringLiteral("Veltrix"));
}

TEST_F(MainWindowTest, TheCountsFollowTheStore)
{
    open();
    store().addTrackedKeyword(*window->selectedApp(), QStringLiteral("x"), QStringLiteral("US"));
    settle();
    EXPECT_EQ(find("workspaceKeywords")->accessibleDescription(), QStringLiteral("12 tracked"));
    store().removeCompetitor(store().competitors().first().id);
    EXPECT_EQ(find("workspaceCompetitors")->accessibleDescription(), QStringLiteral("4 tracked"));
}

TEST_F(MainWindowTest, KeysReachTheSearchAndTheSettings)
{
    open();
    press(Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(QApplication::focusWidget(), find("keywordSearch"));
    press(Qt::Key_Comma, Qt::ControlModifier);
    EXPECT_TRUE(isShown("settingsSheet"));
    press(Qt::Key_Escape);
    EXPECT_FALSE(isShown("settingsSheet"));
    click("settingsButton");
    EXPECT_TRUE(isShown("settingsSheet"));
}

TEST_F(MainWindowTest, WhileASheetIsOpenTheWindowsKeysRest)
{
    open();
    press(Qt::Key_Comma, Qt::ControlModifier);
    press(Qt::Key_N, Qt::ControlModifier);
    press(Qt::Key_2, Qt::ControlModifier);
    EXPECT_FALSE(isShown("addKeywordsCard"));
    EXPECT_EQ(window->workspace(), Workspace::Keywords);
}

TEST_F(MainWindowTest, TheOpenWindowFollowsTheDesktopsScheme)
{
    open();
    const auto corner = [this] {
        return window->grab().toImage().pixelColor(3, 3);
    };
    EXPECT_EQ(corner(), Tokens(ColorScheme::Light)[Token::Window]);
    testTheme().set(ColorScheme::Dark);
    settle();
    EXPECT_EQ(corner(), Tokens(ColorScheme::Dark)[Token::Window]);
    testTheme().set(ColorScheme::Light);
    settle();
    EXPECT_EQ(corner(), Tokens(ColorScheme::Light)[Token::Window]);
}

TEST_F(MainWindowTest, TheWindowComesBackWhereItWas)
{
    open();
    window->resize(1111, 777);
    settle();
    reopen();
    EXPECT_EQ(window->size(), QSize(1111, 777));
}

TEST_F(MainWindowTest, RefreshesWhileItIsActiveAndNotOtherwise)
{
    open();
    world->clock->advance(Seconds(2 * secondsPerDay));
    EXPECT_TRUE(world->client->searches.isEmpty()) << "not without activity";
    window->setActive(true);
    settle();
    const auto first = world->client->searches.size();
    EXPECT_EQ(first, 11);
    window->setActive(false);
    world->clock->advance(Seconds(secondsPerDay));
    EXPECT_EQ(world->client->searches.size(), first);
    window->setActive(true);
    settle();
    EXPECT_EQ(world->client->searches.size(), 2 * first);
}

TEST_F(MainWindowTest, LeavingStopsTheRefreshWithoutAnError)
{
    open();
    world->client->holds = true;
    window->setActive(true);
    EXPECT_TRUE(store().isRefreshingHistory());
    window->setActive(false);
    settle();
    EXPECT_FALSE(store().isRefreshingHistory());
    EXPECT_EQ(store().historyRefreshError(), std::nullopt);
}

TEST_F(MainWindowTest, StopEndsTheRefreshUntilTheNextHour)
{
    open();
    world->client->holds = true;
    window->setActive(true);
    settle();
    click("stopButton");
    EXPECT_FALSE(store().isRefreshingHistory());
    EXPECT_EQ(work(), QString());
    world->clock->advance(Seconds(3601));
    EXPECT_TRUE(store().isRefreshingHistory());
}

TEST_F(MainWindowTest, AStopOutlastsLeavingTheWindowAndReturning)
{
    open();
    world->client->holds = true;
    window->setActive(true);
    click("stopButton");
    EXPECT_EQ(status(), QStringLiteral("Stopped. Refresh measures what is left."));
    window->setActive(false);
    window->setActive(true);
    world->clock->advance(Seconds(1800));
    EXPECT_FALSE(store().isRefreshingHistory());
    press(Qt::Key_F5);
    EXPECT_TRUE(store().isRefreshingHistory()) << "Refresh is always allowed";
}

TEST_F(MainWindowTest, ARefreshOfTheUsersGoesOnWhenTheWindowIsLeft)
{
    open();
    world->client->holds = true;
    window->setActive(true);
    settle();
    click("refreshButton");
    EXPECT_EQ(world->client->searches.size(), 1) << "it takes over what runs";
    window->setActive(false);
    world->client->release();
    world->client->release();
    settle();
    EXPECT_EQ(world->client->searches.size(), 2);
    EXPECT_EQ(status(), QStringLiteral("Rankings are up to date."));
}

TEST_F(MainWindowTest, AFailedRefreshIsTriedAgainAfterAMinuteAndWhenTheNetworkReturns)
{
    open();
    world->client->fails = [](const QString &) {
        return true;
    };
    window->setActive(true);
    EXPECT_EQ(world->client->searches.size(), 1);
    world->clock->advance(Seconds(60));
    EXPECT_EQ(world->client->searches.size(), 2);
    world->client->fails = nullptr;
    window->retryRefreshSoon();
    settle();
    EXPECT_EQ(world->client->searches.size(), 4);
    EXPECT_FALSE(isShown("refreshBanner"));
}

TEST_F(MainWindowTest, BothWorkspacesShowErrorsProgressAndMessages)
{
    open();
    click("workspaceCompetitors");
    world->client->fails = [](const QString &) {
        return true;
    };
    press(Qt::Key_F5);
    EXPECT_TRUE(isShown("refreshBanner"));
    EXPECT_EQ(find<Banner>("refreshBanner")->accessibleName(),
              QStringLiteral("Some rankings couldn't be updated. Try again later.\n"
                             "“polaroid frame”: The network is down."));
    world->client->fails = nullptr;
    world->client->holds = true;
    click("refreshBannerAction");
    EXPECT_FALSE(isShown("refreshBanner"));
    EXPECT_TRUE(isShown("progress"));
    // What failed last comes last.
    EXPECT_EQ(work(), QStringLiteral("Measuring “grain filter” · 1 of 2"));
    click("stopButton");
    EXPECT_FALSE(isShown("progress"));
    EXPECT_EQ(status(), QStringLiteral("Stopped. Refresh measures what is left."));
}

TEST_F(MainWindowTest, CheckForUpdatesIsOffWithoutAnUpdater)
{
    open();
    click("moreButton");
    auto *menu = find<QMenu>("moreMenu");
    ASSERT_TRUE(menu);
    QAction *check = menu->actions().last();
    EXPECT_EQ(check->text(), QStringLiteral("Check for Updates…"));
    EXPECT_FALSE(check->isEnabled());
    menu->close();
}

TEST_F(MainWindowTest, CheckForUpdatesIsOnWhileACheckMayStart)
{
    world = UiWorld::sample();
    world->hasUpdater = true;
    window = std::make_unique<MainWindow>(world->collaborators());
    window->show();
    click("moreButton");
    auto *menu = find<QMenu>("moreMenu");
    ASSERT_TRUE(menu);
    QAction *check = menu->actions().last();
    EXPECT_TRUE(check->isEnabled());
    world->updater.canCheck = false;
    world->updater.set({});
    EXPECT_FALSE(check->isEnabled());
    world->updater.canCheck = true;
    world->updater.set({});
    check->trigger();
    menu->close();
    EXPECT_EQ(world->updater.checks, 1);
}

TEST_F(MainWindowTest, ExportsAndImportsAreInTheMenu)
{
    open();
    world->files.opened = "imported";
    click("moreButton");
    choose("moreMenu", QStringLiteral("Import Keywords…"));
    click("addKeywordsSubmit");
    EXPECT_EQ(store().trackedKeywords().last().keyword, QStringLiteral("imported"));
    click("moreButton");
    choose("moreMenu", QStringLiteral("Export…"));
    EXPECT_TRUE(world->files.saved.startsWith("\xEF\xBB\xBFKeyword,Storefront,App"));
    click("moreButton");
    choose("moreMenu", QStringLiteral("Export History…"));
    // It asks the history for the names of its columns first.
    waitFor([this] {
        return world->files.saved.startsWith("\xEF\xBB\xBFKeyword,Storefront,Measured at");
    });
}

TEST(AppListModel, IsAModelThatFollowsTheStore)
{
    const auto world = UiWorld::sample();
    AppListModel model(*world->store);
    const QAbstractItemModelTester tester(&model,
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    EXPECT_EQ(model.rowCount(), 3);
    world->store->removeApp(model.appAt(1).id);
    EXPECT_EQ(model.rowCount(), 2);
    world->store->addApp(appResult(77, "Newcomer"), QStringLiteral("us"));
    EXPECT_EQ(model.rowCount(), 3);
    EXPECT_EQ(model.appAt(2).appName, QStringLiteral("Newcomer"));
    model.setSelected(model.appAt(2).id);
    EXPECT_EQ(model.index(2).data(Qt::AccessibleTextRole).toString(),
              QStringLiteral("Newcomer, United States, selected"));
    model.setSearch(QStringLiteral("NEWCÓMER"));
    EXPECT_EQ(model.rowCount(), 1);
    world->store->addApp(appResult(78, "Another"), QStringLiteral("US"));
    EXPECT_EQ(model.rowCount(), 1);
}

TEST(AppLineGeometry, KeepsItsPartsApart)
{
    const QRectF row(0, 0, 200, 46);
    const AppLineGeometry geometry = layoutAppLine(row, 16, 15, 24);
    EXPECT_TRUE(row.contains(geometry.icon));
    EXPECT_GT(geometry.name.left(), geometry.icon.right());
    EXPECT_LT(geometry.name.right(), geometry.mark.left());
    EXPECT_DOUBLE_EQ(geometry.name.bottom(), geometry.country.top());
    EXPECT_GE(layoutAppLine(QRectF(0, 0, 30, 46), 16, 15, 24).name.width(), 0);
}

} // namespace
} // namespace veltrix
