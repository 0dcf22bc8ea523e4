// SPDX-License-Identifier: GPL-3.0-or-later
#include "clients/ranked_apps_database.h"

#include "effects/atomic_file.h"
#include "json/json_reader.h"
#include "json/json_writer.h"

#include <QFile>
#include <QFileInfo>
#include <QtDebug>
#include <QtEndian>

namespace veltrix
{

namespace
{

/// Says in the file's header whose it is ("VxCa"), and in which form.
constexpr std::int64_t applicationId = 0x56784361;
constexpr std::int64_t version = 1;

constexpr const char *newDatabase = R"(
    PRAGMA page_size = 8192;
    PRAGMA auto_vacuum = INCREMENTAL;
    PRAGMA application_id = 0x56784361;
    PRAGMA user_version = 1;
    CREATE TABLE listed (key BLOB PRIMARY KEY, fetchedAt REAL NOT NULL, json BLOB NOT NULL);
    CREATE TABLE whole (key BLOB PRIMARY KEY, fetchedAt REAL NOT NULL, json BLOB NOT NULL);
    CREATE INDEX listedByDate ON listed (fetchedAt);
    CREATE INDEX wholeByDate ON whole (fetchedAt);)";

/// Its journal undoes what a killed process has begun; a power cut may damage it, and then it is
/// begun anew. Nobody waits long for another that has it open.
constexpr const char *everyConnection = R"(
    PRAGMA busy_timeout = 50;
    PRAGMA journal_mode = DELETE;
    PRAGMA synchronous = OFF;
    PRAGMA temp_store = MEMORY;)";

/// How often what is too old is removed while the program runs.
constexpr Seconds sweepInterval{3'600};
/// Unpacked, an entry of the longest listings has some megabytes. What claims to have more is
/// damaged.
constexpr quint32 largestEntry = 64 * 1024 * 1024;

/// It is no database, or another's, or a later version's.
class UnusableCacheError final : public Error
{
public:
    using Error::Error;
};

QByteArray packed(const SavedResults &saved)
{
    // The level that is fastest: a better one saves a tenth and takes three times as long.
    return qCompress(toJson(saved), 1);
}

SavedResults unpacked(const QByteArray &bytes)
{
    if (bytes.size() < 4 || qFromBigEndian<quint32>(bytes.constData()) > largestEntry)
        throw UnusableCacheError(QStringLiteral("A row is damaged."));
    const QByteArray json = qUncompress(bytes);
    if (json.isEmpty())
        throw UnusableCacheError(QStringLiteral("A row is damaged."));
    return fromJson<SavedResults>(json, ListLimit{mostRankedApps});
}

std::int64_t valueOf(SqliteDatabase &database, const char *question)
{
    SqliteStatement statement = database.prepare(question);
    return statement.step() ? statement.integer(0) : 0;
}

void removeRows(SqliteDatabase &database, const char *statement, Date limit)
{
    SqliteStatement rows = database.prepare(statement);
    rows.bind(1, referenceSeconds(limit));
    rows.run();
}

} // namespace

QList<ITunesAppResult> listedResults(const QList<ITunesAppResult> &results)
{
    QList<ITunesAppResult> kept = results;
    for (ITunesAppResult &app : kept) {
        app.description.reset();
        app.screenshotUrls.reset();
        app.ipadScreenshotUrls.reset();
    }
    return kept;
}

RankedAppsDatabase::RankedAppsDatabase(QString path, qint64 sizeLimit)
    : m_path(std::move(path)), m_sizeLimit(sizeLimit)
{
}

bool RankedAppsDatabase::exists() const
{
    return QFileInfo::exists(m_path);
}

SqliteDatabase RankedAppsDatabase::open() const
{
    SqliteDatabase database(m_path);
    database.execute(everyConnection);
    if (valueOf(database, "PRAGMA application_id") != applicationId ||
        valueOf(database, "PRAGMA user_version") != version)
        throw UnusableCacheError(QStringLiteral("It is not a cache of this Veltrix."));
    return database;
}

template <class Work>
bool RankedAppsDatabase::guarded(Work &&work)
{
    try {
        work();
        return true;
    } catch (const DatabaseError &error) {
        giveUp(error, error.isDamage());
    } catch (const FileError &error) {
        giveUp(error, false);
    } catch (const EncodingError &error) {
        giveUp(error, false);
    } catch (const Error &error) {
        giveUp(error, true);
    }
    return false;
}

std::optional<SavedResults> RankedAppsDatabase::find(const QString &key)
{
    std::optional<SavedResults> found;
    if (!exists())
        return found;
    guarded([&] {
        SqliteDatabase database = open();
        for (const char *question :
             {"SELECT json FROM whole WHERE key = ?1", "SELECT json FROM listed WHERE key = ?1"}) {
            SqliteStatement row = database.prepare(question);
            row.bind(1, key.toUtf8());
            if (row.step()) {
                found = unpacked(row.bytes(0));
                return;
            }
        }
    });
    return found;
}

bool RankedAppsDatabase::insert(const std::vector<Row> &rows, Date now)
{
    return guarded([&] {
        if (!exists()) {
            SqliteDatabase fresh = SqliteDatabase::inMemory();
            fresh.execute(newDatabase);
            writeCacheFile(m_path, fresh.content());
        }
        SqliteDatabase database = open();
        SqliteTransaction transaction(database);
        SqliteStatement listed =
            database.prepare("INSERT OR REPLACE INTO listed VALUES (?1, ?2, ?3)");
        SqliteStatement whole =
            database.prepare("INSERT OR REPLACE INTO whole VALUES (?1, ?2, ?3)");
        SqliteStatement notWhole = database.prepare("DELETE FROM whole WHERE key = ?1");
        const auto insertInto = [](SqliteStatement &table, const QString &key,
                                   const SavedResults &saved) {
            table.bind(1, key.toUtf8());
            table.bind(2, referenceSeconds(saved.fetchedAt));
            table.bind(3, packed(saved));
            table.run();
        };
        for (const auto &[key, saved] : rows) {
            const SavedResults shown{saved.fetchedAt, listedResults(saved.results)};
            insertInto(listed, key, shown);
            if (shown == saved || now - saved.fetchedAt >= rankedAppsFreshness) {
                notWhole.bind(1, key.toUtf8());
                notWhole.run();
            } else {
                insertInto(whole, key, saved);
            }
        }
        sweep(database, now);
        transaction.commit();
        shrink(database);
    });
}

void RankedAppsDatabase::sweep(SqliteDatabase &database, Date now)
{
    if (m_swept && now >= *m_swept && now - *m_swept < sweepInterval)
        return;
    // A date that lies that far ahead is a wrong clock's, and would stay for good.
    removeRows(database, "DELETE FROM listed WHERE fetchedAt <= ?1", now - rankedAppsLifetime);
    removeRows(database, "DELETE FROM listed WHERE fetchedAt >= ?1", now + rankedAppsLifetime);
    removeRows(database, "DELETE FROM whole WHERE fetchedAt <= ?1", now - rankedAppsFreshness);
    removeRows(database, "DELETE FROM whole WHERE fetchedAt >= ?1", now + rankedAppsFreshness);
    m_swept = now;
}

void RankedAppsDatabase::shrink(SqliteDatabase &database) const
{
    const std::int64_t pageSize = valueOf(database, "PRAGMA page_size");
    const auto used = [&] {
        return (valueOf(database, "PRAGMA page_count") -
                valueOf(database, "PRAGMA freelist_count")) *
               pageSize;
    };
    if (used() > m_sizeLimit)
        database.execute("DELETE FROM whole");
    // A tenth at a time, so that the next row does not begin again.
    while (used() > m_sizeLimit && valueOf(database, "SELECT count(*) FROM listed") > 0) {
        database.execute("DELETE FROM listed WHERE rowid IN (SELECT rowid FROM listed ORDER BY "
                         "fetchedAt LIMIT 1 + (SELECT count(*) FROM listed) / 10)");
    }
    // What new rows will not fill soon is given back.
    constexpr std::int64_t reserve = 1024 * 1024;
    if (valueOf(database, "PRAGMA freelist_count") * pageSize > reserve)
        database.execute("PRAGMA incremental_vacuum");
}

void RankedAppsDatabase::giveUp(const Error &error, bool isUnusable)
{
    if (m_said.size() < 20 && m_said.insert(error.description()).second) {
        qWarning("The cache of ranked apps in %s %s: %s", qUtf8Printable(m_path),
                 isUnusable ? "is begun anew" : "is left out", qUtf8Printable(error.description()));
    }
    if (!isUnusable)
        return;
    for (const char *end : {"", "-journal", "-wal", "-shm"})
        QFile::remove(m_path + QLatin1String(end));
}

} // namespace veltrix
