// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QElapsedTimer>
#include <QFile>

/// A text file of what happened on the device: one line per event, with the seconds since the start in front.
/// Each line is in the file when write() returns, so that another process can follow it.
class TraceFile
{
public:
    /// Starts the file anew; false when it cannot be written.
    bool open(const QString& path);
    /// Does nothing while no file is open.
    void write(const QString& event);

private:
    QFile m_file;
    QElapsedTimer m_clock;
};
