// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "storage/DailyLog.h"

#include <QString>
#include <QVariantList>

/// The log messages of the instrument: the newest in memory, all of them in a file for each day.
class DeviceLog
{
public:
    /// Messages that are kept in memory.
    static constexpr int cMaxEntries = 500;

    /// Adds \a message, which arrived at \a now (local time), and appends it to the file of that day.
    void append(const QString& message, const QDateTime& now);
    /// Empties lastLine(); the entries stay.
    void forgetLastLine() { m_lastLine.clear(); }

    /// The last message with its time, "[2026-03-01 14:05:09] message".
    QString lastLine() const { return m_lastLine; }
    /// Newest first: maps of "dateTime" ("2026-03-01 14:05:09") and "message".
    const QVariantList& entries() const { return m_entries; }

private:
    const DailyLog m_file{QStringLiteral("device_log_%1.txt"), DailyLog::Encoding::Local8Bit};
    QString m_lastLine;
    QVariantList m_entries;
};
