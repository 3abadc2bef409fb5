// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

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

/// The places of a file of the driver package, the one that counts first: beside the executable, then in
/// the documentation folder beside it and in the working folder.
QStringList scriptCandidates(DriverJob job, const QString& appDir, const QString& workingDir);
QStringList legacyInstallerCandidates(const QString& appDir, const QString& workingDir);

/// The first of \a candidates that exists, absolute and with native separators; empty when none does.
QString firstExisting(const QStringList& candidates);

/// What the user is told about a job that ended: \a ok, or the exit code with up to 180 characters of what
/// the script printed, errors before ordinary output.
QString outcomeMessage(const DriverTexts& texts, bool ok, int exitCode, const QString& standardOutput,
                       const QString& standardError);

} // namespace driver
