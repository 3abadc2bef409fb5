// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <Qt>

class QWindow;

namespace platform {

/// Returns the Windows system command that starts sizing by \a edges: SC_SIZE plus the sizing edge, 1 to 8.
/// Returns 0 when \a edges is not an edge or a corner.
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
 * Starts the system's interactive resize of \a window by \a edges (one edge, or two that meet). Call it from
 * a mouse press on the GUI thread.
 *
 * Returns true when the system resizes the window. On Windows the call returns when the user releases the
 * mouse; on Linux it returns at once. Returns false for other edges, or when the system refuses.
 */
bool startSystemResize(QWindow& window, Qt::Edges edges);

/// Returns true when a Wayland desktop shows the windows. Needs an application object.
bool isWayland();

} // namespace platform
