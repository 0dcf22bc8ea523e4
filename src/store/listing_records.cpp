// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/listing_records.h"

#include "json/json_error.h"
#include "store/listing_watch.h"

#include <QHash>

#include <algorithm>
#include <array>

namespace veltrix
{

namespace
{

/// The words of the column "kind".
constexpr std::array kindWords{
    std::pair{ListingChangeKind::Name, QLatin1String("name")},
    std::pair{ListingChangeKind::Version, QLatin1String("version")},
    std::pair{ListingChangeKind::Price, QLatin1String("price")},
    std::pair{ListingChangeKind::Icon, QLatin1String("icon")},
};

QString wordOf(ListingChangeKind kind)
{
    return std::ranges::find(kindWords, kind, &decltype(kindWords)::value_type::first)->second;
}

ListingChangeKind kindFrom(const QString &word)
{
    const auto known = std::ranges::find(kindWords, word, &decltype(kindWords)::value_type::second);
    if (known == kindWords.end())
        throw DecodingError(QStringLiteral("A record of the history is damaged."));
    return known->first;
}

ListingFacts factsFrom(const SqliteStatement &row, int column)
{
    return {row.optionalText(column), row.optionalText(column + 1), row.optionalText(column + 2),
            row.optionalText(column + 3)};
}

void runFor(SqliteDatabase &database, std::int64_t first, std::int64_t second,
            std::initializer_list<const char *> statements)
{
    for (const char *text : statements) {
        SqliteStatement statement = database.prepare(text);
        statement.bind(1, first);
        statement.bind(2, second);
        statement.run();
    }
}

} // namespace

ListingRecords::ListingRecords(SqliteDatabase &database)
    : m_database(database),
      m_seen(database.prepare(
          "SELECT name, version, price, icon FROM listing WHERE app = ?1 AND storefront = ?2")),
      m_since(database.prepare("SELECT since FROM app WHERE number = ?1"))
{
}

bool ListingRecords::begin(std::int64_t app, Date since)
{
    if (sinceOf(app))
        return false;
    SqliteStatement note = m_database.prepare("UPDATE app SET since = ?2 WHERE number = ?1");
    note.bind(1, app);
    note.bind(2, referenceSeconds(since));
    note.run();
    return true;
}

bool ListingRecords::see(std::int64_t app, const ListingFacts &facts, const QString &storefront,
                         Date now)
{
    m_seen.bind(1, app);
    m_seen.bind(2, storefront);
    QHash<QString, ListingFacts> seen;
    if (m_seen.step())
        seen.insert(storefront, factsFrom(m_seen, 0));
    m_seen.reset();
    const ListingFacts known = seen.value(storefront);
    // Nearly always nothing has changed.
    if (facts == known)
        return false;
    ListingWatch watch(std::move(seen), changesOf(app));
    const std::vector<ListingChange> changes = watch.see(facts, storefront, now);
    if (watch.seen().value(storefront) != known)
        keep(app, watch.seen().value(storefront), storefront);
    SqliteStatement add =
        m_database.prepare("INSERT OR REPLACE INTO listing_change VALUES (?1, ?2, ?3, ?4, ?5, ?6)");
    for (const ListingChange &change : changes) {
        add.bind(1, app);
        add.bind(2, referenceSeconds(change.seenAt));
        add.bind(3, wordOf(change.kind));
        add.bind(4, change.storefront);
        add.bind(5, change.earlier);
        add.bind(6, change.later);
        add.run();
    }
    return !changes.empty();
}

void ListingRecords::keep(std::int64_t app, const ListingFacts &facts, const QString &storefront)
{
    SqliteStatement keep =
        m_database.prepare("INSERT OR REPLACE INTO listing VALUES (?1, ?2, ?3, ?4, ?5, ?6)");
    keep.bind(1, app);
    keep.bind(2, storefront);
    int column = 3;
    for (const auto &fact : {facts.name, facts.version, facts.price, facts.icon}) {
        if (fact)
            keep.bind(column, *fact);
        else
            keep.bindNull(column);
        ++column;
    }
    keep.run();
}

std::vector<ListingChange> ListingRecords::changesOf(std::int64_t app)
{
    std::vector<ListingChange> changes;
    SqliteStatement all =
        m_database.prepare("SELECT seenAt, kind, storefront, earlier, later FROM listing_change "
                           "WHERE app = ?1 ORDER BY seenAt, rowid");
    all.bind(1, app);
    while (all.step()) {
        changes.push_back({kindFrom(all.text(1)), dateFromReferenceSeconds(all.real(0)),
                           all.text(2), all.text(3), all.text(4)});
    }
    return changes;
}

ListingHistory ListingRecords::of(std::int64_t app)
{
    ListingHistory history;
    history.since = sinceOf(app);
    history.changes = changesOf(app);
    return history;
}

std::optional<Date> ListingRecords::sinceOf(std::int64_t app)
{
    m_since.bind(1, app);
    std::optional<Date> since;
    if (m_since.step() && !m_since.isNull(0))
        since = dateFromReferenceSeconds(m_since.real(0));
    m_since.reset();
    return since;
}

void ListingRecords::remove(std::int64_t app)
{
    for (const char *statement :
         {"DELETE FROM listing WHERE app = ?1", "DELETE FROM listing_change WHERE app = ?1"}) {
        SqliteStatement rows = m_database.prepare(statement);
        rows.bind(1, app);
        rows.run();
    }
}

void ListingRecords::join(std::int64_t from, std::int64_t to)
{
    runFor(m_database, from, to,
           {"UPDATE OR IGNORE listing SET app = ?2 WHERE app = ?1",
            "UPDATE OR IGNORE listing_change SET app = ?2 WHERE app = ?1",
            "UPDATE app SET since = (SELECT min(since) FROM app WHERE number IN (?1, ?2)) WHERE "
            "number = ?2"});
    remove(from);
}

} // namespace veltrix
