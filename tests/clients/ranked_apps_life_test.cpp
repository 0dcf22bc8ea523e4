// SPDX-License-Identifier: GPL-3.0-or-later
// Ranked apps through a month of restarts, kills, full disks, damage and wrong clocks.
#include "clients/ranked_apps_archive.h"
#include "effects/atomic_file.h"
#include "json/json_reader.h"
#include "support/json_printers.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <csignal>
#include <random>
#include <set>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace veltrix
{
namespace
{

const Date start = dateFromUnixSeconds(1'795'262'400); // 2026-11-21T12:00:00Z

class RankedAppsLife : public testing::Test
{
protected:
    RankedAppsLife()
    {
        m_limits.entries = 20;
        m_limits.bytes = 20'000;
        m_limits.databaseBytes = 20'000'000;
        QDir().mkpath(folder());
        writeFileAtomically(folder() + QStringLiteral("/aso_store_state.json"), "the user's");
    }

    [[nodiscard]] QString folder() const { return m_folder.filePath(QStringLiteral("data")); }
    [[nodiscard]] QString path() const { return folder() + QStringLiteral("/ranked.json"); }
    [[nodiscard]] QString databasePath() const
    {
        return folder() + QStringLiteral("/caches.sqlite");
    }
    [[nodiscard]] std::unique_ptr<RankedAppsArchive> open() const
    {
        return std::make_unique<RankedAppsArchive>(path(), nullptr, m_limits);
    }
    static QString key(int number) { return QStringLiteral("US:%1").arg(number); }
    /// The `version`th measurement of a keyword; some 600 bytes.
    static SavedResults measured(int number, int version, Date date)
    {
        QList<ITunesAppResult> results;
        for (int i = 0; i < 10; ++i) {
            ITunesAppResult app;
            app.trackId = number * 100 + i;
            app.trackName = QStringLiteral("App %1 of version %2").arg(i).arg(version);
            results.append(app);
        }
        return {date, results};
    }
    static bool wasMeasured(int number, const SavedResults &found, int lastVersion)
    {
        for (int version = 0; version <= lastVersion; ++version) {
            if (found.results == measured(number, version, {}).results)
                return true;
        }
        return false;
    }
    /// Bytes of the caches.
    [[nodiscard]] qint64 size() const
    {
        return QFileInfo(path()).size() + QFileInfo(databasePath()).size();
    }
    void requireTheRestUntouched() const
    {
        EXPECT_EQ(readWholeFile(folder() + QStringLiteral("/aso_store_state.json")), "the user's");
    }

    QTemporaryDir m_folder;
    RankedAppsLimits m_limits;
};

TEST_F(RankedAppsLife, InAMonthOfEverythingNoAnswerIsWrongAndTheSizesAreLevel)
{
    constexpr int keywords = 100;
    std::mt19937 random(20261122);
    const auto oneIn = [&random](int count) {
        return random() % unsigned(count) == 0;
    };
    /// What was measured last, and of which keywords nothing was damaged since.
    std::map<int, SavedResults> newest;
    std::set<int> certain;
    const auto damage = [&certain](const QString &file) {
        writeFileAtomically(file, "damaged");
        certain.clear();
    };
    auto archive = open();
    int missed = 0;
    int asked = 0;
    std::vector<qint64> sizes;
    for (int day = 0; day < 31; ++day) {
        const bool isClockWrong = day == 12;
        for (int i = 0; i < keywords; ++i) {
            const Date now = start + Seconds(day * 86'400.0 + i * 3 + (isClockWrong ? 4e7 : 0));
            newest[i] = measured(i, day, now);
            certain.insert(i);
            archive->keep(key(i), newest[i], Seconds(0), now);
            archive->save(now);
            if (oneIn(100)) {
                // The program ends, or is killed: what it has not written is not written.
                if (oneIn(2))
                    archive->finish(now);
                archive = open();
            }
            if (oneIn(600))
                damage(databasePath());
            if (oneIn(600))
                damage(path());
            const int other = int(random() % keywords);
            if (const auto known = newest.find(other); known != newest.end()) {
                ++asked;
                const auto found = archive->find(key(other), now);
                missed += !found;
                const bool isNewest = found && *found == known->second;
                if (!found || isNewest)
                    continue;
                EXPECT_FALSE(certain.contains(other) && !isClockWrong && day != 13)
                    << "day " << day << ", keyword " << other;
                EXPECT_TRUE(wasMeasured(other, *found, day)) << "day " << day;
            }
        }
        sizes.push_back(size());
    }
    requireTheRestUntouched();
    // What damage and wrong clocks cost.
    EXPECT_LT(missed, asked / 5) << "of " << asked;
    const auto [least, most] = std::minmax_element(sizes.begin() + 3, sizes.end());
    EXPECT_LT(*most, 2 * *least);
    std::printf("caches of %d keywords: %lld to %lld bytes, %d of %d missed\n", keywords,
                static_cast<long long>(*least), static_cast<long long>(*most), missed, asked);
}

TEST_F(RankedAppsLife, KeywordsThatAreNotMeasuredAnyMoreGoAfterAWeek)
{
    std::mt19937 random(3);
    auto archive = open();
    for (int i = 0; i < 300; ++i) {
        SavedResults saved = measured(i, 0, start);
        saved.results[0].trackName->clear();
        // What cannot be packed.
        for (int c = 0; c < 10'000; ++c)
            saved.results[0].trackName->append(QChar(ushort(0x4e00 + random() % 20'000)));
        archive->keep(key(i), saved, Seconds(0), start);
    }
    archive->save(start);
    const qint64 before = size();
    for (int day = 1; day < 10; ++day) {
        const Date now = start + Seconds(day * 86'400.0);
        for (int i = 0; i < 30; ++i)
            archive->keep(key(i), measured(i, day, now), Seconds(0), now);
        archive->save(now);
    }
    EXPECT_LT(size(), before / 2);
    EXPECT_FALSE(archive->find(key(299), start + Seconds(9 * 86'400.0)));
    EXPECT_TRUE(archive->find(key(29), start + Seconds(9 * 86'400.0)));
}

TEST_F(RankedAppsLife, AKillAtAnyMomentLeavesACacheThatCanBeRead)
{
    constexpr int keywords = 200;
    {
        auto archive = open();
        for (int i = 0; i < keywords; ++i)
            archive->keep(key(i), measured(i, 0, start), Seconds(0), start);
        archive->save(start);
        archive->finish(start);
    }
    std::mt19937 random(5);
    for (int trial = 1; trial <= 60; ++trial) {
        const pid_t child = ::fork();
        if (child == 0) {
            auto archive = open();
            for (int step = 0;; ++step) {
                const int number = (trial * 37 + step) % keywords;
                const Date now = start + Seconds(trial * 1'000 + step);
                archive->keep(key(number), measured(number, trial, now), Seconds(0), now);
                archive->save(now);
                archive->finish(now);
            }
        }
        ::usleep(useconds_t(500 + random() % 8'000));
        ::kill(child, SIGKILL);
        ::waitpid(child, nullptr, 0);
        const auto file = fromJson<std::map<QString, SavedResults>>(readWholeFile(path()));
        EXPECT_EQ(file.size(), 20U);
        auto archive = open();
        for (int i = trial % 10; i < keywords; i += 10)
            ASSERT_TRUE(archive->find(key(i), start)) << "trial " << trial << ", keyword " << i;
    }
    requireTheRestUntouched();
    removeInterruptedWritesIn(folder());
    EXPECT_EQ(QDir(folder()).entryList(QDir::Files | QDir::Hidden),
              (QStringList{QStringLiteral("aso_store_state.json"), QStringLiteral("caches.sqlite"),
                           QStringLiteral("ranked.json")}));
}

TEST_F(RankedAppsLife, OnADiskThatTakesNoMoreTheNewestAreInMemoryAndNothingIsLost)
{
    {
        auto archive = open();
        for (int i = 0; i < 200; ++i)
            archive->keep(key(i), measured(i, 0, start), Seconds(0), start);
        archive->save(start);
        archive->finish(start);
    }
    const QByteArray before = readWholeFile(path());
    const pid_t child = ::fork();
    if (child == 0) {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit none{2'000, 2'000};
        ::setrlimit(RLIMIT_FSIZE, &none);
        auto archive = open();
        bool isRight = true;
        for (int i = 0; i < 60; ++i) {
            const Date now = start + Seconds(1 + i);
            archive->keep(key(1'000 + i), measured(i, 1, now), Seconds(0), now);
            archive->save(now);
            isRight = isRight && archive->find(key(1'000 + i), now);
        }
        archive->finish(start + Seconds(100));
        isRight = isRight && archive->find(key(3), start);
        ::_exit(isRight ? 0 : 1);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    EXPECT_EQ(readWholeFile(path()), before);
    auto archive = open();
    for (int i = 0; i < 200; ++i)
        EXPECT_TRUE(archive->find(key(i), start)) << i;
    requireTheRestUntouched();
}

} // namespace
} // namespace veltrix
