// SPDX-License-Identifier: GPL-3.0-or-later
#include "instrument/DeviceLog.h"

#include "storage/TimeText.h"

#include <QVariantMap>

void DeviceLog::append(const QString& message, const QDateTime& now)
{
    const QString dateTime = timeText(now);
    m_lastLine = QLatin1Char('[') + dateTime + QLatin1String("] ") + message;
    m_entries.prepend(
        QVariantMap{{QStringLiteral("dateTime"), dateTime}, {QStringLiteral("message"), message}});
    while (m_entries.size() > cMaxEntries)
        m_entries.removeLast();
    m_file.appendLine(m_lastLine, now);
}
