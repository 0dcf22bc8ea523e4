// SPDX-License-Identifier: GPL-3.0-or-later
// From the start of the process to the first painted window, beside a program that shows an empty
// one: over a year of data with full caches, and over no data. Where there is a display, on it too;
// offscreen the figures are the program's own.
//
// start_benchmark fill FOLDER makes such a year and ends, for whoever profiles a start.
#include "effects/atomic_file.h"
#include "generated_folder.h"
#include "generated_state.h"
#include "own_process.h"
#include "ratio.h"
#include "store/state_file.h"

#include <QDir>
#include <QGuiApplication>
#include <QTemporaryDir>

#include <string>
#include <string_view>

namespace
{

using namespace veltrix;

constexpr FolderSize yearOf100Keywords{100, 36, 329};
constexpr double megabyte = 1e6;
constexpr int rounds = 15;

struct Started {
    double processor = 0;
    double memory = 0;
    double wall = 0;
};

Started start(const char *program, const QStringList &arguments)
{
    const QString path = QCoreApplication::applicationDirPath() + u'/' + QLatin1String(program);
    const double since = clockSeconds(TimeOf::Wall);
    const auto figures = numbersFrom(path, arguments, 2);
    return {figures[0], figures[1], clockSeconds(TimeOf::Wall) - since};
}

Started startEmpty()
{
    return start("empty_window", {});
}

/// A bundle whose services answer nobody.
void writeBundle(const QString &bundle)
{
    QDir().mkpath(bundle);
    writeFileAtomically(bundle + QStringLiteral("/Info.plist"), R"(<?xml version="1.0"?>
<plist version="1.0"><dict>
<key>VeltrixITunesBaseURL</key><string>http://127.0.0.1:9</string>
<key>VeltrixSearchHintsURL</key><string>http://127.0.0.1:9</string>
</dict></plist>)");
}

/// Starts both in turn. What is in the page cache stays there: disks are not what is compared.
void reportStart(const char *what, const QStringList &arguments, double goal)
{
    const auto startWhole = [&] {
        return start("started_program", arguments);
    };
    startEmpty();
    startWhole();
    report(what,
           quotients([&] { return startWhole().wall; }, [] { return startEmpty().wall; }, rounds),
           atMost(goal));
    reportDetail("the same by processor time",
                 quotients([&] { return startWhole().processor; },
                           [] { return startEmpty().processor; }, rounds));
}

} // namespace

int main(int argc, char **argv)
{
    const bool hasDisplay = qEnvironmentVariableIsSet("DISPLAY");
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_LOGGING_RULES", "qt.qpa.*=false");
    const QGuiApplication application(argc, argv);
    if (argc == 3 && std::string_view(argv[1]) == "fill") {
        const QString folder = QFile::decodeName(argv[2]);
        QDir().mkpath(folder + QStringLiteral("/data"));
        writeBundle(folder + QStringLiteral("/bundle"));
        fillDataFolder(folder + QStringLiteral("/data"), yearOf100Keywords);
        return 0;
    }
    const QTemporaryDir folder;
    const QString bundle = folder.filePath(QStringLiteral("bundle"));
    const QString none = folder.filePath(QStringLiteral("none"));
    const QString year = folder.filePath(QStringLiteral("year"));
    for (const QString &path : {none, year})
        QDir().mkpath(path);
    writeBundle(bundle);
    fillDataFolder(year, yearOf100Keywords);

    reportStart("start with 100 keywords, a year and full caches, times an empty window's, wall",
                {bundle, year}, 4);
    reportDetail("memory at the first paint",
                 spreadOf({start("started_program", {bundle, year}).memory / megabyte}), "MB");
    reportDetail("of it what an empty window has", spreadOf({startEmpty().memory / megabyte}),
                 "MB");
    reportDetail(
        "the state file alone",
        inMilliseconds(
            seconds([&] { StateFile(year + QStringLiteral("/aso_store_state.json")).load(); }, 15)),
        "ms of processor");
    reportStart("start without any data, times an empty window's, wall", {bundle, none}, 4);
    if (!hasDisplay)
        return 0;
    qputenv("QT_QPA_PLATFORM", "xcb");
    reportStart("the start with a year on an X11 display, times an empty window's, wall",
                {bundle, year}, 2);
    return 0;
}
