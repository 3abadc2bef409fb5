// SPDX-License-Identifier: GPL-3.0-or-later
#include "recording/RecordingRepair.h"

#include "recording/RecordingReader.h"
#include "recording/RecordingSchema.h"
#include "recording/RecordingWriter.h"
#include "recording/RunningRecordings.h"

#include <QDateTime>
#include <QFile>

#include <algorithm>
#include <deque>
#include <memory>

using namespace recording;

namespace repair {

namespace {

constexpr size_t cEventsPerTransaction = 10000;

/// Opens \a path for writing when it is a recording.
Error openForChange(Database& database, const QString& path)
{
    Error error;
    if (!database.open(path, Database::Access::ReadWrite, error))
        return error;
    return schema::check(database);
}

bool finishInterrupted(Database& database)
{
    const qint64 end = std::max(database.integer("SELECT max(t) FROM measurements"),
                                database.integer("SELECT max(t) FROM clock"));
    const QString endText = QString::number(end);
    // A mark that the recorder did not see any more is placed at the end.
    return database.execute("BEGIN IMMEDIATE") &&
           database.execute(QStringLiteral("UPDATE gaps SET t_to = %1 WHERE t_to IS NULL")
                                .arg(endText)
                                .toLatin1()
                                .constData()) &&
           database.execute(QStringLiteral("UPDATE marks SET t = %1, wall = NULL WHERE t IS NULL")
                                .arg(endText)
                                .toLatin1()
                                .constData()) &&
           schema::setProperty(database, schema::cEnd, endText) &&
           schema::setProperty(database, schema::cEndReason, endReasonCode(EndReason::Interrupted)) &&
           database.execute("COMMIT");
}

/// Collects events and writes them in transactions of a bounded size.
class EventSink
{
public:
    EventSink(RecordingWriter& writer, Error& error) : m_writer(writer), m_error(error) {}

    bool add(Event event)
    {
        m_events.push_back(std::move(event));
        return m_events.size() < cEventsPerTransaction || flush();
    }

    bool flush()
    {
        const bool written = m_writer.append(m_events, {}, m_error);
        m_events.clear();
        return written;
    }

private:
    RecordingWriter& m_writer;
    Error& m_error;
    std::vector<Event> m_events;
};

template <typename Content>
bool copyAll(std::vector<Content> contents, Time offset, EventSink& sink)
{
    return std::all_of(contents.begin(), contents.end(), [&](Content& content) {
        content.at += offset;
        return sink.add(content);
    });
}

/// Copies the measurements of \a source with its gaps between them.
bool copyMeasurements(RecordingReader& source, Time offset, EventSink& sink)
{
    const std::vector<Gap> gaps = source.gaps();
    auto gap = gaps.cbegin();
    bool written = true;
    const bool read = source.measurements({}, [&](const recording::Measurement& measurement) {
        for (; gap != gaps.cend() && gap->to && *gap->to <= measurement.at; ++gap)
            written = written && sink.add(GapBegin{gap->from + offset, gap->reason, gap->detail});
        written = written && sink.add(recording::Measurement{measurement.at + offset, measurement.values});
        return written;
    });
    return read && written;
}

bool copyRecording(RecordingReader& source, Time offset, EventSink& sink)
{
    const Info info = source.info();
    return sink.add(Identity{offset, {info.deviceId, info.deviceVersion}}) &&
           copyMeasurements(source, offset, sink) && copyAll(source.marks(), offset, sink) &&
           copyAll(source.multimeterRecords(), offset, sink) &&
           copyAll(source.screenChanges(), offset, sink) && copyAll(source.clockPoints(), offset, sink) &&
           sink.flush();
}

Error openAll(const QStringList& paths, std::vector<std::unique_ptr<RecordingReader>>& sources)
{
    for (const QString& path : paths) {
        auto source = std::make_unique<RecordingReader>();
        if (!source->open(path))
            return source->error();
        sources.push_back(std::move(source));
    }
    std::sort(sources.begin(), sources.end(), [](const auto& one, const auto& other) {
        return one->info().start.wallUs < other->info().start.wallUs;
    });
    return {};
}

} // namespace

Error recover(const QString& path)
{
    Database database;
    Error error = openForChange(database, path);
    if (error)
        return error;
    const std::unique_ptr<QLockFile> lock = running::lock(path, error);
    if (!lock)
        return error;
    if (database.text("PRAGMA quick_check(1)") != QLatin1String("ok"))
        return {Failure::Damaged, path, {}};
    const QString reason = schema::property(database, schema::cEndReason);
    if (endReasonOfCode(reason) == EndReason::None && !finishInterrupted(database)) {
        error = database.lastFailure();
        database.execute("ROLLBACK");
        return error;
    }
    database.execute("PRAGMA journal_mode=DELETE");
    running::withdraw(path);
    return {};
}

Error addMark(const QString& path, const QString& text)
{
    Database database;
    const Error error = openForChange(database, path);
    if (error)
        return error;
    Statement insert = database.prepare(QStringLiteral("INSERT INTO marks (wall, text) VALUES (?, ?)"));
    if (!insert.isValid())
        return database.lastFailure();
    insert.bind(0, QDateTime::currentMSecsSinceEpoch() * 1000);
    insert.bind(1, text);
    return insert.run() ? Error() : database.lastFailure();
}

Error merge(const QStringList& paths, const QString& target, const QString& program)
{
    std::vector<std::unique_ptr<RecordingReader>> sources;
    Error error = openAll(paths, sources);
    if (error || sources.empty())
        return error;
    RecordingWriter writer;
    if (!writer.create(target, program, Time(0), error))
        return error;
    EventSink sink(writer, error);
    const qint64 wallStart = sources.front()->info().start.wallUs;
    Time end{0};
    for (const auto& source : sources) {
        const Info info = source->info();
        // A wall clock that was set back in between would put one recording into the other.
        const Time offset = std::max(end, Time(info.start.wallUs - wallStart));
        const bool separated = source == sources.front() || sink.add(GapBegin{end, GapReason::Merged, {}});
        if (!separated || !copyRecording(*source, offset, sink)) {
            if (!error)
                error = source->error();
            break;
        }
        end = offset + info.duration;
    }
    if (!error)
        writer.finish(EndReason::Merged, end, error);
    if (error) {
        writer.abandon();
        for (const char* const suffix : {"", "-wal", "-shm"})
            QFile::remove(target + QLatin1String(suffix));
    }
    return error;
}

} // namespace repair
