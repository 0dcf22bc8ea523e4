// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/history_database.h"

#include "effects/atomic_file.h"

#include <QHash>

#include <algorithm>
#include <map>
#include <set>

namespace veltrix
{

namespace
{

/// Says in the file's header whose it is ("VxHi"), and in which form.
constexpr std::int64_t applicationId = 0x56784869;
constexpr std::int64_t version = 1;

constexpr const char *newDatabase = R"(
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
    CREATE TABLE removal (keyword BLOB PRIMARY KEY) WITHOUT ROWID;)";

/// A backup that reads meanwhile is waited for. A commit outlasts a power cut, and so does the name
/// of the journal that undoes half of one.
constexpr const char *everyConnection = R"(
    PRAGMA busy_timeout = 2000;
    PRAGMA journal_mode = DELETE;
    PRAGMA synchronous = EXTRA;
    PRAGMA temp_store = MEMORY;)";

/// Adding a day of many keywords touches a page of each; those of a step, some megabytes, are
/// written once.
constexpr const char *roomForASlice = "PRAGMA cache_size = -16384";

DatabaseError unusable(const QString &path, const QString &reason)
{
    return DatabaseError(
        QStringLiteral("The database “%1” could not be used: %2.").arg(path, reason));
}

std::int64_t valueOf(SqliteDatabase &database, const char *question)
{
    SqliteStatement statement = database.prepare(question);
    return statement.step() ? statement.integer(0) : 0;
}

QByteArray key(const QUuid &id)
{
    return id.toRfc4122();
}

/// Removes days of keywords.
class DayRemoval
{
public:
    explicit DayRemoval(SqliteDatabase &database)
        : m_observation(database.prepare(
              "DELETE FROM observation WHERE keyword = ?1 AND fetchedAt >= ?2 AND fetchedAt < ?3")),
          m_detail(database.prepare(
              "DELETE FROM detail WHERE keyword = ?1 AND fetchedAt >= ?2 AND fetchedAt < ?3"))
    {
    }

    void remove(std::int64_t keyword, std::int64_t day)
    {
        for (SqliteStatement *statement : {&m_observation, &m_detail}) {
            statement->bind(1, keyword);
            statement->bind(2, referenceSeconds(startOfUtcDay(day)));
            statement->bind(3, referenceSeconds(startOfUtcDay(day + 1)));
            statement->run();
        }
    }

private:
    SqliteStatement m_observation;
    SqliteStatement m_detail;
};

} // namespace

std::optional<HistoryDatabase> HistoryDatabase::open(const QString &path)
{
    const FileLook look = lookAtFile(path);
    if (std::holds_alternative<NoFile>(look))
        return std::nullopt;
    if (const auto *unknown = std::get_if<UnknownFile>(&look))
        throw unusable(path, unknown->reason);
    // A database without any content is a new one to the library.
    if (std::get<FileIdentity>(look).size == 0)
        throw unusable(path, QStringLiteral("The file is empty"));
    HistoryDatabase database(path);
    database.requireOwn(path);
    return database;
}

HistoryDatabase HistoryDatabase::openOrCreate(const QString &path)
{
    auto database = open(path);
    if (!database) {
        SqliteDatabase fresh = SqliteDatabase::inMemory();
        fresh.execute(newDatabase);
        writeFileAtomically(path, fresh.content());
        database = open(path);
    }
    database->m_database.execute(roomForASlice);
    return std::move(database.value());
}

HistoryDatabase::HistoryDatabase(const QString &path) : m_database(path)
{
    m_database.execute(everyConnection);
}

void HistoryDatabase::requireOwn(const QString &path)
{
    // The first look at the file undoes a commit that was interrupted, and sees when its end is
    // missing.
    if (valueOf(m_database, "PRAGMA application_id") != applicationId)
        throw unusable(path, QStringLiteral("It is not a history of Veltrix"));
    const std::int64_t found = valueOf(m_database, "PRAGMA user_version");
    if (found > version)
        throw unusable(path, QStringLiteral("A newer Veltrix has written it"));
    if (found != version)
        throw unusable(path, QStringLiteral("It is not a history of Veltrix"));
}

std::optional<std::int64_t> HistoryDatabase::knownNumberOf(const QUuid &keywordId)
{
    SqliteStatement find = m_database.prepare("SELECT number FROM keyword WHERE id = ?1");
    find.bind(1, key(keywordId));
    return find.step() ? std::optional(find.integer(0)) : std::nullopt;
}

std::int64_t HistoryDatabase::numberOf(const QUuid &keywordId)
{
    SqliteStatement add = m_database.prepare("INSERT OR IGNORE INTO keyword (id) VALUES (?1)");
    add.bind(1, key(keywordId));
    add.run();
    return knownNumberOf(keywordId).value();
}

bool HistoryDatabase::contains(const KeywordSnapshot &snapshot)
{
    if (!m_find) {
        m_find = m_database.prepare(
            "SELECT 1 FROM detail WHERE keyword = (SELECT number FROM keyword WHERE id = ?1) AND "
            "fetchedAt = ?2 AND id = ?3");
    }
    m_find->bind(1, key(snapshot.trackedKeywordId));
    m_find->bind(2, referenceSeconds(snapshot.fetchedAt));
    m_find->bind(3, key(snapshot.id));
    const bool isThere = m_find->step();
    m_find->reset();
    return isThere;
}

void HistoryDatabase::insert(std::span<const SharedSnapshot> snapshots)
{
    SqliteTransaction transaction(m_database);
    QHash<QUuid, std::int64_t> numbers;
    // They come day by day and lie keyword by keyword: in that order each page has its turn once.
    struct Row {
        std::int64_t keyword;
        Date date;
        const KeywordSnapshot *snapshot;
    };
    std::vector<Row> rows;
    for (const SharedSnapshot &snapshot : snapshots) {
        const QUuid &keyword = snapshot->trackedKeywordId;
        if (!numbers.contains(keyword))
            numbers.insert(keyword, numberOf(keyword));
        rows.push_back({numbers.value(keyword), snapshot->fetchedAt, snapshot.get()});
    }
    std::ranges::sort(rows, {}, [](const Row &row) { return std::pair(row.keyword, row.date); });
    DayRemoval removal(m_database);
    for (const Row &row : rows)
        removal.remove(row.keyword, utcDay(row.date));
    SqliteStatement observation =
        m_database.prepare("INSERT INTO observation VALUES (?1, ?2, ?3, ?4)");
    SqliteStatement detail = m_database.prepare("INSERT INTO detail VALUES (?1, ?2, ?3, ?4)");
    for (const auto &[keyword, date, snapshot] : rows) {
        for (SqliteStatement *statement : {&observation, &detail}) {
            statement->bind(1, keyword);
            statement->bind(2, referenceSeconds(date));
            statement->bind(3, key(snapshot->id));
        }
        if (snapshot->position)
            observation.bind(4, *snapshot->position);
        else
            observation.bindNull(4);
        observation.run();
        detail.bind(4, m_records.pack(*snapshot));
        detail.run();
    }
    transaction.commit();
}

std::vector<RankingTimeline::Observation> HistoryDatabase::observations(const QUuid &keywordId)
{
    std::vector<RankingTimeline::Observation> result;
    SqliteStatement find = m_database.prepare(
        "SELECT fetchedAt, id, position FROM observation WHERE keyword = (SELECT number FROM "
        "keyword WHERE id = ?1) ORDER BY fetchedAt, id");
    find.bind(1, key(keywordId));
    while (find.step()) {
        result.push_back({QUuid::fromRfc4122(find.bytes(1)), dateFromReferenceSeconds(find.real(0)),
                          find.optionalInteger(2)});
    }
    return result;
}

void HistoryDatabase::eachRank(
    std::span<const QUuid> keywordIds,
    const std::function<void(size_t place, Date date, std::optional<std::int64_t> position)> &use)
{
    SqliteStatement find = m_database.prepare(
        "SELECT fetchedAt, position FROM observation WHERE keyword = (SELECT number FROM keyword "
        "WHERE id = ?1) ORDER BY fetchedAt, id");
    for (size_t place = 0; place < keywordIds.size(); ++place) {
        find.bind(1, key(keywordIds[place]));
        while (find.step())
            use(place, dateFromReferenceSeconds(find.real(0)), find.optionalInteger(1));
    }
}

std::vector<SharedSnapshot> HistoryDatabase::records(const QUuid &keywordId, std::int64_t firstDay,
                                                     size_t most)
{
    std::vector<SharedSnapshot> result;
    SqliteStatement find = m_database.prepare(
        "SELECT json FROM detail WHERE keyword = (SELECT number FROM keyword WHERE id = ?1) AND "
        "fetchedAt >= ?2 ORDER BY fetchedAt, id LIMIT ?3");
    find.bind(1, key(keywordId));
    find.bind(2, referenceSeconds(startOfUtcDay(firstDay)));
    find.bind(3, std::int64_t(most));
    while (find.step()) {
        auto snapshot = std::make_shared<KeywordSnapshot>(m_records.unpack(find.bytes(0)));
        // It may have been measured for a keyword that has joined this one.
        snapshot->trackedKeywordId = keywordId;
        result.push_back(std::move(snapshot));
    }
    return result;
}

void HistoryDatabase::noteRemoval(std::span<const QUuid> keywordIds)
{
    SqliteTransaction transaction(m_database);
    SqliteStatement note = m_database.prepare("INSERT OR IGNORE INTO removal VALUES (?1)");
    for (const QUuid &id : keywordIds) {
        note.bind(1, key(id));
        note.run();
    }
    transaction.commit();
}

void HistoryDatabase::dropRemovalNotes(std::span<const QUuid> keywordIds)
{
    SqliteTransaction transaction(m_database);
    SqliteStatement drop = m_database.prepare("DELETE FROM removal WHERE keyword = ?1");
    for (const QUuid &id : keywordIds) {
        drop.bind(1, key(id));
        drop.run();
    }
    transaction.commit();
}

std::vector<QUuid> HistoryDatabase::removalNotes()
{
    std::vector<QUuid> result;
    SqliteStatement all = m_database.prepare("SELECT keyword FROM removal");
    while (all.step())
        result.push_back(QUuid::fromRfc4122(all.bytes(0)));
    return result;
}

void HistoryDatabase::remove(const QUuid &keywordId)
{
    SqliteTransaction transaction(m_database);
    if (const auto number = knownNumberOf(keywordId)) {
        for (const char *statement :
             {"DELETE FROM observation WHERE keyword = ?1", "DELETE FROM detail WHERE keyword = ?1",
              "DELETE FROM keyword WHERE number = ?1"}) {
            SqliteStatement rows = m_database.prepare(statement);
            rows.bind(1, *number);
            rows.run();
        }
    }
    SqliteStatement note = m_database.prepare("DELETE FROM removal WHERE keyword = ?1");
    note.bind(1, key(keywordId));
    note.run();
    transaction.commit();
}

void HistoryDatabase::join(const QUuid &from, const QUuid &to)
{
    SqliteTransaction transaction(m_database);
    if (const auto source = knownNumberOf(from)) {
        const std::int64_t target = numberOf(to);
        std::map<std::int64_t, double> newest;
        const auto each = [this](std::int64_t keyword, auto &&use) {
            SqliteStatement dates =
                m_database.prepare("SELECT fetchedAt FROM observation WHERE keyword = ?1");
            dates.bind(1, keyword);
            while (dates.step())
                use(utcDay(dateFromReferenceSeconds(dates.real(0))), dates.real(0));
        };
        each(target, [&](std::int64_t day, double date) {
            newest[day] = std::max(newest.try_emplace(day, date).first->second, date);
        });
        std::set<std::int64_t> older;
        std::set<std::int64_t> newer;
        each(*source, [&](std::int64_t day, double date) {
            const auto known = newest.find(day);
            if (known != newest.end())
                (date > known->second ? newer : older).insert(day);
        });
        DayRemoval removal(m_database);
        for (const std::int64_t day : newer)
            removal.remove(target, day);
        for (const std::int64_t day : older)
            removal.remove(*source, day);
        for (const char *statement : {"UPDATE observation SET keyword = ?2 WHERE keyword = ?1",
                                      "UPDATE detail SET keyword = ?2 WHERE keyword = ?1"}) {
            SqliteStatement move = m_database.prepare(statement);
            move.bind(1, *source);
            move.bind(2, target);
            move.run();
        }
        SqliteStatement forget = m_database.prepare("DELETE FROM keyword WHERE number = ?1");
        forget.bind(1, *source);
        forget.run();
    }
    SqliteStatement note = m_database.prepare("DELETE FROM removal WHERE keyword = ?1");
    note.bind(1, key(from));
    note.run();
    transaction.commit();
}

} // namespace veltrix
