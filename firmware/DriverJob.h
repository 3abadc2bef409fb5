// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QMetaType>
#include <QString>

/// What can be done with the boot-mode driver.
enum class DriverJob {
    Install,
    Uninstall,
};
Q_DECLARE_METATYPE(DriverJob)

/// How a driver job ended.
struct DriverJobOutcome
{
    enum class End {
        /// This system needs no driver.
        Unsupported,
        /// The script is not there.
        FilesMissing,
        /// The script ran, or could not be started.
        Ended,
    };

    End end = End::Unsupported;
    /// Whether the script ended by itself.
    bool ran = false;
    int exitCode = -1;
    QString standardOutput;
    QString standardError;

    bool ok() const { return ran && exitCode == 0; }
};

Q_DECLARE_METATYPE(DriverJobOutcome)

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

/// The message for the user. A failure has the exit code and up to 180 characters of what the script printed,
/// errors before ordinary output.
QString outcomeMessage(const DriverTexts& texts, const DriverJobOutcome& outcome);

} // namespace driver
