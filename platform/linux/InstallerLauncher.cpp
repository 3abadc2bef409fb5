// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/InstallerLauncher.h"

#include <QProcess>

bool platform::openInstaller(const QString& path)
{
    const ShellCommand command = xdgOpenCommand(path);
    return QProcess::startDetached(command.program, command.arguments);
}
