// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import QtQuick.Window 2.12
import QtTest 1.12

import "qrc:/qml/customize"

Item {
    id: _root

    width: 200
    height: 200

    QtObject {
        id: _target

        property int visibility: Window.Windowed
    }

    ResizeHandle {
        id: _handle

        property var log: []

        x: 50
        y: 50
        width: 20
        height: 20
        targetWindow: _target
        onResizeStarted: log.push("started")
        onResizeRequested: log.push([left, top, right, bottom].join())
        onResizeFinished: log.push("finished")
    }

    TestCase {
        name: "ResizeHandle"
        when: windowShown

        function setEdges(left, top, right, bottom) {
            _handle.resizeLeft = left
            _handle.resizeTop = top
            _handle.resizeRight = right
            _handle.resizeBottom = bottom
        }

        function init() {
            _handle.log = []
            _target.visibility = Window.Windowed
            setEdges(false, false, false, false)
        }

        // Edges: left, top, right, bottom.
        function test_cursor() {
            for (var row of [["1100", Qt.SizeFDiagCursor], ["0011", Qt.SizeFDiagCursor], ["0110", Qt.SizeBDiagCursor],
                             ["1001", Qt.SizeBDiagCursor], ["1000", Qt.SizeHorCursor], ["0010", Qt.SizeHorCursor],
                             ["0100", Qt.SizeVerCursor], ["0001", Qt.SizeVerCursor]]) {
                setEdges(row[0][0] === "1", row[0][1] === "1", row[0][2] === "1", row[0][3] === "1")
                compare(_handle.cursorShape, row[1], row[0])
            }
        }

        function test_onlyTheLeftButtonResizes() {
            mouseClick(_handle, 10, 10, Qt.RightButton)
            compare(_handle.log, [])
            setEdges(true, false, false, true)
            mousePress(_handle, 10, 10)
            mouseMove(_handle, 15, 10)
            mouseRelease(_handle, 15, 10)
            compare(_handle.log, ["started", "true,false,false,true", "finished"])
        }

        function test_noSystemResizeOfWhatIsNoWindow() {
            _handle.useSystemResize = true
            mousePress(_handle, 10, 10)
            compare(_handle.systemResizeActive, false)
            mouseRelease(_handle, 10, 10)
            compare(_handle.log, ["started", "finished"])
            _handle.useSystemResize = false
        }

        function test_maximisedWindowsAreNotResized() {
            for (var state of [Window.Maximized, Window.FullScreen]) {
                _target.visibility = state
                // It shows no cursor either.
                compare(_handle.visible, false)
                mouseClick(_handle, 10, 10)
                compare(_handle.log, [])
            }
        }
    }
}
