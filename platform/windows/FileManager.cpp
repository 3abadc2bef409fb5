// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/FileManager.h"

#include <QProcess>

bool platform::showInFileManager(const QString& path)
{
    const ShellCommand command = explorerSelectCommand(path);
    return QProcess::startDetached(command.program, command.arguments);
}
