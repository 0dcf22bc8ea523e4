// SPDX-License-Identifier: GPL-3.0-or-later
// The one window: sidebar, workspaces, sheets and keys.
#pragma once

#include "effects/autocomplete_suggesting.h"
#include "store/aso_store.h"
#include "ui/settings/app_information.h"
#include "ui/shell/app_selection.h"
#include "ui/shell/closing.h"
#include "ui/shell/sidebar.h"
#include "ui_kit/theme/theme_choice.h"

#include <QAction>
#include <QTimer>
#include <QWidget>

#include <functional>
#include <memory>

class QMenu;
class QStackedWidget;

namespace veltrix
{

class ArtworkImages;
class ArtworkLoading;
class AutomaticRefresh;
class CompetitorsView;
class DailyMeasuring;
class DailyTiming;
class DashboardPage;
class FileExchange;
class FocusKeeper;
class MeasuringStatus;
class OverviewPage;
class PageToolbar;
class Preferences;
class Removals;
class StatusBar;
class UpdaterInterface;

class MainWindow final : public QWidget
{
    Q_OBJECT

public:
    struct Collaborators {
        ASOStore &store;
        ArtworkLoading &artwork;
        Preferences &preferences;
        FileExchange &files;
        AppInformation information;
        /// Starts the program every day to measure.
        DailyTiming &timing;
        /// Null in builds that cannot update.
        UpdaterInterface *updater = nullptr;
        /// Opens an address with the system's default handler.
        std::function<void(const QUrl &)> openUrl;
        /// Web address under which App Store pages are found.
        QUrl appStoreUrl = QUrl(QStringLiteral("https://apps.apple.com"));
        /// Makes the whole program look as the user chose.
        std::function<void(ThemeChoice)> applyTheme = [](ThemeChoice) {
        };
        /// Shows the user's data in the file manager.
        std::function<void()> showDataFolder = [] {
        };
        /// What the App Store suggests to whoever types; without it nothing is suggested.
        std::shared_ptr<AutocompleteSuggesting> suggestions = {};
    };

    explicit MainWindow(Collaborators collaborators, QWidget *parent = nullptr);
    ~MainWindow() override;

    /// Starts to follow the application's activity: refreshes while it is active. Without this the
    /// window never refreshes by itself.
    void followApplicationState();
    /// Active or not, as followApplicationState() would find it.
    void setActive(bool active);

    void selectApp(std::optional<QUuid> id) { m_selection->select(id); }
    [[nodiscard]] std::optional<QUuid> selectedApp() const { return m_selection->id(); }
    void showWorkspace(Workspace workspace);
    [[nodiscard]] Workspace workspace() const { return m_workspace; }
    void openAppSearch();
    void openSettings();
    /// Remembers size and place for the next start, as happens by itself when they have changed.
    void rememberGeometry();

    [[nodiscard]] OverviewPage &overview() { return *m_overview; }
    [[nodiscard]] DashboardPage &dashboard() { return *m_dashboard; }
    [[nodiscard]] CompetitorsView &competitors() { return *m_competitors; }
    [[nodiscard]] ArtworkImages &images() { return *m_images; }
    /// Storefront of app searches, from the preference until the user changes it.
    [[nodiscard]] QString searchStorefront() const;
    /// What made refreshes fail may be over: the network has returned.
    void retryRefreshSoon();

Q_SIGNALS:
    /// The window has been painted for the first time.
    void firstShown();

protected:
    void closeEvent(QCloseEvent *event) override;
    bool event(QEvent *event) override;
    bool focusNextPrevChild(bool next) override;

private:
    void layOut();
    /// A command of the window, which rests while a sheet is open.
    QAction *addKey(const QString &text, const QKeySequence &key, std::function<void()> act);
    void buildActions();
    void buildKeys();
    void buildAppKeys();
    /// Closes what is on top: the sheet, or the window.
    void closeTop();
    /// Gives the focus to what nothing presses.
    void takeFocusHome();
    /// The controls at the end of a page's toolbar: "Settings" and "More".
    void addShellControls(PageToolbar &toolbar);
    void fillMoreMenu(QMenu *menu);
    void connectSidebar();
    void connectPages();
    void connectOverview();
    [[nodiscard]] QWidget *pageOf(Workspace workspace) const;
    void focusContentOf(Workspace workspace);
    void connectSheets();
    void showApp(std::optional<QUuid> id);
    void updateCounts();
    void askToDeleteApp(QUuid id);
    void askToQuitWithoutSaving();
    void connectRemovals();
    void connectDaily();
    void updateActivity();

    Collaborators m_with;
    Closing m_closing;
    ArtworkImages *m_images;
    MeasuringStatus *m_measuring;
    Sidebar *m_sidebar;
    OverviewPage *m_overview;
    DashboardPage *m_dashboard;
    CompetitorsView *m_competitors;
    QStackedWidget *m_pages;
    // After those that show the store, so that they follow its signals first.
    AppSelection *m_selection;
    AutomaticRefresh *m_refresh;
    DailyMeasuring *m_daily;
    Removals *m_removals;
    StatusBar *m_statusBar = nullptr;
    Workspace m_workspace = Workspace::Keywords;
    QAction *m_checkForUpdates;
    QAction *m_addApp;
    QAction *m_nextApp;
    QAction *m_previousApp;
    FocusKeeper *m_keeper;
    /// Runs from the last change of size or place until it is remembered.
    QTimer m_geometryTimer;
    bool m_followsApplication = false;
};

} // namespace veltrix
