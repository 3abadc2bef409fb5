// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/FileManager.h"

#include "platform/windows/Explorer.h"

bool platform::showInFileManager(const QString& path)
{
    return startExplorer(explorerSelectCommand(path));
}
