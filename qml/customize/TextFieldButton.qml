// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import QtQuick.Controls 2.12 as Controls

/// A flat round button inside a text field. The mouse does not move the focus to it; Tab does.
Controls.AbstractButton {
    id: _root

    property real size: 20
    property string picture: ""
    property bool lit: false

    anchors.verticalCenter: parent.verticalCenter
    width: size
    height: size
    hoverEnabled: true
    focusPolicy: Qt.TabFocus
    Accessible.role: Accessible.Button

    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    background: Rectangle {
        radius: width / 2
        color: _root.pressed ? "#33ffffff" : _root.hovered ? "#1fffffff" : "transparent"

        FocusRing {
            radius: parent.radius
            shown: _root.visualFocus
        }
    }
    contentItem: Item {
        GenColoredImage {
            anchors.centerIn: parent
            width: Math.round(_root.size * 0.7)
            height: width
            color: _root.lit ? PageStyle.accentCyan : "#B8C2CC"
            source: _root.picture
        }
    }
}
