// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import QtQuick.Window 2.12
import QtTest 1.12
import Recording 1.0

import "qrc:/qml/ui"

Item {
    id: _root

    width: 500
    height: 100

    // Stands in for the main window, which the title bar addresses by this id.
    QtObject {
        id: mainwindows

        property int visibility: Window.Windowed
        property bool alwaysOnTop: false
        property real x: 100
        property real y: 100
        property real width: 500
        property real height: 300
        property var log: []

        function showNormal() { visibility = Window.Windowed; log.push("normal") }
        function showMaximized() { visibility = Window.Maximized; log.push("maximized") }
        function showMinimized() { log.push("minimized") }
        function close() { log.push("close") }
        function toggleAlwaysOnTop() { alwaysOnTop = !alwaysOnTop; log.push("topmost") }
        function manualCheckUpdate() { log.push("update") }
    }

    GenTitleBar {
        id: _bar

        width: parent.width
    }

    TestCase {
        name: "TitleBar"
        when: windowShown

        function init() {
            mainwindows.visibility = Window.Windowed
            mainwindows.alwaysOnTop = false
            mainwindows.x = mainwindows.y = 100
            mainwindows.width = 500
            mainwindows.height = 300
            mainwindows.log = []
        }

        // Returns the position of the cursor for a mouse event at this place of the test's window.
        function moveCursor(x, y) {
            var place = _root.mapToGlobal(x, y)
            TestCursor.moveTo(place.x, place.y)
            return place.x
        }

        // From the right edge: 10 px margin and 18 px button each.
        function test_buttons() {
            for (var position = 0; position < 5; ++position)
                mouseClick(_root, _root.width - 19 - 28 * position, 19)
            compare(mainwindows.log, ["close", "maximized", "minimized", "topmost", "update"])
        }

        function test_recordButtonShowsTheRunningTime() {
            mouseClick(_root, _root.width - 19 - 28 * 5, 19)
            verify(Recording.recording)
            compare(Recording.time, "0:00:00")
            // It has grown to the left: the other buttons stay in their places.
            mouseClick(_root, _root.width - 19 - 28 * 4, 19)
            compare(mainwindows.log, ["update"])
            keyClick(Qt.Key_R, Qt.ControlModifier)
            tryCompare(Recording, "recording", false)
            compare(Recording.notice, Recording.Saved)
            Recording.dismissNotice()
        }

        function test_maximisedStateFollowsTheWindow() {
            mainwindows.visibility = Window.Maximized
            compare(_bar.isMaximized, true)
            _bar.toggleMaximized()
            compare(mainwindows.log, ["normal"])
            compare(_bar.isMaximized, false)
        }

        function test_dragMovesByTheCursorsOffset() {
            for (var row of [[Window.FullScreen, 100, 100], [Window.Windowed, 140, 130]]) {
                mainwindows.visibility = row[0]
                // The cursor has moved before the press is handled.
                moveCursor(110, 25)
                mousePress(_root, 100, 20)
                moveCursor(140, 50)
                mouseMove(_root, 140, 50)
                mouseRelease(_root, 140, 50)
                compare([mainwindows.x, mainwindows.y], row.slice(1))
            }
            compare(mainwindows.log, [])
        }

        function test_dragRestoresAMaximisedWindow() {
            mainwindows.visibility = Window.Maximized
            mainwindows.width = 1920
            mainwindows.height = 1080
            moveCursor(250, 20)
            mousePress(_root, 250, 20)
            moveCursor(251, 21)
            mouseMove(_root, 251, 21)
            compare(mainwindows.log, ["normal"])
            compare(_bar.isMaximized, false)
            // The window system has yet to restore the size.
            moveCursor(255, 23)
            mouseMove(_root, 255, 23)
            compare(mainwindows.x, 100)
            mainwindows.width = 500
            mainwindows.height = 300
            // The half-way point of the bar stays under the cursor.
            var cursor = moveCursor(260, 25)
            mouseMove(_root, 260, 25)
            compare(mainwindows.x + mainwindows.width / 2, cursor)
            mouseRelease(_root, 260, 25)
        }
    }
}
