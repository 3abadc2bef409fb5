// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "recording/BucketBuilder.h"
#include "recording/ChargeIntegral.h"
#include "recording/Database.h"
#include "recording/RecordingData.h"

#include <QLockFile>

#include <memory>
#include <vector>

/**
 * Writes one recording: the file, its transactions, the pyramid and the integrals. Used on one thread at a
 * time. While the writer lives, a lock file beside the recording says so to other programs.
 *
 * A writer that is destroyed without finish() leaves an interrupted recording, which repair::recover()
 * finishes.
 */
class RecordingWriter
{
public:
    /// What the recording holds so far.
    struct Totals
    {
        qint64 rows = 0;            ///< stored measurements
        recording::Time lastAt{-1}; ///< the last measurement; -1 µs before the first
        qint64 gaps = 0;            ///< gaps, the one that lasts included
        bool inGap = false;
        std::array<recording::Delivered, recording::cSupplyCount> delivered{};
        protocol::Measurement last;
    };

    RecordingWriter();
    ~RecordingWriter();
    Q_DISABLE_COPY(RecordingWriter)

    /**
     * Creates the file \a path, which must not exist. \a program is kept as the name of the recording
     * program; one measurement is stored in every \a interval, and all of them with 0.
     *
     * Returns false and sets \a error on failure; nothing is left at \a path then.
     */
    bool create(const QString& path, const QString& program, recording::Time interval,
                recording::Error& error);

    /**
     * Writes \a events, in the order of their times, in one transaction. Marks of other programs get their
     * times from \a now, the wall clock at this moment of the recording.
     *
     * Returns false and sets \a error on failure. The recording is then as before: the same events can be
     * appended again.
     */
    bool append(const std::vector<recording::Event>& events, const recording::ClockPoint& now,
                recording::Error& error);

    /**
     * Ends the recording at \a end: closes an open gap, and makes the recording one file without helper
     * files. Returns false and sets \a error on failure; the recording is then interrupted. The writer is
     * closed in both cases.
     */
    bool finish(recording::EndReason reason, recording::Time end, recording::Error& error);

    /// Closes the file as it is: an interrupted recording.
    void abandon() { close(); }

    bool isOpen() const { return m_database.isOpen(); }
    const Totals& totals() const { return m_state.totals; }

private:
    struct Statements;
    /// What a transaction that fails must leave as it was.
    struct State
    {
        Totals totals;
        ChargeIntegral integral;
        BucketBuilder seconds{recording::Level::Second};
        BucketBuilder minutes{recording::Level::Minute};
        recording::Time storeFrom{0};
    };

    bool initialize(const QString& program, recording::Time interval);
    bool writeAll(const std::vector<recording::Event>& events, const recording::ClockPoint& now);
    bool write(const recording::Measurement& measurement);
    bool write(const recording::GapBegin& gap);
    bool write(const recording::Mark& mark);
    bool write(const recording::MultimeterRecord& record);
    bool write(const recording::ScreenChange& change);
    bool write(const recording::ClockPoint& point);
    bool write(const recording::Identity& identity);
    bool endGap(recording::Time at);
    bool writeBucket(recording::Level level, const std::optional<recording::Bucket>& bucket);
    void close();

    std::unique_ptr<QLockFile> m_lock;
    recording::Database m_database;
    std::unique_ptr<Statements> m_statements;
    recording::Time m_interval{0};
    State m_state;
};
