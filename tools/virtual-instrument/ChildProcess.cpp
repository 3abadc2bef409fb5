// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/virtual-instrument/ChildProcess.h"

#include <csignal>
#include <sys/prctl.h>
#include <unistd.h>

namespace {

constexpr int cGraceMs = 3000;
constexpr int cSignalExitBase = 128;

} // namespace

ChildProcess::~ChildProcess()
{
    end();
}

bool ChildProcess::run(const QStringList& command)
{
    setProcessChannelMode(QProcess::ForwardedChannels);
    start(command.first(), command.mid(1));
    if (!waitForStarted())
        return false;
    m_group = processId();
    return true;
}

void ChildProcess::setupChildProcess()
{
    setpgid(0, 0);
    prctl(PR_SET_PDEATHSIG, SIGTERM);
}

bool ChildProcess::leftProcessesBehind() const
{
    return state() == QProcess::NotRunning && m_group != 0 && ::kill(-static_cast<pid_t>(m_group), 0) == 0;
}

void ChildProcess::end()
{
    if (m_group == 0)
        return;
    if (state() != QProcess::NotRunning) {
        ::kill(-static_cast<pid_t>(m_group), SIGTERM);
        waitForFinished(cGraceMs);
    }
    endGroup();
    waitForFinished(cGraceMs);
}

void ChildProcess::endGroup()
{
    ::kill(-static_cast<pid_t>(m_group), SIGKILL);
    m_group = 0;
}

int ChildProcess::shellExitCode() const
{
    return exitStatus() == QProcess::CrashExit ? cSignalExitBase + exitCode() : exitCode();
}
