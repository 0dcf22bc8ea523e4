// SPDX-License-Identifier: GPL-3.0-or-later
// The state at scale: encoding and decoding, a year of 200 keywords loaded and saved, the rows of
// 10,000, a long timeline. Every figure stands beside its reference in the same run.
#include "effects/atomic_file.h"
#include "effects/system_clock.h"
#include "generated_state.h"
#include "json/json_writer.h"
#include "memory_use.h"
#include "own_process.h"
#include "ratio.h"
#include "store/aso_store.h"
#include "store/state_file.h"

#include <QCoreApplication>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

#include <algorithm>
#include <fcntl.h>
#include <limits>
#include <string_view>
#include <unistd.h>

namespace
{

using namespace veltrix;

constexpr int yearKeywords = 200;
constexpr int yearDays = 365;
constexpr double megabyte = 1e6;

template <class T>
void keep(const T &value)
{
    asm volatile("" : : "g"(&value) : "memory");
}

std::unique_ptr<ASOStore> openStore(const QString &path)
{
    ASOStore::Arguments arguments;
    arguments.persistenceURL = path;
    arguments.clock = std::make_shared<SystemClock>();
    // All of a year in one file: what is measured here is the file.
    arguments.stateFileLimit = std::numeric_limits<qint64>::max();
    return std::make_unique<ASOStore>(std::move(arguments));
}

/// Encoding and decoding of 5,000 snapshots, as a save and a start do it.
void codec(const QString &path)
{
    constexpr int rounds = 17;
    const PersistedState state = generatedState(50, 100);
    const QByteArray text = toJson(state);
    writeFileAtomically(path, text);
    QJsonDocument document = QJsonDocument::fromJson(text);
    require(state.snapshots.size() == 5'000, "5,000 snapshots");
    require(toJson(StateFile(path).load()) == text, "a state comes back as it was");
    require(numbersFromSelf({QStringLiteral("decode-and-measure"), path}, size_t(2))[1] == 5'000,
            "a process of its own decodes all");
    require(QJsonDocument::fromJson(document.toJson(QJsonDocument::Compact)) == document,
            "the reference comes back as it was");

    QByteArray written;
    const auto encode = [&] {
        written = toJson(state, text.size() + text.size() / 64);
    };
    const double size = double(text.size()) / megabyte;
    report("encoding 5,000 snapshots, times as fast as QJsonDocument",
           timesAsFast(
               encode, [&] { written = document.toJson(QJsonDocument::Compact); }, rounds,
               [&] { written = QByteArray(); }),
           atLeast(8));

    const QString decodeAlone = QStringLiteral("decode-and-measure");
    const QString parseAlone = QStringLiteral("parse-and-measure");
    report("decoding their file, times as fast as QJsonDocument's parse of the bytes",
           timesBetter(
               [&] {
                   return numbersFromSelf({decodeAlone, path}, size_t(2))[0];
               },
               [&] {
                   return numbersFromSelf({parseAlone, path}, size_t(3))[0];
               },
               rounds),
           atLeast(3));
    PersistedState read;
    const auto decode = [&] {
        read = StateFile(path).load();
    };
    reportDetail("the same again and again in one process",
                 timesAsFast(
                     decode, [&] { document = QJsonDocument::fromJson(text); }, rounds,
                     [&] {
                         read = PersistedState();
                         document = QJsonDocument();
                     }));
    reportDetail("size of their text", spreadOf({size}), "MB");
    reportDetail("time to encode them", inMilliseconds(seconds(encode, rounds)), "ms of processor");
    reportDetail("time to decode them", inMilliseconds(seconds(decode, rounds)), "ms of processor");
}

/// In a process of its own: decodes a file and prints the processor's seconds and the number of
/// snapshots.
void decodeAndMeasure(const QString &path)
{
    PersistedState state;
    const double processor = secondsOf([&] { state = StateFile(path).load(); });
    std::printf("%.6f %zu\n", processor, state.snapshots.size());
}

/// In a process of its own: opens the store on a file and prints the processor's and the wall's
/// seconds, and by how much resident and peak memory have grown.
void openAndMeasure(const QString &path)
{
    resetPeakResident();
    const double before = residentBytes();
    const double wall = clockSeconds(TimeOf::Wall);
    std::unique_ptr<ASOStore> store;
    const double processor = secondsOf([&] { store = openStore(path); });
    const double waited = clockSeconds(TimeOf::Wall) - wall;
    const double resident = residentBytes() - before;
    const double peak = peakResidentBytes() - before;
    require(store->snapshots().size() == size_t(yearKeywords) * yearDays, "73,000 snapshots");
    std::printf("%.6f %.6f %.0f %.0f\n", processor, waited, resident, peak);
}

/// The same for the reference: the parse of the bytes, which are in memory already.
void parseAndMeasure(const QString &path)
{
    const QByteArray text = readWholeFile(path);
    const double wall = clockSeconds(TimeOf::Wall);
    QJsonDocument document;
    const double processor = secondsOf([&] { document = QJsonDocument::fromJson(text); });
    const double waited = clockSeconds(TimeOf::Wall) - wall;
    std::printf("%.6f %.6f %lld\n", processor, waited,
                static_cast<long long>(document.object().value(u"snapshots").toArray().size()));
}

void load(const QString &path)
{
    const auto fileSize = double(QFile(path).size());
    require(toJson(StateFile(path).load()) == readWholeFile(path), "the loaded state is the file");
    std::vector<double> wall;
    std::vector<double> resident;
    std::vector<double> peak;
    std::vector<double> own;
    double loadWall = 0;
    double parseWall = 0;
    const Ratio ratio = timesBetter(
        [&] {
            const auto figures =
                numbersFromSelf({QStringLiteral("open-and-measure"), path}, size_t(4));
            loadWall = figures[1];
            own.push_back(figures[0]);
            resident.push_back(figures[2] / fileSize);
            peak.push_back(figures[3] / fileSize);
            if (parseWall > 0)
                wall.push_back(parseWall / loadWall);
            return figures[0];
        },
        [&] {
            const auto figures =
                numbersFromSelf({QStringLiteral("parse-and-measure"), path}, size_t(3));
            require(figures[2] == yearKeywords * yearDays, "the reference sees 73,000 snapshots");
            parseWall = figures[1];
            return figures[0];
        },
        5);
    report("loading 73,000 snapshots, times as fast as QJsonDocument's parse alone", ratio,
           atLeast(3));
    reportDetail("the same by the wall's clock", spreadOf(wall), "times");
    reportDetail("size of the file", spreadOf({fileSize / megabyte}), "MB");
    reportDetail("time from file to store", spreadOf(own), "s of processor");
    report("memory that stays after loading, share of the file", spreadOf(resident), atMost(0.8));
    report("peak of memory while loading, share of the file", spreadOf(peak), atMost(2));
}

/// The least that a safe save can do: write, flush, rename.
void writePlainly(const QByteArray &path, const QByteArray &bytes)
{
    const QByteArray temporary = path + ".new";
    const int descriptor = ::open(temporary.constData(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    qsizetype written = 0;
    while (written < bytes.size()) {
        const ssize_t count =
            ::write(descriptor, bytes.constData() + written, size_t(bytes.size() - written));
        require(count > 0, "the plain write succeeds");
        written += count;
    }
    require(::fsync(descriptor) == 0 && ::close(descriptor) == 0 &&
                ::rename(temporary.constData(), path.constData()) == 0,
            "the plain flush and rename succeed");
}

/// A change of one keyword with its save, beside a plain write, flush and rename of the same bytes.
void save(const QString &path)
{
    const auto store = openStore(path);
    const QUuid app = store->apps().constFirst().id;
    int changes = 0;
    const auto changeOne = [&] {
        store->addTrackedKeyword(app, QStringLiteral("changed %1").arg(++changes),
                                 QStringLiteral("US"));
        store->waitUntilSaved();
    };
    changeOne();
    require(!store->persistenceProblem(), "the save succeeds");
    const QByteArray bytes = readWholeFile(path);
    require(bytes == toJson(PersistedState{store->apps(), store->trackedKeywords(),
                                           store->snapshots(), store->competitors()}),
            "the file is the state");

    const QByteArray plainPath = QFile::encodeName(path) + ".plain";
    const auto writePlain = [&] {
        writePlainly(plainPath, bytes);
    };
    writePlain();
    const Ratio ratio = quotients([&] { return secondsOf(changeOne, TimeOf::Wall); },
                                  [&] { return secondsOf(writePlain, TimeOf::Wall); }, 9);
    require(!store->persistenceProblem(), "every save succeeds");
    report("saving after one changed keyword, times a plain write, flush and rename", ratio,
           atMost(2));
    reportDetail("the plain write, flush and rename", seconds(writePlain, 5, TimeOf::Wall),
                 "s of the wall");
    reportDetail("processor time of a save", seconds(changeOne, 5), "s of processor");
    resetPeakResident();
    const double before = residentBytes();
    changeOne();
    reportDetail("peak of memory in a save", spreadOf({(peakResidentBytes() - before) / megabyte}),
                 "MB");
    QFile::remove(QFile::decodeName(plainPath));
}

/// All rows of 10,000 keywords with a short and with a long history.
void rows(const QString &folder)
{
    constexpr int longHistory = 32;
    const auto storeOver = [&](int days) {
        const QString path = folder + QStringLiteral("/rows-%1.json").arg(days);
        writeFileAtomically(path, toJson(generatedBareState(10'000, days)));
        auto store = openStore(path);
        require(store->snapshots().size() == size_t(10'000) * size_t(days), "all snapshots");
        QFile::remove(path);
        return store;
    };
    const auto shortStore = storeOver(1);
    const auto longStore = storeOver(longHistory);
    const auto allRows = [](const ASOStore &store) {
        int measured = 0;
        for (const TrackedKeyword &keyword : store.trackedKeywords())
            measured += store.dashboardRow(keyword).awaitingMetrics ? 0 : 1;
        require(measured == 10'000, "every row has its metrics");
    };
    const auto often = [&](const ASOStore &store) {
        for (int i = 0; i < 20; ++i)
            allRows(store);
    };
    report("rows of 10,000 keywords, 32 snapshots a keyword beside one",
           timesAsLong([&] { often(*longStore); }, [&] { often(*shortStore); }, 41), atMost(2));
    reportDetail("all rows", inMilliseconds(seconds([&] { allRows(*shortStore); }, 31)),
                 "ms of processor");
}

/// A timeline over ten years of days, beside putting its observations in order.
void timeline()
{
    constexpr int days = 3'650;
    std::vector<RankingTimeline::Observation> observations;
    for (int day = 0; day < days; ++day)
        observations.push_back(
            {QUuid::createUuid(), startOfUtcDay(day) + Seconds(40'000), day % 90 + 1});
    const Date today = startOfUtcDay(days - 1) + Seconds(50'000);
    const RankingTimeline made(observations, Date());
    require(made.observations.size() == size_t(days), "one observation a day");
    require(made.days(14, today).size() == 14, "fourteen days");
    require(made.latestMovement() == RankMovement::declined(1), "the last movement");
    report("timeline of 3,650 days, times copying and sorting its observations",
           timesAsLong([&] { keep(RankingTimeline(observations, Date()).days(14, today)); },
                       [&] {
                           auto sorted = observations;
                           std::ranges::stable_sort(sorted, {},
                                                    &RankingTimeline::Observation::date);
                           keep(sorted);
                       },
                       301),
           atMost(2));
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const std::string_view only = argc > 1 ? argv[1] : "";
    if (argc > 2) {
        const QString path = QFile::decodeName(argv[2]);
        if (only == "open-and-measure")
            openAndMeasure(path);
        else if (only == "decode-and-measure")
            decodeAndMeasure(path);
        else if (only == "parse-and-measure")
            parseAndMeasure(path);
        else
            require(false, "a known measurement");
        return 0;
    }
    const QTemporaryDir folder;
    const auto wanted = [&](std::string_view name) {
        return only.empty() || only == name;
    };
    if (wanted("codec"))
        codec(folder.filePath(QStringLiteral("small.json")));
    if (wanted("load") || wanted("save")) {
        const QString path = folder.filePath(QStringLiteral("state.json"));
        writeFileAtomically(path, toJson(generatedState(yearKeywords, yearDays)));
        if (wanted("load"))
            load(path);
        if (wanted("save"))
            save(path);
    }
    if (wanted("rows"))
        rows(folder.path());
    if (wanted("timeline"))
        timeline();
    return 0;
}
