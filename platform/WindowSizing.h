// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <Qt>

class QWindow;

namespace platform {

/// The Windows system command that starts sizing by \a edges (SC_SIZE plus the sizing-edge value 1 to 8);
/// 0 for edges that name no border.
constexpr int sizingCommand(Qt::Edges edges)
{
    constexpr int cScSize = 0xF000;
    const bool left = (edges & Qt::LeftEdge) != 0;
    const bool right = (edges & Qt::RightEdge) != 0;
    if ((edges & Qt::TopEdge) != 0)
        return cScSize + (left ? 4 : right ? 5 : 3);
    if ((edges & Qt::BottomEdge) != 0)
        return cScSize + (left ? 7 : right ? 8 : 6);
    return left ? cScSize + 1 : right ? cScSize + 2 : 0;
}

/**
 * Starts the system's own interactive resize of \a window by \a edges (one edge, or two that meet).
 * Call it from a mouse press on the GUI thread.
 *
 * True when the system took over. On Windows the call returns when the user lets go of the mouse; on
 * Linux it returns at once. False for edges that name no border or when the system refuses.
 */
bool startSystemResize(QWindow& window, Qt::Edges edges);

/// Whether a Wayland desktop shows the windows. Needs an application object.
bool isWayland();

} // namespace platform
