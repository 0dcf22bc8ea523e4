// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/shell/main_window.h"

#include "ui/analysis/keyword_analysis_sheet.h"
#include "ui/app_search/app_search_sheet.h"
#include "ui/competitors/competitors_view.h"
#include "ui/dashboard/dashboard_page.h"
#include "ui/history/ranking_history_sheet.h"
#include "ui/measuring/measuring_bars.h"
#include "ui/preferences/preferences.h"
#include "ui/ranked_apps/ranking_apps_sheet.h"
#include "ui/settings/settings_sheet.h"
#include "ui/settings/update_banner.h"
#include "ui/settings/updater_interface.h"
#include "ui/shell/app_selector.h"
#include "ui/shell/persistence_banner.h"
#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/theme/symbols.h"
#include "ui_kit/theme/typography.h"
#include "ui_kit/widgets/artwork_images.h"
#include "ui_kit/widgets/banner.h"
#include "ui_kit/widgets/button.h"
#include "ui_kit/widgets/confirm_sheet.h"
#include "ui_kit/widgets/overlay.h"
#include "ui_kit/widgets/page_toolbar.h"

#include <QApplication>
#include <QCloseEvent>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QMenu>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace veltrix
{

namespace
{

constexpr QSize firstSize{1280, 800};

} // namespace

MainWindow::MainWindow(Collaborators collaborators, QWidget *parent)
    : QWidget(parent), m_with(std::move(collaborators)),
      m_images(new ArtworkImages(m_with.artwork, this)),
      m_searchStorefront(m_with.preferences.preferredStorefrontCountry()),
      m_measuring(new MeasuringStatus(m_with.store.refreshes(), this)),
      m_sidebar(new Sidebar(m_with.store, *m_images)),
      m_dashboard(new DashboardPage(m_with.store, *m_images, m_with.preferences, m_with.files,
                                    *m_measuring)),
      m_competitors(
          new CompetitorsView({m_with.store, *m_images, m_with.openUrl, m_with.appStoreUrl})),
      m_pages(new QStackedWidget),
      m_refreshLoop(m_with.store.clock(), [this](std::stop_token stop) {
          return m_with.store.refreshes().refreshStale(std::nullopt, std::move(stop));
      })
{
    setObjectName(QStringLiteral("mainWindow"));
    setWindowTitle(QStringLiteral("Veltrix"));
    setAccessibleRole(this, QAccessible::Window);
    setAccessibleName(QStringLiteral("Veltrix"));
    if (!restoreGeometry(m_with.preferences.windowGeometry()))
        resize(firstSize);
    m_pages->addWidget(m_dashboard);
    m_pages->addWidget(m_competitors);
    auto *workspace = new QVBoxLayout;
    workspace->setSpacing(0);
    workspace->addWidget(new PersistenceBanner(m_with.store));
    workspace->addWidget(makeRefreshBanner(*m_measuring));
    if (m_with.updater)
        workspace->addWidget(makeUpdateBanner(*m_with.updater, [this] { openSettings(); }));
    workspace->addWidget(m_pages, 1);
    workspace->addWidget(makeStatusBar(*m_measuring));
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_sidebar);
    layout->addLayout(workspace, 1);

    buildActions();
    addShellControls(m_dashboard->toolbar());
    connectSidebar();
    connectSheets();
    connectCompetitors();
    connectMeasuring();
    connect(m_dashboard, &DashboardPage::addAppRequested, this, &MainWindow::openAppSearch);
    connect(m_dashboard, &DashboardPage::keywordCountChanged, this, &MainWindow::updateCounts);
    connect(&m_with.store, &ASOStore::appsChanged, this, &MainWindow::appsChanged);
    connect(&m_with.store, &ASOStore::competitorsChanged, this, &MainWindow::updateCounts);
    connect(&m_with.store, &ASOStore::stateRead, this, [this] {
        // As at a start: what has come is measured now, not in an hour.
        if (m_refreshLoop.isActive()) {
            m_refreshLoop.setActive(false);
            m_refreshLoop.setActive(true);
        }
    });

    const QList<AppProfile> &apps = m_with.store.apps();
    selectApp(apps.isEmpty() ? std::nullopt : std::optional(apps.first().id));
}

MainWindow::~MainWindow() = default;

void MainWindow::buildActions()
{
    m_checkForUpdates = new QAction(tr("Check for Updates…"), this);
    const auto updateCheck = [this] {
        m_checkForUpdates->setEnabled(m_with.updater && m_with.updater->canCheckForUpdates());
    };
    if (m_with.updater) {
        connect(m_checkForUpdates, &QAction::triggered, this, [this] {
            m_with.updater->checkForUpdates();
            openSettings();
        });
        connect(m_with.updater, &UpdaterInterface::changed, this, updateCheck);
    }
    updateCheck();

    addKey(tr("Refresh"), Qt::Key_F5, [this] { m_dashboard->refreshAll(); });
    addKey(tr("Search"), QKeySequence::Find, [this] {
        if (m_workspace == Workspace::Keywords)
            m_dashboard->focusSearch();
        else
            m_competitors->focusSearch();
    });
    addKey(tr("Add keywords"), QKeySequence(Qt::CTRL | Qt::Key_N), [this] {
        showWorkspace(Workspace::Keywords);
        m_dashboard->openAddKeywords();
    });
    addKey(tr("Keywords"), QKeySequence(Qt::CTRL | Qt::Key_1),
           [this] { showWorkspace(Workspace::Keywords); });
    addKey(tr("Competitors"), QKeySequence(Qt::CTRL | Qt::Key_2),
           [this] { showWorkspace(Workspace::Competitors); });
    addKey(tr("Settings"), QKeySequence(Qt::CTRL | Qt::Key_Comma), [this] { openSettings(); });
}

QAction *MainWindow::addKey(const QString &text, const QKeySequence &key, std::function<void()> act)
{
    auto *action = new QAction(text, this);
    action->setShortcut(key);
    addAction(action);
    m_keys.append(action);
    connect(action, &QAction::triggered, this, [this, act = std::move(act)] {
        // A sheet is modal: the window below takes no commands.
        if (!Overlay::isOpenOver(this))
            act();
    });
    return action;
}

void MainWindow::addShellControls(PageToolbar &toolbar)
{
    auto *settings = new Button(Button::Kind::Standard, QStringLiteral("gearshape"), QString());
    nameControl(settings, QStringLiteral("settingsButton"), tr("Settings"));
    settings->setToolTip(tr("Settings (Ctrl+,)"));
    connect(settings, &Button::clicked, this, &MainWindow::openSettings);
    auto *more = new Button(Button::Kind::Standard, QStringLiteral("ellipsis"), QString());
    nameControl(more, QStringLiteral("moreButton"), tr("More"));
    more->setToolTip(tr("More"));
    connect(more, &Button::clicked, this, [this, more] {
        auto *menu = new QMenu(this);
        menu->setObjectName(QStringLiteral("moreMenu"));
        menu->setAccessibleName(tr("More"));
        menu->setAttribute(Qt::WA_DeleteOnClose);
        fillMoreMenu(menu);
        const int width = menu->sizeHint().width();
        menu->popup(more->mapToGlobal(QPoint(more->width() - width, more->height() + 4)));
    });
    toolbar.addTrailing(settings);
    toolbar.addTrailing(more);
}

void MainWindow::fillMoreMenu(QMenu *menu)
{
    const bool hasApp = m_selectedApp.has_value();
    const auto add = [&](const QString &symbol, const QString &text, bool enabled, auto act) {
        QAction *action = menu->addAction(symbolIcon(symbol), text);
        action->setEnabled(enabled);
        connect(action, &QAction::triggered, this, act);
    };
    if (m_workspace == Workspace::Keywords) {
        add(QStringLiteral("square.and.arrow.down"), tr("Import Keywords…"), hasApp,
            [this] { m_dashboard->importKeywords(); });
        add(QStringLiteral("square.and.arrow.up"), tr("Export…"), hasApp,
            [this] { m_dashboard->exportTable(); });
        add(QStringLiteral("clock.arrow.circlepath"), tr("Export History…"), hasApp,
            [this] { m_dashboard->exportHistory(); });
        menu->addSeparator();
        m_dashboard->fillSortMenu(menu->addMenu(tr("Sort By")));
        m_dashboard->fillColumnMenu(menu->addMenu(tr("Columns")));
        menu->addSeparator();
    }
    menu->addAction(m_checkForUpdates);
}

void MainWindow::connectSidebar()
{
    AppSelector &selector = m_sidebar->appSelector();
    connect(m_sidebar, &Sidebar::workspaceChosen, this, &MainWindow::showWorkspace);
    connect(&selector, &AppSelector::appChosen, this, [this](QUuid id) { selectApp(id); });
    connect(&selector, &AppSelector::addAppRequested, this, &MainWindow::openAppSearch);
    connect(&selector, &AppSelector::deleteAppRequested, this, &MainWindow::askToDeleteApp);
}

void MainWindow::connectSheets()
{
    connect(m_dashboard, &DashboardPage::analysisRequested, this,
            [this](const DashboardKeywordRow &keyword) {
                openSheet(this, new KeywordAnalysisSheet(m_with.store, keyword));
            });
    connect(m_dashboard, &DashboardPage::historyRequested, this,
            [this](const DashboardKeywordRow &keyword) {
                openSheet(this, new RankingHistorySheet(m_with.store, m_with.files, keyword));
            });
    connect(m_dashboard, &DashboardPage::rankedAppsRequested, this,
            [this](const DashboardKeywordRow &keyword) {
                const ResearchContext research{m_with.store, *m_images, m_with.openUrl,
                                               m_with.appStoreUrl};
                openSheet(this, new RankingAppsSheet(research, keyword, m_selectedApp));
            });
}

void MainWindow::connectCompetitors()
{
    addShellControls(m_competitors->toolbar());
    m_competitors->setCountry(m_dashboard->storefrontOfNewKeywords());
    connect(m_dashboard, &DashboardPage::storefrontOfNewKeywordsChanged, m_competitors,
            &CompetitorsView::setCountry);
    connect(m_competitors, &CompetitorsView::countryPicked, this, &MainWindow::setSearchStorefront);
    connect(this, &MainWindow::selectedAppChanged, m_competitors, &CompetitorsView::setApp);
}

void MainWindow::connectMeasuring()
{
    connect(m_measuring, &MeasuringStatus::refreshRequested, this,
            [this] { m_refreshLoop.resume(); });
    connect(m_measuring, &MeasuringStatus::refreshEnded, this,
            [this](const HistoryRefresh &end) { m_refreshLoop.refreshEnded(end); });
    connect(m_measuring, &MeasuringStatus::stopRequested, this,
            [this] { m_refreshLoop.stopRefresh(); });
}

void MainWindow::retryRefreshSoon()
{
    m_refreshLoop.retrySoon();
}

void MainWindow::selectApp(std::optional<QUuid> id)
{
    m_selectedApp = id;
    m_measuring->setAppInView(id);
    m_sidebar->appSelector().setApp(id ? m_with.store.app(*id) : std::nullopt);
    m_dashboard->setApp(id);
    updateCounts();
    Q_EMIT selectedAppChanged(id);
}

void MainWindow::appsChanged()
{
    const QList<AppProfile> &apps = m_with.store.apps();
    if (m_selectedApp && m_with.store.app(*m_selectedApp))
        return;
    selectApp(apps.isEmpty() ? std::nullopt : std::optional(apps.first().id));
}

void MainWindow::updateCounts()
{
    if (!m_selectedApp) {
        m_sidebar->setCounts(std::nullopt, std::nullopt);
        return;
    }
    m_sidebar->setCounts(int(m_with.store.keywordsOfApp(*m_selectedApp).size()),
                         int(m_with.store.competitorsOfApp(*m_selectedApp).size()));
}

void MainWindow::showWorkspace(Workspace workspace)
{
    const QWidget *focused = QApplication::focusWidget();
    const bool losesFocus = workspace != m_workspace && focused && m_pages->isAncestorOf(focused);
    m_workspace = workspace;
    m_sidebar->setWorkspace(workspace);
    m_pages->setCurrentWidget(workspace == Workspace::Keywords ? static_cast<QWidget *>(m_dashboard)
                                                               : m_competitors);
    if (!losesFocus)
        return;
    if (workspace == Workspace::Keywords)
        m_dashboard->focusContent();
    else
        m_competitors->focusContent();
}

void MainWindow::openAppSearch()
{
    auto *sheet = new AppSearchSheet(m_with.store, *m_images, m_searchStorefront);
    Overlay *overlay = Overlay::open(Overlay::Kind::Sheet, this, sheet);
    connect(sheet, &AppSearchSheet::closeRequested, overlay, &Overlay::dismiss);
    connect(sheet, &AppSearchSheet::storefrontChanged, this, &MainWindow::setSearchStorefront);
    connect(sheet, &AppSearchSheet::appTracked, this, [this, overlay](const AppProfile &app) {
        overlay->dismiss();
        selectApp(app.id);
        m_dashboard->showStatus(tr("Added %1").arg(app.appName));
    });
}

void MainWindow::openSettings()
{
    auto *sheet =
        new SettingsSheet(m_with.preferences, m_with.information, m_with.updater, m_with.openUrl);
    Overlay *overlay = Overlay::open(Overlay::Kind::Sheet, this, sheet);
    connect(sheet, &SettingsSheet::closeRequested, overlay, &Overlay::dismiss);
    connect(sheet, &SettingsSheet::preferredStorefrontChanged, this,
            &MainWindow::setSearchStorefront);
}

void MainWindow::setSearchStorefront(const QString &country)
{
    m_searchStorefront = country;
    m_dashboard->setSearchStorefront(country);
    Q_EMIT searchStorefrontChanged(country);
}

void MainWindow::askToDeleteApp(QUuid id)
{
    const auto app = m_with.store.app(id);
    if (!app)
        return;
    const ConfirmSheet::Question question{
        tr("Delete App?"),
        tr("This will delete %1 and all of its saved keywords and ranking snapshots.\n"
           "This action cannot be undone.")
            .arg(app->appName),
        tr("Delete App")};
    ConfirmSheet::ask(this, question, [this, id] { m_with.store.removeApp(id); });
}

void MainWindow::followApplicationState()
{
    if (m_followsApplication)
        return;
    m_followsApplication = true;
    connect(qApp, &QGuiApplication::applicationStateChanged, this, &MainWindow::updateActivity);
    updateActivity();
}

void MainWindow::updateActivity()
{
    if (m_followsApplication)
        setActive(QGuiApplication::applicationState() == Qt::ApplicationActive && isVisible() &&
                  !isMinimized());
}

void MainWindow::setActive(bool active)
{
    m_refreshLoop.setActive(active);
}

bool MainWindow::event(QEvent *event)
{
    switch (event->type()) {
    case QEvent::Show:
    case QEvent::Hide:
    case QEvent::WindowStateChange:
        updateActivity();
        break;
    default:
        break;
    }
    return QWidget::event(event);
}

void MainWindow::rememberGeometry()
{
    m_with.preferences.setWindowGeometry(saveGeometry());
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    rememberGeometry();
    if (m_with.store.hasUnsavedChange() && !m_mayLoseChange)
        m_with.store.retryPersistence();
    if (m_with.store.hasUnsavedChange() && !m_mayLoseChange) {
        event->ignore();
        askToQuitWithoutSaving();
        return;
    }
    QWidget::closeEvent(event);
}

void MainWindow::askToQuitWithoutSaving()
{
    if (m_isAskingToQuit)
        return;
    m_isAskingToQuit = true;
    if (isMinimized())
        showNormal();
    const auto problem = m_with.store.persistenceProblem();
    const ConfirmSheet::Question question{
        tr("Quit without saving?"),
        tr("What you changed last is not in the file yet and will be lost.\n%1")
            .arg(problem ? problem->text : QString()),
        tr("Quit without saving"), tr("Try again")};
    Overlay *sheet = ConfirmSheet::ask(
        this, question,
        [this] {
            m_mayLoseChange = true;
            close();
        },
        // Closing saves first, and asks again when that fails.
        [this] { close(); });
    connect(sheet, &Overlay::dismissed, this, [this] { m_isAskingToQuit = false; });
}

} // namespace veltrix
