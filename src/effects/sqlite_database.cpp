// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/sqlite_database.h"

#include <QFile>

#include <cstring>
#include <sqlite3.h>
#include <utility>

namespace veltrix
{

namespace
{

[[noreturn]] void failOn(sqlite3 *database, const QString &path)
{
    const char *reason = database ? sqlite3_errmsg(database) : sqlite3_errstr(SQLITE_NOMEM);
    const int code = database ? sqlite3_errcode(database) & 0xff : SQLITE_NOMEM;
    const bool isDamaged = code == SQLITE_CORRUPT || code == SQLITE_NOTADB;
    throw DatabaseError(QStringLiteral("The database “%1” could not be used: %2.")
                            .arg(path, QString::fromUtf8(reason)),
                        isDamaged ? DatabaseError::Reason::Damaged : DatabaseError::Reason::Other);
}

} // namespace

SqliteStatement::SqliteStatement(sqlite3_stmt *statement, QString path)
    : m_statement(statement), m_path(std::move(path))
{
}

void SqliteStatement::Finalize::operator()(sqlite3_stmt *statement) const
{
    sqlite3_finalize(statement);
}

void SqliteStatement::fail() const
{
    failOn(sqlite3_db_handle(m_statement.get()), m_path);
}

void SqliteStatement::check(int code) const
{
    if (code != SQLITE_OK)
        fail();
}

void SqliteStatement::bind(int parameter, std::int64_t value)
{
    check(sqlite3_bind_int64(m_statement.get(), parameter, value));
}

void SqliteStatement::bind(int parameter, double value)
{
    check(sqlite3_bind_double(m_statement.get(), parameter, value));
}

void SqliteStatement::bind(int parameter, QByteArrayView bytes)
{
    // A null pointer would be bound as no value.
    const char *data = bytes.isEmpty() ? "" : bytes.data();
    check(sqlite3_bind_blob64(m_statement.get(), parameter, data, sqlite3_uint64(bytes.size()),
                              SQLITE_TRANSIENT));
}

void SqliteStatement::bind(int parameter, QStringView text)
{
    const QByteArray utf8 = text.toUtf8();
    check(sqlite3_bind_text64(m_statement.get(), parameter, utf8.isEmpty() ? "" : utf8.constData(),
                              sqlite3_uint64(utf8.size()), SQLITE_TRANSIENT, SQLITE_UTF8));
}

void SqliteStatement::bindNull(int parameter)
{
    check(sqlite3_bind_null(m_statement.get(), parameter));
}

bool SqliteStatement::step()
{
    const int code = sqlite3_step(m_statement.get());
    if (code == SQLITE_ROW)
        return true;
    if (code != SQLITE_DONE) {
        // The reason is the connection's until the next call.
        try {
            fail();
        } catch (const DatabaseError &) {
            reset();
            throw;
        }
    }
    reset();
    return false;
}

void SqliteStatement::run()
{
    while (step()) {
    }
}

void SqliteStatement::reset()
{
    // Says again what the last step has said.
    sqlite3_reset(m_statement.get());
}

bool SqliteStatement::isNull(int column) const
{
    return sqlite3_column_type(m_statement.get(), column) == SQLITE_NULL;
}

std::int64_t SqliteStatement::integer(int column) const
{
    return sqlite3_column_int64(m_statement.get(), column);
}

std::optional<std::int64_t> SqliteStatement::optionalInteger(int column) const
{
    if (isNull(column))
        return std::nullopt;
    return integer(column);
}

double SqliteStatement::real(int column) const
{
    return sqlite3_column_double(m_statement.get(), column);
}

QByteArray SqliteStatement::bytes(int column) const
{
    const auto *data = static_cast<const char *>(sqlite3_column_blob(m_statement.get(), column));
    return {data, sqlite3_column_bytes(m_statement.get(), column)};
}

QString SqliteStatement::text(int column) const
{
    return QString::fromUtf8(bytes(column));
}

std::optional<QString> SqliteStatement::optionalText(int column) const
{
    if (isNull(column))
        return std::nullopt;
    return text(column);
}

SqliteDatabase::SqliteDatabase(const QString &path) : SqliteDatabase(path, SQLITE_OPEN_READWRITE) {}

SqliteDatabase SqliteDatabase::inMemory()
{
    return {QStringLiteral(":memory:"), SQLITE_OPEN_READWRITE | SQLITE_OPEN_MEMORY};
}

SqliteDatabase::SqliteDatabase(const QString &path, int flags) : m_path(path)
{
    sqlite3 *database = nullptr;
    const int code = sqlite3_open_v2(QFile::encodeName(path).constData(), &database,
                                     flags | SQLITE_OPEN_NOMUTEX, nullptr);
    // A failed open gives a connection that knows why.
    m_database.reset(database);
    if (code != SQLITE_OK)
        failOn(database, m_path);
}

void SqliteDatabase::Close::operator()(sqlite3 *database) const
{
    sqlite3_close_v2(database);
}

void SqliteDatabase::execute(const char *statements)
{
    if (sqlite3_exec(m_database.get(), statements, nullptr, nullptr, nullptr) != SQLITE_OK)
        failOn(m_database.get(), m_path);
}

SqliteStatement SqliteDatabase::prepare(const char *statement)
{
    sqlite3_stmt *prepared = nullptr;
    const int code = sqlite3_prepare_v3(m_database.get(), statement, int(std::strlen(statement)),
                                        SQLITE_PREPARE_PERSISTENT, &prepared, nullptr);
    if (code != SQLITE_OK)
        failOn(m_database.get(), m_path);
    return {prepared, m_path};
}

QByteArray SqliteDatabase::content() const
{
    sqlite3_int64 size = 0;
    const std::unique_ptr<unsigned char, decltype(&sqlite3_free)> bytes(
        sqlite3_serialize(m_database.get(), "main", &size, 0), sqlite3_free);
    if (!bytes)
        failOn(nullptr, m_path);
    return {reinterpret_cast<const char *>(bytes.get()), qsizetype(size)};
}

SqliteTransaction::SqliteTransaction(SqliteDatabase &database) : m_database(database)
{
    m_database.execute("BEGIN IMMEDIATE");
}

SqliteTransaction::~SqliteTransaction()
{
    if (!m_isOpen)
        return;
    try {
        m_database.execute("ROLLBACK");
    } catch (const DatabaseError &) {
        // Some failures have undone it already.
    }
}

void SqliteTransaction::commit()
{
    m_database.execute("COMMIT");
    m_isOpen = false;
}

} // namespace veltrix
