// SPDX-License-Identifier: GPL-3.0-or-later
#include "firmware/DriverRunner.h"

#include "platform/DriverCommand.h"
#include "platform/PowerShell.h"

#include <QCoreApplication>
#include <QDir>

#include <utility>

namespace {

QString operationName(DriverJob job)
{
    return job == DriverJob::Install ? QStringLiteral("installFelDriver")
                                     : QStringLiteral("uninstallFelDriver");
}

QString scriptOf(DriverJob job)
{
    const auto find =
        job == DriverJob::Install ? driver::findFelDriverScript : driver::findFelDriverUninstallScript;
    return find(QCoreApplication::applicationDirPath(), QDir::currentPath());
}

DriverJobOutcome run(DriverJob job, const QString& script, const std::atomic_bool& cancelled)
{
    using namespace platform;
    const QString command = job == DriverJob::Install ? powershell::installDriverCommand(script)
                                                      : powershell::uninstallDriverCommand(script);
    DriverJobOutcome outcome;
    outcome.end = DriverJobOutcome::End::Ended;
    outcome.ran = runProcessAndWait(powershell::program(), powershell::arguments(command),
                                    &outcome.standardOutput, &outcome.standardError, &outcome.exitCode,
                                    powershell::cDriverJobTimeoutMs, &cancelled);
    return outcome;
}

} // namespace

DriverRunner::DriverRunner(bool supported, DebugLog log, QObject* parent)
    : QObject(parent), m_supported(supported), m_log(std::move(log))
{
    m_thread.setMaxThreadCount(1);
}

DriverRunner::~DriverRunner()
{
    stop();
}

void DriverRunner::start(DriverJob job)
{
    if (m_busy || m_stopping)
        return;
    DriverJobOutcome outcome;
    const QString script = m_supported ? scriptOf(job) : QString();
    if (script.isEmpty()) {
        outcome.end = m_supported ? DriverJobOutcome::End::FilesMissing : DriverJobOutcome::End::Unsupported;
        Q_EMIT finished(job, outcome);
        return;
    }
    m_busy = true;
    Q_EMIT busyChanged();
    m_log.write(QStringLiteral("%1 started. script=%2").arg(operationName(job), script));
    m_thread.start([this, job, script] {
        const DriverJobOutcome result = run(job, script, m_stopping);
        QMetaObject::invokeMethod(
            this, [this, job, result] { onEnded(job, result); }, Qt::QueuedConnection);
    });
}

void DriverRunner::onEnded(DriverJob job, const DriverJobOutcome& outcome)
{
    m_log.write(QStringLiteral("%1 finished. success=%2 exitCode=%3 stdout=%4 stderr=%5")
                    .arg(operationName(job), QString::number(int(outcome.ok())),
                         QString::number(outcome.exitCode), outcome.standardOutput.simplified(),
                         outcome.standardError.simplified()));
    m_busy = false;
    Q_EMIT busyChanged();
    Q_EMIT finished(job, outcome);
}

void DriverRunner::stop()
{
    m_stopping = true;
    m_thread.waitForDone();
    // The result that the job has posted.
    QCoreApplication::sendPostedEvents(this, QEvent::MetaCall);
}
