// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/virtual-instrument/TraceFile.h"

bool TraceFile::open(const QString& path)
{
    m_file.setFileName(path);
    m_clock.start();
    return m_file.open(QIODevice::WriteOnly | QIODevice::Truncate);
}

void TraceFile::write(const QString& event)
{
    if (!m_file.isOpen())
        return;
    constexpr double cMsPerSec = 1000.0;
    const double seconds = static_cast<double>(m_clock.elapsed()) / cMsPerSec;
    m_file.write(QStringLiteral("%1 %2\n").arg(seconds, 0, 'f', 3).arg(event).toUtf8());
    m_file.flush();
}
