// SPDX-License-Identifier: GPL-3.0-or-later
// Values in and out of a database, transactions, and what is said when it fails.
#include "effects/sqlite_database.h"

#include "effects/atomic_file.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <limits>

namespace veltrix
{
namespace
{

class SqliteTest : public testing::Test
{
protected:
    SqliteTest()
    {
        SqliteDatabase fresh = SqliteDatabase::inMemory();
        fresh.execute("CREATE TABLE thing (a, b)");
        writeFileAtomically(path(), fresh.content());
    }
    [[nodiscard]] QString path() const { return m_folder.filePath(QStringLiteral("a.sqlite")); }
    static std::int64_t count(SqliteDatabase &database)
    {
        SqliteStatement all = database.prepare("SELECT count(*) FROM thing");
        EXPECT_TRUE(all.step());
        return all.integer(0);
    }
    static QString failureOf(const std::function<void()> &work)
    {
        try {
            work();
        } catch (const DatabaseError &error) {
            return error.description();
        }
        return QStringLiteral("no failure");
    }

private:
    QTemporaryDir m_folder;
};

TEST_F(SqliteTest, ValuesComeBackAsTheyWere)
{
    SqliteDatabase database(path());
    SqliteStatement insert = database.prepare("INSERT INTO thing VALUES (?1, ?2)");
    const QByteArray bytes("\0a\xff", 3);
    insert.bind(1, std::numeric_limits<std::int64_t>::min());
    insert.bind(2, QByteArrayView(bytes));
    insert.run();
    insert.bind(1, 0.1 + 0.2);
    insert.bind(2, QByteArrayView());
    insert.run();
    insert.bindNull(1);
    insert.bind(2, std::int64_t(7));
    insert.run();
    SqliteStatement all = database.prepare("SELECT a, b FROM thing ORDER BY rowid");
    ASSERT_TRUE(all.step());
    EXPECT_EQ(all.integer(0), std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(all.bytes(1), bytes);
    ASSERT_TRUE(all.step());
    EXPECT_EQ(all.real(0), 0.1 + 0.2);
    EXPECT_EQ(all.bytes(1), QByteArray());
    EXPECT_EQ(all.optionalInteger(1), 0) << "empty, and not without a value";
    ASSERT_TRUE(all.step());
    EXPECT_EQ(all.optionalInteger(0), std::nullopt);
    EXPECT_EQ(all.optionalInteger(1), 7);
    EXPECT_FALSE(all.step());
    EXPECT_TRUE(all.step()) << "and anew";
}

TEST_F(SqliteTest, WhatWasNotCommittedIsUndone)
{
    SqliteDatabase database(path());
    {
        SqliteTransaction transaction(database);
        database.execute("INSERT INTO thing VALUES (1, 2)");
    }
    EXPECT_EQ(count(database), 0);
    {
        SqliteTransaction transaction(database);
        database.execute("INSERT INTO thing VALUES (1, 2)");
        transaction.commit();
    }
    SqliteDatabase again(path());
    EXPECT_EQ(count(again), 1);
}

TEST_F(SqliteTest, AFailureNamesTheFileAndTheReason)
{
    const QString missing = path() + QStringLiteral(".missing");
    EXPECT_EQ(failureOf([&] { SqliteDatabase database(missing); }),
              QStringLiteral("The database “%1” could not be used: unable to open database file.")
                  .arg(missing));
    SqliteDatabase database(path());
    EXPECT_TRUE(failureOf([&] {
                    (void)database.prepare("SELECT * FROM nowhere");
                }).contains(QStringLiteral("no such table: nowhere")));
    database.execute("CREATE UNIQUE INDEX one ON thing (a)");
    SqliteStatement insert = database.prepare("INSERT INTO thing VALUES (1, 1)");
    insert.run();
    EXPECT_TRUE(failureOf([&] { insert.run(); }).contains(QStringLiteral("UNIQUE")));
    EXPECT_EQ(count(database), 1) << "a failed statement does not stand in the way";
}

TEST_F(SqliteTest, AMissingFileIsNotMade)
{
    const QString missing = path() + QStringLiteral(".missing");
    EXPECT_THROW(SqliteDatabase{missing}, DatabaseError);
    EXPECT_EQ(lookAtFile(missing), FileLook(NoFile{}));
}

} // namespace
} // namespace veltrix
