// SPDX-License-Identifier: GPL-3.0-or-later
// Veltrix: one window over one data folder, or a command without a window.
#include "app/headless_app.h"
#include "app/headless_export.h"
#include "app/veltrix_app.h"
#include "effects/data_locations.h"
#include "effects/standard_streams.h"
#include "store/early_state_read.h"

#include <QApplication>

#include <cstdio>

namespace
{

using namespace veltrix;

int openWindow(int argc, char **argv, VeltrixApp::Opens opens)
{
    QApplication::setDesktopFileName(QStringLiteral("veltrix"));
    // The window system takes a while to be set up.
    EarlyStateRead earlyRead(stateFilePath(dataFolder()));
    QApplication application(argc, argv);
    return VeltrixApp::run(application, opens, &earlyRead);
}

ExitStatus carryOut(const Command &command, const Bundle &bundle)
{
    if (const auto *print = std::get_if<PrintText>(&command)) {
        std::fputs(qUtf8Printable(print->text), stdout);
        return ExitStatus::Done;
    }
    if (const auto *wrong = std::get_if<WrongUse>(&command)) {
        std::fprintf(stderr, "veltrix: %s\nTry “veltrix --help”.\n",
                     qUtf8Printable(wrong->message));
        return ExitStatus::WrongUse;
    }
    if (const auto *toExport = std::get_if<ExportCommand>(&command))
        return runExport(*toExport, bundle);
    return runHeadless(std::get<MeasureCommand>(command), bundle);
}

} // namespace

int main(int argc, char **argv)
{
    secureStandardStreams();
    dropRelativeFolders();
    QCoreApplication::setApplicationName(QStringLiteral("Veltrix"));

    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    if (!hasCommand(arguments)) {
        using Opens = VeltrixApp::Opens;
        return openWindow(argc, argv, wantsOverview(arguments) ? Opens::Overview : Opens::Keywords);
    }

    // Without a window there is no display to ask for.
    const QCoreApplication application(argc, argv);
    const Bundle bundle = Bundle::ofThisProgram();
    return int(carryOut(commandOf(arguments, bundle.versionText()), bundle));
}
