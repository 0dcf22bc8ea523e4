// SPDX-License-Identifier: GPL-3.0-or-later
// Full caches beside empty ones: what a measurement and the memory have to do with them.
#include "clients/ranked_apps_keeper.h"
#include "effects/system_clock.h"
#include "generated_folder.h"
#include "memory_use.h"
#include "own_process.h"
#include "ratio.h"

#include <QDir>
#include <QTemporaryDir>

#include <string_view>

namespace
{

using namespace veltrix;

/// Twelve days are in the state file, about a year in the history.
constexpr FolderSize yearOf300Keywords{300, 12, 341};
constexpr double milliseconds = 1e3;
constexpr double megabyte = 1e6;

// What the processes of their own do.

/// Keeps what so many keywords have found, as a long run does, and prints by how much the memory
/// has grown.
void keepAndMeasure(const QString &folder, int count)
{
    const auto found = foundFor(0);
    const auto files = std::make_shared<FileThread>();
    RankedAppsCache cache({rankedAppsPathIn(folder), files}, std::make_shared<SystemClock>());
    resetPeakResident();
    const double before = residentBytes();
    const Date now = SystemClock().now();
    for (int i = 0; i < count; ++i) {
        cache.keep(QString::number(i), {now + Seconds(i * 0.01), found});
        files->waitUntilFinished();
    }
    malloc_trim(0);
    std::printf("%.0f\n", residentBytes() - before);
}

/// Keeps one more, some times over, and prints the main thread's seconds for each, the bytes
/// written for it, and the wall's seconds until it is on the disk; of each the median.
void keepOneMore(const QString &folder)
{
    const auto files = std::make_shared<FileThread>();
    const auto clock = std::make_shared<SystemClock>();
    RankedAppsCache cache({rankedAppsPathIn(folder), files}, clock);
    // The first brings the file into memory, and writes it once.
    cache.keep(QStringLiteral("first"), {clock->now(), foundFor(0)});
    files->waitUntilFinished();
    std::vector<double> own;
    std::vector<double> bytes;
    std::vector<double> wall;
    for (int i = 1; i <= 31; ++i) {
        const SavedResults saved{clock->now(), foundFor(i)};
        const double written = writtenBytes();
        const double since = clockSeconds(TimeOf::Wall);
        const double start = threadSeconds();
        // The same one, so that an empty cache stays one.
        cache.keep(QStringLiteral("first"), saved);
        own.push_back(threadSeconds() - start);
        files->waitUntilFinished();
        wall.push_back(clockSeconds(TimeOf::Wall) - since);
        bytes.push_back(writtenBytes() - written);
    }
    std::printf("%.9f %.0f %.9f\n", spreadOf(own).median, spreadOf(bytes).median,
                spreadOf(wall).median);
}

// The comparisons.

void compareMemory(const QTemporaryDir &scratch)
{
    int run = 0;
    const auto memory = [&](int count) {
        const QString folder = scratch.filePath(QStringLiteral("memory %1").arg(++run));
        QDir().mkpath(folder);
        const double grown = numbersFromSelf(
            {QStringLiteral("keep-and-measure"), folder, QString::number(count)}, 1)[0];
        QDir(folder).removeRecursively();
        return grown;
    };
    const double few = memory(100);
    const double many = memory(6'151);
    report("memory with 6,151 keywords' ranked apps, times 100 keywords'", spreadOf({many / few}),
           atMost(1.1));
    reportDetail("memory with 6,151 keywords' ranked apps", spreadOf({many / megabyte}), "MB");
}

void compareKeeping(const QString &with, const QString &without)
{
    const auto keep = [](const QString &folder) {
        return numbersFromSelf({QStringLiteral("keep-one-more"), folder}, 3);
    };
    keep(without);
    const auto full = keep(with);
    report("the main thread's time to keep ranked apps, full caches, ms",
           spreadOf({full[0] * milliseconds}), atMost(2));
    reportDetail("the same, empty caches", spreadOf({keep(without)[0] * milliseconds}), "ms");
    report(
        "bytes written for a measurement's ranked apps, full times empty",
        quotients([&] { return keep(with)[1]; }, [&] { return keep(without)[1]; }, 3, Unit::Bytes),
        atMost(1.1));
    reportDetail("bytes written for them", spreadOf({full[1] / megabyte}), "MB");
    reportDetail("time until they are written", spreadOf({full[2] * milliseconds}),
                 "ms of the wall");
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const std::string_view mode = argc > 2 ? argv[1] : "";
    const QString given = argc > 2 ? QFile::decodeName(argv[2]) : QString();
    if (mode == "keep-and-measure" && argc == 4)
        keepAndMeasure(given, QByteArray(argv[3]).toInt());
    else if (mode == "keep-one-more")
        keepOneMore(given);
    if (!mode.empty())
        return 0;
    const QTemporaryDir folder;
    const QString with = folder.filePath(QStringLiteral("with"));
    const QString without = folder.filePath(QStringLiteral("without"));
    for (const QString &path : {with, without})
        QDir().mkpath(path);
    fillDataFolder(with, yearOf300Keywords);
    compareKeeping(with, without);
    compareMemory(folder);
    return 0;
}
