// SPDX-License-Identifier: GPL-3.0-or-later
// Years of daily measurements with everything that goes wrong in them: in the end everything that
// was measured is there, and no day took longer than another.
#include "store/history_fixture.h"
#include "store/killed_process.h"
#include "store/numbered_measurements.h"

#include <csignal>
#include <ctime>
#include <map>
#include <numeric>
#include <sys/resource.h>

namespace veltrix
{
namespace
{

/// A whole program for a night: VELTRIX_YEARS=2.
struct Years {
    int keywords = 25;
    int days = 120;
    qint64 limit = 150'000;

    static Years wanted()
    {
        const int years = qEnvironmentVariableIntValue("VELTRIX_YEARS");
        return years > 0 ? Years{300, 365 * years, 2'000'000} : Years{};
    }
};

/// For its lifetime this process can write no file that is longer than a few bytes, as if the disk
/// were full.
class FullDisk
{
public:
    FullDisk() : m_previous(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &m_usual);
        rlimit small = m_usual;
        small.rlim_cur = 2'000;
        setrlimit(RLIMIT_FSIZE, &small);
    }
    ~FullDisk()
    {
        setrlimit(RLIMIT_FSIZE, &m_usual);
        std::signal(SIGXFSZ, m_previous);
    }
    FullDisk(const FullDisk &) = delete;
    FullDisk &operator=(const FullDisk &) = delete;

private:
    void (*m_previous)(int);
    rlimit m_usual{};
};

class HistoryYears : public HistoryStore
{
protected:
    HistoryYears()
    {
        limit = years.limit;
        restart();
        client->fails = [](const QString &term) {
            return term == u"cursed";
        };
        for (int i = 0; i < years.keywords; ++i) {
            keywords.append(
                store->addTrackedKeyword(anApp(), QStringLiteral("keyword %1").arg(i), text("US")));
        }
        cursed = store->addTrackedKeyword(anApp(), text("cursed"), text("US"));
        store->waitUntilSaved();
    }

    QUuid anApp() { return store->apps().isEmpty() ? addApp().id : store->apps().constFirst().id; }

    /// Measures all that there is once, some hours into the day.
    void liveThrough(int day)
    {
        const Date morning = startOfUtcDay(firstDay + day) + Seconds(30'000);
        clock->jumpTo(morning + clockError);
        std::rotate(client->results.begin(), client->results.begin() + 1, client->results.end());
        for (const TrackedKeyword &keyword : std::as_const(keywords)) {
            const Outcome<DashboardKeywordRow> outcome(
                store->refreshKeyword(keyword.id, view.get_token()));
            if (!outcome.hasValue())
                continue;
            const SharedSnapshot newest = newestOf(keyword);
            if (newest && newest->fetchedAt == clock->now())
                model[keyword.id][utcDay(newest->fetchedAt)] = {newest->id, qHash(toJson(*newest))};
        }
        EXPECT_TRUE(Outcome<DashboardKeywordRow>(store->refreshKeyword(cursed.id, {}))
                        .holds<FakeFailure>());
    }
    [[nodiscard]] SharedSnapshot newestOf(const TrackedKeyword &keyword) const
    {
        return store->newestSnapshot(keyword.id);
    }
    /// Kills a process that moves nearly everything to the history while it does so.
    void killInAMove()
    {
        stop();
        KilledProcess<MeasuringProgress> process(folder, "migrate");
        process.runAndKill(std::chrono::milliseconds(20));
        QFile::remove(folder.filePath(text("progress")));
        restart();
    }
    void requireEverything()
    {
        qsizetype wrong = 0;
        for (const TrackedKeyword &keyword : std::as_const(keywords)) {
            std::map<std::int64_t, Known> found;
            for (const SharedSnapshot &one : allOf(keyword, 256))
                found[utcDay(one->fetchedAt)] = {one->id, qHash(toJson(*one))};
            wrong += found == model[keyword.id] ? 0 : 1;
        }
        EXPECT_EQ(wrong, 0) << "keywords that are not as they were measured";
        EXPECT_TRUE(allOf(cursed).empty());
    }

    struct Known {
        QUuid id;
        size_t hash;
        bool operator==(const Known &) const = default;
    };
    const Years years = Years::wanted();
    const std::int64_t firstDay = utcDay(clock->now()) + 1;
    Seconds clockError{0};
    QList<TrackedKeyword> keywords;
    TrackedKeyword cursed;
    std::map<QUuid, std::map<std::int64_t, Known>> model;
};

double threadSeconds()
{
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return double(time.tv_sec) + double(time.tv_nsec) * 1e-9;
}

TEST_F(HistoryYears, LoseNothingAndNoDayTakesLongerThanAnother)
{
    const int part = years.days / 12;
    std::optional<FullDisk> full;
    std::optional<RemovedTracking> removed;
    std::vector<double> seconds;
    qint64 longest = 0;
    QSet<QUuid> gone;
    for (int day = 0; day < years.days; ++day) {
        if (day == part || day == 5 * part || day == 9 * part)
            killInAMove();
        if (day == 2 * part) {
            testing::internal::CaptureStdout();
            full.emplace();
        } else if (day == 2 * part + 7) {
            EXPECT_TRUE(store->hasUnsavedChange());
            full.reset();
            testing::internal::GetCapturedStdout();
        }
        // A clock that is a year ahead for a day.
        clockError = Seconds(day == 3 * part ? 365 * secondsPerDay : 0);
        if (day == 4 * part) {
            removed = store->removeKeyword(keywords[3].id);
        } else if (day == 4 * part + 5) {
            store->restore(std::move(*removed));
        } else if (day == 6 * part) {
            gone.insert(keywords[5].id);
            model.erase(keywords[5].id);
            store->removeKeyword(keywords.takeAt(5).id);
        } else if (day == 6 * part + 1) {
            restart();
        }
        const double start = threadSeconds();
        liveThrough(day);
        seconds.push_back(threadSeconds() - start);
        if (full) {
            store->waitUntilSaved();
            continue;
        }
        finishMoving();
        longest = std::max(longest, stateBytes().size());
    }
    restart();
    finishMoving();
    requireEverything();
    for (const QUuid &id : std::as_const(gone))
        EXPECT_TRUE(history()->records(id).empty());
    EXPECT_EQ(problem(), QString());
    EXPECT_LE(longest, limit);
    const auto mean = [&](int from, int to) {
        return std::accumulate(seconds.begin() + from, seconds.begin() + to, 0.0) / (to - from);
    };
    const double early = mean(years.days / 4, years.days / 2);
    const double late = mean(years.days * 3 / 4, years.days);
    RecordProperty("ms a day early", QString::number(early * 1e3).toStdString());
    RecordProperty("ms a day late", QString::number(late * 1e3).toStdString());
    // Twice would be a day that grows with those before it.
    EXPECT_LT(late, 1.6 * early);
}

} // namespace
} // namespace veltrix
