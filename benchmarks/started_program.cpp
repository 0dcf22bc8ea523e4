// SPDX-License-Identifier: GPL-3.0-or-later
// Veltrix as main() starts it, over a given bundle and data folder, until its window is painted:
// started_program BUNDLE FOLDER.
#include "app/desktop_color_scheme.h"
#include "app/veltrix_app.h"
#include "effects/data_folder_lock.h"
#include "first_paint.h"
#include "store/early_state_read.h"
#include "ui_kit/theme/theme_controller.h"

#include <QApplication>
#include <QFile>

int main(int argc, char **argv)
{
    using namespace veltrix;
    if (argc != 3)
        return 2;
    QApplication::setApplicationName(QStringLiteral("Veltrix"));
    const QString folder = QFile::decodeName(argv[2]);
    EarlyStateRead earlyRead(stateFilePath(folder));
    QApplication application(argc, argv);
    DataFolderLock lock(folder);
    if (lock.acquire() == DataFolderLock::Outcome::HeldByAnother)
        return 1;
    const DesktopColorScheme desktop;
    ChosenColorScheme colorScheme(desktop, ThemeChoice::System);
    const ThemeController theme(colorScheme);
    VeltrixApp app(Bundle(QFile::decodeName(argv[1])),
                   {folder, folder + QStringLiteral("/cache"), &lock},
                   std::make_shared<SettingsFile>(folder + QStringLiteral("/settings.conf"),
                                                  std::make_shared<FileThread>()),
                   colorScheme);
    // Installed after the program's own, and so called before it: what the program does after its
    // first frame does not count.
    FirstPaint firstPaint;
    app.open(&earlyRead);
    return QApplication::exec();
}
