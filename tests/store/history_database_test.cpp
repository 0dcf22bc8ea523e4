// SPDX-License-Identifier: GPL-3.0-or-later
// The history by itself: what goes in comes out, days are replaced, keywords go and join, and what
// is not a whole history is left alone.
#include "store/history_database.h"

#include "effects/atomic_file.h"
#include "json/json_writer.h"
#include "store/scratch_folder.h"
#include "support/generators.h"
#include "support/json_printers.h"

#include <QDir>

#include <csignal>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>
#include <sys/resource.h>

namespace veltrix
{
namespace
{

constexpr std::int64_t firstDay = 9'000;

QUuid keyword(int number)
{
    return {uint(number), 0, 0, 0, 0, 0, 0, 0, 0, 0, 0};
}

SharedSnapshot measured(int keywordNumber, int day, double hour, int position = 3)
{
    auto snapshot = std::make_shared<KeywordSnapshot>();
    snapshot->id = QUuid::createUuid();
    snapshot->trackedKeywordId = keyword(keywordNumber);
    snapshot->keyword = QStringLiteral("photo editor %1").arg(keywordNumber);
    snapshot->country = QStringLiteral("US");
    snapshot->fetchedAt = startOfUtcDay(firstDay + day) + Seconds(hour * 3'600);
    if (position > 0)
        snapshot->position = position;
    return snapshot;
}

std::vector<QByteArray> jsonOf(const std::vector<SharedSnapshot> &snapshots)
{
    std::vector<QByteArray> texts;
    for (const SharedSnapshot &snapshot : snapshots)
        texts.push_back(toJson(*snapshot));
    return texts;
}

class HistoryDatabaseTest : public testing::Test
{
protected:
    [[nodiscard]] QString path() const { return folder->filePath(QStringLiteral("h.sqlite")); }
    [[nodiscard]] HistoryDatabase open() const { return HistoryDatabase::openOrCreate(path()); }
    QString refusal()
    {
        try {
            HistoryDatabase::open(path());
        } catch (const DatabaseError &error) {
            return error.description();
        }
        return QStringLiteral("opened");
    }
    /// Puts bytes in its place, and sees that they are refused and left as they are.
    QString refusalOf(const QByteArray &bytes)
    {
        writeFileAtomically(path(), bytes);
        QString reason = refusal();
        EXPECT_THROW(HistoryDatabase::openOrCreate(path()), DatabaseError);
        EXPECT_EQ(readWholeFile(path()), bytes);
        return reason;
    }

    std::unique_ptr<QTemporaryDir> folder = scratchFolder();
};

TEST_F(HistoryDatabaseTest, WhereThereIsNoFileThereIsNoneMadeByLooking)
{
    EXPECT_FALSE(HistoryDatabase::open(path()));
    EXPECT_EQ(lookAtFile(path()), FileLook(NoFile{}));
    EXPECT_TRUE(open().observations(keyword(1)).empty());
}

TEST_F(HistoryDatabaseTest, GivesBackWhatWasAddedOldestFirstAndOfOneKeyword)
{
    const std::vector<SharedSnapshot> all{measured(1, 2, 8, 0), measured(2, 1, 8),
                                          measured(1, 0, 9)};
    open().insert(all);
    HistoryDatabase history = open();
    EXPECT_EQ(jsonOf(history.records(keyword(1))), jsonOf({all[2], all[0]}));
    const std::vector<RankingTimeline::Observation> expected{
        {all[2]->id, all[2]->fetchedAt, 3}, {all[0]->id, all[0]->fetchedAt, std::nullopt}};
    EXPECT_EQ(history.observations(keyword(1)), expected);
    EXPECT_TRUE(history.contains(*all[1]));
    EXPECT_FALSE(history.contains(*measured(1, 2, 8)));
}

TEST_F(HistoryDatabaseTest, ANewMeasurementOfADayTakesThePlaceOfTheOldOne)
{
    const SharedSnapshot kept = measured(1, 1, 23.99);
    const SharedSnapshot old = measured(1, 2, 20);
    const SharedSnapshot anew = measured(1, 2, 8);
    open().insert(std::vector{kept, old, measured(2, 2, 3)});
    open().insert(std::vector{anew});
    EXPECT_EQ(jsonOf(open().records(keyword(1))), jsonOf({kept, anew}));
    EXPECT_EQ(open().observations(keyword(1)).size(), 2U);
    EXPECT_EQ(open().records(keyword(2)).size(), 1U);
    // What is there already may come again.
    open().insert(std::vector{anew});
    EXPECT_EQ(open().records(keyword(1)).size(), 2U);
}

TEST_F(HistoryDatabaseTest, AKeywordGoesWithItsNoteAndNoOther)
{
    open().insert(std::vector{measured(1, 1, 8), measured(2, 1, 8)});
    const std::vector<QUuid> both{keyword(1), keyword(3)};
    open().noteRemoval(both);
    EXPECT_EQ(open().removalNotes(), both);
    EXPECT_EQ(open().records(keyword(1)).size(), 1U) << "a note removes nothing";
    open().remove(keyword(1));
    EXPECT_TRUE(open().records(keyword(1)).empty());
    EXPECT_TRUE(open().observations(keyword(1)).empty());
    EXPECT_EQ(open().records(keyword(2)).size(), 1U);
    EXPECT_EQ(open().removalNotes(), std::vector{keyword(3)});
    open().dropRemovalNotes(both);
    EXPECT_TRUE(open().removalNotes().empty());
}

TEST_F(HistoryDatabaseTest, WhoJoinsAnotherBringsTheNewerOfEachDay)
{
    const SharedSnapshot mine = measured(1, 1, 8);
    const SharedSnapshot mineNewer = measured(1, 2, 20);
    const SharedSnapshot mineOlder = measured(1, 3, 2);
    const SharedSnapshot theirsOlder = measured(2, 2, 4);
    const SharedSnapshot theirsNewer = measured(2, 3, 5);
    open().insert(std::vector{mine, mineNewer, mineOlder, theirsOlder, theirsNewer});
    open().noteRemoval(std::vector{keyword(1)});
    open().join(keyword(1), keyword(2));
    EXPECT_TRUE(open().records(keyword(1)).empty());
    EXPECT_TRUE(open().removalNotes().empty());
    std::vector<QUuid> ids;
    for (const SharedSnapshot &record : open().records(keyword(2))) {
        EXPECT_EQ(record->trackedKeywordId, keyword(2));
        ids.push_back(record->id);
    }
    EXPECT_EQ(ids, (std::vector{mine->id, mineNewer->id, theirsNewer->id}));
    EXPECT_EQ(open().observations(keyword(2)).size(), 3U);
}

TEST_F(HistoryDatabaseTest, WhatIsNoHistoryIsLeftAloneAndSaid)
{
    EXPECT_TRUE(refusalOf("").contains(QStringLiteral("The file is empty")));
    EXPECT_TRUE(refusalOf(QByteArray(20'000, 'x')).contains(QStringLiteral("not a database")));
    QFile::remove(path());
    std::vector<SharedSnapshot> many;
    for (int day = 0; day < 200; ++day)
        many.push_back(measured(1, day, 8));
    open().insert(many);
    const QByteArray whole = readWholeFile(path());
    EXPECT_TRUE(refusalOf(whole.chopped(8192)).contains(QStringLiteral("malformed")));
    EXPECT_NE(refusalOf(whole.left(100)), QStringLiteral("opened"));
    EXPECT_NE(refusalOf(whole.left(8192)), QStringLiteral("opened"));

    SqliteDatabase other = SqliteDatabase::inMemory();
    other.execute("CREATE TABLE keyword (number)");
    EXPECT_TRUE(refusalOf(other.content()).contains(QStringLiteral("not a history of Veltrix")));

    writeFileAtomically(path(), whole);
    SqliteDatabase(path()).execute("PRAGMA user_version = 3");
    EXPECT_TRUE(refusalOf(readWholeFile(path()))
                    .contains(QStringLiteral("A newer Veltrix has written it")));
}

/// While it lives, no file can grow beyond so many bytes.
class LongestFile
{
public:
    explicit LongestFile(rlim_t bytes)
    {
        m_handler = std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit{bytes, m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    LongestFile(const LongestFile &) = delete;
    LongestFile &operator=(const LongestFile &) = delete;
    ~LongestFile()
    {
        setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_handler);
    }

private:
    rlimit m_before = {};
    void (*m_handler)(int) = SIG_DFL;
};

/// As the first version made it.
QByteArray historyOfVersion1()
{
    SqliteDatabase old = SqliteDatabase::inMemory();
    old.execute(R"(
        PRAGMA page_size = 8192;
        PRAGMA application_id = 0x56784869;
        PRAGMA user_version = 1;
        CREATE TABLE keyword (number INTEGER PRIMARY KEY, id BLOB NOT NULL UNIQUE);
        CREATE TABLE observation (
            keyword INTEGER NOT NULL, fetchedAt REAL NOT NULL, id BLOB NOT NULL, position INTEGER,
            PRIMARY KEY (keyword, fetchedAt, id)) WITHOUT ROWID;
        CREATE TABLE detail (
            keyword INTEGER NOT NULL, fetchedAt REAL NOT NULL, id BLOB NOT NULL, json BLOB NOT NULL,
            PRIMARY KEY (keyword, fetchedAt, id)) WITHOUT ROWID;
        CREATE TABLE removal (keyword BLOB PRIMARY KEY) WITHOUT ROWID;)");
    const SharedSnapshot day = measured(1, 1, 8);
    SqliteStatement number = old.prepare("INSERT INTO keyword VALUES (1, ?1)");
    number.bind(1, keyword(1).toRfc4122());
    number.run();
    SqliteStatement observation = old.prepare("INSERT INTO observation VALUES (1, ?1, ?2, 3)");
    observation.bind(1, referenceSeconds(day->fetchedAt));
    observation.bind(2, day->id.toRfc4122());
    observation.run();
    SqliteStatement detail = old.prepare("INSERT INTO detail VALUES (1, ?1, ?2, ?3)");
    detail.bind(1, referenceSeconds(day->fetchedAt));
    detail.bind(2, day->id.toRfc4122());
    detail.bind(3, HistoryRecords().pack(*day));
    detail.run();
    return old.content();
}

TEST_F(HistoryDatabaseTest, AnOlderFormIsBroughtToTheNewestAndACopyKept)
{
    const QByteArray old = historyOfVersion1();
    writeFileAtomically(path(), old);
    EXPECT_EQ(open().records(keyword(1)).size(), 1U);
    const QString copy = folder->filePath(QStringLiteral("h.version-1.sqlite"));
    EXPECT_EQ(readWholeFile(copy), old);
    // Everything that is new can be kept now, and nothing is done twice.
    const HistoryEdit edit = SetTag{keyword(1), QStringLiteral("core"), true};
    open().apply(std::span(&edit, 1));
    EXPECT_EQ(open().writtenNotes().tags.size(), 1U);
    EXPECT_EQ(QDir(folder->path()).entryList(QDir::Files).size(), 2);
}

TEST_F(HistoryDatabaseTest, ACopyTakesThePlaceOfNoOther)
{
    const QString copy = folder->filePath(QStringLiteral("h.version-1.sqlite"));
    writeFileAtomically(copy, "another");
    const QByteArray old = historyOfVersion1();
    writeFileAtomically(path(), old);
    EXPECT_TRUE(HistoryDatabase::open(path()));
    EXPECT_EQ(readWholeFile(copy), "another");
    EXPECT_EQ(readWholeFile(folder->filePath(QStringLiteral("h.version-1-2.sqlite"))), old);
}

TEST_F(HistoryDatabaseTest, WithoutRoomForACopyAnOlderFormStaysAsItIs)
{
    const QByteArray old = historyOfVersion1();
    writeFileAtomically(path(), old);
    {
        const LongestFile limit(1'000);
        EXPECT_THROW((void)HistoryDatabase::open(path()), Error);
    }
    EXPECT_EQ(readWholeFile(path()), old);
    EXPECT_EQ(QDir(folder->path()).entryList(QDir::Files).size(), 1);
}

TEST_F(HistoryDatabaseTest, ADamagedRecordIsAnErrorAndNoGuess)
{
    open().insert(std::vector{measured(1, 1, 8)});
    {
        SqliteDatabase database(path());
        SqliteStatement spoil = database.prepare("UPDATE detail SET json = ?1");
        QByteArray record = HistoryRecords().pack(*measured(1, 1, 8));
        record[record.size() - 6] = char(record[record.size() - 6] ^ 0x40);
        spoil.bind(1, QByteArrayView(record));
        spoil.run();
    }
    EXPECT_THROW((void)open().records(keyword(1)), Error);
    EXPECT_EQ(open().observations(keyword(1)).size(), 1U) << "the ranks are not in it";
}

TEST_F(HistoryDatabaseTest, ARecordWithAnotherBitIsRefusedOrTheSame)
{
    HistoryRecords records;
    const SharedSnapshot one = measured(1, 1, 8);
    const QByteArray whole = records.pack(*one);
    int refused = 0;
    for (qsizetype bit = 0; bit < 8 * whole.size(); ++bit) {
        QByteArray spoilt = whole;
        spoilt[bit / 8] = char(spoilt[bit / 8] ^ (1 << (bit % 8)));
        try {
            EXPECT_EQ(toJson(records.unpack(spoilt)), toJson(*one)) << bit;
        } catch (const Error &) {
            ++refused;
        }
    }
    // Up to seven bits behind the end of the packed text mean nothing.
    EXPECT_GE(refused, 8 * whole.size() - 7);
    for (qsizetype length = 0; length < whole.size(); ++length)
        EXPECT_THROW((void)records.unpack(whole.first(length)), Error) << length;
}

RC_GTEST_PROP(HistoryRecordProperty, APackedRecordUnpacksToTheSame, (KeywordSnapshot one))
{
    HistoryRecords records;
    for (int round = 0; round < 2; ++round)
        RC_ASSERT(toJson(records.unpack(records.pack(one))) == toJson(one));
}

} // namespace
} // namespace veltrix
