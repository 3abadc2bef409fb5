// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/InstallerLauncher.h"

#include <QString>

namespace platform {

/// Returns the Windows command that shows the file \a path selected in its folder. The switch and the path
/// are one argument, and the path has backslashes. Only the path is quoted: Explorer does not recognize a
/// switch within quotes.
inline ShellCommand explorerSelectCommand(QString path)
{
    return {QStringLiteral("explorer.exe"),
            {},
            QStringLiteral("/select,\"%1\"").arg(path.replace(QLatin1Char('/'), QLatin1Char('\\')))};
}

/**
 * Shows the existing file or folder \a path in the desktop's file manager. Does not wait. Call it on the GUI
 * thread.
 *
 * On Linux the desktop's file manager is asked over D-Bus to select the file. Without one, or after an error,
 * the folder is opened instead. Returns true when the viewer was asked or started.
 */
bool showInFileManager(const QString& path);

} // namespace platform
