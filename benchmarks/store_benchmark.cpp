// SPDX-License-Identifier: GPL-3.0-or-later
// The state at scale: reading and saving a year of 200 keywords, the rows of 10,000, a long
// timeline. Every figure stands beside its reference in the same run.
#include "effects/atomic_file.h"
#include "effects/system_clock.h"
#include "generated_state.h"
#include "memory_use.h"
#include "model/json_writer.h"
#include "ratio.h"
#include "store/aso_store.h"
#include "store/state_file.h"
#include "store/state_reader.h"

#include <QCoreApplication>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <string_view>
#include <unistd.h>

namespace
{

using namespace veltrix;

constexpr int yearKeywords = 200;
constexpr int yearDays = 365;
constexpr double megabyte = 1e6;

[[noreturn]] void fail(const char *what)
{
    std::fprintf(stderr, "Wrong result: %s\n", what);
    std::exit(1);
}

void require(bool right, const char *what)
{
    if (!right)
        fail(what);
}

template <class T>
void keep(const T &value)
{
    asm volatile("" : : "g"(&value) : "memory");
}

/// Encoding and decoding of 5,000 snapshots, as a save and a start do it.
void codec(const QString &path)
{
    const PersistedState state = generatedState(50, 100);
    const QByteArray text = toJson(state);
    writeFileAtomically(path, text);
    QJsonDocument document = QJsonDocument::fromJson(text);
    require(state.snapshots.size() == 5'000, "5,000 snapshots");
    require(toJson(readState(path)) == text, "a state comes back as it was");
    require(QJsonDocument::fromJson(document.toJson(QJsonDocument::Compact)) == document,
            "the reference comes back as it was");

    const double size = double(text.size()) / megabyte;
    QByteArray written;
    const auto forgetText = [&] {
        written = QByteArray();
    };
    const auto encode = [&] {
        written = toJson(state, text.size() + text.size() / 64);
    };
    const double encoding = medianSpeedup(
        [&] { written = document.toJson(QJsonDocument::Compact); }, encode, 15, forgetText);
    std::printf("5,000 snapshots, %.1f MB of JSON\n", size);
    std::printf("  encoding: %5.2f times as fast as QJsonDocument (goal: 8), %.0f MB/s\n", encoding,
                size / medianSeconds(encode, 15, forgetText));

    PersistedState read;
    const auto forget = [&] {
        read = PersistedState();
        document = QJsonDocument();
    };
    const auto decode = [&] {
        read = readState(path);
    };
    const double decoding =
        medianSpeedup([&] { document = QJsonDocument::fromJson(text); }, decode, 15, forget);
    std::printf(
        "  decoding: %5.2f times as fast as QJsonDocument (goal: 3), %.0f MB/s, reading the "
        "file included\n",
        decoding, size / medianSeconds(decode, 15, forget));
}

/// Loading a year into records, beside the parse alone of the same bytes.
void load(const QString &path)
{
    const auto fileSize = double(QFile(path).size());
    resetPeakResident();
    const double before = residentBytes();
    StateFile file(path);
    auto state = std::make_unique<PersistedState>(file.load());
    const double resident = residentBytes() - before;
    const double peak = peakResidentBytes() - before;
    require(state->snapshots.size() == size_t(yearKeywords) * yearDays, "73,000 snapshots");
    require(toJson(*state) == readWholeFile(path), "the loaded state is the file");
    state.reset();

    const QByteArray text = readWholeFile(path);
    require(QJsonDocument::fromJson(text).object().value(u"snapshots").toArray().size() ==
                yearKeywords * yearDays,
            "the reference sees 73,000 snapshots");
    const auto loadOnce = [&] {
        keep(StateFile(path).load());
    };
    const double ratio = medianSpeedup([&] { keep(QJsonDocument::fromJson(text)); }, loadOnce, 5);
    const double seconds = medianSeconds(loadOnce, 5);
    std::printf("Loading %d snapshots, %.1f MB\n", yearKeywords * yearDays, fileSize / megabyte);
    std::printf("  time: %.3f s, %.2f times as fast as QJsonDocument's parse alone (goal: 3)\n",
                seconds, ratio);
    std::printf("  resident after load: %.2f of the file (goal: at most 0.8)\n",
                resident / fileSize);
    std::printf("  peak during load: %.2f of the file (goal: at most 2)\n", peak / fileSize);
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

/// A save after one new snapshot, beside a plain write, flush and rename of the same bytes.
void save(const QString &path)
{
    StateFile file(path);
    PersistedState state = file.load();
    const Date now = SystemClock().now();
    int keyword = 0;
    const auto addOne = [&] {
        state.snapshots.push_back(nextMeasurement(state, keyword++ % yearKeywords));
    };
    addOne();
    file.save(state, now);
    require(!file.problem(), "the save succeeds");
    const QByteArray bytes = readWholeFile(path);
    require(bytes == toJson(state), "the file is the state");

    const QByteArray plainPath = path.toUtf8() + ".plain";
    const auto writePlain = [&] {
        writePlainly(plainPath, bytes);
    };
    writePlain();
    const auto saveOne = [&] {
        file.save(state, now);
    };
    const double plain = medianSeconds(writePlain, 9);
    const double slowdown = medianSpeedup(saveOne, writePlain, 9, addOne);
    require(!file.problem(), "every save succeeds");
    resetPeakResident();
    const double before = residentBytes();
    saveOne();
    std::printf("Saving after one new snapshot, %.1f MB\n", double(bytes.size()) / megabyte);
    std::printf("  plain write, flush and rename: %.3f s; the save takes %.2f times as long (goal: "
                "at most 2)\n",
                plain, slowdown);
    std::printf("  peak memory of a save: %.1f MB\n", (peakResidentBytes() - before) / megabyte);
    QFile::remove(QString::fromUtf8(plainPath));
}

std::unique_ptr<ASOStore> openStore(const QString &path)
{
    ASOStore::Arguments arguments;
    arguments.persistenceURL = path;
    arguments.clock = std::make_shared<SystemClock>();
    return std::make_unique<ASOStore>(std::move(arguments));
}

/// All rows of 10,000 keywords with a short and a long history.
void rows(const QString &folder)
{
    std::printf("Rows of 10,000 keywords\n");
    double shortHistory = 0;
    for (const int days : {1, 4, 32}) {
        const QString path = folder + QStringLiteral("/rows.json");
        writeFileAtomically(path, toJson(generatedBareState(10'000, days)));
        const auto store = openStore(path);
        require(store->snapshots().size() == size_t(10'000) * size_t(days), "all snapshots");
        int measured = 0;
        const auto allRows = [&] {
            measured = 0;
            for (const TrackedKeyword &keyword : store->trackedKeywords())
                measured += store->dashboardRow(keyword).awaitingMetrics ? 0 : 1;
        };
        allRows();
        require(measured == 10'000, "every row has its metrics");
        const double seconds = medianSeconds(allRows, 31);
        if (days == 1)
            shortHistory = seconds;
        std::printf("  %d snapshot(s) a keyword: %.2f ms, %.2f times the time for one (goal: no "
                    "dependence on history)\n",
                    days, seconds * 1e3, seconds / shortHistory);
        QFile::remove(path);
    }
}

/// A timeline over ten years of days, beside sorting its dates.
void timeline()
{
    constexpr int days = 3'650;
    std::vector<RankingTimeline::Observation> observations;
    for (int day = 0; day < days; ++day)
        observations.push_back(
            {QUuid::createUuid(), startOfUtcDay(day) + Seconds(40'000), day % 90 + 1});
    const Date now = startOfUtcDay(days - 1) + Seconds(50'000);
    const RankingTimeline made(observations, Date());
    require(made.observations.size() == size_t(days), "one observation a day");
    require(made.days(14, now).size() == 14, "fourteen days");
    require(made.latestMovement() == RankMovement::declined(1), "the last movement");
    const double copying = medianSeconds([&] { keep(std::vector(observations)); }, 101);
    const double building =
        medianSeconds([&] { keep(RankingTimeline(observations, Date()).days(14, now)); }, 101);
    std::printf("A timeline over %d snapshots\n", days);
    std::printf("  built and read in %.3f ms, %.1f times a copy of the observations\n",
                building * 1e3, building / copying);
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QTemporaryDir folder;
    const std::string_view only = argc > 1 ? argv[1] : "";
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
