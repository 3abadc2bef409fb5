// SPDX-License-Identifier: GPL-3.0-or-later
#include "firmware/DriverJob.h"

#include "platform/DriverCommand.h"

#include <QDir>
#include <QFileInfo>
#include <QStringList>

#include <algorithm>

namespace driver {

namespace {

constexpr int cDetailLength = 180;

/// Looks for \a file beside the executable, then in the folder \a fallback there and in the working folder.
QString find(const QString& file, const QString& fallback, const QString& appDir, const QString& workingDir)
{
    const QStringList candidates{appDir + file, appDir + fallback + file, workingDir + fallback + file};
    const auto found = std::find_if(candidates.cbegin(), candidates.cend(),
                                    [](const QString& path) { return QFileInfo::exists(path); });
    return found == candidates.cend() ? QString()
                                      : QDir::toNativeSeparators(QFileInfo(*found).absoluteFilePath());
}

} // namespace

QString findFelDriverScript(const QString& appDir, const QString& workingDir)
{
    return find(QStringLiteral("/FELdrivers/install-fel-winusb-driver.ps1"), QStringLiteral("/docs"), appDir,
                workingDir);
}

QString findFelDriverUninstallScript(const QString& appDir, const QString& workingDir)
{
    return find(QStringLiteral("/FELdrivers/uninstall-fel-winusb-driver.ps1"), QStringLiteral("/docs"),
                appDir, workingDir);
}

QString findLegacyFelDriverInstaller(const QString& appDir, const QString& workingDir)
{
    return find(QStringLiteral("/sunxi-fel-USB-zadig-2.3.exe"), QStringLiteral("/deploy"), appDir,
                workingDir);
}

QString outcomeMessage(const DriverTexts& texts, const DriverJobOutcome& outcome)
{
    if (outcome.end == DriverJobOutcome::End::Unsupported)
        return texts.unsupported;
    if (outcome.end == DriverJobOutcome::End::FilesMissing)
        return texts.filesMissing;
    if (outcome.ok())
        return texts.success;
    if (outcome.exitCode == platform::powershell::cElevationRefused)
        return texts.cancelled;
    const QString message = texts.failed.arg(outcome.exitCode);
    const QString errors = outcome.standardError.trimmed();
    const QString detail = errors.isEmpty() ? outcome.standardOutput.trimmed() : errors;
    return detail.isEmpty() ? message : message + QLatin1Char(' ') + detail.left(cDetailLength);
}

} // namespace driver
