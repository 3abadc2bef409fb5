// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/InstallerLauncher.h"

#include <QProcess>

namespace platform {

/// Starts \a command, whose arguments are all native ones, and does not wait. Returns false when it cannot be
/// started.
inline bool startExplorer(const ShellCommand& command)
{
    QProcess explorer;
    explorer.setProgram(command.program);
    explorer.setNativeArguments(command.nativeArguments);
    return explorer.startDetached();
}

} // namespace platform
