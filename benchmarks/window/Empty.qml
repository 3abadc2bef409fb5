// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import QtQuick.Controls 1.4 as Controls1
import QtQuick.Controls 2.12
import QtQuick.Controls.Styles 1.4
import QtQuick.Layouts 1.12
import QtQuick.Shapes 1.12
import QtQuick.Window 2.12
import QtGraphicalEffects 1.12

// The floor: the application's window with its imports and nothing in it.
ApplicationWindow {
    property bool rotating: Qt.application.arguments.indexOf("--rotating-line") > 0

    visible: true
    flags: Qt.Window | Qt.FramelessWindowHint
    color: "transparent"
    width: 1280
    height: 720

    Rectangle {
        anchors.fill: parent
        color: "#1f1f1f"
        radius: 8
    }

    Rectangle {
        anchors.centerIn: parent
        width: 3
        height: 300
        color: "#ff2638"
        visible: parent.parent.rotating
        antialiasing: true

        RotationAnimation on rotation {
            running: visible
            from: 0
            to: 360
            duration: 4000
            loops: Animation.Infinite
        }
    }
}
