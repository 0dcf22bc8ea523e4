// SPDX-License-Identifier: GPL-3.0-or-later
// The one window: sidebar, workspaces, sheets, keys, and the refresh that goes with its activity.
#pragma once

#include "store/aso_store.h"
#include "store/refresh_loop.h"
#include "ui/settings/app_information.h"
#include "ui/shell/sidebar.h"

#include <QAction>
#include <QWidget>

#include <functional>

class QMenu;
class QStackedWidget;

namespace veltrix
{

class ArtworkImages;
class ArtworkLoading;
class Button;
class CompetitorsView;
class DashboardPage;
class FileExchange;
class MeasuringStatus;
class Preferences;
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
        /// Null in builds that cannot update.
        UpdaterInterface *updater = nullptr;
        /// Opens an address with the system's default handler.
        std::function<void(const QUrl &)> openUrl;
        /// Web address under which App Store pages are found.
        QUrl appStoreUrl = QUrl(QStringLiteral("https://apps.apple.com"));
    };

    explicit MainWindow(Collaborators collaborators, QWidget *parent = nullptr);
    ~MainWindow() override;

    /// Starts to follow the application's activity: refreshes while it is active. Without this the
    /// window never refreshes by itself.
    void followApplicationState();
    /// Active or not, as followApplicationState() would find it.
    void setActive(bool active);

    void selectApp(std::optional<QUuid> id);
    [[nodiscard]] std::optional<QUuid> selectedApp() const { return m_selectedApp; }
    void showWorkspace(Workspace workspace);
    [[nodiscard]] Workspace workspace() const { return m_workspace; }
    void openAppSearch();
    void openSettings();
    /// Remembers size and place for the next start. Closing does it, too.
    void rememberGeometry();

    [[nodiscard]] DashboardPage &dashboard() { return *m_dashboard; }
    [[nodiscard]] CompetitorsView &competitors() { return *m_competitors; }
    [[nodiscard]] ArtworkImages &images() { return *m_images; }
    /// Storefront of app searches, from the preference until the user changes it.
    [[nodiscard]] QString searchStorefront() const { return m_searchStorefront; }
    /// What is told of measuring.
    [[nodiscard]] MeasuringStatus &measuring() { return *m_measuring; }
    /// What made refreshes fail may be over: the network has returned.
    void retryRefreshSoon();
    /// The controls at the end of a page's toolbar: "Settings" and "More".
    void addShellControls(class PageToolbar &toolbar);

Q_SIGNALS:
    void selectedAppChanged(std::optional<QUuid> id);
    void searchStorefrontChanged(const QString &country);

protected:
    void closeEvent(QCloseEvent *event) override;
    bool event(QEvent *event) override;

private:
    QAction *addKey(const QString &text, const QKeySequence &key, std::function<void()> act);
    void buildActions();
    void fillMoreMenu(QMenu *menu);
    void connectSidebar();
    void connectSheets();
    void connectCompetitors();
    void connectMeasuring();
    void appsChanged();
    void updateCounts();
    void askToDeleteApp(QUuid id);
    /// The change that closing would lose is tried once more, then the user is asked.
    void askToQuitWithoutSaving();
    void setSearchStorefront(const QString &country);
    void updateActivity();

    Collaborators m_with;
    ArtworkImages *m_images;
    std::optional<QUuid> m_selectedApp;
    Workspace m_workspace = Workspace::Keywords;
    QString m_searchStorefront;
    MeasuringStatus *m_measuring;
    Sidebar *m_sidebar;
    DashboardPage *m_dashboard;
    CompetitorsView *m_competitors;
    QStackedWidget *m_pages;
    QAction *m_checkForUpdates;
    QList<QAction *> m_keys;
    bool m_followsApplication = false;
    bool m_isAskingToQuit = false;
    bool m_mayLoseChange = false;
    RefreshLoop m_refreshLoop;
};

} // namespace veltrix
