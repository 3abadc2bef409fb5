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

        function test_cursor_data() {
            return [
                { tag: "top left", edges: [1, 1, 0, 0], shape: Qt.SizeFDiagCursor },
                { tag: "bottom right", edges: [0, 0, 1, 1], shape: Qt.SizeFDiagCursor },
                { tag: "top right", edges: [0, 1, 1, 0], shape: Qt.SizeBDiagCursor },
                { tag: "bottom left", edges: [1, 0, 0, 1], shape: Qt.SizeBDiagCursor },
                { tag: "left", edges: [1, 0, 0, 0], shape: Qt.SizeHorCursor },
                { tag: "right", edges: [0, 0, 1, 0], shape: Qt.SizeHorCursor },
                { tag: "top", edges: [0, 1, 0, 0], shape: Qt.SizeVerCursor },
                { tag: "bottom", edges: [0, 0, 0, 1], shape: Qt.SizeVerCursor }
            ]
        }

        function test_cursor(data) {
            setEdges(!!data.edges[0], !!data.edges[1], !!data.edges[2], !!data.edges[3])
            compare(_handle.cursorShape, data.shape)
        }

        function test_dragIsReported() {
            setEdges(true, false, false, true)
            mousePress(_handle, 10, 10)
            mouseMove(_handle, 15, 10)
            mouseRelease(_handle, 15, 10)
            compare(_handle.log, ["started", "true,false,false,true", "finished"])
        }

        function test_onlyTheLeftButtonResizes() {
            mouseClick(_handle, 10, 10, Qt.RightButton)
            compare(_handle.log, [])
        }

        function test_noSystemResizeOfWhatIsNoWindow() {
            _handle.useSystemResize = true
            mousePress(_handle, 10, 10)
            compare(_handle.systemResizeActive, false)
            mouseRelease(_handle, 10, 10)
            compare(_handle.log, ["started", "finished"])
            _handle.useSystemResize = false
        }

        function test_maximisedWindowsAreNotResized_data() {
            return [{ tag: "maximised", state: Window.Maximized }, { tag: "full screen", state: Window.FullScreen }]
        }

        function test_maximisedWindowsAreNotResized(data) {
            _target.visibility = data.state
            // It shows no cursor either.
            compare(_handle.visible, false)
            mouseClick(_handle, 10, 10)
            compare(_handle.log, [])
        }
    }
}
