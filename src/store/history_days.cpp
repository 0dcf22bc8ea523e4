// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/history_days.h"

#include "model/date.h"

#include <algorithm>
#include <map>
#include <set>

namespace veltrix
{

HistoryDays::HistoryDays(SqliteDatabase &database, std::vector<const char *> tables)
    : m_database(database), m_tables(tables.begin(), tables.end())
{
    for (const QByteArray &table : m_tables) {
        const QByteArray removal =
            "DELETE FROM " + table + " WHERE keyword = ?1 AND fetchedAt >= ?2 AND fetchedAt < ?3";
        m_removals.push_back(database.prepare(removal.constData()));
    }
}

void HistoryDays::remove(std::int64_t keyword, std::int64_t day)
{
    for (SqliteStatement &removal : m_removals) {
        removal.bind(1, keyword);
        removal.bind(2, referenceSeconds(startOfUtcDay(day)));
        removal.bind(3, referenceSeconds(startOfUtcDay(day + 1)));
        removal.run();
    }
}

void HistoryDays::removeAll(std::int64_t keyword)
{
    for (const QByteArray &table : m_tables) {
        const QByteArray removal = "DELETE FROM " + table + " WHERE keyword = ?1";
        SqliteStatement rows = m_database.prepare(removal.constData());
        rows.bind(1, keyword);
        rows.run();
    }
}

template <class Use>
void HistoryDays::eachDate(std::int64_t keyword, Use &&use)
{
    const QByteArray question = "SELECT fetchedAt FROM " + m_tables.front() + " WHERE keyword = ?1";
    SqliteStatement dates = m_database.prepare(question.constData());
    dates.bind(1, keyword);
    while (dates.step())
        use(utcDay(dateFromReferenceSeconds(dates.real(0))), dates.real(0));
}

void HistoryDays::join(std::int64_t from, std::int64_t to)
{
    std::map<std::int64_t, double> newest;
    eachDate(to, [&](std::int64_t day, double date) {
        newest[day] = std::max(newest.try_emplace(day, date).first->second, date);
    });
    std::set<std::int64_t> older;
    std::set<std::int64_t> newer;
    eachDate(from, [&](std::int64_t day, double date) {
        const auto known = newest.find(day);
        if (known != newest.end())
            (date > known->second ? newer : older).insert(day);
    });
    for (const std::int64_t day : newer)
        remove(to, day);
    for (const std::int64_t day : older)
        remove(from, day);
    for (const QByteArray &table : m_tables) {
        const QByteArray change = "UPDATE " + table + " SET keyword = ?2 WHERE keyword = ?1";
        SqliteStatement move = m_database.prepare(change.constData());
        move.bind(1, from);
        move.bind(2, to);
        move.run();
    }
}

} // namespace veltrix
