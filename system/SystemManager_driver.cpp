// SPDX-License-Identifier: GPL-3.0-or-later
#include "firmware/DriverJob.h"
#include "platform/PowerShell.h"
#include "system/SystemManager.h"

#include <QCoreApplication>
#include <QDir>
#include <QProcess>
#include <QtConcurrent>

namespace {

DriverTexts textsOf(DriverJob job)
{
    DriverTexts texts;
    if (job == DriverJob::Install) {
        texts.filesMissing = SystemManager::tr("FEL driver files were not found.");
        texts.success = SystemManager::tr("FEL WinUSB driver installed successfully.");
        texts.cancelled = SystemManager::tr("Driver installation was cancelled by the user.");
        texts.failed = SystemManager::tr("FEL driver installation failed. Exit code: %1");
        texts.unsupported = SystemManager::tr("FEL driver installation is only supported on Windows.");
    } else {
        texts.filesMissing = SystemManager::tr("FEL driver uninstall files were not found.");
        texts.success = SystemManager::tr("FEL WinUSB driver uninstalled successfully.");
        texts.cancelled = SystemManager::tr("Driver uninstallation was cancelled by the user.");
        texts.failed = SystemManager::tr("FEL driver uninstallation failed. Exit code: %1");
        texts.unsupported = SystemManager::tr("FEL driver uninstallation is only supported on Windows.");
    }
    return texts;
}

QString operationName(DriverJob job)
{
    return job == DriverJob::Install ? QStringLiteral("installFelDriver")
                                     : QStringLiteral("uninstallFelDriver");
}

} // namespace

void SystemManager::installFelDriver()
{
    startDriverJob(DriverJob::Install);
}

void SystemManager::uninstallFelDriver()
{
    startDriverJob(DriverJob::Uninstall);
}

void SystemManager::startDriverJob(DriverJob job)
{
    if (m_felDriverInstallBusy || m_stopping)
        return;
    if (!m_services.driverJobs) {
        Q_EMIT felDriverInstallFinished(false, textsOf(job).unsupported);
        return;
    }
    const QString script =
        job == DriverJob::Install
            ? driver::findFelDriverScript(QCoreApplication::applicationDirPath(), QDir::currentPath())
            : driver::findFelDriverUninstallScript(QCoreApplication::applicationDirPath(),
                                                   QDir::currentPath());
    if (script.isEmpty()) {
        Q_EMIT felDriverInstallFinished(false, textsOf(job).filesMissing);
        return;
    }
    m_felDriverInstallBusy = true;
    Q_EMIT felDriverInstallBusyChanged();
    writeLog(QStringLiteral("%1 started. script=%2").arg(operationName(job), script));
    m_driverJob = QtConcurrent::run([this, job, script] {
        const QString command = job == DriverJob::Install
                                    ? platform::powershell::installDriverCommand(script)
                                    : platform::powershell::uninstallDriverCommand(script);
        DriverJobResult result;
        result.ran = runProcessAndWait(
            platform::powershell::program(), platform::powershell::arguments(command), &result.stdoutText,
            &result.stderrText, &result.exitCode, platform::powershell::cDriverJobTimeoutMs);
        QMetaObject::invokeMethod(
            this, [this, job, result] { onDriverJobFinished(job, result); }, Qt::QueuedConnection);
    });
}

void SystemManager::onDriverJobFinished(DriverJob job, const DriverJobResult& result)
{
    const bool ok = result.ran && result.exitCode == 0;
    writeLog(QStringLiteral("%1 finished. success=%2 exitCode=%3 stdout=%4 stderr=%5")
                 .arg(operationName(job), QString::number(int(ok)), QString::number(result.exitCode),
                      result.stdoutText.simplified(), result.stderrText.simplified()));
    m_felDriverInstallBusy = false;
    Q_EMIT felDriverInstallBusyChanged();
    Q_EMIT felDriverInstallFinished(
        ok, driver::outcomeMessage(textsOf(job), ok, result.exitCode, result.stdoutText, result.stderrText));
    requestConnectionStateRefresh(true);
}

void SystemManager::launchLegacyFelDriverInstaller()
{
    const QString installer =
        driver::findLegacyFelDriverInstaller(QCoreApplication::applicationDirPath(), QDir::currentPath());
    if (!installer.isEmpty())
        QProcess::startDetached(installer, QStringList());
}
