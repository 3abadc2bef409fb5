// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

#include <chrono>

/**
 * Decides which multimeter readings are worth recording: a reading must arrive five times in a row
 * unchanged, and is not recorded again for 16 seconds; neither is a voltage that is a millivolt or two away
 * from it.
 */
class ReadingGate
{
public:
    /// Not the time of day, which can be set back: nothing would be recorded until the old time came again.
    using TimePoint = std::chrono::steady_clock::time_point;

    /// Identical readings in a row that make a reading steady.
    static constexpr int cStableReadings = 5;
    /// A recorded reading is not recorded again for this long.
    static constexpr std::chrono::seconds cRepeatAfter{16};

    /**
     * Takes the next reading, in order of arrival.
     *
     * \a mode is the instrument's function, \a value its reading text, \a now the time of arrival. Returns
     * true when this reading is to be recorded now. An invalid reading (no function, no text, zero, letters
     * only, over-range or error words) restarts the gate and is never recorded.
     */
    bool consider(int mode, const QString& value, TimePoint now);

    /// Restarts the count; what was recorded recently stays known.
    void reset();
    /// Forgets what was recorded recently; the count goes on.
    void forgetRecentReadings();

    /// Readings recorded in about the last 16 seconds, by key: a reading has up to four keys.
    int recentKeyCount() const { return m_recentReadingKeys.size(); }

private:
    /// Identical readings in a row so far.
    int m_stableCount = 0;
    int m_candidateMode = -1;
    QString m_candidateText;
    /// The reading that was recorded last, unless another one came since; -1 for none.
    int m_lastRecordedMode = -1;
    QString m_lastRecordedText;
    TimePoint m_lastRecordedAt;
    /// When each key was last recorded.
    QHash<QString, TimePoint> m_recentReadingKeys;
};
