// SPDX-License-Identifier: GPL-3.0-or-later
#include "recording/Recorder.h"

#include "platform/SuspendTime.h"
#include "recording/RunningRecordings.h"
#include "storage/ApplicationInfo.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QFileInfo>
#include <QSignalBlocker>
#include <QStorageInfo>

#include <iterator>
#include <system_error>

using namespace recording;

namespace {

/// A shorter sleep is not worth a gap, and the clocks of a system differ by less.
constexpr std::chrono::milliseconds cLeastSuspension{500};
/// After a full queue, measurements are taken again when it is half empty.
constexpr size_t cQueueCapacityToResume = Recorder::cQueueCapacity / 2;

ClockPoint systemWall()
{
    const QDateTime local = QDateTime::currentDateTime();
    const auto sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
    return {
        {}, std::chrono::duration_cast<std::chrono::microseconds>(sinceEpoch).count(), local.offsetFromUtc()};
}

} // namespace

RecorderSurroundings RecorderSurroundings::ofSystem()
{
    RecorderSurroundings system;
    system.suspension = &platform::suspendTime;
    system.uncountedSuspension = [] {
        return platform::steadyClockCountsSuspension() ? std::chrono::microseconds(0)
                                                       : platform::suspendTime();
    };
    system.wall = &systemWall;
    system.freeBytes = [](const QString& path) {
        return QStorageInfo(QFileInfo(path).absolutePath()).bytesAvailable();
    };
    return system;
}

Recorder::Recorder(RecorderSurroundings surroundings, QObject* parent)
    : QObject(parent), m_surroundings(std::move(surroundings))
{
    qRegisterMetaType<recording::EndReason>();
    qRegisterMetaType<recording::Error>();
}

Recorder::~Recorder()
{
    // Who listens may be on the way out as well.
    const QSignalBlocker quiet(this);
    stopAndWait();
}

Error Recorder::start(const Options& options)
{
    if (m_recording)
        return {Failure::Busy, options.path, {}};
    if (isDiskAlmostFull(options.path))
        return {Failure::DiskFull, options.path, {}};
    const QString program = options.program.isEmpty() ? QCoreApplication::applicationName() +
                                                            QLatin1Char(' ') + applicationVersion()
                                                      : options.program;
    Error error;
    if (!m_writer.create(options.path, program, options.interval, error))
        return error;
    ++m_number;
    m_path = options.path;
    m_startedAt = m_surroundings.steady();
    m_uncountedAtStart = m_surroundings.uncountedSuspension();
    m_lastSuspension = m_surroundings.suspension();
    m_lastAddedAt = Time(0);
    m_inGap = false;
    m_dropping = false;
    m_batch.clear();
    m_nextClockAt = cClockInterval;
    {
        const std::lock_guard lock(m_mutex);
        m_queue.clear();
        m_queue.emplace_back(clockPoint(Time(0)));
        m_unwritten = 0;
        m_stopRequested = false;
        m_endReason = EndReason::None;
        m_endError = {};
        m_status = {};
        m_status.path = m_path;
    }
    try {
        m_thread = std::thread(&Recorder::recordLoop, this);
    } catch (const std::system_error& failure) {
        Error ignored;
        m_writer.finish(EndReason::WriteFailed, Time(0), ignored);
        return {Failure::InputOutput, m_path, QString::fromLocal8Bit(failure.what())};
    }
    m_recording = true;
    // Without the note, only the offer to finish an interrupted recording is missing.
    running::announce(m_path);
    Q_EMIT started();
    return {};
}

void Recorder::stop(EndReason reason)
{
    const std::lock_guard lock(m_mutex);
    if (!m_recording || m_stopRequested)
        return;
    m_stopRequested = true;
    m_endReason = reason;
    m_wake.notify_one();
}

void Recorder::stopAndWait(EndReason reason)
{
    if (!m_recording)
        return;
    stop(reason);
    onThreadEnded(m_number);
}

RecorderStatus Recorder::status() const
{
    RecorderStatus status;
    {
        const std::lock_guard lock(m_mutex);
        status = m_status;
    }
    if (m_recording)
        status.duration = now();
    return status;
}

void Recorder::addMeasurement(const protocol::Measurement& values,
                              std::chrono::steady_clock::time_point readAt)
{
    if (!m_recording)
        return;
    const Time at = timeOf(readAt);
    const std::chrono::microseconds suspension = m_surroundings.suspension();
    if (suspension - m_lastSuspension > cLeastSuspension)
        beginGap(at, GapReason::Suspended, {});
    else if (at - m_lastAddedAt > cLongestStep)
        beginGap(at, GapReason::Silence, {});
    m_lastSuspension = suspension;
    if (!enqueue(recording::Measurement{at, values}, true))
        return;
    m_lastAddedAt = std::max(at, m_lastAddedAt);
    if (m_inGap)
        enqueue(clockPoint(at), false);
    m_inGap = false;
}

void Recorder::startGap(GapReason reason, const QString& detail)
{
    if (m_recording)
        beginGap(now(), reason, detail);
}

void Recorder::beginGap(Time at, GapReason reason, const QString& detail)
{
    if (m_inGap)
        return;
    m_inGap = true;
    enqueue(clockPoint(at), false);
    enqueue(GapBegin{at, reason, detail}, false);
}

void Recorder::addMark(const QString& text)
{
    if (m_recording)
        enqueue(Mark{now(), text}, false);
}

void Recorder::addMultimeterReading(int mode, const QString& text,
                                    std::chrono::steady_clock::time_point readAt)
{
    if (m_recording)
        enqueue(MultimeterRecord{timeOf(readAt), mode, text}, true);
}

void Recorder::addScreenChange(int layer0, int layer1, std::chrono::steady_clock::time_point readAt)
{
    if (m_recording)
        enqueue(ScreenChange{timeOf(readAt), layer0, layer1}, true);
}

void Recorder::setIdentity(const protocol::DeviceInfo& info)
{
    if (m_recording)
        enqueue(Identity{now(), info}, true);
}

Time Recorder::silence() const
{
    return m_recording ? now() - m_lastAddedAt : Time(0);
}

Time Recorder::timeOf(std::chrono::steady_clock::time_point moment) const
{
    const std::chrono::microseconds slept = m_surroundings.uncountedSuspension() - m_uncountedAtStart;
    return std::max(Time(0), std::chrono::duration_cast<Time>(moment - m_startedAt) + slept);
}

ClockPoint Recorder::clockPoint(Time at) const
{
    ClockPoint point = m_surroundings.wall();
    point.at = at;
    return point;
}

/// Returns false when \a event was dropped because the queue is full.
bool Recorder::enqueue(Event event, bool droppable)
{
    bool overflow = false;
    {
        const std::lock_guard lock(m_mutex);
        if (m_stopRequested)
            return false;
        const size_t waiting = m_queue.size() + m_unwritten;
        if (m_dropping && waiting <= cQueueCapacityToResume)
            m_dropping = false;
        if (!droppable || (!m_dropping && waiting < cQueueCapacity)) {
            m_queue.push_back(std::move(event));
            return true;
        }
        overflow = !m_dropping;
        m_dropping = true;
    }
    if (overflow)
        beginGap(m_lastAddedAt, GapReason::SlowDisk, {});
    return false;
}

/// Runs on the thread of the recording.
void Recorder::recordLoop()
{
    for (;;) {
        bool stopRequested = false;
        {
            std::unique_lock lock(m_mutex);
            m_wake.wait_for(lock, cCommitInterval, [this] { return m_stopRequested; });
            stopRequested = m_stopRequested;
            m_batch.insert(m_batch.end(), std::make_move_iterator(m_queue.begin()),
                           std::make_move_iterator(m_queue.end()));
            m_queue.clear();
            m_unwritten = m_batch.size();
        }
        if (!stopRequested && isDiskAlmostFull(m_path)) {
            const std::lock_guard lock(m_mutex);
            m_stopRequested = stopRequested = true;
            m_endReason = EndReason::DiskSpace;
        }
        const bool written = writePending();
        if (!stopRequested)
            continue;
        finishFile(written);
        break;
    }
    QMetaObject::invokeMethod(
        this, [this, number = m_number] { onThreadEnded(number); }, Qt::QueuedConnection);
}

/// Runs on the thread of the recording, as its last act.
void Recorder::finishFile(bool allWritten)
{
    EndReason reason = EndReason::None;
    Error error;
    {
        const std::lock_guard lock(m_mutex);
        reason = m_endReason;
        error = m_status.problem;
    }
    const Time end = now();
    if (allWritten)
        m_writer.finish(reason, end, error);
    else
        m_writer.abandon();
    const std::lock_guard lock(m_mutex);
    m_endError = error;
    m_status.duration = end;
    m_status.fileBytes = QFileInfo(m_path).size();
}

/// Runs on the thread of the recording. Returns false when the events stay in m_batch.
bool Recorder::writePending()
{
    const Time at = now();
    const ClockPoint point = clockPoint(at);
    if (at >= m_nextClockAt) {
        m_batch.emplace_back(point);
        m_nextClockAt = at + cClockInterval;
    }
    Error error;
    const bool written = m_writer.append(m_batch, point, error);
    if (written)
        m_batch.clear();
    publish(error);
    return written;
}

bool Recorder::isDiskAlmostFull(const QString& path) const
{
    // Negative where the system does not know.
    const qint64 freeBytes = m_surroundings.freeBytes(path);
    return freeBytes >= 0 && freeBytes < cLeastFreeBytes;
}

void Recorder::publish(const Error& problem)
{
    {
        const std::lock_guard lock(m_mutex);
        m_unwritten = m_batch.size();
        m_status.totals = m_writer.totals();
        m_status.fileBytes = QFileInfo(m_path).size() + QFileInfo(m_path + QStringLiteral("-wal")).size();
        m_status.problem = problem;
    }
    QMetaObject::invokeMethod(
        this, [this] { Q_EMIT statusChanged(); }, Qt::QueuedConnection);
}

/// Ends the recording \a number, unless that was done already.
void Recorder::onThreadEnded(int number)
{
    if (!m_recording || number != m_number)
        return;
    m_thread.join();
    m_recording = false;
    EndReason reason = EndReason::None;
    Error error;
    {
        const std::lock_guard lock(m_mutex);
        reason = m_endReason;
        error = m_endError;
    }
    if (!error)
        running::withdraw(m_path);
    Q_EMIT ended(reason, error);
}
