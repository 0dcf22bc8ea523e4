// SPDX-License-Identifier: GPL-3.0-or-later
// main() of every test program: one application object for the whole run.
#include <QApplication>
#include <QStandardPaths>

#include <gmock/gmock.h>

#include <clocale>

int main(int argc, char **argv)
{
    // Tests never see the user's own data, preferences or screen.
    QStandardPaths::setTestModeEnabled(true);
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}
