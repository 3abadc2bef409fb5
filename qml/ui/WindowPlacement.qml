// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import QtQuick.Window 2.12
import GenControl.ScreenTools 1.0
import GenToolbox 1.0

import "WindowGeometry.js" as WindowGeometry

/// Gives the window its first size, restores the stored geometry, and stores what the user makes of it.
Item {
    id: _root

    property var targetWindow: null
    /// Size of the window when no size is stored.
    property size preferredSize: Qt.size(0, 0)
    /// Height of the strip at the top by which the window can be moved: it has to be reachable on a screen.
    property real barHeight: 0
    property bool resizing: false
    /// The geometry is not restored yet: nothing is stored.
    property bool restoring: true
    /// The windowing system has placed the window: from now on, a change of its geometry is the user's.
    property bool placed: false
    readonly property bool settledNormal: targetWindow !== null && targetWindow.visibility !== Window.Minimized
                                          && targetWindow.visibility !== Window.Maximized
                                          && targetWindow.visibility !== Window.FullScreen
                                          && targetWindow.visibility !== Window.Hidden

    /// The stored geometry, if any, is restored: the window can be shown.
    signal restored()

    function restore() {
        var geometry = WindowGeometry.restored(WindowGeometry.load(GenToolbox.genSettings), _minimumSize(),
                                               _availableSize(), Qt.application.screens, barHeight)
        if (geometry)
            ScreenTools.setWindowGeometryForWindow(targetWindow, geometry.x, geometry.y, geometry.width,
                                                   geometry.height)
        restoring = false
    }

    /// Stores the geometry when the window has rested for a while.
    function scheduleSave() {
        if (placed && !restoring && !resizing && settledNormal)
            _saveTimer.restart()
    }

    function save() {
        if (!restoring && settledNormal)
            WindowGeometry.store(GenToolbox.genSettings, targetWindow, ScreenTools.canPlaceWindows)
    }

    /// Sets the first size and starts the restore, which ends in restored().
    // Assigned, not bound: a change of the language or of the screen evaluates every binding, which would set the
    // size of a maximised or enlarged window back.
    function start() {
        var size = WindowGeometry.initialSize(GenToolbox.genSettings, preferredSize, _minimumSize(), _availableSize())
        targetWindow.width = size.width
        targetWindow.height = size.height
        _restoreTimer.start()
    }

    function _minimumSize() {
        return Qt.size(targetWindow.minimumWidth, targetWindow.minimumHeight)
    }

    function _availableSize() {
        return Qt.size(ScreenTools.availableScreenWidth, ScreenTools.availableScreenHeight)
    }

    Timer { id: _saveTimer; interval: 350; onTriggered: _root.save() }
    Timer {
        id: _restoreTimer

        interval: 0
        onTriggered: {
            _root.restore()
            _root.restored()
        }
    }
}
