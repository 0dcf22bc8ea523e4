// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/record_numbers.h"

namespace veltrix
{

RecordNumbers::RecordNumbers(SqliteDatabase &database, const char *table)
    : m_database(database), m_table(table),
      m_find(database.prepare(
          QByteArray("SELECT number FROM " + m_table + " WHERE id = ?1").constData()))
{
}

std::optional<std::int64_t> RecordNumbers::known(const QUuid &id)
{
    m_find.bind(1, id.toRfc4122());
    const bool isThere = m_find.step();
    const std::optional<std::int64_t> number =
        isThere ? std::optional(m_find.integer(0)) : std::nullopt;
    m_find.reset();
    return number;
}

std::int64_t RecordNumbers::of(const QUuid &id)
{
    if (const auto number = known(id))
        return *number;
    const QByteArray addition = "INSERT INTO " + m_table + " (id) VALUES (?1)";
    SqliteStatement add = m_database.prepare(addition.constData());
    add.bind(1, id.toRfc4122());
    add.run();
    return known(id).value();
}

void RecordNumbers::remove(std::int64_t number)
{
    const QByteArray removal = "DELETE FROM " + m_table + " WHERE number = ?1";
    SqliteStatement forget = m_database.prepare(removal.constData());
    forget.bind(1, number);
    forget.run();
}

} // namespace veltrix
