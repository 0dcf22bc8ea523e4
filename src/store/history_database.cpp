// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/history_database.h"

#include "effects/atomic_file.h"
#include "store/history_days.h"
#include "store/history_schema.h"
#include "store/listing_records.h"
#include "store/note_records.h"
#include "store/record_numbers.h"
#include "store/standing_records.h"

#include <QHash>

#include <algorithm>

namespace veltrix
{

namespace
{

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

/// Does edits, one after another.
class HistoryEdits
{
public:
    explicit HistoryEdits(SqliteDatabase &database)
        : m_apps(database, "app"), m_standings(database), m_listings(database), m_notes(database)
    {
    }

    void operator()(const KeepStandings &edit)
    {
        const Date now = edit.standings.fetchedAt;
        m_standings.put(edit.standings);
        m_applied.keywords.insert(edit.standings.keywordId);
        for (const WatchedApp &watched : edit.watched) {
            const std::int64_t app = m_apps.of(watched.id);
            bool isNews = m_listings.begin(app, now);
            if (watched.facts)
                isNews |= m_listings.see(app, *watched.facts, edit.storefront, now);
            if (isNews)
                m_applied.listings.insert(watched.id);
        }
    }
    void operator()(const BeginWatching &edit)
    {
        if (m_listings.begin(m_apps.of(edit.id), edit.since))
            m_applied.listings.insert(edit.id);
    }
    void operator()(const PutNote &edit) { m_notes.put(edit.note); }
    void operator()(const RemoveNote &edit) { m_notes.removeNote(edit.id); }
    void operator()(const SetTag &edit) { m_notes.setTag(edit); }

    [[nodiscard]] AppliedEdits applied() const { return m_applied; }

private:
    RecordNumbers m_apps;
    StandingRecords m_standings;
    ListingRecords m_listings;
    NoteRecords m_notes;
    AppliedEdits m_applied;
};

QByteArray key(const QUuid &id)
{
    return id.toRfc4122();
}

/// Measurements of a keyword and a day.
HistoryDays measuredDays(SqliteDatabase &database)
{
    return {database, {"observation", "detail"}};
}

} // namespace

std::optional<HistoryDatabase> HistoryDatabase::open(const QString &path)
{
    const FileLook look = lookAtFile(path);
    if (std::holds_alternative<NoFile>(look))
        return std::nullopt;
    if (const auto *unknown = std::get_if<UnknownFile>(&look))
        throw unusableHistory(path, unknown->reason);
    // A database without any content is a new one to the library.
    if (std::get<FileIdentity>(look).size == 0)
        throw unusableHistory(path, QStringLiteral("The file is empty"));
    HistoryDatabase database(path);
    requireHistory(database.m_database, path);
    return database;
}

HistoryDatabase HistoryDatabase::openOrCreate(const QString &path)
{
    auto database = open(path);
    if (!database) {
        writeFileAtomically(path, newHistory());
        database = open(path);
    }
    database->m_database.execute(roomForASlice);
    return std::move(database.value());
}

HistoryDatabase::HistoryDatabase(const QString &path) : m_database(path)
{
    m_database.execute(everyConnection);
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
    RecordNumbers keywords(m_database, "keyword");
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
            numbers.insert(keyword, keywords.of(keyword));
        rows.push_back({numbers.value(keyword), snapshot->fetchedAt, snapshot.get()});
    }
    std::ranges::sort(rows, {}, [](const Row &row) { return std::pair(row.keyword, row.date); });
    HistoryDays days = measuredDays(m_database);
    for (const Row &row : rows)
        days.remove(row.keyword, utcDay(row.date));
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

void HistoryDatabase::noteRemoval(std::span<const QUuid> ids)
{
    SqliteTransaction transaction(m_database);
    SqliteStatement note = m_database.prepare("INSERT OR IGNORE INTO removal VALUES (?1)");
    for (const QUuid &id : ids) {
        note.bind(1, key(id));
        note.run();
    }
    transaction.commit();
}

void HistoryDatabase::dropRemovalNotes(std::span<const QUuid> ids)
{
    SqliteTransaction transaction(m_database);
    SqliteStatement drop = m_database.prepare("DELETE FROM removal WHERE keyword = ?1");
    for (const QUuid &id : ids) {
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

void HistoryDatabase::remove(const QUuid &id)
{
    SqliteTransaction transaction(m_database);
    RecordNumbers keywords(m_database, "keyword");
    RecordNumbers apps(m_database, "app");
    if (const auto number = keywords.known(id)) {
        measuredDays(m_database).removeAll(*number);
        StandingRecords(m_database).removeKeyword(*number);
        NoteRecords(m_database).removeKeyword(*number);
        keywords.remove(*number);
    }
    if (const auto number = apps.known(id)) {
        StandingRecords(m_database).removeRival(*number);
        ListingRecords(m_database).remove(*number);
        NoteRecords(m_database).removeApp(*number);
        apps.remove(*number);
    }
    forgetRemoval(id);
    transaction.commit();
}

void HistoryDatabase::join(const QUuid &from, const QUuid &to)
{
    SqliteTransaction transaction(m_database);
    RecordNumbers keywords(m_database, "keyword");
    RecordNumbers apps(m_database, "app");
    if (const auto source = keywords.known(from)) {
        const std::int64_t target = keywords.of(to);
        measuredDays(m_database).join(*source, target);
        StandingRecords(m_database).joinKeyword(*source, target);
        NoteRecords(m_database).joinKeyword(*source, target);
        keywords.remove(*source);
    }
    if (const auto source = apps.known(from)) {
        const std::int64_t target = apps.of(to);
        StandingRecords(m_database).joinRival(*source, target);
        ListingRecords(m_database).join(*source, target);
        NoteRecords(m_database).joinApp(*source, target);
        apps.remove(*source);
    }
    forgetRemoval(from);
    transaction.commit();
}

void HistoryDatabase::forgetRemoval(const QUuid &id)
{
    SqliteStatement note = m_database.prepare("DELETE FROM removal WHERE keyword = ?1");
    note.bind(1, key(id));
    note.run();
}

AppliedEdits HistoryDatabase::apply(std::span<const HistoryEdit> edits)
{
    SqliteTransaction transaction(m_database);
    HistoryEdits work(m_database);
    for (const HistoryEdit &edit : edits)
        std::visit(work, edit);
    transaction.commit();
    return work.applied();
}

std::vector<KeywordStandings> HistoryDatabase::standings(const QUuid &keywordId)
{
    return StandingRecords(m_database).ofKeyword(keywordId);
}

std::vector<KeywordStandings> HistoryDatabase::newestStandings(std::span<const QUuid> keywordIds,
                                                               Date latest)
{
    return StandingRecords(m_database).newest(keywordIds, latest);
}

ListingHistory HistoryDatabase::listingHistory(const QUuid &appId)
{
    const auto app = RecordNumbers(m_database, "app").known(appId);
    return app ? ListingRecords(m_database).of(*app) : ListingHistory();
}

WrittenNotes HistoryDatabase::writtenNotes()
{
    return NoteRecords(m_database).all();
}

} // namespace veltrix
