// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

#include <functional>

/**
 * Decides which multimeter readings are worth recording: a reading must arrive five times in a row
 * unchanged, and is not recorded again for 16 seconds; neither is a voltage that is a millivolt or two away
 * from it.
 */
class ReadingGate
{
public:
    /// The present time in milliseconds since the epoch.
    using Clock = std::function<qint64()>;

    /// Identical readings in a row that make a reading steady.
    static constexpr int kStableReadings = 5;
    /// How long a recorded reading is not recorded again, in milliseconds.
    static constexpr qint64 kRepeatAfterMs = 16000;

    /// A gate that reads the system's clock.
    ReadingGate();
    explicit ReadingGate(Clock clock);

    /**
     * Takes the next reading, in order of arrival.
     *
     * \a mode is the instrument's function, \a value its reading text. True when this reading is to be
     * recorded now. An invalid reading (no function, no text, zero, letters only, over-range or error
     * words) restarts the gate and is never recorded.
     */
    bool consider(int mode, const QString& value);

    /// Starts counting anew; what was recorded recently stays known.
    void reset();
    /// Forgets what was recorded recently; the count goes on.
    void forgetRecentReadings();

    /// Readings recorded in about the last 16 seconds, by key: a reading has up to four keys.
    int recentKeyCount() const { return m_recentReadingKeys.size(); }

private:
    bool wasRecordedRecently(const QStringList& keys, qint64 now) const;

    Clock m_clock;
    /// Identical readings in a row so far.
    int m_stableCount = 0;
    int m_candidateMode = -1;
    QString m_candidateText;
    int m_lastRecordedMode = -1;
    QString m_lastRecordedText;
    /// Milliseconds since the epoch; 0 before the first recording.
    qint64 m_lastRecordedAtMs = 0;
    /// When each key was last recorded, in milliseconds since the epoch.
    QHash<QString, qint64> m_recentReadingKeys;
};
