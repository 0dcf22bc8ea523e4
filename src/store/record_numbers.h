// SPDX-License-Identifier: GPL-3.0-or-later
// Small numbers in the place of ids that stand in many rows.
#pragma once

#include "effects/sqlite_database.h"

#include <QUuid>

#include <cstdint>
#include <optional>

namespace veltrix
{

/// A table of the history with the columns "number" and "id". Every function throws DatabaseError.
class RecordNumbers
{
public:
    /// `table`: its name.
    RecordNumbers(SqliteDatabase &database, const char *table);

    [[nodiscard]] std::optional<std::int64_t> known(const QUuid &id);
    /// Gives one to an id that has none.
    std::int64_t of(const QUuid &id);
    void remove(std::int64_t number);

private:
    SqliteDatabase &m_database;
    QByteArray m_table;
    SqliteStatement m_find;
};

} // namespace veltrix
