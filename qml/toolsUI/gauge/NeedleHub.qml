// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12

/// The hub of the needle around its own origin: a turned disc with a bright cap.
Item {
    id: _root

    property real unit: 1

    Rectangle {
        anchors.centerIn: parent
        width: 26 * _root.unit
        height: width
        radius: width / 2
        antialiasing: true
        border.width: 1
        border.color: "#4B5B67"
        gradient: Gradient {
            GradientStop { position: 0; color: "#55636E" }
            GradientStop { position: 0.5; color: "#222C35" }
            GradientStop { position: 1; color: "#0E141A" }
        }
    }
    Rectangle {
        anchors.centerIn: parent
        width: 17 * _root.unit
        height: width
        radius: width / 2
        antialiasing: true
        gradient: Gradient {
            GradientStop { position: 0; color: "#10171D" }
            GradientStop { position: 1; color: "#3A4752" }
        }
    }
    Rectangle {
        anchors.centerIn: parent
        width: 9 * _root.unit
        height: width
        radius: width / 2
        antialiasing: true
        color: "#F2F4F1"
    }
}
