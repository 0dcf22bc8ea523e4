// SPDX-License-Identifier: GPL-3.0-or-later
#include "clients/ranked_apps_archive.h"

#include "effects/atomic_file.h"
#include "effects/data_folder_lock.h"
#include "json/json_reader.h"
#include "json/json_writer.h"
#include "support/json_printers.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <random>

namespace veltrix
{
namespace
{

const Date now = dateFromUnixSeconds(1'795'262'400); // 2026-11-21T12:00:00Z

QString key(int number)
{
    return QStringLiteral("US:keyword %1").arg(number, 5, 10, QChar(u'0'));
}

SavedResults savedAt(Date date, const QString &name = {})
{
    ITunesAppResult app;
    app.trackId = 42;
    if (!name.isEmpty())
        app.trackName = name;
    return {date, {app}};
}

class RankedAppsArchiveTest : public testing::Test
{
protected:
    [[nodiscard]] QString path() const
    {
        return m_folder.filePath(QStringLiteral("data/ranked_apps_cache_v1.json"));
    }
    [[nodiscard]] QString databasePath() const
    {
        return m_folder.filePath(QStringLiteral("data/caches.sqlite"));
    }
    [[nodiscard]] RankedAppsArchive open() const { return {path(), nullptr, m_limits}; }
    void write(const QByteArray &content) const
    {
        QDir().mkpath(m_folder.filePath(QStringLiteral("data")));
        writeFileAtomically(path(), content);
    }
    [[nodiscard]] std::map<QString, SavedResults> file() const
    {
        return fromJson<std::map<QString, SavedResults>>(readWholeFile(path()));
    }
    /// Keeps and saves one after the other, a second apart from `start` on.
    void fill(RankedAppsArchive &archive, int first, int end, Date start = now) const
    {
        for (int i = first; i < end; ++i) {
            const Date date = start + Seconds(i - first);
            archive.keep(key(i), savedAt(date), Seconds(0), date);
            archive.save(date);
        }
    }

    QTemporaryDir m_folder;
    RankedAppsLimits m_limits;
};

TEST_F(RankedAppsArchiveTest, TheFileIsAnObjectOfKeysWithDatesAsSecondsSince2001)
{
    RankedAppsArchive archive = open();
    archive.keep(QStringLiteral("US:b"), savedAt(dateFromReferenceSeconds(7)), Seconds(0), now);
    archive.keep(QStringLiteral("US:a \"b\""), savedAt(dateFromReferenceSeconds(100.25)),
                 Seconds(0), now);
    archive.save(now);
    EXPECT_EQ(readWholeFile(path()),
              R"({"US:a \"b\"":{"fetchedAt":100.25,"results":[{"trackId":42}]},)"
              R"("US:b":{"fetchedAt":7,"results":[{"trackId":42}]}})");
    EXPECT_FALSE(QFileInfo::exists(databasePath()));
}

TEST_F(RankedAppsArchiveTest, WhatFitsIntoTheFileNeedsNoDatabase)
{
    RankedAppsArchive archive = open();
    fill(archive, 0, 100);
    EXPECT_EQ(file().size(), 100U);
    EXPECT_EQ(readWholeFile(path()), toJson(file())) << "as a map of records is written";
    EXPECT_FALSE(QFileInfo::exists(databasePath()));
}

TEST_F(RankedAppsArchiveTest, EntriesOfSevenDaysAndOlderAreDroppedOnLoading)
{
    write(toJson(std::map<QString, SavedResults>{
        {QStringLiteral("US:kept"), savedAt(now - Seconds(604'799))},
        {QStringLiteral("US:dropped"), savedAt(now - Seconds(604'800))},
        {QStringLiteral("US:future"), savedAt(now + Seconds(10))}}));
    RankedAppsArchive archive = open();
    EXPECT_TRUE(archive.find(QStringLiteral("US:kept"), now));
    EXPECT_FALSE(archive.find(QStringLiteral("US:dropped"), now));
    EXPECT_TRUE(archive.find(QStringLiteral("US:future"), now));
    EXPECT_TRUE(archive.find(QStringLiteral("US:kept"), now + Seconds(2))) << "it was taken over";
}

TEST_F(RankedAppsArchiveTest, RowsOfSevenDaysAndOlderAreNotFoundAndGo)
{
    RankedAppsArchive archive = open();
    fill(archive, 0, 150);
    const Date week = now + Seconds(604'800);
    EXPECT_TRUE(archive.find(key(7), week));
    EXPECT_FALSE(archive.find(key(0), week)) << "of the database, to the second";
    fill(archive, 200, 300, week + Seconds(149));
    RankedAppsDatabase database(databasePath(), m_limits.databaseBytes);
    EXPECT_FALSE(database.find(key(7)));
    EXPECT_TRUE(database.find(key(299)));
}

TEST_F(RankedAppsArchiveTest, AMissingOrBrokenFileIsAnEmptyCache)
{
    EXPECT_FALSE(open().find(QStringLiteral("US:a"), now));
    for (const char *content : {"", "{", "[]", R"({"US:a":{}})", R"({"US:a":{"fetchedAt":1}})",
                                R"({"US:a":{"fetchedAt":"x","results":[]}})"}) {
        write(content);
        EXPECT_FALSE(open().find(QStringLiteral("US:a"), now)) << content;
    }
}

TEST_F(RankedAppsArchiveTest, TheNewestAreInTheFileAndAllInTheDatabase)
{
    RankedAppsArchive archive = open();
    fill(archive, 0, 130);
    archive.finish(now + Seconds(130));
    EXPECT_EQ(file().size(), 100U);
    EXPECT_TRUE(file().contains(key(30)));
    EXPECT_FALSE(file().contains(key(29)));
    RankedAppsArchive next = open();
    for (int i = 0; i < 130; ++i) {
        EXPECT_EQ(archive.find(key(i), now), savedAt(now + Seconds(i))) << i;
        EXPECT_EQ(next.find(key(i), now), savedAt(now + Seconds(i))) << i;
    }
}

TEST_F(RankedAppsArchiveTest, TheFileIsNeverLongerThanItsLimit)
{
    m_limits.bytes = 5'000;
    RankedAppsArchive archive = open();
    for (int i = 0; i < 40; ++i) {
        // Names that JSON makes longer, in the key too.
        archive.keep(key(i) + QStringLiteral("\"\"\""),
                     savedAt(now + Seconds(i), QStringLiteral("\"é\"").repeated(i)), Seconds(0),
                     now + Seconds(i));
        archive.save(now + Seconds(i));
        archive.finish(now + Seconds(i));
        EXPECT_LE(QFileInfo(path()).size(), 5'000);
    }
    EXPECT_GT(QFileInfo(path()).size(), 4'500);
    EXPECT_TRUE(archive.find(key(0) + QStringLiteral("\"\"\""), now));
}

TEST_F(RankedAppsArchiveTest, ALargeFileOfAnOlderVersionIsTakenOverWhole)
{
    std::map<QString, SavedResults> old;
    for (int i = 0; i < 300; ++i)
        old.emplace(key(i), savedAt(now + Seconds(i)));
    write(toJson(old));
    RankedAppsArchive archive = open();
    archive.save(now + Seconds(300));
    EXPECT_EQ(file().size(), 100U);
    for (int i = 0; i < 300; ++i)
        EXPECT_TRUE(open().find(key(i), now)) << i;
}

TEST_F(RankedAppsArchiveTest, OnceThereIsADatabaseTheFileIsWrittenNowAndThen)
{
    RankedAppsArchive archive = open();
    fill(archive, 0, 101);
    fill(archive, 200, 210, now + Seconds(101));
    EXPECT_FALSE(file().contains(key(209)));
    EXPECT_TRUE(open().find(key(209), now)) << "a killed program has it all the same";
    fill(archive, 300, 301, now + Seconds(101 + 600));
    EXPECT_TRUE(file().contains(key(209)));
    fill(archive, 301, 302, now + Seconds(101 + 601));
    EXPECT_FALSE(file().contains(key(301)));
    archive.finish(now + Seconds(101 + 602));
    EXPECT_TRUE(file().contains(key(301))) << "and at the end";
}

TEST_F(RankedAppsArchiveTest, TheDatabaseMayHaveANewerAnswerThanTheFileOfAKilledRun)
{
    RankedAppsArchive archive = open();
    fill(archive, 0, 101);
    const SavedResults newer = savedAt(now + Seconds(200), QStringLiteral("Newer"));
    archive.keep(key(90), newer, Seconds(0), now + Seconds(200));
    archive.save(now + Seconds(200));
    EXPECT_NE(file().at(key(90)), newer);
    EXPECT_EQ(open().find(key(90), now), newer);
}

TEST_F(RankedAppsArchiveTest, ForHalfAnHourTheDatabaseHasTheWholeListingAndThenWhatAListShows)
{
    m_limits.entries = 1;
    SavedResults whole = savedAt(now, QStringLiteral("Foxglove"));
    whole.results[0].description = QStringLiteral("Long.").repeated(1000);
    whole.results[0].screenshotUrls = QStringList{QStringLiteral("https://screens.example/1")};
    const SavedResults shown{now, listedResults(whole.results)};
    RankedAppsArchive archive = open();
    archive.keep(key(0), whole, Seconds(0), now);
    archive.save(now);
    fill(archive, 1, 3, now + Seconds(1));
    EXPECT_TRUE(archive.find(key(0), now) == whole);
    const Date later = now + Seconds(3'700);
    fill(archive, 3, 4, later);
    EXPECT_TRUE(archive.find(key(0), later) == shown);
    // One that is old already when it leaves the file.
    whole.fetchedAt = later - Seconds(1'800);
    archive.keep(key(9), whole, Seconds(0), later);
    archive.save(later);
    EXPECT_TRUE(archive.find(key(9), later)->results == shown.results);
}

TEST_F(RankedAppsArchiveTest, WhatAClockOfNextYearHasDatedGoesFirst)
{
    m_limits.entries = 3;
    RankedAppsArchive archive = open();
    archive.keep(key(0), savedAt(now + Seconds(4e7)), Seconds(0), now);
    fill(archive, 1, 4);
    archive.finish(now + Seconds(4));
    EXPECT_FALSE(file().contains(key(0)));
    EXPECT_EQ(file().size(), 3U);
    RankedAppsDatabase database(databasePath(), m_limits.databaseBytes);
    EXPECT_FALSE(database.find(key(0))) << "it would stay there for good";
}

TEST_F(RankedAppsArchiveTest, ADatabaseThatGrowsTooLargeLosesItsOldestRows)
{
    m_limits.entries = 1;
    m_limits.databaseBytes = 200'000;
    RankedAppsArchive archive = open();
    std::mt19937 random(7);
    qint64 most = 0;
    for (int i = 0; i < 300; ++i) {
        QString noise;
        for (int c = 0; c < 2'000; ++c)
            noise += QChar(ushort('a' + random() % 26));
        archive.keep(key(i), savedAt(now + Seconds(i), noise), Seconds(0), now + Seconds(i));
        archive.save(now + Seconds(i));
        most = std::max(most, QFileInfo(databasePath()).size());
    }
    EXPECT_LT(most, 300'000);
    EXPECT_FALSE(archive.find(key(0), now));
    EXPECT_TRUE(archive.find(key(270), now));
}

TEST_F(RankedAppsArchiveTest, ADatabaseThatCannotBeUsedIsBegunAnew)
{
    RankedAppsArchive first = open();
    fill(first, 0, 101);
    const QByteArray good = readWholeFile(databasePath());
    QByteArray noise = good;
    for (qsizetype i = 8192; i < noise.size(); ++i)
        noise[i] = char(noise[i] ^ 0x55);
    QByteArray newer = good;
    newer[63] = 9; // user_version
    QByteArray another = good;
    another[71] = 9; // application_id
    for (const QByteArray &content :
         {QByteArray(), QByteArray("no database"), good.left(8192), noise, newer, another}) {
        writeFileAtomically(databasePath(), content);
        RankedAppsArchive archive = open();
        fill(archive, 200, 203, now + Seconds(200));
        EXPECT_TRUE(open().find(key(202), now)) << content.left(20).toStdString();
        fill(archive, 300, 400, now + Seconds(300));
        EXPECT_TRUE(archive.find(key(202), now)) << content.left(20).toStdString();
        EXPECT_EQ(file().size(), 100U);
        EXPECT_EQ(readWholeFile(databasePath()).mid(60, 12), good.mid(60, 12));
    }
}

TEST_F(RankedAppsArchiveTest, ALockedDatabaseIsLeftOut)
{
    RankedAppsArchive archive = open();
    fill(archive, 0, 150);
    SqliteDatabase other(databasePath());
    other.execute("BEGIN EXCLUSIVE");
    EXPECT_FALSE(archive.find(key(0), now));
    EXPECT_TRUE(archive.find(key(149), now)) << "it is in memory";
    fill(archive, 200, 201, now + Seconds(150));
    EXPECT_TRUE(file().contains(key(200))) << "then the file is written at once";
    other.execute("ROLLBACK");
    EXPECT_TRUE(archive.find(key(0), now));
    fill(archive, 300, 399, now + Seconds(151));
    EXPECT_TRUE(archive.find(key(200), now));
}

TEST_F(RankedAppsArchiveTest, AWriteThatFailsKeepsTheOldFile)
{
    RankedAppsArchive archive = open();
    archive.keep(QStringLiteral("US:a"), savedAt(now), Seconds(0), now);
    archive.save(now);
    // No file can hold such a date.
    archive.keep(QStringLiteral("US:b"),
                 savedAt(dateFromReferenceSeconds(std::numeric_limits<double>::infinity())),
                 Seconds(0), now);
    archive.save(now);
    EXPECT_TRUE(file().contains(QStringLiteral("US:a")));
    // A folder in the file's place.
    RankedAppsArchive misplaced(m_folder.path(), nullptr);
    misplaced.keep(QStringLiteral("US:a"), savedAt(now), Seconds(0), now);
    misplaced.save(now);
    EXPECT_EQ(
        QDir(m_folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
        QStringList{QStringLiteral("data")});
}

TEST_F(RankedAppsArchiveTest, AFolderThatAnotherProcessHasIsNotWritten)
{
    write("{}");
    const QString folder = QFileInfo(path()).path();
    DataFolderLock owner(folder);
    ASSERT_EQ(owner.acquire(), DataFolderLock::Outcome::Acquired);
    DataFolderLock guest(folder);
    RankedAppsArchive archive(path(), &guest, m_limits);
    fill(archive, 0, 130);
    archive.finish(now);
    EXPECT_EQ(readWholeFile(path()), "{}");
    EXPECT_FALSE(QFileInfo::exists(databasePath()));
    EXPECT_TRUE(archive.find(key(129), now));
}

TEST_F(RankedAppsArchiveTest, WithoutAPathTheNewestStayInMemory)
{
    RankedAppsArchive archive(QString(), nullptr, m_limits);
    fill(archive, 0, 130);
    archive.finish(now);
    EXPECT_FALSE(archive.find(key(29), now));
    EXPECT_TRUE(archive.find(key(30), now));
}

} // namespace
} // namespace veltrix
