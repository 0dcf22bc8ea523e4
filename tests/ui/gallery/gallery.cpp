// SPDX-License-Identifier: GPL-3.0-or-later
// Renders every screen and state into PNG files, light and dark. The scale comes from the
// environment (QT_SCALE_FACTOR), so scripts/gallery runs this once for each.
#include "ui/gallery/scenes.h"
#include "ui/support/ui_world.h"
#include "ui_kit/theme/theme_controller.h"

#include <QApplication>
#include <QDir>
#include <QPixmap>
#include <QStandardPaths>

#include <cstdio>

int main(int argc, char **argv)
{
    using namespace veltrix;
    QStandardPaths::setTestModeEnabled(true);
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const QDir folder(arguments.value(1, QStringLiteral("build/gallery")));
    const QString only = arguments.value(2);
    if (!folder.mkpath(QStringLiteral("."))) {
        std::fprintf(stderr, "cannot create %s\n", qPrintable(folder.path()));
        return 1;
    }
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    FakeColorScheme scheme;
    const ThemeController theme(scheme);
    int count = 0;
    int failures = 0;
    for (const Scene &scene : galleryScenes()) {
        if (!only.isEmpty() && !scene.name.contains(only))
            continue;
        for (const ColorScheme wanted : {ColorScheme::Light, ColorScheme::Dark}) {
            scheme.set(wanted);
            const QPixmap picture = renderScene(scene);
            const QString path = folder.filePath(QStringLiteral("%1-%2@%3x.png")
                                                     .arg(scene.name, wanted == ColorScheme::Light
                                                                          ? QStringLiteral("light")
                                                                          : QStringLiteral("dark"))
                                                     .arg(picture.devicePixelRatio()));
            if (picture.isNull() || !picture.save(path)) {
                std::fprintf(stderr, "cannot write %s\n", qPrintable(path));
                ++failures;
            }
            ++count;
        }
    }
    std::printf("%d pictures in %s\n", count, qPrintable(folder.absolutePath()));
    return failures == 0 && count > 0 ? 0 : 1;
}
