// SPDX-License-Identifier: GPL-3.0-or-later
// The user's notes and tags, as the history keeps them.
#pragma once

#include "store/history_edit.h"
#include "store/record_numbers.h"

namespace veltrix
{

/// The tables "note" and "tag". Every function throws DatabaseError; what changes something belongs
/// into a transaction.
class NoteRecords
{
public:
    explicit NoteRecords(SqliteDatabase &database);

    void put(const AppNote &note);
    void removeNote(const QUuid &id);
    void setTag(const SetTag &edit);
    /// All there are.
    [[nodiscard]] WrittenNotes all();

    void removeKeyword(std::int64_t keyword);
    void joinKeyword(std::int64_t from, std::int64_t to);
    void removeApp(std::int64_t app);
    void joinApp(std::int64_t from, std::int64_t to);

private:
    void run(const char *statement, std::int64_t first);
    void run(const char *statement, std::int64_t first, std::int64_t second);

    SqliteDatabase &m_database;
    RecordNumbers m_keywords;
    RecordNumbers m_apps;
};

} // namespace veltrix
