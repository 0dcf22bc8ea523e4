// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/veltrix_app.h"

#include "effects/atomic_file.h"
#include "effects/data_locations.h"
#include "store/data_folder_lock.h"
#include "ui/theme/desktop_color_scheme.h"
#include "ui/theme/theme_controller.h"

#include <QApplication>
#include <QDesktopServices>
#include <QSettings>
#include <QStandardPaths>

#include <cstdio>

namespace veltrix
{

namespace
{

/// How long a first process may take to answer a second start.
constexpr std::chrono::milliseconds raisePatience{3000};

QString cacheFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation) +
           QStringLiteral("/Veltrix");
}

std::shared_ptr<QSettings> storedSettings()
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    return std::make_shared<QSettings>(folder + QStringLiteral("/Veltrix/Veltrix.conf"),
                                       QSettings::IniFormat);
}

void openInBrowser(const QUrl &url)
{
    QDesktopServices::openUrl(url);
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

VeltrixApp::VeltrixApp(const Bundle &bundle, const QString &stateFolder, const QString &cacheFolder,
                       std::shared_ptr<QSettings> settings)
    : m_services(bundle, stateFolder, cacheFolder, settings), m_settings(std::move(settings)),
      m_preferences(*m_settings),
      m_files(readWholeFile, [](const QString &path, const QByteArray &content) {
          writeFileAtomically(path, content);
      })
{
    if (Updater *updater = m_services.updater())
        m_updater = std::make_unique<UpdaterAdapter>(*updater, openInBrowser);
    m_window = std::make_unique<MainWindow>(MainWindow::Collaborators{
        .store = m_services.store(),
        .artwork = m_services.artwork(),
        .preferences = m_preferences,
        .files = m_files,
        .information = m_services.information(),
        .updater = m_updater.get(),
        .openUrl = openInBrowser,
        .appStoreUrl = QUrl(m_services.appStoreUrl()),
    });
}

int VeltrixApp::run(QApplication &application)
{
    const QString folder = dataFolder();
    DataFolderLock lock(folder);
    const auto outcome = lock.acquire();
    if (outcome == DataFolderLock::Outcome::HeldByAnother) {
        if (lock.askOwnerToRaise(raisePatience))
            return 0;
        std::fprintf(stderr, "Veltrix is already running on %s and does not answer.\n",
                     qUtf8Printable(folder));
        return 1;
    }

    DesktopColorScheme colorScheme;
    const ThemeController theme(colorScheme);
    VeltrixApp app(Bundle::ofThisProgram(), folder, cacheFolder(), storedSettings());
    QObject::connect(&lock, &DataFolderLock::raiseRequested, &app.window(),
                     [&app] { raise(app.window()); });
    app.window().followApplicationState();
    app.window().show();
    return application.exec();
}

} // namespace veltrix
