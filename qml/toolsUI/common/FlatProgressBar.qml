// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.15
import QtQuick.Controls 2.15

import "../../customize"

/// A progress bar from 0 to 100; `indeterminate` shows that something goes on without an end in sight.
ProgressBar {
    id: _root

    property color barColor: PageStyle.progressBar
    property color grooveColor: PageStyle.progressGroove

    from: 0
    to: 100
    implicitWidth: 200
    implicitHeight: 12

    Accessible.role: Accessible.ProgressBar
    Accessible.name: Math.round(value) + "%"

    background: Rectangle {
        radius: height / 2
        color: _root.grooveColor
    }
    contentItem: Item {
        clip: true

        Rectangle {
            id: _bar

            x: _root.indeterminate ? _travel.position * (parent.width - width) : 0
            // Its round ends need their width, however small the value is.
            width: _root.indeterminate ? parent.width * 0.3
                                       : _root.visualPosition > 0 ? Math.max(height, _root.visualPosition * parent.width)
                                                                  : 0
            height: parent.height
            radius: height / 2
            color: _root.barColor
        }
        QtObject {
            id: _travel

            property real position: 0
        }
        SequentialAnimation {
            running: _root.indeterminate && _root.visible
            loops: Animation.Infinite

            NumberAnimation {
                target: _travel
                property: "position"
                from: 0
                to: 1
                duration: 1100
                easing.type: Easing.InOutSine
            }
            NumberAnimation {
                target: _travel
                property: "position"
                from: 1
                to: 0
                duration: 1100
                easing.type: Easing.InOutSine
            }
        }
    }
}
