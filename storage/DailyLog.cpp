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
    QString fileName;
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
    QFile file(folders::logsPath() + QLatin1Char('/') + entry.fileName);
    const auto open = [&file] {
        // Text mode writes the line ends of the platform.
        return file.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Text);
    };
    if (!open()) {
        // The folder may be missing; logs() creates it.
        folders::logs();
        if (!open())
            return;
    }
    file.write(entry.bytes);
}

/// Date and time of a line, to the second. Lines follow each other closely, and the texts take longer than
/// writing them.
struct SecondTexts
{
    QDate date;
    int second = -1; ///< of the day
    QString day;
    QString time;
};

SecondTexts secondTextsOf(const QDateTime& when)
{
    constexpr int cMsPerSec = 1000;
    // Not thread_local: a thread's end under MinGW may free such an object before it destroys it.
    static std::mutex mutex;
    static SecondTexts last;
    const std::lock_guard<std::mutex> lock(mutex);
    const QDate date = when.date();
    const int second = when.time().msecsSinceStartOfDay() / cMsPerSec;
    if (second != last.second || date != last.date)
        last = {date, second, timeText(when, QStringLiteral("yyyyMMdd")), timeText(when)};
    return last;
}

/// Adds the bytes of \a entry to the last waiting entry when both go into the same file.
void enqueue(Entry entry)
{
    if (!waiting.empty() && waiting.back().fileName == entry.fileName)
        waiting.back().bytes += entry.bytes;
    else
        waiting.push_back(std::move(entry));
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
    return folders::logs() + QLatin1Char('/') + fileName(when);
}

QString DailyLog::fileName(const QDateTime& when) const
{
    return m_fileNamePattern.arg(secondTextsOf(when).day);
}

void DailyLog::append(const QString& message, const QDateTime& now) const
{
    const QString milliseconds = QString::number(1000 + now.time().msec()).mid(1);
    appendLine(QLatin1Char('[') + secondTextsOf(now).time + QLatin1Char('.') + milliseconds +
                   QLatin1String("] ") + message,
               now);
}

void DailyLog::appendLine(const QString& line, const QDateTime& now) const
{
    const QString text = withoutLineEnd(line) + QLatin1Char('\n');
    Entry entry{fileName(now), m_encoding == Encoding::Utf8 ? text.toUtf8() : text.toLocal8Bit()};
    const std::lock_guard<std::mutex> lock(appending);
    if (pauses > 0)
        enqueue(std::move(entry));
    else
        write(entry);
}
