// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/note_records.h"

namespace veltrix
{

NoteRecords::NoteRecords(SqliteDatabase &database)
    : m_database(database), m_keywords(database, "keyword"), m_apps(database, "app")
{
}

void NoteRecords::put(const AppNote &note)
{
    SqliteStatement put =
        m_database.prepare("INSERT OR REPLACE INTO note VALUES (?1, ?2, ?3, ?4, ?5)");
    put.bind(1, note.id.toRfc4122());
    put.bind(2, m_apps.of(note.appId));
    put.bind(3, note.day);
    put.bind(4, note.text);
    put.bind(5, referenceSeconds(note.writtenAt));
    put.run();
}

void NoteRecords::removeNote(const QUuid &id)
{
    SqliteStatement remove = m_database.prepare("DELETE FROM note WHERE id = ?1");
    remove.bind(1, id.toRfc4122());
    remove.run();
}

void NoteRecords::setTag(const SetTag &edit)
{
    SqliteStatement statement =
        m_database.prepare(edit.isOn ? "INSERT OR REPLACE INTO tag VALUES (?1, ?2)"
                                     : "DELETE FROM tag WHERE keyword = ?1 AND name = ?2");
    statement.bind(1, m_keywords.of(edit.keywordId));
    statement.bind(2, edit.tag);
    statement.run();
}

WrittenNotes NoteRecords::all()
{
    WrittenNotes written;
    SqliteStatement tags = m_database.prepare(
        "SELECT keyword.id, tag.name FROM tag JOIN keyword ON keyword.number = tag.keyword");
    while (tags.step())
        written.tags.push_back({QUuid::fromRfc4122(tags.bytes(0)), tags.text(1)});
    SqliteStatement notes =
        m_database.prepare("SELECT note.id, app.id, note.day, note.text, note.writtenAt FROM note "
                           "JOIN app ON app.number = note.app");
    while (notes.step()) {
        written.notes.push_back({QUuid::fromRfc4122(notes.bytes(0)),
                                 QUuid::fromRfc4122(notes.bytes(1)), notes.integer(2),
                                 notes.text(3), dateFromReferenceSeconds(notes.real(4))});
    }
    return written;
}

void NoteRecords::removeKeyword(std::int64_t keyword)
{
    run("DELETE FROM tag WHERE keyword = ?1", keyword);
}

void NoteRecords::joinKeyword(std::int64_t from, std::int64_t to)
{
    run("UPDATE OR IGNORE tag SET keyword = ?2 WHERE keyword = ?1", from, to);
    removeKeyword(from);
}

void NoteRecords::removeApp(std::int64_t app)
{
    run("DELETE FROM note WHERE app = ?1", app);
}

void NoteRecords::joinApp(std::int64_t from, std::int64_t to)
{
    run("UPDATE note SET app = ?2 WHERE app = ?1", from, to);
}

void NoteRecords::run(const char *statement, std::int64_t first)
{
    SqliteStatement prepared = m_database.prepare(statement);
    prepared.bind(1, first);
    prepared.run();
}

void NoteRecords::run(const char *statement, std::int64_t first, std::int64_t second)
{
    SqliteStatement prepared = m_database.prepare(statement);
    prepared.bind(1, first);
    prepared.bind(2, second);
    prepared.run();
}

} // namespace veltrix
