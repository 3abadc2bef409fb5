// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import GenToolbox 1.0

import "../../customize"

/// A titled box in the middle of its parent that can be dragged by its body, but not out of the parent.
FocusScope {
    id: _root

    property string title
    property real pointSize: 10

    default property alias content: _content.data

    function recentre() {
        x = Qt.binding(function() { return Math.round((parent.width - width) / 2) })
        y = Qt.binding(function() { return Math.round((parent.height - height) / 2) })
    }

    Component.onCompleted: recentre()

    Rectangle {
        anchors.fill: parent
        radius: 8
        color: GenToolbox.genPalette.window
        border.width: 1
        border.color: Qt.lighter(GenToolbox.genPalette.window, 2)
    }
    MouseArea {
        anchors.fill: parent
        drag.target: _root
        drag.minimumX: 0
        drag.maximumX: Math.max(0, _root.parent.width - _root.width)
        drag.minimumY: 0
        drag.maximumY: Math.max(0, _root.parent.height - _root.height)
    }
    Rectangle {
        id: _strip

        anchors { left: parent.left; right: parent.right; top: parent.top; margins: 1 }
        height: _title.implicitHeight + 12
        radius: 7
        color: Qt.darker(GenToolbox.genPalette.window, 1.5)

        // Only the upper corners are round.
        Rectangle {
            anchors { left: parent.left; right: parent.right; bottom: parent.bottom }
            height: parent.radius
            color: parent.color
        }
        Text {
            id: _title

            anchors { left: parent.left; leftMargin: 12; verticalCenter: parent.verticalCenter }
            text: _root.title
            color: GenToolbox.genPalette.text
            font.family: GenFontManager.mainFontFamily
            font.pointSize: _root.pointSize * 1.05
            font.bold: true
        }
    }
    Item {
        id: _content

        anchors { left: parent.left; right: parent.right; top: _strip.bottom; bottom: parent.bottom }
    }
}
