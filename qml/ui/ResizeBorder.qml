// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import GenControl.ScreenTools 1.0

import "../customize"

/// The four edges and four corners by which the window is resized.
Item {
    id: _root

    property var targetWindow: null
    property real thickness: 8

    signal resizeStarted()
    signal resizeRequested(bool left, bool top, bool right, bool bottom)
    signal resizeFinished()

    Repeater {
        // Per handle the edges that it moves; corners last, so that they lie on top.
        model: [
            { left: true }, { right: true }, { top: true }, { bottom: true },
            { left: true, top: true }, { right: true, top: true },
            { left: true, bottom: true }, { right: true, bottom: true }
        ]

        ResizeHandle {
            targetWindow: _root.targetWindow
            useSystemResize: !ScreenTools.canPlaceWindows
            resizeLeft: !!modelData.left
            resizeTop: !!modelData.top
            resizeRight: !!modelData.right
            resizeBottom: !!modelData.bottom
            x: resizeRight ? _root.width - _root.thickness : 0
            y: resizeBottom ? _root.height - _root.thickness : 0
            width: resizeLeft || resizeRight ? _root.thickness : _root.width
            height: resizeTop || resizeBottom ? _root.thickness : _root.height
            onResizeStarted: _root.resizeStarted()
            onResizeRequested: _root.resizeRequested(left, top, right, bottom)
            onResizeFinished: _root.resizeFinished()
        }
    }
}
