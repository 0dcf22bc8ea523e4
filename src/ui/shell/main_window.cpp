// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/shell/main_window.h"

#include "ui/competitors/competitors_view.h"
#include "ui/dashboard/dashboard_page.h"
#include "ui/dashboard/keyword_filter.h"
#include "ui/dashboard/quick_filter.h"
#include "ui/measuring/automatic_refresh.h"
#include "ui/measuring/measuring_bars.h"
#include "ui/overview/overview_page.h"
#include "ui/preferences/preferences.h"
#include "ui/settings/daily_measuring.h"
#include "ui/settings/update_banner.h"
#include "ui/settings/updater_interface.h"
#include "ui/shell/app_selector.h"
#include "ui/shell/persistence_banner.h"
#include "ui/shell/removals.h"
#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/widgets/artwork_images.h"
#include "ui_kit/widgets/banner.h"
#include "ui_kit/widgets/first_frame.h"
#include "ui_kit/widgets/focus_keeper.h"
#include "ui_kit/widgets/layouts.h"

#include <QApplication>
#include <QCloseEvent>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace veltrix
{

namespace
{

constexpr QSize firstSize{1280, 800};
constexpr QSize leastSize{800, 500};
/// Moving and resizing come in bursts.
constexpr std::chrono::milliseconds geometryDelay{500};

} // namespace

MainWindow::MainWindow(Collaborators collaborators, QWidget *parent)
    : QWidget(parent), m_with(std::move(collaborators)), m_closing(m_with.store),
      m_images(new ArtworkImages(m_with.artwork, this)),
      m_measuring(new MeasuringStatus(m_with.store.refreshes(), this)),
      m_sidebar(new Sidebar(m_with.store, *m_images)),
      m_overview(new OverviewPage(m_with.store, *m_images, *m_measuring)),
      m_dashboard(new DashboardPage(m_with.store, *m_images, m_with.preferences, m_with.files,
                                    *m_measuring, m_with.suggestions)),
      m_competitors(
          new CompetitorsView({m_with.store, *m_images, m_with.openUrl, m_with.appStoreUrl})),
      m_pages(new QStackedWidget), m_selection(new AppSelection(m_with.store, this)),
      m_refresh(new AutomaticRefresh(m_with.store, *m_measuring, this)),
      m_daily(new DailyMeasuring(m_with.timing, this)),
      m_removals(new Removals(m_with.store, this)),
      m_keeper(new FocusKeeper(this, [this] { takeFocusHome(); }))
{
    setObjectName(QStringLiteral("mainWindow"));
    setWindowTitle(QStringLiteral("Veltrix"));
    setAccessibleRole(this, QAccessible::Window);
    setAccessibleName(QStringLiteral("Veltrix"));
    setMinimumSize(leastSize);
    if (!restoreGeometry(m_with.preferences.windowGeometry()))
        resize(firstSize);
    m_geometryTimer.setParent(this);
    m_geometryTimer.setObjectName(QStringLiteral("geometryTimer"));
    m_geometryTimer.setSingleShot(true);
    m_geometryTimer.setInterval(geometryDelay);
    connect(&m_geometryTimer, &QTimer::timeout, this, &MainWindow::rememberGeometry);
    layOut();
    buildActions();
    addShellControls(m_overview->toolbar());
    addShellControls(m_dashboard->toolbar());
    addShellControls(m_competitors->toolbar());
    connectSidebar();
    connectPages();
    connectOverview();
    connectSheets();
    connectRemovals();
    connectDaily();
    connect(m_selection, &AppSelection::changed, this, &MainWindow::showApp);
    showApp(m_selection->id());
    m_images->hold();
    connect(new FirstFrame(this), &FirstFrame::shown, this, [this] {
        m_images->release();
        Q_EMIT firstShown();
    });
}

MainWindow::~MainWindow() = default;

void MainWindow::layOut()
{
    for (const Workspace workspace :
         {Workspace::Overview, Workspace::Keywords, Workspace::Competitors})
        m_pages->addWidget(pageOf(workspace));
    turnTo(*m_pages, pageOf(m_workspace));
    auto *workspace = new QVBoxLayout;
    workspace->setSpacing(0);
    workspace->addWidget(new PersistenceBanner(m_with.store));
    workspace->addWidget(makeRefreshBanner(*m_measuring));
    if (m_with.updater)
        workspace->addWidget(makeUpdateBanner(*m_with.updater, [this] { openSettings(); }));
    workspace->addWidget(m_pages, 1);
    m_statusBar = makeStatusBar(*m_measuring);
    workspace->addWidget(m_statusBar);
    sayHistoryMoves(m_with.store, *m_measuring);
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_sidebar);
    layout->addLayout(workspace, 1);
}

void MainWindow::connectSidebar()
{
    AppSelector &selector = m_sidebar->appSelector();
    connect(m_sidebar, &Sidebar::workspaceChosen, this, &MainWindow::showWorkspace);
    connect(&selector, &AppSelector::appChosen, m_selection, &AppSelection::select);
    connect(&selector, &AppSelector::addAppRequested, this, &MainWindow::openAppSearch);
    connect(&selector, &AppSelector::deleteAppRequested, this, &MainWindow::askToDeleteApp);
    connect(m_dashboard, &DashboardPage::keywordCountChanged, this, &MainWindow::updateCounts);
    connect(&m_with.store, &ASOStore::competitorsChanged, this, &MainWindow::updateCounts);
    connect(&m_with.store, &ASOStore::appsChanged, this, &MainWindow::updateCounts);
}

void MainWindow::connectOverview()
{
    connect(m_overview, &OverviewPage::addAppRequested, this, &MainWindow::openAppSearch);
    connect(m_overview, &OverviewPage::refreshRequested, m_dashboard, &DashboardPage::refreshAll);
    connect(m_overview, &OverviewPage::keywordsRequested, this,
            [this](QUuid appId, QuickFilter filter) {
                selectApp(appId);
                m_dashboard->showOnly(filter);
                showWorkspace(Workspace::Keywords);
            });
}

void MainWindow::connectPages()
{
    connect(m_dashboard, &DashboardPage::addAppRequested, this, &MainWindow::openAppSearch);
    // Competitors are looked for where new keywords go.
    KeywordFilter &filter = m_dashboard->filter();
    m_competitors->setCountry(filter.storefrontOfNewKeywords());
    connect(&filter, &KeywordFilter::storefrontOfNewKeywordsChanged, m_competitors,
            &CompetitorsView::setCountry);
    connect(m_competitors, &CompetitorsView::countryPicked, &filter,
            &KeywordFilter::setSearchStorefront);
}

void MainWindow::connectDaily()
{
    // By 24 hours the window would take the turn of the daily run, later each day, and skip one.
    connect(m_daily, &DailyMeasuring::changed, this, [this] {
        if (!m_daily->isBusy())
            m_refresh->setDue(m_daily->isOn() ? KeywordRefreshes::Due::EachDay
                                              : KeywordRefreshes::Due::After24Hours);
    });
}

void MainWindow::connectRemovals()
{
    connect(m_removals, &Removals::offerChanged, this,
            [this] { m_statusBar->setOffer(m_removals->offer()); });
    connect(m_statusBar, &StatusBar::undoRequested, m_removals, &Removals::undo);
    connect(m_dashboard, &DashboardPage::tagsEdited, m_removals, &Removals::keepTags);
    connect(m_removals, &Removals::undone, this,
            [this](const QString &text, std::optional<QUuid> appId) {
                if (appId)
                    selectApp(appId);
                m_measuring->say(text);
            });
    connect(m_removals, &Removals::failed, this,
            [this](const QString &problem) { m_measuring->say(problem, StatusBar::Tone::Error); });
}

void MainWindow::showApp(std::optional<QUuid> id)
{
    m_measuring->setAppInView(id);
    m_sidebar->appSelector().setApp(m_selection->app());
    m_dashboard->setApp(id);
    m_competitors->setApp(id);
    updateCounts();
}

void MainWindow::updateCounts()
{
    const AppSelection::Counts counts = m_selection->counts();
    m_sidebar->setCounts(int(m_with.store.apps().size()), counts.keywords, counts.competitors);
}

QString MainWindow::searchStorefront() const
{
    return m_dashboard->filter().searchStorefront();
}

void MainWindow::retryRefreshSoon()
{
    m_refresh->retrySoon();
}

void MainWindow::showWorkspace(Workspace workspace)
{
    const QWidget *focused = QApplication::focusWidget();
    const bool losesFocus = workspace != m_workspace && focused && m_pages->isAncestorOf(focused);
    m_workspace = workspace;
    m_sidebar->setWorkspace(workspace);
    turnTo(*m_pages, pageOf(workspace));
    if (losesFocus)
        focusContentOf(workspace);
}

QWidget *MainWindow::pageOf(Workspace workspace) const
{
    switch (workspace) {
    case Workspace::Overview:
        return m_overview;
    case Workspace::Keywords:
        return m_dashboard;
    case Workspace::Competitors:
        return m_competitors;
    }
    Q_UNREACHABLE();
}

void MainWindow::focusContentOf(Workspace workspace)
{
    switch (workspace) {
    case Workspace::Overview:
        return m_overview->focusContent();
    case Workspace::Keywords:
        return m_dashboard->focusContent();
    case Workspace::Competitors:
        return m_competitors->focusContent();
    }
}

void MainWindow::followApplicationState()
{
    if (m_followsApplication)
        return;
    m_followsApplication = true;
    m_daily->look();
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
    m_refresh->setActive(active);
}

bool MainWindow::event(QEvent *event)
{
    switch (event->type()) {
    case QEvent::Show:
    case QEvent::Hide:
    case QEvent::WindowStateChange:
        updateActivity();
        m_geometryTimer.start();
        break;
    case QEvent::Move:
    case QEvent::Resize:
        // What happens before it is seen is nobody's choice.
        if (isVisible())
            m_geometryTimer.start();
        break;
    default:
        break;
    }
    return QWidget::event(event);
}

bool MainWindow::focusNextPrevChild(bool next)
{
    return m_keeper->keep() || QWidget::focusNextPrevChild(next);
}

void MainWindow::takeFocusHome()
{
    // A researched app has nothing but what can be pressed.
    QWidget *research = m_competitors->research();
    if (m_workspace == Workspace::Competitors && research)
        research->setFocus(Qt::OtherFocusReason);
    else
        focusContentOf(m_workspace);
}

void MainWindow::rememberGeometry()
{
    m_geometryTimer.stop();
    m_with.preferences.setWindowGeometry(saveGeometry());
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    rememberGeometry();
    const Closing::Verdict verdict = m_closing.request();
    event->setAccepted(verdict == Closing::Verdict::Close);
    if (verdict == Closing::Verdict::Ask)
        askToQuitWithoutSaving();
}

} // namespace veltrix
