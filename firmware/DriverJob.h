// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// What can be done with the boot-mode driver.
enum class DriverJob {
    Install,
    Uninstall,
};

/// The texts of a driver job, translated.
struct DriverTexts
{
    QString filesMissing;
    QString success;
    QString cancelled;
    /// With "%1" for the exit code.
    QString failed;
    QString unsupported;
};

namespace driver {

// The files of the driver package: beside the executable in \a appDir, else in "docs" (scripts) or "deploy"
// (installer) there, else in the same folder of \a workingDir. The first that exists, absolute and with
// native separators; empty when none does.
QString findFelDriverScript(const QString& appDir, const QString& workingDir);
QString findFelDriverUninstallScript(const QString& appDir, const QString& workingDir);
/// The interactive installer of former versions.
QString findLegacyFelDriverInstaller(const QString& appDir, const QString& workingDir);

/// What the user is told about a job that ended: \a ok, or the exit code with up to 180 characters of what
/// the script printed, errors before ordinary output.
QString outcomeMessage(const DriverTexts& texts, bool ok, int exitCode, const QString& standardOutput,
                       const QString& standardError);

} // namespace driver
