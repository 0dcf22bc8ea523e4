// SPDX-License-Identifier: GPL-3.0-or-later
// A store with a million measurements in its history beside one with none: start, change, memory, a
// timeline of ten years. The state files of both are the same.
#include "effects/atomic_file.h"
#include "effects/background_file.h"
#include "effects/system_clock.h"
#include "generated_state.h"
#include "json/json_writer.h"
#include "memory_use.h"
#include "own_process.h"
#include "ratio.h"
#include "store/aso_store.h"
#include "store/history_database.h"
#include "ui/dashboard/whole_history_export.h"
#include "ui/measuring/measuring_status.h"

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
/// From 1 on.
constexpr int chartedKeyword = 8;
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

/// Days before those of the state file, for some of the keywords, numbered from 1. The records of a
/// day are all the same one, and the disk is not waited for: a million are there in some seconds.
void fillHistory(const QString &path, const PersistedState &state, int firstKeyword,
                 int lastKeyword, int days = daysInHistory)
{
    HistoryDatabase::openOrCreate(path);
    SqliteDatabase database(path);
    database.execute("PRAGMA synchronous = OFF; BEGIN");
    SqliteStatement keyword = database.prepare("INSERT INTO keyword VALUES (?1, ?2)");
    SqliteStatement observation =
        database.prepare("INSERT INTO observation VALUES (?1, ?2, ?3, ?4)");
    SqliteStatement detail = database.prepare("INSERT INTO detail VALUES (?1, ?2, ?3, ?4)");
    const double first =
        referenceSeconds(state.snapshots.front()->fetchedAt) - 40'000 - days * secondsPerDay;
    std::vector<QByteArray> records;
    HistoryRecords packing;
    for (int day = 0; day < days; ++day) {
        KeywordSnapshot record = *state.snapshots.front();
        record.fetchedAt = dateFromReferenceSeconds(first + day * secondsPerDay);
        records.push_back(packing.pack(record));
    }
    for (int number = firstKeyword; number <= lastKeyword; ++number) {
        keyword.bind(1, std::int64_t(number));
        keyword.bind(2, state.trackedKeywords[number - 1].id.toRfc4122());
        keyword.run();
        for (int day = 0; day < days; ++day) {
            const QByteArray id =
                QUuid(uint(number), ushort(day), 0, 0, 0, 0, 0, 0, 0, 0, 0).toRfc4122();
            for (SqliteStatement *statement : {&observation, &detail}) {
                statement->bind(1, std::int64_t(number));
                statement->bind(2, first + day * secondsPerDay);
                statement->bind(3, id);
            }
            observation.bind(4, std::int64_t(day % 100 + 1));
            observation.run();
            detail.bind(4, records[size_t(day)]);
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

/// Turns the event loop, and sees how long one turn of it takes.
class PauseWatch
{
public:
    void turn()
    {
        QElapsedTimer timer;
        timer.start();
        QCoreApplication::processEvents(QEventLoop::AllEvents);
        m_longest = std::max(m_longest, double(timer.nsecsElapsed()) / 1e9);
        QThread::msleep(1);
    }
    /// In seconds.
    [[nodiscard]] double longest() const { return m_longest; }

private:
    double m_longest = 0;
};

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
double timelineSeconds(ASOStore &store, int expectedDays, TimeOf which)
{
    const double start = clockSeconds(which);
    bool isThere = false;
    const auto ask = [](ASOStore *asked, bool *done, int expected) -> Task<void> {
        const QUuid keyword = asked->trackedKeywords()[chartedKeyword - 1].id;
        const RankingTimeline timeline = co_await asked->rankingTimeline(keyword, {});
        require(int(timeline.observations.size()) == expected, "all days");
        *done = true;
    };
    const Task<void> task = ask(&store, &isThere, expectedDays);
    while (!isThere)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    return clockSeconds(which) - start;
}

/// Moves what a file that is far too large has too much.
void migrate(const QString &folder)
{
    constexpr int days = 365;
    const PersistedState state = generatedState(keywords, days);
    const QByteArray text = toJson(state);
    writeFileAtomically(statePathIn(folder), text);
    const auto store = openStore(folder);
    PauseWatch watch;
    const double start = clockSeconds(TimeOf::Wall);
    while (QFile(statePathIn(folder)).size() > ASOStore::usualStateFileLimit)
        watch.turn();
    const double seconds =
        clockSeconds(TimeOf::Wall) - start - ASOStore::historyTidyingDelay.count();
    while (store->historyMove())
        watch.turn();
    require(store->snapshots().size() < state.snapshots.size() / 2, "most have moved");
    reportDetail("moving out of a file", spreadOf({double(text.size()) / 1e6 / seconds}),
                 "MB a second");
    report("longest pause of the event loop meanwhile, ms",
           spreadOf({watch.longest() * milliseconds}), atMost(16));
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
           quotients([&] { return start(with)[1]; }, [&] { return start(without)[1]; }, 3,
                     Unit::Bytes),
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
           quotients([&] { return change(with)[2]; }, [&] { return change(without)[2]; }, 3,
                     Unit::Bytes),
           atMost(1.1));
    reportDetail("bytes written for a change", spreadOf({figures[2] / 1e6}), "MB");
    reportDetail("time until it is on the disk", spreadOf({figures[1] * milliseconds}),
                 "ms of the wall");
    report("time until it is on the disk, times one without",
           quotients([&] { return change(with)[1]; }, [&] { return change(without)[1]; }, 9),
           atMost(1.1));
}

/// The same ten years of one keyword, with and without those of the others.
void compareTimelines(const QString &with, const QString &alone)
{
    constexpr int days = daysInHistory + daysInFile;
    const auto store = openStore(with);
    const auto lonely = openStore(alone);
    std::vector<double> times;
    for (int i = 0; i < 31; ++i)
        times.push_back(timelineSeconds(*store, days, TimeOf::Wall) * milliseconds);
    report("a timeline of 3,662 days, ms of the wall", spreadOf(times), atMost(16));
    report("its processor time, times one in a history of that keyword alone",
           quotients([&] { return timelineSeconds(*store, days, TimeOf::Processor); },
                     [&] { return timelineSeconds(*lonely, days, TimeOf::Processor); }, 31),
           atMost(1.1));
}

/// Services that answer at once, as far as the main thread is concerned.
class QuickServices final : public ITunesClientProtocol, public PopularityProviding
{
public:
    explicit QuickServices(std::shared_ptr<Clock> clock) : m_clock(std::move(clock))
    {
        for (int i = 0; i < 100; ++i) {
            ITunesAppResult app;
            app.trackId = i + 1;
            app.trackName = QStringLiteral("Photo Editor %1").arg(i);
            app.sellerName = QStringLiteral("Brass Lens Studio %1").arg(i % 60);
            app.artworkUrl100 = QStringLiteral("https://artwork.example/%1.png").arg(i);
            app.userRatingCount = 100 * i;
            app.averageUserRating = 4.5;
            app.releaseDate = QStringLiteral("2020-05-01T00:00:00Z");
            m_results.append(app);
        }
    }
    Task<QList<ITunesAppResult>> search(QString, QString, std::int64_t,
                                        std::stop_token stop) override
    {
        const QList<ITunesAppResult> results = m_results;
        co_await m_clock->sleep(Seconds(0.05), stop);
        co_return results;
    }
    Task<std::optional<ITunesAppResult>> lookup(std::int64_t, QString, std::stop_token) override
    {
        co_return std::nullopt;
    }
    [[nodiscard]] QString modelVersion() const override { return QStringLiteral("benchmark"); }
    Task<PopularityAssessment> assess(std::shared_ptr<const KeywordSurvey>, QString,
                                      std::stop_token) override
    {
        co_return PopularityAssessment{};
    }

private:
    std::shared_ptr<Clock> m_clock;
    QList<ITunesAppResult> m_results;
};

/// In a process of its own: measures 20 keywords, and prints the longest pause of the event loop.
void measureTwenty(const QString &folder)
{
    ASOStore::Arguments arguments;
    arguments.persistenceURL = statePathIn(folder);
    arguments.clock = std::make_shared<SystemClock>();
    const auto services = std::make_shared<QuickServices>(arguments.clock);
    arguments.iTunesClient = services;
    arguments.discoveryClient = services;
    arguments.pipeline = {services, services, arguments.clock};
    ASOStore store(std::move(arguments));
    store.queueKeywordRefreshes(store.trackedKeywords().mid(0, 20));
    PauseWatch watch;
    while (!store.refreshProgress().isIdle())
        watch.turn();
    store.waitUntilSaved();
    require(!store.persistenceProblem() && !store.historyRefreshError(), "twenty are measured");
    std::printf("%.6f\n", watch.longest());
}

/// Saves where it is told.
class OneFile final : public FileExchange
{
public:
    explicit OneFile(QString path) : m_path(std::move(path)) {}
    void choosePlace(QWidget *, const Request &, Chosen chosen) override
    {
        chosen(m_path, std::make_shared<BackgroundFile>(m_path, m_files));
    }
    void open(QWidget *, const Request &, std::function<void(const OpenedFile &)>) override {}
    OpenedFile read(const QString &) override { return {}; }

private:
    QString m_path;
    std::shared_ptr<FileThread> m_files = std::make_shared<FileThread>();
};

/// In a process of its own: exports the whole history, and prints the most memory that it takes,
/// the longest pause of the event loop, the seconds and the measurements.
void exportAndMeasure(const QString &folder)
{
    const auto store = openStore(folder);
    const QString path = folder + QStringLiteral("/export.csv");
    OneFile files(path);
    MeasuringStatus status(store->refreshes());
    WholeHistoryExport whole(*store, files, status);
    // What the first page takes is taken once.
    resetPeakResident();
    const double before = residentBytes();
    const double start = clockSeconds(TimeOf::Wall);
    whole.start(nullptr, store->trackedKeywords(), QString());
    PauseWatch watch;
    while (status.message().isEmpty())
        watch.turn();
    const double seconds = clockSeconds(TimeOf::Wall) - start;
    require(status.tone() == StatusBar::Tone::Normal, "the export succeeds");
    QFile file(path);
    require(file.open(QIODevice::ReadOnly), "the file is there");
    double lines = 0;
    while (!file.atEnd()) {
        file.readLine();
        ++lines;
    }
    QFile::remove(path);
    std::printf("%.0f %.6f %.3f %.0f\n", peakResidentBytes() - before, watch.longest(), seconds,
                lines - 1);
}

void compareExports(const QString &with, const QString &small)
{
    const auto exported = [](const QString &folder) {
        return numbersFromSelf({QStringLiteral("export-and-measure"), folder}, 4);
    };
    const auto large = exported(with);
    const auto few = exported(small);
    require(large[3] == double(keywords) * (daysInHistory + daysInFile), "every measurement");
    report("most memory of an export of a million, times one of 10,000",
           spreadOf({large[0] / few[0]}), atMost(1.5));
    reportDetail("most memory of the export of a million", spreadOf({large[0] / 1e6}), "MB");
    reportDetail("its time", spreadOf({large[2]}), "seconds of the wall");
    report("longest pause of the event loop meanwhile, ms", spreadOf({large[1] * milliseconds}),
           atMost(16));
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
    else if (mode == "measure-twenty")
        measureTwenty(QFile::decodeName(argv[2]));
    else if (mode == "export-and-measure")
        exportAndMeasure(QFile::decodeName(argv[2]));
    if (!mode.empty())
        return 0;
    const QTemporaryDir folder;
    const QString with = folder.filePath(QStringLiteral("with"));
    const QString without = folder.filePath(QStringLiteral("without"));
    const QString large = folder.filePath(QStringLiteral("large"));
    const QString alone = folder.filePath(QStringLiteral("alone"));
    const QString small = folder.filePath(QStringLiteral("small"));
    const PersistedState state = generatedState(keywords, daysInFile);
    for (const QString &path : {with, without, large, alone, small})
        QDir().mkpath(path);
    for (const QString &path : {with, without, alone, small})
        writeFileAtomically(statePathIn(path), toJson(state));
    const QString history = QStringLiteral("/history.sqlite");
    fillHistory(with + history, state, 1, keywords);
    fillHistory(alone + history, state, chartedKeyword, chartedKeyword);
    // With those of the file, 10,000; of two keywords, so that it has whole pages as well.
    fillHistory(small + history, state, 1, 2, 3'200);
    compareTimelines(with, alone);
    compareExports(with, small);
    compare(with, without);
    report(
        "longest pause of the event loop while 20 keywords are measured, ms",
        spreadOf({numbersFromSelf({QStringLiteral("measure-twenty"), with}, 1)[0] * milliseconds}),
        atMost(16));
    migrate(large);
    return 0;
}
