// SPDX-License-Identifier: GPL-3.0-or-later
// The window's size and place, its end, and what it looks like.
#include "ui/support/ui_test.h"

#include "ui/dashboard/keyword_actions.h"
#include "ui_kit/theme/chosen_color_scheme.h"
#include "ui_kit/widgets/segmented_control.h"

#include <QGuiApplication>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTimer>

namespace veltrix
{
namespace
{

class WindowRoom : public UiTest
{
protected:
    /// Lets the time pass after which size and place are remembered.
    void letTimerEnd()
    {
        auto *timer = window->findChild<QTimer *>(QStringLiteral("geometryTimer"));
        ASSERT_TRUE(timer);
        ASSERT_TRUE(timer->isActive());
        QTimerEvent end(timer->timerId());
        QCoreApplication::sendEvent(timer, &end);
    }
    /// Another window on the same store and preferences, without an end of the first.
    QSize sizeAtTheNextStart() const
    {
        MainWindow next(world->collaborators());
        return next.size();
    }
};

TEST_F(WindowRoom, NarrowsTo800By500)
{
    open();
    window->resize(100, 100);
    settle();
    EXPECT_EQ(window->size(), QSize(800, 500));
    // Everything in it keeps to the window.
    for (const auto *widget : window->findChildren<QWidget *>()) {
        if (!widget->isVisible() || !qobject_cast<const QAbstractButton *>(widget) ||
            widget->visibleRegion().isEmpty())
            continue;
        const QRect place(widget->mapTo(window.get(), QPoint()), widget->size());
        EXPECT_LE(place.right(), 800) << widget->objectName().toStdString();
    }
}

TEST_F(WindowRoom, AChangeOfSizeIsRememberedWithoutAnEndOfTheProgram)
{
    open();
    window->resize(1010, 710);
    settle();
    EXPECT_TRUE(world->preferences.geometry.isEmpty()) << "not at every step of a drag";
    letTimerEnd();
    EXPECT_EQ(sizeAtTheNextStart(), QSize(1010, 710));
    window->move(40, 30);
    settle();
    letTimerEnd();
    const MainWindow next(world->collaborators());
    EXPECT_EQ(next.geometry(), window->geometry());
}

TEST_F(WindowRoom, AWindowFromAScreenThatIsGoneComesUpOnOneThatIsThere)
{
    open();
    window->setGeometry(9000, 9000, 900, 600);
    window->rememberGeometry();
    const QRect screen = QGuiApplication::primaryScreen()->geometry();
    MainWindow next(world->collaborators());
    next.show();
    // As much of it as a screen takes; no window is smaller than 800.
    EXPECT_GE(screen.intersected(next.geometry()).width(), std::min(800, screen.width()) - 100);
    EXPECT_GE(screen.intersected(next.geometry()).height(), 400);
    EXPECT_GE(next.width(), 800);
}

TEST_F(WindowRoom, CtrlQAndCtrlWEndTheWindow)
{
    open();
    press(Qt::Key_Q, Qt::ControlModifier);
    EXPECT_FALSE(window->isVisible());
    window->show();
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    press(Qt::Key_W, Qt::ControlModifier);
    EXPECT_FALSE(window->isVisible());
}

TEST_F(WindowRoom, CtrlWClosesASheetFirstAndCtrlQAllAtOnce)
{
    open();
    press(Qt::Key_Comma, Qt::ControlModifier);
    press(Qt::Key_W, Qt::ControlModifier);
    EXPECT_FALSE(Overlay::isOpenOver(window.get()));
    EXPECT_TRUE(window->isVisible());
    press(Qt::Key_Comma, Qt::ControlModifier);
    press(Qt::Key_Q, Qt::ControlModifier);
    EXPECT_FALSE(window->isVisible());
}

TEST_F(WindowRoom, CtrlQAsksWhenAChangeIsNotSaved)
{
    open();
    world->folder.remove();
    store().addTrackedKeyword(*window->selectedApp(), QStringLiteral("sepia"),
                              QStringLiteral("US"));
    press(Qt::Key_Q, Qt::ControlModifier);
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(find("confirmSheet")->accessibleName(), QStringLiteral("Quit without saving?"));
    press(Qt::Key_Q, Qt::ControlModifier);
    EXPECT_TRUE(window->isVisible()) << "a second time is no answer";
}

TEST_F(WindowRoom, TheThemeIsChosenInTheSettingsAndAppliesAtOnce)
{
    open();
    press(Qt::Key_Comma, Qt::ControlModifier);
    auto *theme = find<SegmentedControl>("theme");
    EXPECT_EQ(theme->chosen(), int(ThemeChoice::System));
    find("theme0")->setFocus();
    press(Qt::Key_Right);
    press(Qt::Key_Right);
    EXPECT_EQ(world->appliedThemes, (QList<ThemeChoice>{ThemeChoice::Light, ThemeChoice::Dark}));
    EXPECT_EQ(world->preferences.chosenTheme, ThemeChoice::Dark);
    EXPECT_TRUE(isShown("settingsSheet"));
    press(Qt::Key_Escape);
    press(Qt::Key_Comma, Qt::ControlModifier);
    EXPECT_EQ(find<SegmentedControl>("theme")->chosen(), int(ThemeChoice::Dark));
}

TEST_F(WindowRoom, AThemeSwitchedWhileASheetIsOpenRepaintsSheetAndWindow)
{
    open();
    press(Qt::Key_Comma, Qt::ControlModifier);
    const auto colors = [this] {
        const QImage picture = window->grab().toImage();
        const QWidget *sheet = find("settingsSheet");
        return std::pair(picture.pixelColor(3, 3),
                         picture.pixelColor(sheet->geometry().topLeft() + QPoint(20, 8)));
    };
    const auto light = colors();
    testTheme().set(ColorScheme::Dark);
    settle();
    const auto dark = colors();
    EXPECT_EQ(dark.second, Tokens(ColorScheme::Dark)[Token::Raised]);
    EXPECT_NE(dark.first, light.first);
    testTheme().set(ColorScheme::Light);
    settle();
    EXPECT_EQ(colors(), light);
}

TEST_F(WindowRoom, TheSettingsShowTheDataFolder)
{
    open();
    press(Qt::Key_Comma, Qt::ControlModifier);
    click("showDataFolder");
    EXPECT_EQ(world->dataFolderShown, 1);
    EXPECT_EQ(find<Button>("showDataFolder")->text(), QStringLiteral("Show data folder"));
}

TEST_F(WindowRoom, TheSettingsScrollByMoreThanARemainder)
{
    world = UiWorld::sample();
    world->hasUpdater = true;
    world->updater.shown = {QStringLiteral("Veltrix is up to date."), std::nullopt, false, {}};
    window = std::make_unique<MainWindow>(world->collaborators());
    window->show();
    window->openSettings();
    settle();
    window->grab();
    EXPECT_EQ(window->size(), QSize(1280, 800));
    const auto longest = [this] {
        return find<QScrollArea>("settingsSheetScroll")->verticalScrollBar()->maximum();
    };
    EXPECT_GT(longest(), 50);
    window->resize(800, 500);
    settle();
    window->grab();
    EXPECT_GT(longest(), 50);
}

TEST_F(WindowRoom, SelectAnAppFirstGoesWithItsCause)
{
    open(PersistedState());
    page().actions().add(std::nullopt, KeywordPlan(), KeywordPlan(), {});
    EXPECT_EQ(status(), QStringLiteral("Select an app first"));
    ITunesAppResult result;
    result.trackId = 1;
    result.trackName = QStringLiteral("New App");
    store().addApp(result, QStringLiteral("US"));
    settle();
    EXPECT_EQ(status(), QString());
}

TEST_F(WindowRoom, TheFocusOfAStoppedRefreshGoesToTheTable)
{
    open();
    world->client->holds = true;
    click("refreshButton");
    find("stopButton")->setFocus();
    press(Qt::Key_Space);
    EXPECT_FALSE(isShown("stopButton"));
    EXPECT_TRUE(table().hasFocus());
    press(Qt::Key_Space);
    EXPECT_FALSE(Overlay::isOpenOver(window.get()));
}

TEST_F(WindowRoom, EnterPressesWorkspacesAndToolbarButtons)
{
    open();
    find("workspaceCompetitors")->setFocus();
    press(Qt::Key_Return);
    EXPECT_EQ(window->workspace(), Workspace::Competitors);
    press(Qt::Key_1, Qt::ControlModifier);
    find("settingsButton")->setFocus();
    press(Qt::Key_Return);
    EXPECT_TRUE(isShown("settingsSheet"));
}

} // namespace
} // namespace veltrix
