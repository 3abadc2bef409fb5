// SPDX-License-Identifier: GPL-3.0-or-later
#include "storage/DailyLog.h"

#include "storage/DataFolders.h"
#include "storage/TimeText.h"

#include <QFile>

#include <mutex>
#include <utility>
#include <vector>

namespace {

struct Entry
{
    QString path;
    QByteArray bytes;
};

/// Guards every log file from opening to closing, and what follows. Windows has no append mode of its own, so
/// two writers would find the same end of the file.
std::mutex appending;
int pauses = 0;
std::vector<Entry> waiting;

/// \a text as one entry: line feeds alone end its lines, and no line end stands at its end.
QString withoutLineEnd(QString text)
{
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    while (text.endsWith(QLatin1Char('\n')) || text.endsWith(QLatin1Char('\r')))
        text.chop(1);
    return text;
}

void write(const Entry& entry)
{
    QFile file(entry.path);
    // Text mode writes the line ends of the platform.
    if (file.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Text))
        file.write(entry.bytes);
}

} // namespace

DailyLog::Pause::Pause()
{
    const std::lock_guard<std::mutex> lock(appending);
    ++pauses;
}

DailyLog::Pause::~Pause()
{
    const std::lock_guard<std::mutex> lock(appending);
    if (--pauses > 0)
        return;
    for (const Entry& entry : waiting)
        write(entry);
    waiting.clear();
}

DailyLog::DailyLog(const QString& fileNamePattern, Encoding encoding)
    : m_fileNamePattern(fileNamePattern), m_encoding(encoding)
{}

QString DailyLog::filePath(const QDateTime& when) const
{
    return folders::logs() + QLatin1Char('/') +
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
    const QString text = withoutLineEnd(line) + QLatin1Char('\n');
    Entry entry{filePath(now), m_encoding == Encoding::Utf8 ? text.toUtf8() : text.toLocal8Bit()};
    const std::lock_guard<std::mutex> lock(appending);
    if (pauses > 0)
        waiting.push_back(std::move(entry));
    else
        write(entry);
}
