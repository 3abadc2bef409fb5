// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDateTime>
#include <QLocale>
#include <QString>

/**
 * \a time as \a format says (the format of QDateTime::toString()), with the digits 0 to 9 in every system
 * language. For file names, logs and table rows: QDateTime::toString() uses the system's own digits.
 */
inline QString timeText(const QDateTime& time, const QString& format)
{
    return QLocale::c().toString(time, format);
}

/// \a time as it is shown and logged: "2026-03-01 14:05:09".
inline QString timeText(const QDateTime& time)
{
    return timeText(time, QStringLiteral("yyyy-MM-dd HH:mm:ss"));
}
