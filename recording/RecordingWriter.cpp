// SPDX-License-Identifier: GPL-3.0-or-later
#include "recording/RecordingWriter.h"

#include "recording/RecordingSchema.h"
#include "recording/RunningRecordings.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStorageInfo>

using namespace recording;

struct RecordingWriter::Statements
{
    Statement measurement;
    Statement second;
    Statement minute;
    Statement gap;
    Statement gapEnd;
    Statement mark;
    Statement foreignMarks;
    Statement multimeter;
    Statement screen;
    Statement clock;

    explicit Statements(Database& database)
        : measurement(database.prepare(schema::insertMeasurementSql()))
        , second(database.prepare(schema::insertBucketSql(Level::Second)))
        , minute(database.prepare(schema::insertBucketSql(Level::Minute)))
        , gap(database.prepare(QStringLiteral("INSERT INTO gaps (t_from, reason, detail) VALUES (?, ?, ?)")))
        , gapEnd(database.prepare(QStringLiteral("UPDATE gaps SET t_to = ? WHERE t_to IS NULL")))
        , mark(database.prepare(QStringLiteral("INSERT INTO marks (t, text) VALUES (?, ?)")))
        , foreignMarks(database.prepare(QStringLiteral(
              "UPDATE marks SET t = max(0, min(?1, ?1 - (?2 - wall))), wall = NULL WHERE t IS NULL")))
        , multimeter(
              database.prepare(QStringLiteral("INSERT INTO multimeter (t, mode, text) VALUES (?, ?, ?)")))
        , screen(database.prepare(QStringLiteral("INSERT INTO screens (t, layer0, layer1) VALUES (?, ?, ?)")))
        , clock(database.prepare(QStringLiteral("INSERT OR REPLACE INTO clock VALUES (?, ?, ?)")))
    {}

    bool areValid() const
    {
        return measurement.isValid() && second.isValid() && minute.isValid() && gap.isValid() &&
               gapEnd.isValid() && mark.isValid() && foreignMarks.isValid() && multimeter.isValid() &&
               screen.isValid() && clock.isValid();
    }
};

namespace {

/// Makes an empty file, which must not exist before.
Error reserveFile(const QString& path)
{
    const QFileInfo info(path);
    if (info.exists() || info.isSymLink())
        return {Failure::Exists, path, {}};
    const QFileInfo folder(info.absolutePath());
    if (!folder.isDir())
        return {Failure::NotFound, folder.filePath(), {}};
    QFile file(path);
    if (file.open(QIODevice::WriteOnly | QIODevice::NewOnly))
        return {};
    if (QFileInfo::exists(path))
        return {Failure::Exists, path, {}};
    const QStorageInfo storage(folder.filePath());
    if (storage.isReadOnly())
        return {Failure::ReadOnly, path, {}};
    if (!folder.isWritable())
        return {Failure::NoPermission, path, {}};
    return {storage.bytesAvailable() == 0 ? Failure::DiskFull : Failure::InputOutput, path,
            file.errorString()};
}

} // namespace

RecordingWriter::RecordingWriter() = default;

RecordingWriter::~RecordingWriter()
{
    close();
}

bool RecordingWriter::create(const QString& path, const QString& program, Time interval, Error& error)
{
    error = reserveFile(path);
    if (error)
        return false;
    m_lock = running::lock(path, error);
    if (m_lock && m_database.open(path, Database::Access::ReadWrite, error)) {
        if (initialize(program, interval))
            return true;
        error = m_database.lastFailure();
    }
    close();
    for (const char* const suffix : {"", "-wal", "-shm", "-journal"})
        QFile::remove(path + QLatin1String(suffix));
    return false;
}

bool RecordingWriter::initialize(const QString& program, Time interval)
{
    m_interval = interval;
    m_state = {};
    // Files stay readable while they are written, and a transaction does not wait for the disk.
    if (!m_database.execute("PRAGMA journal_mode=WAL") || !m_database.execute("PRAGMA synchronous=NORMAL") ||
        !schema::create(m_database))
        return false;
    m_statements = std::make_unique<Statements>(m_database);
    return m_statements->areValid() && schema::setProperty(m_database, schema::cProgram, program) &&
           schema::setProperty(m_database, schema::cInterval, QString::number(interval.count())) &&
           schema::setProperty(m_database, schema::cEndReason, endReasonCode(EndReason::None));
}

bool RecordingWriter::append(const std::vector<Event>& events, const ClockPoint& now, Error& error)
{
    const State before = m_state;
    if (m_database.execute("BEGIN IMMEDIATE") && writeAll(events, now) && m_database.execute("COMMIT"))
        return true;
    error = m_database.lastFailure();
    // Some failures have rolled the transaction back already.
    m_database.execute("ROLLBACK");
    m_state = before;
    return false;
}

bool RecordingWriter::writeAll(const std::vector<Event>& events, const ClockPoint& now)
{
    for (const Event& event : events)
        if (!std::visit([this](const auto& content) { return write(content); }, event))
            return false;
    Statement& foreign = m_statements->foreignMarks;
    foreign.bind(0, static_cast<qint64>(now.at.count()));
    foreign.bind(1, now.wallUs);
    return writeBucket(Level::Second, m_state.seconds.current()) &&
           writeBucket(Level::Minute, m_state.minutes.current()) && foreign.run();
}

bool RecordingWriter::write(const recording::Measurement& measurement)
{
    Totals& totals = m_state.totals;
    recording::Measurement row = measurement;
    // Two reports may arrive in the same microsecond.
    row.at = std::max({row.at, totals.lastAt + Time(1), Time(0)});
    if (totals.inGap && !endGap(row.at))
        return false;
    const ChargeIntegral::Step step = m_state.integral.add(row);
    if (!writeBucket(Level::Second, m_state.seconds.add(row, step)) ||
        !writeBucket(Level::Minute, m_state.minutes.add(row, step)))
        return false;
    for (size_t i = 0; i < step.size(); ++i)
        totals.delivered[i] += step[i];
    totals.lastAt = row.at;
    totals.last = row.values;
    if (row.at < m_state.storeFrom)
        return true;
    if (m_interval > Time(0))
        m_state.storeFrom = row.at - row.at % m_interval + m_interval;
    ++totals.rows;
    schema::bindMeasurement(m_statements->measurement, row);
    return m_statements->measurement.run();
}

bool RecordingWriter::write(const GapBegin& gap)
{
    Totals& totals = m_state.totals;
    if (totals.inGap)
        return true;
    totals.inGap = true;
    ++totals.gaps;
    m_state.integral.startGap();
    Statement& statement = m_statements->gap;
    statement.bind(0, static_cast<qint64>(std::max(totals.lastAt, Time(0)).count()));
    statement.bind(1, gapReasonCode(gap.reason));
    statement.bind(2, gap.detail);
    return statement.run();
}

bool RecordingWriter::endGap(Time at)
{
    m_state.totals.inGap = false;
    m_statements->gapEnd.bind(0, static_cast<qint64>(at.count()));
    return m_statements->gapEnd.run();
}

bool RecordingWriter::write(const Mark& mark)
{
    m_statements->mark.bind(0, static_cast<qint64>(mark.at.count()));
    m_statements->mark.bind(1, mark.text);
    return m_statements->mark.run();
}

bool RecordingWriter::write(const MultimeterRecord& record)
{
    Statement& statement = m_statements->multimeter;
    statement.bind(0, static_cast<qint64>(record.at.count()));
    statement.bind(1, record.mode);
    statement.bind(2, record.text);
    return statement.run();
}

bool RecordingWriter::write(const ScreenChange& change)
{
    Statement& statement = m_statements->screen;
    statement.bind(0, static_cast<qint64>(change.at.count()));
    statement.bind(1, change.layer0);
    statement.bind(2, change.layer1);
    return statement.run();
}

bool RecordingWriter::write(const ClockPoint& point)
{
    Statement& statement = m_statements->clock;
    statement.bind(0, static_cast<qint64>(point.at.count()));
    statement.bind(1, point.wallUs);
    statement.bind(2, point.utcOffsetSeconds);
    return statement.run();
}

bool RecordingWriter::write(const Identity& identity)
{
    return schema::setProperty(m_database, schema::cDeviceId, identity.info.deviceId) &&
           schema::setProperty(m_database, schema::cDeviceVersion, identity.info.deviceVersion);
}

bool RecordingWriter::writeBucket(Level level, const std::optional<Bucket>& bucket)
{
    if (!bucket)
        return true;
    Statement& statement = level == Level::Second ? m_statements->second : m_statements->minute;
    schema::bindBucket(statement, *bucket);
    return statement.run();
}

bool RecordingWriter::finish(EndReason reason, Time end, Error& error)
{
    const Time last = std::max(end, m_state.totals.lastAt);
    const bool finished = m_database.execute("BEGIN IMMEDIATE") && (!m_state.totals.inGap || endGap(last)) &&
                          schema::setProperty(m_database, schema::cEnd, QString::number(last.count())) &&
                          schema::setProperty(m_database, schema::cEndReason, endReasonCode(reason)) &&
                          m_database.execute("COMMIT");
    if (finished) {
        m_statements.reset();
        // Fails while another program reads the file. The last one that closes it then removes the log.
        m_database.execute("PRAGMA journal_mode=DELETE");
    } else {
        error = m_database.lastFailure();
        m_database.execute("ROLLBACK");
    }
    close();
    return finished;
}

void RecordingWriter::close()
{
    m_statements.reset();
    m_database.close();
    m_lock.reset();
}
