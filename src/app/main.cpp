// SPDX-License-Identifier: GPL-3.0-or-later
// Veltrix: one window over one data folder.
#include "app/veltrix_app.h"
#include "effects/data_locations.h"
#include "effects/standard_streams.h"

#include <QApplication>

int main(int argc, char **argv)
{
    veltrix::secureStandardStreams();
    veltrix::dropRelativeFolders();
    QApplication::setApplicationName(QStringLiteral("Veltrix"));
    QApplication::setDesktopFileName(QStringLiteral("veltrix"));
    QApplication application(argc, argv);
    return veltrix::VeltrixApp::run(application);
}
