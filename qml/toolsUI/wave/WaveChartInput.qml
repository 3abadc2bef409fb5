// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.15

import "../../customize"

/// What mouse and keyboard do on the main chart. Keys: Space plays and pauses, Up and Down zoom, Left and Right
/// move the paused view, with Shift the cursor by one sample; Home and End go to the ends of the recording.
MouseArea {
    id: _input

    property bool running: true
    property bool dragging: false

    /// +1 to zoom in, -1 to zoom out.
    signal zoomRequested(int steps)
    /// Positions are pixels of this item.
    signal dragStarted(real x)
    signal dragMoved(real x)
    signal dragEnded()
    signal hoverMoved(real x, real y)
    signal hoverLeft()
    signal playbackToggled()
    /// -1 for older samples, +1 for newer ones.
    signal viewMoveRequested(int direction)
    signal cursorMoveRequested(int direction)
    signal startRequested()
    signal endRequested()

    objectName: "chartInput"
    hoverEnabled: true
    preventStealing: true
    acceptedButtons: Qt.LeftButton
    cursorShape: dragging ? Qt.ClosedHandCursor : running ? Qt.ArrowCursor : Qt.CrossCursor
    activeFocusOnTab: true

    Accessible.role: Accessible.Chart
    Accessible.focusable: true
    Accessible.name: qsTranslate("PoweWaveAnalysis", "Real-time Voltage") + ", "
                     + qsTranslate("PoweWaveAnalysis", "Output Current")

    onPressed: function(mouse) {
        forceActiveFocus(Qt.MouseFocusReason)
        dragStarted(mouse.x)
    }
    onPositionChanged: function(mouse) {
        if (pressed)
            dragMoved(mouse.x)
        else if (!running)
            hoverMoved(mouse.x, mouse.y)
    }
    onReleased: dragEnded()
    onCanceled: dragEnded()
    onExited: hoverLeft()
    onWheel: function(wheel) {
        if (wheel.angleDelta.y !== 0)
            zoomRequested(wheel.angleDelta.y > 0 ? 1 : -1)
    }

    Keys.onPressed: function(event) {
        event.accepted = true
        switch (event.key) {
        case Qt.Key_Space:
            return playbackToggled()
        case Qt.Key_Up:
        case Qt.Key_Plus:
            return zoomRequested(1)
        case Qt.Key_Down:
        case Qt.Key_Minus:
            return zoomRequested(-1)
        case Qt.Key_Left:
        case Qt.Key_Right:
            return _move(event.key === Qt.Key_Left ? -1 : 1, event.modifiers & Qt.ShiftModifier)
        case Qt.Key_Home:
            return startRequested()
        case Qt.Key_End:
            return endRequested()
        default:
            event.accepted = false
        }
    }

    function _move(direction, bySample) {
        if (bySample)
            cursorMoveRequested(direction)
        else
            viewMoveRequested(direction)
    }

    FocusRing {
        shown: _input.activeFocus && !_input.containsMouse
    }
}
