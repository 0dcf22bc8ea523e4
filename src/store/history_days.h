// SPDX-License-Identifier: GPL-3.0-or-later
// Rows of the history that belong to a keyword and a moment, taken by UTC days.
#pragma once

#include "effects/sqlite_database.h"

#include <cstdint>
#include <vector>

namespace veltrix
{

/// Tables with the columns "keyword" and "fetchedAt" of which a keyword has one entry a day. Every
/// function throws DatabaseError and belongs into a transaction.
class HistoryDays
{
public:
    /// `tables`: their names. The first has a row for each entry.
    HistoryDays(SqliteDatabase &database, std::vector<const char *> tables);

    void remove(std::int64_t keyword, std::int64_t day);
    void removeAll(std::int64_t keyword);
    /// Gives all days of a keyword to another, and of a day that both have, the newer entry.
    void join(std::int64_t from, std::int64_t to);

private:
    template <class Use>
    void eachDate(std::int64_t keyword, Use &&use);

    SqliteDatabase &m_database;
    std::vector<QByteArray> m_tables;
    std::vector<SqliteStatement> m_removals;
};

} // namespace veltrix
