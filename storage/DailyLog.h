// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDateTime>
#include <QString>

/**
 * A text log with one file per day in the log folder. The file is opened, appended to and closed for each
 * line, or for all lines of a Pause, so that a file can be read, moved or deleted at any time and a crash
 * loses no line that was written outside of a Pause.
 *
 * Any thread may append; lines of several threads follow one another. Every entry ends in one line end of the
 * platform, even when its text ends in line ends already. A line that cannot be written is lost silently.
 */
class DailyLog
{
public:
    enum class Encoding { Utf8, Local8Bit };

    /// While one exists, no file of any log is open, and lines wait in memory. Its end writes them; a file is
    /// opened once for all lines that follow each other in it. For programs that cannot read a file while
    /// another one writes it, and for many lines at once. Never holds up a thread that appends.
    class Pause
    {
    public:
        Pause();
        ~Pause();
        Q_DISABLE_COPY(Pause)
    };

    /// \a fileNamePattern names the file, with %1 where the date goes, for example "hid_link_%1.log".
    explicit DailyLog(const QString& fileNamePattern, Encoding encoding = Encoding::Utf8);

    /// Where a line of \a when goes; the folder is created.
    QString filePath(const QDateTime& when) const;
    /// Appends "[yyyy-MM-dd HH:mm:ss.zzz] " and \a message as one line.
    void append(const QString& message, const QDateTime& now = QDateTime::currentDateTime()) const;
    /// Appends \a line without a time, to the file of the day of \a now.
    void appendLine(const QString& line, const QDateTime& now = QDateTime::currentDateTime()) const;

private:
    QString fileName(const QDateTime& when) const;

    QString m_fileNamePattern;
    Encoding m_encoding;
};
