// SPDX-License-Identifier: GPL-3.0-or-later
// What tests of the store need another process for: one that is killed, one that may not write, one
// whose disk is full, one that holds a data folder. The first argument says which.
#include "effects/atomic_file.h"
#include "effects/data_folder_lock.h"
#include "effects/system_clock.h"
#include "json/json_reader.h"
#include "store/aso_store.h"
#include "store/history_database.h"
#include "store/numbered_measurements.h"
#include "store/numbered_state.h"

#include <QCoreApplication>
#include <QDir>

#include <cstdio>
#include <fcntl.h>
#include <grp.h>
#include <sched.h>
#include <sys/mman.h>
#include <sys/mount.h>
#include <unistd.h>

namespace veltrix
{
namespace
{

/// The environment cannot do what the test needs.
constexpr int cannot = 77;

void say(const QString &line)
{
    std::printf("%s\n", qUtf8Printable(line));
    std::fflush(stdout);
}

/// Saves one numbered state after the other until it is killed.
int saveForEver(const QString &statePath, const QString &progressPath)
{
    const int descriptor = ::open(qPrintable(progressPath), O_RDWR | O_CLOEXEC);
    void *memory =
        ::mmap(nullptr, sizeof(SaveProgress), PROT_READ | PROT_WRITE, MAP_SHARED, descriptor, 0);
    if (memory == MAP_FAILED)
        return cannot;
    auto *progress = static_cast<SaveProgress *>(memory);
    StateSaver saver(statePath, nullptr, ASOStore::usualStateFileLimit);
    const PersistedState last = saver.load();
    const Date now = SystemClock().now();
    for (std::int64_t number = last.apps.isEmpty() ? 1 : last.apps[0].trackId + 1;; ++number) {
        PersistedState next = numberedState(number);
        progress->begun = number;
        saver.save({.state = std::move(next), .now = now});
        saver.waitUntilFinished();
        progress->done = number;
    }
}

/// Measures one keyword a day, and then the next, in a state file that may hardly grow, until it is
/// killed: in a save, a move, a removal or while it finishes what the one before it has left.
int measureForEver(const QString &statePath, const QString &progressPath)
{
    constexpr qint64 limit = 12'000;
    const int descriptor = ::open(qPrintable(progressPath), O_RDWR | O_CLOEXEC);
    void *memory = ::mmap(nullptr, sizeof(MeasuringProgress), PROT_READ | PROT_WRITE, MAP_SHARED,
                          descriptor, 0);
    if (memory == MAP_FAILED)
        return cannot;
    auto *progress = static_cast<MeasuringProgress *>(memory);
    StateSaver saver(statePath, nullptr, limit);
    PersistedState state = saver.load();
    SnapshotIndex snapshots(state.snapshots);
    QObject::connect(&saver, &StateSaver::moved,
                     [&](const MovedDays &moved) { snapshots.forget(moved.all); });
    std::int64_t number = state.snapshots.empty() ? 0 : *state.snapshots.back()->position;
    if (saver.needsTidying())
        saver.tidy({.state = state, .now = numberedDate(number)});
    for (++number;; ++number) {
        StateChange change;
        change.now = numberedDate(number);
        const QUuid keyword = numberedKeyword(number);
        const QUuid before = numberedKeyword(number - 1);
        if (keyword != before) {
            snapshots.takeKeyword(before);
            change.removals.removed.push_back(before);
        }
        snapshots.store(numberedMeasurement(number));
        change.state = stateOfKeyword(keyword);
        change.state.snapshots = snapshots.inFileOrder();
        progress->begun = number;
        saver.save(std::move(change));
        saver.waitUntilFinished();
        progress->done = number;
        while (saver.progress())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
}

/// Moves what a large state file has too much, and ends.
int migrate(const QString &statePath, const QString &progressPath)
{
    constexpr qint64 limit = 12'000;
    const int descriptor = ::open(qPrintable(progressPath), O_RDWR | O_CLOEXEC);
    void *memory = ::mmap(nullptr, sizeof(MeasuringProgress), PROT_READ | PROT_WRITE, MAP_SHARED,
                          descriptor, 0);
    if (memory == MAP_FAILED)
        return cannot;
    StateSaver saver(statePath, nullptr, limit);
    PersistedState state = saver.load();
    if (state.snapshots.empty())
        return 1;
    const Date now = state.snapshots.back()->fetchedAt;
    ++static_cast<MeasuringProgress *>(memory)->begun;
    bool hasEnded = false;
    QObject::connect(&saver, &StateSaver::saved, [&] { hasEnded = !saver.progress(); });
    saver.tidy({.state = std::move(state), .now = now});
    while (!hasEnded)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    return saver.problem() ? 1 : 0;
}

std::unique_ptr<ASOStore> openStore(const QString &statePath)
{
    ASOStore::Arguments arguments;
    arguments.persistenceURL = statePath;
    arguments.clock = std::make_shared<SystemClock>();
    return std::make_unique<ASOStore>(std::move(arguments));
}

/// The first app, which is added when there is none.
QUuid anApp(ASOStore &store)
{
    if (!store.apps().isEmpty())
        return store.apps().constFirst().id;
    ITunesAppResult result;
    result.trackId = 1;
    return store.addApp(result, QStringLiteral("US")).id;
}

void describe(const ASOStore &store)
{
    const auto problem = store.persistenceProblem();
    say(QStringLiteral("problem: %1").arg(problem ? problem->text : QString()));
    say(QStringLiteral("keywords in memory: %1").arg(store.trackedKeywords().size()));
}

/// Becomes a user who may not write the folder; false when that is not possible.
bool giveUpRights()
{
    constexpr uid_t nobody = 65534;
    return ::geteuid() != 0 ||
           (::setgroups(0, nullptr) == 0 && ::setresgid(nobody, nobody, nobody) == 0 &&
            ::setresuid(nobody, nobody, nobody) == 0);
}

/// Opens and changes a store as such a user.
int changeWithoutRights(const QString &statePath)
{
    if (!giveUpRights())
        return cannot;
    const auto store = openStore(statePath);
    describe(*store);
    try {
        store->addTrackedKeyword(anApp(*store), QStringLiteral("moon"), QStringLiteral("US"));
        store->waitUntilSaved();
    } catch (const StoreError &error) {
        say(QStringLiteral("refused: %1").arg(error.description()));
    }
    describe(*store);
    return 0;
}

/// Reads all that was measured of the first keyword as such a user.
int readWithoutRights(const QString &statePath)
{
    if (!giveUpRights())
        return cannot;
    StateSaver saver(statePath, nullptr, ASOStore::usualStateFileLimit);
    const PersistedState state = saver.load();
    const auto ask = [](StateSaver *asked, const PersistedState *known) -> Task<void> {
        QSet<std::int64_t> days;
        for (const SharedSnapshot &snapshot : known->snapshots)
            days.insert(utcDay(snapshot->fetchedAt));
        const QUuid keyword = known->trackedKeywords.constFirst().id;
        try {
            for (const auto &one : co_await asked->observations(keyword, {}))
                days.insert(utcDay(one.date));
            say(QStringLiteral("days: %1").arg(days.size()));
        } catch (const Error &error) {
            say(error.description());
        }
        QCoreApplication::quit();
    };
    const Task<void> task = ask(&saver, &state);
    return QCoreApplication::exec();
}

/// Gives this process a file system of a quarter megabyte that goes away with it.
bool mountSmallDisk(const QString &folder)
{
    if (::unshare(CLONE_NEWNS) != 0 && ::unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0)
        return false;
    return ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
           ::mount("none", qPrintable(folder), "tmpfs", 0, "size=256k") == 0;
}

/// Fills a small disk with keywords until a save fails.
int fillDisk(const QString &folder)
{
    if (!mountSmallDisk(folder))
        return cannot;
    const QString statePath = folder + QStringLiteral("/state.json");
    const auto store = openStore(statePath);
    const QUuid app = anApp(*store);
    QByteArray before;
    for (int i = 0; i < 1000 && !store->persistenceProblem(); ++i) {
        store->waitUntilSaved();
        before = readWholeFile(statePath);
        store->addTrackedKeyword(app, QStringLiteral("%1").arg(i, 100), QStringLiteral("US"));
        store->waitUntilSaved();
    }
    describe(*store);
    say(QStringLiteral("file as before: %1").arg(readWholeFile(statePath) == before));
    say(QStringLiteral("keywords in the file: %1")
            .arg(fromJson<PersistedState>(before).trackedKeywords.size()));
    say(QStringLiteral("files: %1")
            .arg(QDir(folder).entryList(QDir::Files | QDir::Hidden).join(u' ')));
    return 0;
}

/// The distinct measurements of the numbered keyword 0, wherever they are.
qsizetype measurementsIn(const QString &folder)
{
    QSet<QUuid> ids;
    const auto state =
        fromJson<PersistedState>(readWholeFile(folder + QStringLiteral("/state.json")));
    for (const SharedSnapshot &snapshot : state.snapshots)
        ids.insert(snapshot->id);
    if (auto history = HistoryDatabase::open(folder + QStringLiteral("/history.sqlite"))) {
        for (const SharedSnapshot &snapshot : history->records(numberedKeyword(0)))
            ids.insert(snapshot->id);
    }
    return ids.size();
}

/// Measures on a small disk until no day can be moved any more, and goes on when there is room.
int moveOnFullDisk(const QString &folder)
{
    if (!mountSmallDisk(folder))
        return cannot;
    constexpr qint64 limit = 24'000;
    const QString filler = folder + QStringLiteral("/filler");
    writeFileAtomically(filler, QByteArray(120'000, 'x'));
    StateSaver saver(folder + QStringLiteral("/state.json"), nullptr, limit);
    saver.load();
    SnapshotIndex snapshots;
    QObject::connect(&saver, &StateSaver::moved,
                     [&](const MovedDays &moved) { snapshots.forget(moved.all); });
    std::int64_t number = 0;
    const auto measure = [&] {
        auto one = std::make_shared<KeywordSnapshot>(*numberedMeasurement(number));
        one->trackedKeywordId = numberedKeyword(0);
        snapshots.store(std::move(one));
        StateChange change{stateOfKeyword(numberedKeyword(0)), numberedDate(number)};
        change.state.snapshots = snapshots.inFileOrder();
        ++number;
        saver.save(std::move(change));
        saver.waitUntilFinished();
        while (saver.progress())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    };
    // A state file of twice its length and its new version have room, and a history has not.
    while (!saver.problem() && number < 2'000)
        measure();
    say(saver.problem() ? saver.problem()->text : QStringLiteral("no problem"));
    for (int i = 0; i < 10; ++i)
        measure();
    say(QStringLiteral("all there: %1").arg(measurementsIn(folder) == number));
    QFile::remove(filler);
    for (int i = 0; i < 200; ++i)
        measure();
    say(QStringLiteral("with room, problem: %1, all there: %2, within the limit: %3")
            .arg(saver.problem() ? saver.problem()->text : QString())
            .arg(measurementsIn(folder) == number)
            .arg(QFileInfo(folder + QStringLiteral("/state.json")).size() <= limit));
    say(QStringLiteral("files: %1")
            .arg(QDir(folder).entryList(QDir::Files | QDir::Hidden).join(u' ')));
    return 0;
}

/// Holds the folder and says when it is asked to show its window.
int holdFolder(const QString &folder)
{
    DataFolderLock lock(folder);
    QObject::connect(&lock, &DataFolderLock::raiseRequested, [] { say(QStringLiteral("raise")); });
    say(lock.acquire() == DataFolderLock::Outcome::Acquired ? QStringLiteral("acquired")
                                                            : QStringLiteral("refused"));
    return QCoreApplication::exec();
}

int run(const QStringList &arguments)
{
    const QString mode = arguments.value(1);
    if (mode == u"save-for-ever")
        return saveForEver(arguments.value(2), arguments.value(3));
    if (mode == u"measure-for-ever")
        return measureForEver(arguments.value(2), arguments.value(3));
    if (mode == u"migrate")
        return migrate(arguments.value(2), arguments.value(3));
    if (mode == u"change-without-rights")
        return changeWithoutRights(arguments.value(2));
    if (mode == u"read-without-rights")
        return readWithoutRights(arguments.value(2));
    if (mode == u"move-on-full-disk")
        return moveOnFullDisk(arguments.value(2));
    if (mode == u"fill-disk")
        return fillDisk(arguments.value(2));
    if (mode == u"hold-folder")
        return holdFolder(arguments.value(2));
    return 2;
}

} // namespace
} // namespace veltrix

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    return veltrix::run(QCoreApplication::arguments());
}
