// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// The PowerShell commands that install and remove the boot-mode driver on Windows. Plain Qt, so they are
/// built and tested on every platform.
namespace platform::powershell {

/// Time limit of a driver script with its elevation prompt, in milliseconds.
constexpr int cDriverJobTimeoutMs = 180000;
/// Exit code when the user refuses the elevation (the Windows code ERROR_CANCELLED).
constexpr int cElevationRefused = 1223;

/// Runs the driver script \a script with its arguments in an elevated shell. The command ends with the
/// script's exit code, or with cElevationRefused when the user declines.
QString installDriverCommand(const QString& script);
QString uninstallDriverCommand(const QString& script);

} // namespace platform::powershell
