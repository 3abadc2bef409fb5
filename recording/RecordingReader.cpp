// SPDX-License-Identifier: GPL-3.0-or-later
#include "recording/RecordingReader.h"

#include "recording/RecordingSchema.h"

#include <algorithm>

using namespace recording;

bool RecordingReader::open(const QString& path)
{
    close();
    m_error = {};
    if (!m_database.open(path, Database::Access::Read, m_error))
        return false;
    m_error = schema::check(m_database);
    if (m_error)
        close();
    return m_database.isOpen();
}

void RecordingReader::close()
{
    m_database.close();
    m_clockPoints.clear();
}

Info RecordingReader::info()
{
    Info info;
    info.path = m_database.path();
    info.program = schema::property(m_database, schema::cProgram);
    info.deviceId = schema::property(m_database, schema::cDeviceId);
    info.deviceVersion = schema::property(m_database, schema::cDeviceVersion);
    info.interval = Time(schema::property(m_database, schema::cInterval).toLongLong());
    info.endReason = endReasonOfCode(schema::property(m_database, schema::cEndReason));
    const qint64 last = m_database.integer("SELECT max(t) FROM measurements");
    info.duration = Time(std::max(last, schema::property(m_database, schema::cEnd).toLongLong()));
    list("SELECT t, wall, utc_offset FROM clock ORDER BY t LIMIT 1", [&info](const Statement& row) {
        info.start = {Time(row.integer(0)), row.integer(1), static_cast<int>(row.integer(2))};
    });
    // Counting the minutes' rows is a thousand times faster than counting the measurements.
    info.rows = info.interval > Time(0) ? m_database.integer("SELECT count(*) FROM measurements")
                                        : m_database.integer("SELECT sum(n) FROM minutes");
    buckets(Level::Minute, {}, [&info](const Bucket& bucket) {
        for (size_t i = 0; i < info.delivered.size(); ++i)
            info.delivered[i] += bucket.delivered[i];
        return true;
    });
    return info;
}

bool RecordingReader::stream(const QString& sql, const Range& range,
                             const std::function<bool(const Statement& row)>& take)
{
    Statement statement = m_database.prepare(sql);
    if (!statement.isValid()) {
        m_error = m_database.lastFailure();
        return false;
    }
    statement.bind(0, static_cast<qint64>(range.from.count()));
    statement.bind(1, static_cast<qint64>(range.to.count()));
    while (statement.step())
        if (!take(statement))
            return true;
    if (statement.hasFailed())
        m_error = m_database.lastFailure();
    return !statement.hasFailed();
}

bool RecordingReader::measurements(const Range& range, const TakeMeasurement& take)
{
    static const QString sql =
        QStringLiteral("SELECT t, %1 FROM measurements WHERE t >= ? AND t < ? ORDER BY t")
            .arg(schema::measurementColumns().join(QLatin1Char(',')));
    return stream(sql, range, [&take](const Statement& row) { return take(schema::measurementOf(row)); });
}

bool RecordingReader::buckets(Level level, const Range& range, const TakeBucket& take)
{
    const QString sql = QStringLiteral("SELECT t, n, %1 FROM %2 WHERE t >= ? AND t < ? ORDER BY t")
                            .arg(schema::bucketColumns().join(QLatin1Char(',')), schema::bucketTable(level));
    return stream(sql, range, [&take](const Statement& row) { return take(schema::bucketOf(row)); });
}

bool RecordingReader::list(const char* sql, const std::function<void(const Statement& row)>& take)
{
    Statement statement = m_database.prepare(QString::fromLatin1(sql));
    while (statement.isValid() && statement.step())
        take(statement);
    const bool failed = !statement.isValid() || statement.hasFailed();
    if (failed)
        m_error = m_database.lastFailure();
    return !failed;
}

std::vector<Gap> RecordingReader::gaps()
{
    std::vector<Gap> gaps;
    list("SELECT t_from, t_to, reason, detail FROM gaps ORDER BY t_from, id", [&gaps](const Statement& row) {
        Gap gap{Time(row.integer(0)), std::nullopt, gapReasonOfCode(row.text(2)), row.text(3)};
        if (!row.isNull(1))
            gap.to = Time(row.integer(1));
        gaps.push_back(gap);
    });
    return gaps;
}

std::vector<Mark> RecordingReader::marks()
{
    std::vector<Mark> marks;
    // A mark that another program has just set gets its time from the recorder within a second.
    list("SELECT t, text FROM marks WHERE t IS NOT NULL ORDER BY t, id", [&marks](const Statement& row) {
        marks.push_back({Time(row.integer(0)), row.text(1)});
    });
    return marks;
}

std::vector<MultimeterRecord> RecordingReader::multimeterRecords()
{
    std::vector<MultimeterRecord> records;
    list("SELECT t, mode, text FROM multimeter ORDER BY t, id", [&records](const Statement& row) {
        records.push_back({Time(row.integer(0)), static_cast<int>(row.integer(1)), row.text(2)});
    });
    return records;
}

std::vector<ScreenChange> RecordingReader::screenChanges()
{
    std::vector<ScreenChange> changes;
    list("SELECT t, layer0, layer1 FROM screens ORDER BY t, id", [&changes](const Statement& row) {
        changes.push_back(
            {Time(row.integer(0)), static_cast<int>(row.integer(1)), static_cast<int>(row.integer(2))});
    });
    return changes;
}

std::vector<ClockPoint> RecordingReader::clockPoints()
{
    std::vector<ClockPoint> points;
    list("SELECT t, wall, utc_offset FROM clock ORDER BY t", [&points](const Statement& row) {
        points.push_back({Time(row.integer(0)), row.integer(1), static_cast<int>(row.integer(2))});
    });
    return points;
}

QDateTime RecordingReader::wallTime(Time at)
{
    if (m_clockPoints.empty())
        m_clockPoints = clockPoints();
    if (m_clockPoints.empty())
        return {};
    auto next = std::upper_bound(m_clockPoints.cbegin(), m_clockPoints.cend(), at,
                                 [](Time time, const ClockPoint& point) { return time < point.at; });
    const ClockPoint& point = next == m_clockPoints.cbegin() ? *next : *std::prev(next);
    const Time wall = Time(point.wallUs) + (at - point.at);
    return QDateTime::fromMSecsSinceEpoch(std::chrono::duration_cast<std::chrono::milliseconds>(wall).count(),
                                          Qt::OffsetFromUTC, point.utcOffsetSeconds);
}
