// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12

/// A mouse area that takes presses in twice the size of the item that it serves, centred on that item.
MouseArea {
    id: _root

    property Item fillItem: _root
    property bool debugMobile: false

    readonly property real _touchWidth: Math.max(fillItem.width, fillItem.width * 2)
    readonly property real _touchHeight: Math.max(fillItem.height, fillItem.height * 2)

    containmentMask: QtObject {
        function contains(point: point) : bool {
            var inItem = _root.mapToItem(_root.fillItem, point.x, point.y)
            return Math.abs(inItem.x - _root.fillItem.width / 2) <= _root._touchWidth / 2
                    && Math.abs(inItem.y - _root.fillItem.height / 2) <= _root._touchHeight / 2
        }
    }

    // Shows the touch area when debugging on a touch screen.
    Loader {
        active: _root.debugMobile
        sourceComponent: Rectangle {
            parent: _root.fillItem
            anchors.centerIn: parent
            width: _root._touchWidth
            height: _root._touchHeight
            color: "transparent"
            border.color: PageStyle.touchAreaFrame
        }
    }
}
