// SPDX-License-Identifier: GPL-3.0-or-later
#include "storage/DailyLog.h"

#include "storage/DataFolders.h"
#include "storage/TimeText.h"

#include <QFile>
#include <QMutex>

namespace {

/// Guards every log file from opening to closing: Windows has no append mode of its own, so two writers would
/// find the same end of the file.
QBasicMutex appending;

/// \a text as one entry: line feeds alone end its lines, and no line end stands at its end.
QString withoutLineEnd(QString text)
{
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    while (text.endsWith(QLatin1Char('\n')) || text.endsWith(QLatin1Char('\r')))
        text.chop(1);
    return text;
}

} // namespace

DailyLog::DailyLog(const QString& fileNamePattern, Encoding encoding)
    : m_fileNamePattern(fileNamePattern), m_encoding(encoding)
{}

QString DailyLog::filePath(const QDateTime& when) const
{
    return DataFolders::logs() + QLatin1Char('/') +
           m_fileNamePattern.arg(timeText(when, QStringLiteral("yyyyMMdd")));
}

void DailyLog::append(const QString& message, const QDateTime& now) const
{
    appendLine(QLatin1Char('[') + timeText(now, QStringLiteral("yyyy-MM-dd HH:mm:ss.zzz")) +
                   QLatin1String("] ") + message,
               now);
}

void DailyLog::appendLine(const QString& line, const QDateTime& now) const
{
    const QString entry = withoutLineEnd(line) + QLatin1Char('\n');
    const QByteArray bytes = m_encoding == Encoding::Utf8 ? entry.toUtf8() : entry.toLocal8Bit();
    QFile file(filePath(now));
    const QMutexLocker lock(&appending);
    // Text mode writes the line ends of the platform.
    if (file.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Text)) {
        file.write(bytes);
        file.close();
    }
}
