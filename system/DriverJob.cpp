// SPDX-License-Identifier: GPL-3.0-or-later
#include "system/DriverJob.h"

#include "platform/PowerShell.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace driver {

namespace {

constexpr int cDetailLength = 180;

} // namespace

QStringList scriptCandidates(DriverJob job, const QString& appDir, const QString& workingDir)
{
    const QString script = job == DriverJob::Install
                               ? QStringLiteral("FELdrivers/install-fel-winusb-driver.ps1")
                               : QStringLiteral("FELdrivers/uninstall-fel-winusb-driver.ps1");
    return {appDir + QLatin1Char('/') + script, appDir + QStringLiteral("/docs/") + script,
            workingDir + QStringLiteral("/docs/") + script};
}

QStringList legacyInstallerCandidates(const QString& appDir, const QString& workingDir)
{
    const QString installer = QStringLiteral("/sunxi-fel-USB-zadig-2.3.exe");
    const QString deploy = QStringLiteral("/deploy");
    return {appDir + installer, appDir + deploy + installer, workingDir + deploy + installer};
}

QString firstExisting(const QStringList& candidates)
{
    const auto found = std::find_if(candidates.cbegin(), candidates.cend(),
                                    [](const QString& path) { return QFileInfo::exists(path); });
    return found == candidates.cend() ? QString()
                                      : QDir::toNativeSeparators(QFileInfo(*found).absoluteFilePath());
}

QString outcomeMessage(const DriverTexts& texts, bool ok, int exitCode, const QString& standardOutput,
                       const QString& standardError)
{
    if (ok)
        return texts.success;
    if (exitCode == platform::powershell::cElevationRefused)
        return texts.cancelled;
    const QString message = texts.failed.arg(exitCode);
    const QString errors = standardError.trimmed();
    const QString detail = errors.isEmpty() ? standardOutput.trimmed() : errors;
    return detail.isEmpty() ? message : message + QLatin1Char(' ') + detail.left(cDetailLength);
}

} // namespace driver
