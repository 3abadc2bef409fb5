// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "recording/RecordingData.h"
#include "recording/RecordingError.h"
#include "recording/RecordingWriter.h"

#include <QObject>

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

/// A recorder's clocks and its view of the disk; tests replace them. Called on several threads.
struct RecorderSurroundings
{
    std::function<std::chrono::steady_clock::time_point()> steady = &std::chrono::steady_clock::now;
    /// Time in which the system slept, as far as the steady clock did not count it.
    std::function<std::chrono::microseconds()> uncountedSuspension;
    /// All the time in which the system slept.
    std::function<std::chrono::microseconds()> suspension;
    /// The wall clock; its field "at" is not used.
    std::function<recording::ClockPoint()> wall;
    /// Bytes that this user may still write on the disk of \a path.
    std::function<qint64(const QString& path)> freeBytes;

    /// The clocks and disks of this system.
    static RecorderSurroundings ofSystem();
};

/// What a recorder has written so far.
struct RecorderStatus
{
    QString path;
    recording::Time duration{};     ///< since the start, gaps included
    RecordingWriter::Totals totals; ///< as of the last transaction
    qint64 fileBytes = 0;           ///< size of the file and its log
    /// Why the last transaction failed; none when it succeeded. The recorder tries again every
    /// Recorder::cCommitInterval.
    recording::Error problem;
};

/**
 * Records into one file at a time, on a thread of its own. Lives on the thread that made it, which must run
 * an event loop; all functions are called and all signals are emitted there.
 *
 * What is added waits in a bounded queue and is written in one transaction every cCommitInterval. Nothing
 * here waits for the disk, except start(). When the queue is full, measurements are dropped and the recording
 * gets a gap with the reason SlowDisk.
 */
class Recorder : public QObject
{
    Q_OBJECT

public:
    /// Just under a second: with the time that a transaction takes, a crash costs one second at most.
    static constexpr std::chrono::milliseconds cCommitInterval{900};
    /// The wall clock is written down at least this often.
    static constexpr std::chrono::seconds cClockInterval{60};
    /// One minute at the highest rate of the bus, about 4 MB.
    static constexpr size_t cQueueCapacity = 60000;
    /// With less space left on the disk the recording ends.
    static constexpr qint64 cLeastFreeBytes = 64LL * 1024 * 1024;

    struct Options
    {
        QString path; ///< must not exist
        /// One measurement is stored in each interval; all are stored with 0. The pyramid and the integrals
        /// take all of them in any case.
        recording::Time interval{0};
        /// Name and version of the recording program; the default is the application's.
        QString program;
    };

    explicit Recorder(RecorderSurroundings surroundings = RecorderSurroundings::ofSystem(),
                      QObject* parent = nullptr);
    /// Finishes a recording that is running, with the reason Stopped, and waits for it.
    ~Recorder() override;

    /// Creates the file and starts to record. Returns the failure, or none. Fails when a recording is
    /// running.
    recording::Error start(const Options& options);

    /// Ends the recording with \a reason. What was added is still written. ended() follows.
    void stop(recording::EndReason reason = recording::EndReason::Stopped);
    /// Like stop(), and waits until the file is finished. ended() is emitted before this function returns.
    void stopAndWait(recording::EndReason reason = recording::EndReason::Stopped);

    /// Returns true from start() until ended().
    bool isRecording() const { return m_recording; }
    /// Status of the recording that runs, or of the last one.
    RecorderStatus status() const;

    // What is added while no recording runs is ignored. Times are those of the steady clock.

    /// Adds a measurement that was read at \a readAt. A gap with the reason Silence or Suspended is added
    /// before it where there was one.
    void addMeasurement(const protocol::Measurement& values, std::chrono::steady_clock::time_point readAt);
    /// Begins a gap, which lasts until the next measurement. Ignored in a gap.
    void startGap(recording::GapReason reason, const QString& detail = {});
    void addMark(const QString& text);
    void addMultimeterReading(int mode, const QString& text, std::chrono::steady_clock::time_point readAt);
    void addScreenChange(int layer0, int layer1, std::chrono::steady_clock::time_point readAt);
    void setIdentity(const protocol::DeviceInfo& info);

    /// Returns how long ago the last measurement was added; since the start when there was none.
    recording::Time silence() const;

Q_SIGNALS:
    /// The recording has begun.
    void started();
    /// A transaction succeeded or failed; status() has the news.
    void statusChanged();
    /**
     * The recording ended. With an error, the file could not be finished: all that status() counts is in it,
     * and repair::recover() finishes it.
     */
    void ended(recording::EndReason reason, const recording::Error& error);

private:
    recording::Time timeOf(std::chrono::steady_clock::time_point moment) const;
    recording::Time now() const { return timeOf(m_surroundings.steady()); }
    recording::ClockPoint clockPoint(recording::Time at) const;
    bool enqueue(recording::Event event, bool droppable);
    void beginGap(recording::Time at, recording::GapReason reason, const QString& detail);
    void recordLoop();
    bool writePending();
    void finishFile(bool allWritten);
    bool isDiskAlmostFull(const QString& path) const;
    void publish(const recording::Error& problem);
    void onThreadEnded(int number);

    const RecorderSurroundings m_surroundings;
    QString m_path;
    /// Counts the recordings, so that a late event of one does not end the next.
    int m_number = 0;
    bool m_recording = false;
    std::chrono::steady_clock::time_point m_startedAt;
    std::chrono::microseconds m_uncountedAtStart{};
    std::chrono::microseconds m_lastSuspension{};
    recording::Time m_lastAddedAt{};
    bool m_inGap = false;
    bool m_dropping = false;

    std::thread m_thread;
    /// Used by the thread while it runs.
    RecordingWriter m_writer;
    /// Taken from the queue and not yet written. Used by the thread.
    std::vector<recording::Event> m_batch;
    recording::Time m_nextClockAt{};

    /// Guards everything below.
    mutable std::mutex m_mutex;
    std::condition_variable m_wake;
    std::vector<recording::Event> m_queue;
    /// Events in m_batch that could not be written so far.
    size_t m_unwritten = 0;
    bool m_stopRequested = false;
    recording::EndReason m_endReason = recording::EndReason::None;
    recording::Error m_endError;
    RecorderStatus m_status;
};
Q_DECLARE_METATYPE(recording::EndReason)
