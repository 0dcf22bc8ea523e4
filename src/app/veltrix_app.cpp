// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/veltrix_app.h"

#include "app/desktop_color_scheme.h"
#include "app/folder_run.h"
#include "app/user_files.h"
#include "effects/atomic_file.h"
#include "effects/background_file.h"
#include "effects/data_folder_lock.h"
#include "effects/data_locations.h"
#include "effects/end_signals.h"
#include "effects/show_in_folder.h"
#include "ui_kit/text/figures.h"
#include "ui_kit/theme/theme_controller.h"

#include <QApplication>
#include <QDesktopServices>
#include <QSessionManager>

#include <cstdio>

namespace veltrix
{

namespace
{

/// How long a first process may take to answer a second start.
constexpr std::chrono::milliseconds raisePatience{3000};
/// How long one that makes room may take to finish saving.
constexpr std::chrono::seconds roomPatience{30};

/// What another start asks this one to show.
const QByteArray overviewView = QByteArrayLiteral("overview");

void openInBrowser(const QUrl &url)
{
    QDesktopServices::openUrl(url);
}

void showInFileManager(const QString &path)
{
    showInFolder(path, openInBrowser);
}

void raise(QWidget &window)
{
    if (window.isMinimized())
        window.showNormal();
    window.show();
    window.raise();
    window.activateWindow();
}

} // namespace

VeltrixApp::VeltrixApp(const Bundle &bundle, const DataPlaces &data,
                       std::shared_ptr<SettingsFile> settings, ChosenColorScheme &colorScheme)
    : m_services(bundle, data, settings), m_settings(std::move(settings)),
      m_preferences(*m_settings), m_files(readWholeFile,
                                          [files = m_services.files()](const QString &path) {
                                              return std::make_shared<BackgroundFile>(path, files);
                                          }),
      m_telling(m_services.store(), RankTelling::pathIn(data.stateFolder),
                [this] { return m_preferences.digestChoice(); }),
      m_guests(m_services.store(), m_telling, windowTables())
{
    if (Updater *updater = m_services.updater())
        m_updater = std::make_unique<UpdaterAdapter>(*updater, openInBrowser, showInFileManager);
    m_window = std::make_unique<MainWindow>(MainWindow::Collaborators{
        .store = m_services.store(),
        .artwork = m_services.artwork(),
        .preferences = m_preferences,
        .files = m_files,
        .information = m_services.information(),
        .timing = m_timing,
        .updater = m_updater.get(),
        .openUrl = openInBrowser,
        .appStoreUrl = QUrl(m_services.appStoreUrl()),
        .applyTheme = [&colorScheme](ThemeChoice choice) { colorScheme.setChoice(choice); },
        .showDataFolder = [path = stateFilePath(data.stateFolder)] { showInFileManager(path); },
        .suggestions = m_services.suggestions(),
    });
    QObject::connect(&m_networkReturn, &NetworkReturn::returned, m_window.get(),
                     &MainWindow::retryRefreshSoon);
    QObject::connect(m_window.get(), &MainWindow::firstShown, m_window.get(), [this] {
        m_networkReturn.listen();
        m_window->followApplicationState();
    });
}

void VeltrixApp::open(EarlyStateRead *earlyRead)
{
    m_services.store().open(earlyRead);
    m_window->show();
}

bool VeltrixApp::prepareToEnd()
{
    m_window->rememberGeometry();
    m_settings->sync();
    return m_services.store().saveBeforeEnd();
}

void VeltrixApp::endSession(QSessionManager &session)
{
    // Nothing waits for an answer here: the end is called off, and closing asks.
    if (!prepareToEnd() && session.allowsInteraction()) {
        session.release();
        session.cancel();
        m_window->close();
    }
}

void VeltrixApp::followEnd(QApplication &application)
{
    auto *ends = new EndSignals(m_window.get());
    QObject::connect(ends, &EndSignals::endRequested, m_window.get(), [this] {
        // Not quit(), which would ask the user by closing the window.
        QCoreApplication::exit(prepareToEnd() ? 0 : 1);
    });
    QObject::connect(
        &application, &QGuiApplication::commitDataRequest, m_window.get(),
        [this](QSessionManager &session) { endSession(session); }, Qt::DirectConnection);
}

int VeltrixApp::run(QApplication &application, Opens opens, EarlyStateRead *earlyRead)
{
    setUserLocale(QLocale());
    const QString folder = dataFolder();
    DataFolderLock lock(folder);
    auto outcome = lock.acquire();
    if (outcome == DataFolderLock::Outcome::HeldByAnother) {
        const auto answer = lock.askOwnerToRaise(
            raisePatience, opens == Opens::Overview ? overviewView : QByteArray());
        if (answer == DataFolderLock::OwnersAnswer::Raised)
            return 0;
        if (answer == DataFolderLock::OwnersAnswer::MakesRoom)
            outcome = lock.acquireWithin(roomPatience);
    }
    if (outcome == DataFolderLock::Outcome::HeldByAnother) {
        std::fprintf(stderr, "Veltrix is already running on %s and does not answer.\n",
                     qUtf8Printable(folder));
        return 1;
    }

    if (outcome == DataFolderLock::Outcome::Acquired)
        clearLeftovers(folder, cacheFolder());

    const DesktopColorScheme desktop;
    const auto settings = storedSettings();
    ChosenColorScheme colorScheme(desktop, StoredPreferences(*settings).theme());
    const ThemeController theme(colorScheme);
    VeltrixApp app(Bundle::ofThisProgram(), {folder, cacheFolder(), &lock}, settings, colorScheme);
    app.followEnd(application);
    QObject::connect(&lock, &DataFolderLock::raiseRequested, &app.window(),
                     [&app](const QByteArray &view) {
                         if (view == overviewView)
                             app.window().showWorkspace(Workspace::Overview);
                         raise(app.window());
                     });
    QObject::connect(&lock, &DataFolderLock::wishReceived, &app.window(),
                     [&app](FolderGuest *guest) { app.m_guests.serve(guest); });
    if (opens == Opens::Overview)
        app.window().showWorkspace(Workspace::Overview);
    app.open(earlyRead);
    return application.exec();
}

} // namespace veltrix
