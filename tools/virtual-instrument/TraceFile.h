// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QElapsedTimer>
#include <QFile>

/// A text file of device events: one line per event, beginning with the seconds since the start. Each line is
/// in the file when write() returns, so that another process can follow the file.
class TraceFile
{
public:
    /// Creates or truncates the file. Returns false when it cannot be written.
    bool open(const QString& path);
    /// Does nothing while no file is open.
    void write(const QString& event);

private:
    QFile m_file;
    QElapsedTimer m_clock;
};
