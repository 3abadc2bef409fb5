// SPDX-License-Identifier: GPL-3.0-or-later
#include "recording/Database.h"

#include <QFile>
#include <QFileInfo>
#include <QUrl>

#include <sqlite3.h>

#include <cmath>
#include <limits>

namespace recording {

namespace {

Failure failureOf(int code)
{
    switch (code & 0xFF) {
    case SQLITE_OK:
    case SQLITE_ROW:
    case SQLITE_DONE:
        return Failure::None;
    case SQLITE_NOTADB:
        return Failure::NotARecording;
    case SQLITE_CORRUPT:
        return Failure::Damaged;
    case SQLITE_FULL:
        return Failure::DiskFull;
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return Failure::Busy;
    case SQLITE_READONLY:
        return Failure::ReadOnly;
    case SQLITE_PERM:
    case SQLITE_AUTH:
        return Failure::NoPermission;
    default:
        return code == SQLITE_IOERR_SHORT_READ ? Failure::Damaged : Failure::InputOutput;
    }
}

} // namespace

void StatementCloser::operator()(sqlite3_stmt* statement) const
{
    sqlite3_finalize(statement);
}

void Statement::bind(int parameter, qint64 value)
{
    sqlite3_bind_int64(m_statement.get(), parameter + 1, value);
}

void Statement::bind(int parameter, double value)
{
    // SQLite itself turns NaN into NULL.
    sqlite3_bind_double(m_statement.get(), parameter + 1, value);
}

void Statement::bind(int parameter, const QString& value)
{
    const QByteArray utf8 = value.toUtf8();
    sqlite3_bind_text(m_statement.get(), parameter + 1, utf8.constData(), utf8.size(), SQLITE_TRANSIENT);
}

void Statement::bindNull(int parameter)
{
    sqlite3_bind_null(m_statement.get(), parameter + 1);
}

bool Statement::step()
{
    const int code = m_statement ? sqlite3_step(m_statement.get()) : SQLITE_MISUSE;
    m_failed = code != SQLITE_ROW && code != SQLITE_DONE;
    return code == SQLITE_ROW;
}

bool Statement::run()
{
    step();
    reset();
    return !m_failed;
}

void Statement::reset()
{
    sqlite3_reset(m_statement.get());
}

bool Statement::isNull(int column) const
{
    return sqlite3_column_type(m_statement.get(), column) == SQLITE_NULL;
}

qint64 Statement::integer(int column) const
{
    return sqlite3_column_int64(m_statement.get(), column);
}

double Statement::real(int column) const
{
    return isNull(column) ? std::numeric_limits<double>::quiet_NaN()
                          : sqlite3_column_double(m_statement.get(), column);
}

QString Statement::text(int column) const
{
    const unsigned char* const utf8 = sqlite3_column_text(m_statement.get(), column);
    return QString::fromUtf8(reinterpret_cast<const char*>(utf8),
                             sqlite3_column_bytes(m_statement.get(), column));
}

void DatabaseCloser::operator()(sqlite3* connection) const
{
    sqlite3_close_v2(connection);
}

bool Database::open(const QString& path, Access access, Error& error)
{
    m_path = path;
    const QFileInfo file(path);
    if (!file.exists()) {
        error = {Failure::NotFound, path, {}};
        return false;
    }
    if (!file.isFile()) {
        error = {Failure::NotARecording, path, {}};
        return false;
    }
    if (!file.isReadable()) {
        error = {Failure::NoPermission, path, {}};
        return false;
    }
    const QUrl url = QUrl::fromLocalFile(file.absoluteFilePath());
    const QByteArray uri = url.toEncoded();
    const int common = SQLITE_OPEN_URI | SQLITE_OPEN_NOMUTEX;
    bool opened = false;
    if (access == Access::ReadWrite) {
        opened = openConnection(uri, common | SQLITE_OPEN_READWRITE);
        // SQLite opens a file that it may not write for reading, without a word.
        if (opened && sqlite3_db_readonly(m_connection.get(), "main") == 1) {
            close();
            error = {file.isWritable() ? Failure::ReadOnly : Failure::NoPermission, path, {}};
            return false;
        }
    } else {
        opened = openConnection(uri, common | SQLITE_OPEN_READONLY) && execute("SELECT 1 FROM sqlite_master");
        // A recording that was not finished, in a folder where SQLite may not put its helper files.
        const QFileInfo log(path + QStringLiteral("-wal"));
        const int code = m_connection ? sqlite3_errcode(m_connection.get()) : SQLITE_OK;
        if (!opened && (code == SQLITE_CANTOPEN || code == SQLITE_READONLY) && log.size() == 0)
            opened = openConnection(uri + "?immutable=1", common | SQLITE_OPEN_READONLY);
    }
    if (!opened) {
        error = lastFailure();
        close();
    }
    return opened;
}

bool Database::openConnection(const QByteArray& uri, int flags)
{
    sqlite3* connection = nullptr;
    const int code = sqlite3_open_v2(uri.constData(), &connection, flags, nullptr);
    m_connection.reset(connection);
    if (code != SQLITE_OK)
        return false;
    sqlite3_extended_result_codes(connection, 1);
    sqlite3_busy_timeout(connection, cBusyTimeoutMs);
    // The file may come from anyone: its schema may not call functions with effects.
    sqlite3_db_config(connection, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_db_config(connection, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    return true;
}

void Database::close()
{
    m_connection.reset();
}

bool Database::execute(const char* sql)
{
    return sqlite3_exec(m_connection.get(), sql, nullptr, nullptr, nullptr) == SQLITE_OK;
}

Statement Database::prepare(const QString& sql)
{
    sqlite3_stmt* statement = nullptr;
    const QByteArray utf8 = sql.toUtf8();
    sqlite3_prepare_v3(m_connection.get(), utf8.constData(), utf8.size(), SQLITE_PREPARE_PERSISTENT,
                       &statement, nullptr);
    return Statement(statement);
}

qint64 Database::integer(const char* sql, qint64 fallback)
{
    Statement statement = prepare(QString::fromLatin1(sql));
    return statement.isValid() && statement.step() && !statement.isNull(0) ? statement.integer(0) : fallback;
}

QString Database::text(const char* sql)
{
    Statement statement = prepare(QString::fromLatin1(sql));
    return statement.isValid() && statement.step() ? statement.text(0) : QString();
}

Error Database::lastFailure() const
{
    if (!m_connection)
        return {Failure::InputOutput, m_path, {}};
    const int code = sqlite3_extended_errcode(m_connection.get());
    Failure failure = failureOf(code);
    if (failure == Failure::None)
        failure = Failure::InputOutput;
    return {failure, m_path, QString::fromUtf8(sqlite3_errmsg(m_connection.get()))};
}

} // namespace recording
