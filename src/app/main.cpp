// SPDX-License-Identifier: GPL-3.0-or-later
// Veltrix: one window over one data folder.
#include "app/veltrix_app.h"
#include "effects/standard_streams.h"

#include <QApplication>

int main(int argc, char **argv)
{
    veltrix::secureStandardStreams();
    QApplication::setApplicationName(QStringLiteral("Veltrix"));
    QApplication::setDesktopFileName(QStringLiteral("veltrix"));
    QApplication application(argc, argv);
    return veltrix::VeltrixApp::run(application);
}
