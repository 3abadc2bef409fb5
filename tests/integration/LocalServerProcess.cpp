// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/integration/LocalServerProcess.h"

#include <QUrl>

namespace {

constexpr int cTimeoutMs = 20'000;

} // namespace

LocalServerProcess::~LocalServerProcess()
{
    kill();
}

bool LocalServerProcess::start(const QStringList& arguments)
{
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.start(QStringLiteral(QUORVEL_LOCAL_SERVER),
                    QStringList{"--api-port", "0", "--docs-port", "0"} + arguments);
    m_apiPort = QUrl(nextLine().section(QLatin1Char(' '), -1)).port();
    m_docsPort = QUrl(nextLine().section(QLatin1Char(' '), -1)).port();
    return m_apiPort > 0 && m_docsPort > 0;
}

bool LocalServerProcess::command(const QString& line)
{
    m_process.write(line.toUtf8() + '\n');
    const QString first = nextLine();
    // The rest of the state has one line for each fault.
    m_process.waitForReadyRead(0);
    m_process.readAllStandardOutput();
    return first.startsWith(QLatin1String("update "));
}

void LocalServerProcess::kill()
{
    if (m_process.state() == QProcess::NotRunning)
        return;
    m_process.kill();
    m_process.waitForFinished(cTimeoutMs);
}

QString LocalServerProcess::nextLine()
{
    while (!m_process.canReadLine()) {
        if (!m_process.waitForReadyRead(cTimeoutMs))
            return {};
    }
    return QString::fromUtf8(m_process.readLine()).trimmed();
}
