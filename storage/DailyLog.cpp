// SPDX-License-Identifier: GPL-3.0-or-later
#include "storage/DailyLog.h"

#include "storage/DataFolders.h"

#include <QFile>
#include <QTextStream>

DailyLog::DailyLog(const QString& fileNamePattern, Encoding encoding)
    : m_fileNamePattern(fileNamePattern), m_encoding(encoding)
{}

QString DailyLog::filePath(const QDateTime& when) const
{
    return DataFolders::logs() + QLatin1Char('/') +
           m_fileNamePattern.arg(when.toString(QStringLiteral("yyyyMMdd")));
}

void DailyLog::append(const QString& message, const QDateTime& now) const
{
    appendLine(QLatin1Char('[') + now.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss.zzz")) +
                   QLatin1String("] ") + message,
               now);
}

void DailyLog::appendLine(const QString& line, const QDateTime& now) const
{
    QFile file(filePath(now));
    if (!file.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Text))
        return;
    QTextStream stream(&file);
    if (m_encoding == Encoding::Utf8)
        stream.setCodec("UTF-8");
    stream << line << '\n';
}
