// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "recording/RecordingError.h"

#include <QString>

#include <memory>

struct sqlite3;
struct sqlite3_stmt;

namespace recording {

struct StatementCloser
{
    void operator()(sqlite3_stmt* statement) const;
};

/// One prepared statement of a Database, which must outlive it. Parameters and columns count from 0.
class Statement
{
public:
    Statement() = default;
    explicit Statement(sqlite3_stmt* statement) : m_statement(statement) {}

    /// Returns true when the statement was prepared.
    bool isValid() const { return m_statement != nullptr; }
    void bind(int parameter, qint64 value);
    void bind(int parameter, int value) { bind(parameter, static_cast<qint64>(value)); }
    /// Binds NULL for NaN.
    void bind(int parameter, double value);
    void bind(int parameter, const QString& value);
    void bindNull(int parameter);

    /// Goes to the next row. Returns false at the end and on failure, which Database::lastFailure() then
    /// says.
    bool step();
    /// Executes the statement once and makes it ready for the next use. Returns false on failure.
    bool run();
    /// Returns true when the last step() or run() failed.
    bool hasFailed() const { return m_failed; }
    /// Makes the statement ready for the next use. Its parameters stay bound.
    void reset();

    bool isNull(int column) const;
    qint64 integer(int column) const;
    /// Returns NaN for NULL.
    double real(int column) const;
    QString text(int column) const;

private:
    std::unique_ptr<sqlite3_stmt, StatementCloser> m_statement;
    bool m_failed = false;
};

struct DatabaseCloser
{
    void operator()(sqlite3* connection) const;
};

/**
 * A connection to an SQLite file. Used on one thread at a time. Waits up to cBusyTimeoutMs for another
 * process that writes.
 */
class Database
{
public:
    enum class Access { Read, ReadWrite };
    /// A recorder holds the file for a few milliseconds each second.
    static constexpr int cBusyTimeoutMs = 5000;

    /// Opens the existing file \a path. Returns false and sets \a error on failure.
    bool open(const QString& path, Access access, Error& error);
    /// Closes the connection. All statements must be gone.
    void close();
    bool isOpen() const { return m_connection != nullptr; }
    const QString& path() const { return m_path; }

    /// Executes \a sql, which returns no rows that matter. Returns false on failure.
    bool execute(const char* sql);
    /// Returns an invalid statement on failure.
    Statement prepare(const QString& sql);
    /// Returns the first column of the first row of \a sql, or \a fallback.
    qint64 integer(const char* sql, qint64 fallback = 0);
    QString text(const char* sql);

    /// Returns the last failure of this connection, put into the words of this library.
    Error lastFailure() const;

private:
    bool openConnection(const QByteArray& uri, int flags);

    std::unique_ptr<sqlite3, DatabaseCloser> m_connection;
    QString m_path;
};

} // namespace recording
