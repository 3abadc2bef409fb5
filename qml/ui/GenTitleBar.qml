// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import QtQuick.Window 2.12
import GenControl.ScreenTools 1.0
import GenToolbox 1.0

import "../customize"
import "../customize/Format.js" as Format

/// The window's own title bar. Addresses the window by its id, `mainwindows`.
Item {
    id: _titleBar

    property bool isMaximized: false
    property int hr: 1
    property int wr: 1
    property int buttonW: 18

    readonly property color _accent: PageStyle.accentCyan

    z: 1
    height: 35 * hr

    function updateMaximizedState() {
        isMaximized = mainwindows.visibility === Window.Maximized
    }

    function toggleMaximized() {
        updateMaximizedState()
        var maximize = !isMaximized
        if (maximize)
            mainwindows.showMaximized()
        else
            mainwindows.showNormal()
        isMaximized = maximize
    }

    function _accentWithAlpha(alpha) {
        return Format.withAlpha(PageStyle.windowAccent, alpha)
    }

    Connections {
        target: mainwindows
        function onVisibilityChanged() { _titleBar.updateMaximizedState() }
    }

    MouseArea {
        id: _moveArea

        property bool isDoubleClicked: false
        // Cursor and window at the press, on the screen: inside the moving window, mouse positions lag.
        property point pressCursor: Qt.point(0, 0)
        property point pressWindow: Qt.point(0, 0)
        property bool restored: false
        property size maximizedSize: Qt.size(0, 0)
        property real pressRatio: 0
        // For a move by the system: where the bar was pressed, and where the mouse was when the system was asked.
        property point pressPlace: Qt.point(0, 0)
        property point askedPlace: Qt.point(0, 0)
        property bool asked: false
        // After so long a drag, a desktop that restores maximised windows by itself has done so.
        readonly property real ignoredDistance: 10 * Qt.styleHints.startDragDistance

        anchors.fill: parent
        acceptedButtons: Qt.LeftButton

        onPressed: {
            isDoubleClicked = false
            restored = false
            pressRatio = mouse.x / width
            asked = false
            pressPlace = askedPlace = Qt.point(mouse.x, mouse.y)
            // Where the press was: when this runs the cursor may be elsewhere already.
            var cursor = mapToGlobal(mouse.x, mouse.y)
            pressCursor = Qt.point(cursor.x, cursor.y)
            pressWindow = Qt.point(mainwindows.x, mainwindows.y)
        }
        onPositionChanged: {
            if (!pressed || isDoubleClicked || mainwindows.visibility === Window.FullScreen)
                return
            if (!ScreenTools.canPlaceWindows) {
                _moveBySystem(Qt.point(mouse.x, mouse.y))
                return
            }
            if (mainwindows.visibility === Window.Maximized) {
                maximizedSize = Qt.size(mainwindows.width, mainwindows.height)
                mainwindows.showNormal()
                _titleBar.isMaximized = false
                restored = true
                return
            }
            if (restored) {
                // Moving it before the window system has restored its size would keep the maximised size.
                if (mainwindows.width === maximizedSize.width && mainwindows.height === maximizedSize.height)
                    return
                _takeUnderCursor()
            }
            mainwindows.x = pressWindow.x + ScreenTools.mouseX() - pressCursor.x
            mainwindows.y = pressWindow.y + ScreenTools.mouseY() - pressCursor.y
        }
        onDoubleClicked: {
            isDoubleClicked = true
            _titleBar.toggleMaximized()
        }

        // The system moves the window and restores a maximised one under the cursor; no moves are reported from
        // then on. While they are, the system has ignored the request.
        function _moveBySystem(place) {
            if (mainwindows.visibility === Window.Maximized && _distance(place, pressPlace) >= ignoredDistance) {
                mainwindows.showNormal()
                restored = true
            }
            // Once: a request sent late, for a move that waited in the queue, would name the press after this one.
            // A restored window is asked for until it can be moved, which is some time after its size changed.
            if ((asked && !restored) || _distance(place, askedPlace) < Qt.styleHints.startDragDistance)
                return
            asked = true
            askedPlace = place
            ScreenTools.startSystemMoveForWindow(mainwindows)
        }

        function _distance(a, b) {
            return Math.max(Math.abs(a.x - b.x), Math.abs(a.y - b.y))
        }

        // A window restored by the drag is smaller: keep the cursor over the same part of the bar.
        function _takeUnderCursor() {
            restored = false
            pressWindow = Qt.point(pressCursor.x - Math.round(pressRatio * mainwindows.width), pressWindow.y)
        }
    }

    // From left to right, so that Tab goes through them in that order.
    RecordButton {
        pictureSize: _titleBar.buttonW * _titleBar.wr
        anchors { top: parent.top; topMargin: 10; right: updateBtn.left; rightMargin: 10 }
    }
    TitleBarButton {
        id: updateBtn

        width: _titleBar.buttonW * _titleBar.wr
        height: width
        anchors {
            top: parent.top
            topMargin: 10
            right: topmostBtn.visible ? topmostBtn.left : minBtn.left
            rightMargin: 10
        }
        picture: "qrc:/res/serching2.svg"
        name: tip
        tip: qsTr("Check update")
        hoverFill: _titleBar._accentWithAlpha(0.22)
        hoverPictureColor: _titleBar._accent
        onClicked: mainwindows.manualCheckUpdate()
    }
    TitleBarButton {
        id: topmostBtn

        width: _titleBar.buttonW * _titleBar.wr
        height: width
        anchors { top: parent.top; topMargin: 10; right: minBtn.left; rightMargin: 10 }
        visible: ScreenTools.canPlaceWindows
        picture: mainwindows.alwaysOnTop ? "qrc:/basic/Pinned.svg" : "qrc:/basic/Unpin.svg"
        pictureScale: 0.88
        name: tip
        tip: mainwindows.alwaysOnTop ? qsTr("Cancel topmost") : qsTr("Topmost")
        idleFill: mainwindows.alwaysOnTop ? _titleBar._accentWithAlpha(0.22) : "transparent"
        hoverFill: _titleBar._accentWithAlpha(mainwindows.alwaysOnTop ? 0.34 : 0.18)
        frame: mainwindows.alwaysOnTop ? _titleBar._accentWithAlpha(0.72) : "transparent"
        pictureColor: mainwindows.alwaysOnTop ? _titleBar._accent : GenToolbox.genPalette.text
        hoverPictureColor: _titleBar._accent
        checkable: true
        checked: mainwindows.alwaysOnTop
        onToggled: checked = Qt.binding(function() { return mainwindows.alwaysOnTop })
        onClicked: mainwindows.toggleAlwaysOnTop()
    }
    TitleBarButton {
        id: minBtn

        width: _titleBar.buttonW * _titleBar.wr
        height: width
        anchors {
            top: parent.top
            topMargin: 10
            right: normBtn.visible ? normBtn.left : closeBtn.left
            rightMargin: 10
        }
        picture: "qrc:/basic/max.svg"
        name: qsTr("Minimize")
        hoverPictureColor: PageStyle.titleBarHoverPicture
        onClicked: mainwindows.showMinimized()
    }
    TitleBarButton {
        id: normBtn

        width: _titleBar.buttonW * _titleBar.wr
        height: width
        anchors { top: parent.top; topMargin: 10; right: closeBtn.left; rightMargin: 10 }
        picture: "qrc:/basic/min.svg"
        name: _titleBar.isMaximized ? qsTr("Restore") : qsTr("Maximize")
        onClicked: _titleBar.toggleMaximized()
    }
    TitleBarButton {
        id: closeBtn

        width: _titleBar.buttonW * _titleBar.wr
        height: width
        anchors { top: parent.top; topMargin: 10; right: parent.right; rightMargin: 10 }
        picture: "qrc:/basic/close.svg"
        name: qsTr("Close")
        hoverPictureColor: PageStyle.titleBarHoverPicture
        onClicked: mainwindows.close()
    }
}
