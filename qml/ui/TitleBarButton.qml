// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import GenToolbox 1.0

import "../customize"

/// A glyph of the title bar. `name` is what assistive tools read; `tip`, when not empty, is shown on hover.
FlatButton {
    id: _root

    property string picture: ""
    property string name: ""
    property string tip: ""
    property real pictureScale: 1
    property color pictureColor: GenToolbox.genPalette.text
    property color hoverPictureColor: GenToolbox.genPalette.text
    property color idleFill: "transparent"
    property color hoverFill: PageStyle.titleBarHover

    radius: 3
    fill: hovered ? hoverFill : idleFill
    ringRadius: 5
    focusPolicy: Qt.TabFocus

    Accessible.name: name
    Accessible.description: tip

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
        below: true
        text: _root.tip
        shown: _root.hovered
    }
}
