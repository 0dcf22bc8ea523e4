// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/history_schema.h"

#include "effects/atomic_file.h"

#include <QFile>
#include <QFileInfo>

namespace veltrix
{

namespace
{

/// Says in the file's header whose it is ("VxHi"), and in which form.
constexpr std::int64_t applicationId = 0x56784869;
constexpr std::int64_t version = 2;

constexpr const char *measurements = R"(
    PRAGMA page_size = 8192;
    PRAGMA application_id = 0x56784869;
    CREATE TABLE keyword (number INTEGER PRIMARY KEY, id BLOB NOT NULL UNIQUE);
    CREATE TABLE observation (
        keyword INTEGER NOT NULL, fetchedAt REAL NOT NULL, id BLOB NOT NULL, position INTEGER,
        PRIMARY KEY (keyword, fetchedAt, id)) WITHOUT ROWID;
    CREATE TABLE detail (
        keyword INTEGER NOT NULL, fetchedAt REAL NOT NULL, id BLOB NOT NULL, json BLOB NOT NULL,
        PRIMARY KEY (keyword, fetchedAt, id)) WITHOUT ROWID;
    CREATE TABLE removal (keyword BLOB PRIMARY KEY) WITHOUT ROWID;)";

/// What version 2 has more. "app" has the user's own apps and the competitors, by their ids in the
/// state file; "app_name" any app of the store, by its number there.
constexpr const char *comparison = R"(
    CREATE TABLE app (number INTEGER PRIMARY KEY, id BLOB NOT NULL UNIQUE, since REAL);
    CREATE TABLE leader (
        keyword INTEGER NOT NULL, fetchedAt REAL NOT NULL, apps TEXT NOT NULL,
        PRIMARY KEY (keyword, fetchedAt)) WITHOUT ROWID;
    CREATE TABLE place (
        keyword INTEGER NOT NULL, fetchedAt REAL NOT NULL, app INTEGER NOT NULL, position INTEGER,
        PRIMARY KEY (keyword, fetchedAt, app)) WITHOUT ROWID;
    CREATE TABLE app_name (app INTEGER PRIMARY KEY, name TEXT NOT NULL);
    CREATE TABLE listing (
        app INTEGER NOT NULL, storefront TEXT NOT NULL, name TEXT, version TEXT, price TEXT,
        icon TEXT, PRIMARY KEY (app, storefront)) WITHOUT ROWID;
    CREATE TABLE listing_change (
        app INTEGER NOT NULL, seenAt REAL NOT NULL, kind TEXT NOT NULL, storefront TEXT NOT NULL,
        earlier TEXT NOT NULL, later TEXT NOT NULL,
        PRIMARY KEY (app, seenAt, kind, storefront));
    CREATE TABLE note (
        id BLOB PRIMARY KEY, app INTEGER NOT NULL, day INTEGER NOT NULL, text TEXT NOT NULL,
        writtenAt REAL NOT NULL) WITHOUT ROWID;
    CREATE TABLE tag (
        keyword INTEGER NOT NULL, name TEXT NOT NULL,
        PRIMARY KEY (keyword, name)) WITHOUT ROWID;
    PRAGMA user_version = 2;)";

std::int64_t valueOf(SqliteDatabase &database, const char *question)
{
    SqliteStatement statement = database.prepare(question);
    return statement.step() ? statement.integer(0) : 0;
}

/// A copy of what is there already is another's.
QString freeNameForCopy(const QString &path, std::int64_t found)
{
    const QFileInfo file(path);
    const QString start = QStringLiteral("%1/%2.version-%3")
                              .arg(file.path(), file.completeBaseName(), QString::number(found));
    QString name = start + QStringLiteral(".sqlite");
    for (int number = 2; !std::holds_alternative<NoFile>(lookAtFile(name)); ++number)
        name = QStringLiteral("%1-%2.sqlite").arg(start).arg(number);
    return name;
}

void keepCopy(const QString &path, std::int64_t found)
{
    constexpr qint64 piece = 1 << 20;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw unusableHistory(path, file.errorString());
    AtomicFileWriter copy(freeNameForCopy(path, found));
    for (QByteArray bytes = file.read(piece); !bytes.isEmpty(); bytes = file.read(piece))
        copy.write(bytes);
    if (!file.atEnd() || file.error() != QFileDevice::NoError)
        throw unusableHistory(path, file.errorString());
    copy.commit();
}

} // namespace

DatabaseError unusableHistory(const QString &path, const QString &reason)
{
    return DatabaseError(
        QStringLiteral("The database “%1” could not be used: %2.").arg(path, reason));
}

QByteArray newHistory()
{
    SqliteDatabase fresh = SqliteDatabase::inMemory();
    fresh.execute(measurements);
    fresh.execute(comparison);
    return fresh.content();
}

void requireHistory(SqliteDatabase &database, const QString &path)
{
    // The first look at the file undoes a commit that was interrupted, and sees when its end is
    // missing.
    if (valueOf(database, "PRAGMA application_id") != applicationId)
        throw unusableHistory(path, QStringLiteral("It is not a history of Veltrix"));
    const std::int64_t found = valueOf(database, "PRAGMA user_version");
    if (found > version)
        throw unusableHistory(path, QStringLiteral("A newer Veltrix has written it"));
    if (found < 1)
        throw unusableHistory(path, QStringLiteral("It is not a history of Veltrix"));
    if (found == version)
        return;
    // Nobody writes it while it is copied.
    SqliteTransaction transaction(database);
    keepCopy(path, found);
    database.execute(comparison);
    transaction.commit();
}

} // namespace veltrix
