// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12

/// A flat round button inside a text field. The mouse does not move the focus to it; Tab does.
FlatButton {
    id: _root

    property real size: 20
    property string picture: ""
    property bool lit: false

    anchors.verticalCenter: parent.verticalCenter
    width: size
    height: size
    radius: width / 2
    fill: pressed ? PageStyle.fieldButtonPressed : hovered ? PageStyle.fieldButtonHover : "transparent"
    ringGap: 0
    focusPolicy: Qt.TabFocus

    contentItem: Item {
        GenColoredImage {
            anchors.centerIn: parent
            width: Math.round(_root.size * 0.7)
            height: width
            color: _root.lit ? PageStyle.accentCyan : PageStyle.fieldButtonPicture
            source: _root.picture
        }
    }
}
