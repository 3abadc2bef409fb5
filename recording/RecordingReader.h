// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "recording/Database.h"
#include "recording/RecordingData.h"
#include "recording/RecordingError.h"

#include <QDateTime>
#include <QString>

#include <functional>
#include <vector>

namespace recording {

/// A part of a recording: from \a from on, up to but not including \a to.
struct Range
{
    Time from{0};
    Time to = Time::max();
};

/// What concerns a recording as a whole.
struct Info
{
    QString path;
    QString program; ///< that recorded
    QString deviceId;
    QString deviceVersion;
    Time interval{0};                      ///< between stored measurements; 0 for all
    EndReason endReason = EndReason::None; ///< None while the recording runs or when it was interrupted
    Time duration{0};
    qint64 rows = 0; ///< stored measurements
    ClockPoint start;
    std::array<Delivered, cSupplyCount> delivered{};
    const Delivered& of(Supply supply) const { return delivered.at(static_cast<size_t>(supply)); }
};

} // namespace recording

/**
 * Reads a recording, also while another program writes to it. The functions that read many rows stream them:
 * memory does not grow with the file. Used on one thread at a time.
 *
 * A function that fails returns an empty result or false and keeps the failure in error().
 */
class RecordingReader
{
public:
    /// Opens \a path for reading. Returns false on failure.
    bool open(const QString& path);
    void close();
    const recording::Error& error() const { return m_error; }

    recording::Info info();

    /// Takes a row; returns false to end the reading.
    using TakeMeasurement = std::function<bool(const recording::Measurement& measurement)>;
    using TakeBucket = std::function<bool(const recording::Bucket& bucket)>;

    /// Calls \a take for each stored measurement in \a range, in order of time. Returns false on failure.
    bool measurements(const recording::Range& range, const TakeMeasurement& take);
    /// Calls \a take for each bucket of \a level whose start is in \a range, in order of time. Seconds or
    /// minutes without measurements have no bucket. Returns false on failure.
    bool buckets(recording::Level level, const recording::Range& range, const TakeBucket& take);

    // All of a recording, in order of time.

    std::vector<recording::Gap> gaps();
    std::vector<recording::Mark> marks();
    std::vector<recording::MultimeterRecord> multimeterRecords();
    std::vector<recording::ScreenChange> screenChanges();
    std::vector<recording::ClockPoint> clockPoints();

    /// Returns the local time of the recording's place at \a at, by the last wall-clock point before it.
    QDateTime wallTime(recording::Time at);

private:
    bool stream(const QString& sql, const recording::Range& range,
                const std::function<bool(const recording::Statement& row)>& take);
    bool list(const char* sql, const std::function<void(const recording::Statement& row)>& take);

    recording::Database m_database;
    recording::Error m_error;
    /// Read once by wallTime().
    std::vector<recording::ClockPoint> m_clockPoints;
};
