// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import QtQuick.Window 2.12
import GenControl.ScreenTools 1.0

/// A strip or corner of a frameless window by which the window is resized. It only reports the drag;
/// with `useSystemResize` the system's own interactive resize is tried first.
MouseArea {
    id: _root

    property var targetWindow: null
    property bool resizeLeft: false
    property bool resizeTop: false
    property bool resizeRight: false
    property bool resizeBottom: false
    property bool useSystemResize: false
    property bool systemResizeActive: false

    signal resizeStarted()
    signal resizeRequested(bool left, bool top, bool right, bool bottom)
    signal resizeFinished()

    z: 100
    acceptedButtons: Qt.LeftButton
    enabled: !!targetWindow && targetWindow.visibility !== Window.Maximized
             && targetWindow.visibility !== Window.FullScreen
    // A disabled mouse area would still show its cursor.
    visible: enabled
    cursorShape: {
        if ((resizeLeft && resizeTop) || (resizeRight && resizeBottom))
            return Qt.SizeFDiagCursor
        if ((resizeRight && resizeTop) || (resizeLeft && resizeBottom))
            return Qt.SizeBDiagCursor
        return resizeLeft || resizeRight ? Qt.SizeHorCursor : Qt.SizeVerCursor
    }

    onPressed: {
        resizeStarted()
        if (!useSystemResize)
            return
        systemResizeActive = ScreenTools.startSystemResizeForWindow(targetWindow, resizeLeft, resizeTop,
                                                                    resizeRight, resizeBottom)
        if (systemResizeActive)
            resizeFinished()
    }
    onPositionChanged: {
        if (pressed && !systemResizeActive)
            resizeRequested(resizeLeft, resizeTop, resizeRight, resizeBottom)
    }
    onReleased: _finish()
    onCanceled: _finish()

    function _finish() {
        if (!systemResizeActive)
            resizeFinished()
        systemResizeActive = false
    }
}
