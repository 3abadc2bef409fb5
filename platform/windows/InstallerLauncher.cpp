// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/InstallerLauncher.h"

#include "platform/windows/Explorer.h"

bool platform::openInstaller(const QString& path)
{
    return startExplorer(explorerCommand(path));
}
