// SPDX-License-Identifier: GPL-3.0-or-later
// A store with a million measurements in its history beside one with none: start, change, memory, a
// timeline of ten years. The state files of both are the same.
#include "effects/atomic_file.h"
#include "effects/system_clock.h"
#include "generated_state.h"
#include "json/json_writer.h"
#include "memory_use.h"
#include "own_process.h"
#include "ratio.h"
#include "store/aso_store.h"
#include "store/history_database.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QThread>

#include <string_view>

namespace
{

using namespace veltrix;

constexpr int keywords = 300;
constexpr int daysInFile = 12;
constexpr int daysInHistory = 3'650;
constexpr double milliseconds = 1e3;

QString statePathIn(const QString &folder)
{
    return folder + QStringLiteral("/state.json");
}

std::unique_ptr<ASOStore> openStore(const QString &folder)
{
    ASOStore::Arguments arguments;
    arguments.persistenceURL = statePathIn(folder);
    arguments.clock = std::make_shared<SystemClock>();
    return std::make_unique<ASOStore>(std::move(arguments));
}

/// Ten years of days before those of the state file. The records are all the same one, and the disk
/// is not waited for: a million are there in some seconds.
void fillHistory(const QString &path, const PersistedState &state)
{
    HistoryDatabase::openOrCreate(path);
    SqliteDatabase database(path);
    database.execute("PRAGMA synchronous = OFF; BEGIN");
    SqliteStatement keyword = database.prepare("INSERT INTO keyword VALUES (?1, ?2)");
    SqliteStatement observation =
        database.prepare("INSERT INTO observation VALUES (?1, ?2, ?3, ?4)");
    SqliteStatement detail = database.prepare("INSERT INTO detail VALUES (?1, ?2, ?3, ?4)");
    const QByteArray record = HistoryRecords().pack(*state.snapshots.front());
    const double first = referenceSeconds(state.snapshots.front()->fetchedAt) - 40'000 -
                         daysInHistory * secondsPerDay;
    for (int number = 1; number <= keywords; ++number) {
        keyword.bind(1, std::int64_t(number));
        keyword.bind(2, state.trackedKeywords[number - 1].id.toRfc4122());
        keyword.run();
        for (int day = 0; day < daysInHistory; ++day) {
            const QByteArray id =
                QUuid(uint(number), ushort(day), 0, 0, 0, 0, 0, 0, 0, 0, 0).toRfc4122();
            for (SqliteStatement *statement : {&observation, &detail}) {
                statement->bind(1, std::int64_t(number));
                statement->bind(2, first + day * secondsPerDay);
                statement->bind(3, id);
            }
            observation.bind(4, std::int64_t(day % 100 + 1));
            observation.run();
            detail.bind(4, record);
            detail.run();
        }
    }
    database.execute("COMMIT");
}

/// In a process of its own: opens the store, and prints the processor's seconds and what stays in
/// memory.
void openAndMeasure(const QString &folder)
{
    resetPeakResident();
    const double before = residentBytes();
    std::unique_ptr<ASOStore> store;
    const double processor = secondsOf([&] { store = openStore(folder); });
    require(store->snapshots().size() == size_t(keywords) * daysInFile, "the days of the file");
    std::printf("%.6f %.0f\n", processor, residentBytes() - before);
}

double threadSeconds()
{
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return double(time.tv_sec) + double(time.tv_nsec) * 1e-9;
}

/// Bytes that this process has written, to whatever.
double writtenBytes()
{
    QFile io(QStringLiteral("/proc/self/io"));
    require(io.open(QIODevice::ReadOnly), "the kernel counts");
    for (const QByteArray &line : io.readAll().split('\n')) {
        if (line.startsWith("wchar: "))
            return line.mid(7).toDouble();
    }
    return 0;
}

/// In a process of its own: changes, and prints for each the processor's seconds of the main
/// thread, the wall's until it is on the disk, and the bytes written; of each the median.
void changeAndMeasure(const QString &folder)
{
    const auto store = openStore(folder);
    const QUuid app = store->apps().constFirst().id;
    std::vector<double> own;
    std::vector<double> wall;
    std::vector<double> bytes;
    for (int i = 0; i < 31; ++i) {
        const double written = writtenBytes();
        const double start = threadSeconds();
        const double since = clockSeconds(TimeOf::Wall);
        // Another in every run, or it would be there already.
        store->addTrackedKeyword(app, QUuid::createUuid().toString(), QStringLiteral("US"));
        own.push_back(threadSeconds() - start);
        store->waitUntilSaved();
        wall.push_back(clockSeconds(TimeOf::Wall) - since);
        bytes.push_back(writtenBytes() - written);
    }
    require(!store->persistenceProblem(), "every save succeeds");
    std::printf("%.9f %.9f %.0f\n", spreadOf(own).median, spreadOf(wall).median,
                spreadOf(bytes).median);
}

/// Seconds from the question to the timeline.
double timelineSeconds(ASOStore &store, int expectedDays)
{
    const double start = clockSeconds(TimeOf::Wall);
    bool isThere = false;
    const auto ask = [](ASOStore *asked, bool *done, int expected) -> Task<void> {
        const QUuid keyword = asked->trackedKeywords()[7].id;
        const RankingTimeline timeline = co_await asked->rankingTimeline(keyword, {});
        require(int(timeline.observations.size()) == expected, "all days");
        *done = true;
    };
    const Task<void> task = ask(&store, &isThere, expectedDays);
    while (!isThere)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    return clockSeconds(TimeOf::Wall) - start;
}

/// Moves what a file that is far too large has too much.
void migrate(const QString &folder)
{
    constexpr int days = 60;
    const PersistedState state = generatedState(keywords, days);
    const QByteArray text = toJson(state);
    writeFileAtomically(statePathIn(folder), text);
    const auto store = openStore(folder);
    double longest = 0;
    QElapsedTimer timer;
    const double start = clockSeconds(TimeOf::Wall);
    while (QFile(statePathIn(folder)).size() > ASOStore::usualStateFileLimit) {
        timer.start();
        QCoreApplication::processEvents(QEventLoop::AllEvents);
        longest = std::max(longest, double(timer.nsecsElapsed()) / 1e9);
        QThread::msleep(1);
    }
    const double seconds =
        clockSeconds(TimeOf::Wall) - start - ASOStore::historyTidyingDelay.count();
    while (store->historyMove()) {
        timer.start();
        QCoreApplication::processEvents(QEventLoop::AllEvents);
        longest = std::max(longest, double(timer.nsecsElapsed()) / 1e9);
    }
    require(store->snapshots().size() < state.snapshots.size() / 2, "most have moved");
    reportDetail("moving out of a file", spreadOf({double(text.size()) / 1e6 / seconds}),
                 "MB a second");
    report("longest pause of the event loop meanwhile, ms", spreadOf({longest * milliseconds}),
           atMost(16));
}

void compare(const QString &with, const QString &without)
{
    const auto start = [](const QString &folder) {
        return numbersFromSelf({QStringLiteral("open-and-measure"), folder}, 2);
    };
    report("start with a million measurements, times one without",
           quotients([&] { return start(with)[0]; }, [&] { return start(without)[0]; }, 9),
           atMost(1.1));
    reportDetail("the start", spreadOf({start(with)[0] * milliseconds}), "ms of processor");
    report("memory after it, times one without",
           quotients([&] { return start(with)[1]; }, [&] { return start(without)[1]; }, 3),
           atMost(1.1));
    const auto change = [](const QString &folder) {
        return numbersFromSelf({QStringLiteral("change-and-measure"), folder}, 3);
    };
    report("the main thread's time for a change, times one without",
           quotients([&] { return change(with)[0]; }, [&] { return change(without)[0]; }, 5),
           atMost(1.1));
    const auto figures = change(with);
    report("the main thread's time for a change, ms", spreadOf({figures[0] * milliseconds}),
           atMost(2));
    report("bytes written for a change, times one without",
           quotients([&] { return change(with)[2]; }, [&] { return change(without)[2]; }, 3),
           atMost(1.1));
    reportDetail("bytes written for a change", spreadOf({figures[2] / 1e6}), "MB");
    reportDetail("time until it is on the disk", spreadOf({figures[1] * milliseconds}),
                 "ms of the wall");
    const auto store = openStore(with);
    std::vector<double> times;
    for (int i = 0; i < 31; ++i)
        times.push_back(timelineSeconds(*store, daysInHistory + daysInFile) * milliseconds);
    report("a timeline of 3,662 days, ms of the wall", spreadOf(times), atMost(16));
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const std::string_view mode = argc > 2 ? argv[1] : "";
    if (mode == "open-and-measure")
        openAndMeasure(QFile::decodeName(argv[2]));
    else if (mode == "change-and-measure")
        changeAndMeasure(QFile::decodeName(argv[2]));
    if (!mode.empty())
        return 0;
    const QTemporaryDir folder;
    const QString with = folder.filePath(QStringLiteral("with"));
    const QString without = folder.filePath(QStringLiteral("without"));
    const QString large = folder.filePath(QStringLiteral("large"));
    const PersistedState state = generatedState(keywords, daysInFile);
    for (const QString &path : {with, without, large})
        QDir().mkpath(path);
    for (const QString &path : {with, without})
        writeFileAtomically(statePathIn(path), toJson(state));
    fillHistory(with + QStringLiteral("/history.sqlite"), state);
    compare(with, without);
    migrate(large);
    return 0;
}
