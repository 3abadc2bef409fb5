// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import QtCharts 2.3

import "../../customize"

/// What mouse and keyboard do on the main chart. Keys: Space plays and pauses, Up and Down zoom, Left and Right
/// move the paused view, with Shift the cursor by one sample; Home and End go to the ends of the recording.
MouseArea {
    id: _input

    property Item page
    property ChartView chart

    objectName: "chartInput"
    hoverEnabled: true
    preventStealing: true
    acceptedButtons: Qt.LeftButton
    cursorShape: page._draggingChart ? Qt.ClosedHandCursor : page._chartRunning ? Qt.ArrowCursor : Qt.CrossCursor
    activeFocusOnTab: true

    Accessible.role: Accessible.Chart
    Accessible.focusable: true
    Accessible.name: qsTranslate("PoweWaveAnalysis", "Real-time Voltage") + ", "
                     + qsTranslate("PoweWaveAnalysis", "Output Current")

    onPressed: {
        forceActiveFocus(Qt.MouseFocusReason)
        page.beginChartDrag(mouse.x)
    }
    onPositionChanged: {
        if (pressed)
            page.dragChartTo(mouse.x)
        else if (!page._chartRunning)
            page.updateHoverAt(mouse.x, mouse.y, chart)
    }
    onReleased: page.endChartDrag()
    onCanceled: page.endChartDrag()
    onExited: page._hoverActive = false
    onWheel: {
        if (wheel.angleDelta.y !== 0)
            page.zoomMainChart(wheel.angleDelta.y > 0 ? 1 : -1)
    }

    Keys.onPressed: {
        event.accepted = true
        switch (event.key) {
        case Qt.Key_Space:
            return page.togglePlayback()
        case Qt.Key_Up:
        case Qt.Key_Plus:
            return page.zoomMainChart(1)
        case Qt.Key_Down:
        case Qt.Key_Minus:
            return page.zoomMainChart(-1)
        case Qt.Key_Left:
        case Qt.Key_Right:
            return _move(event.key === Qt.Key_Left ? -1 : 1, event.modifiers & Qt.ShiftModifier)
        case Qt.Key_Home:
            return page.showPausedView(0)
        case Qt.Key_End:
            return page.showPausedView(page.maxViewStart())
        default:
            event.accepted = false
        }
    }

    function _move(direction, bySample) {
        if (bySample && !page._chartRunning && page._hoverActive)
            page.updateHoverForIndex(page._hoverSampleIndex + direction, chart)
        else
            page.movePausedCursor(direction)
    }

    FocusRing {
        shown: _input.activeFocus && !_input.containsMouse
    }
}
