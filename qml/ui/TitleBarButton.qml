// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import QtQuick.Templates 2.12 as Templates
import GenToolbox 1.0

import "../customize"

/// A glyph of the title bar. `name` is what assistive tools read; `tip`, when not empty, is shown on hover.
Templates.AbstractButton {
    id: _root

    property string picture: ""
    property string name: ""
    property string tip: ""
    property real pictureScale: 1
    property color pictureColor: GenToolbox.genPalette.text
    property color hoverPictureColor: GenToolbox.genPalette.text
    property color fill: "transparent"
    property color hoverFill: "red"
    property color borderColor: "transparent"

    hoverEnabled: true
    focusPolicy: Qt.TabFocus

    Accessible.role: Accessible.Button
    Accessible.name: name
    Accessible.description: tip

    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    background: Rectangle {
        radius: 3
        color: _root.hovered ? _root.hoverFill : _root.fill
        border.width: _root.borderColor.a > 0 ? 1 : 0
        border.color: _root.borderColor

        FocusRing {
            anchors.margins: -3
            radius: 5
            shown: _root.visualFocus
        }
    }
    contentItem: Item {
        GenColoredImage {
            anchors.centerIn: parent
            width: Math.round(_root.width * _root.pictureScale)
            height: Math.round(_root.height * _root.pictureScale)
            color: _root.hovered ? _root.hoverPictureColor : _root.pictureColor
            source: _root.picture
        }
    }

    HoverTip {
        target: _root
        text: _root.tip
        shown: _root.hovered
    }
}
