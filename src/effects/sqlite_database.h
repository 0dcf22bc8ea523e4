// SPDX-License-Identifier: GPL-3.0-or-later
// Databases in one file.
#pragma once

#include "model/error.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QStringView>

#include <cstdint>
#include <memory>
#include <optional>

struct sqlite3;
struct sqlite3_stmt;

namespace veltrix
{

/// A database could not be opened, read or written. The description names the file and says why.
class DatabaseError final : public Error
{
public:
    enum class Reason {
        /// The file is none, or part of it is not what it should be.
        Damaged,
        Other,
    };

    explicit DatabaseError(QString description, Reason reason = Reason::Other)
        : Error(std::move(description)), m_reason(reason)
    {
    }
    [[nodiscard]] bool isDamage() const { return m_reason == Reason::Damaged; }

private:
    Reason m_reason;
};

/// One statement of a database, prepared once and run as often as is needed. Parameters are counted
/// from 1, columns from 0. Every function throws DatabaseError when it fails.
class SqliteStatement
{
public:
    // They keep their values from run to run.
    void bind(int parameter, std::int64_t value);
    void bind(int parameter, double value);
    /// Copies the bytes.
    void bind(int parameter, QByteArrayView bytes);
    /// Copies the text.
    void bind(int parameter, QStringView text);
    void bindNull(int parameter);

    /// Goes on to the next row; false behind the last, and then it can be run anew.
    bool step();
    /// Runs a statement that gives no rows.
    void run();
    /// Gives up the rows that are left.
    void reset();

    // Of the current row.
    [[nodiscard]] bool isNull(int column) const;
    [[nodiscard]] std::int64_t integer(int column) const;
    [[nodiscard]] std::optional<std::int64_t> optionalInteger(int column) const;
    [[nodiscard]] double real(int column) const;
    [[nodiscard]] QByteArray bytes(int column) const;
    [[nodiscard]] QString text(int column) const;
    [[nodiscard]] std::optional<QString> optionalText(int column) const;

private:
    friend class SqliteDatabase;
    SqliteStatement(sqlite3_stmt *statement, QString path);
    [[noreturn]] void fail() const;
    void check(int code) const;

    struct Finalize {
        void operator()(sqlite3_stmt *statement) const;
    };
    std::unique_ptr<sqlite3_stmt, Finalize> m_statement;
    QString m_path;
};

/// An open database. It belongs to one thread at a time, and all its statements end before it.
class SqliteDatabase
{
public:
    /// Opens the file at the path, which has to be there. Throws DatabaseError, as every function
    /// does. What is wrong within the file often shows only with the first statement.
    explicit SqliteDatabase(const QString &path);
    /// A new one that is in memory alone.
    static SqliteDatabase inMemory();

    /// Runs statements that give no rows.
    void execute(const char *statements);
    [[nodiscard]] SqliteStatement prepare(const char *statement);
    /// The bytes that a file with this content has.
    [[nodiscard]] QByteArray content() const;

private:
    SqliteDatabase(const QString &path, int flags);

    struct Close {
        void operator()(sqlite3 *database) const;
    };
    QString m_path;
    std::unique_ptr<sqlite3, Close> m_database;
};

/// Makes everything or nothing of what is done while it lives: what was not committed is undone.
class SqliteTransaction
{
public:
    explicit SqliteTransaction(SqliteDatabase &database);
    ~SqliteTransaction();
    SqliteTransaction(const SqliteTransaction &) = delete;
    SqliteTransaction &operator=(const SqliteTransaction &) = delete;

    void commit();

private:
    SqliteDatabase &m_database;
    bool m_isOpen = true;
};

} // namespace veltrix
