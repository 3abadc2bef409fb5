// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/WindowSizing.h"

#include <QWindow>

#include <windows.h>

namespace platform {

bool startSystemResize(QWindow& window, Qt::Edges edges)
{
    const int command = sizingCommand(edges);
    if (command == 0)
        return false;
    ReleaseCapture();
    SendMessageW(reinterpret_cast<HWND>(window.winId()), WM_SYSCOMMAND, WPARAM(command), 0);
    return true;
}

bool isWayland()
{
    return false;
}

} // namespace platform
