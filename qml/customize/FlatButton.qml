// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import QtQuick.Templates 2.12 as Templates

import "EnterKey.js" as EnterKey

/// Base of the flat buttons: a filled and framed rectangle. Space, Return and Enter click it.
Templates.AbstractButton {
    id: _flat

    property real radius: 6
    property color fill: "transparent"
    /// Colour of the 1 px frame; without one when fully transparent.
    property color frame: "transparent"
    /// Distance of the focus ring from the button, in pixels.
    property real ringGap: 3
    property real ringRadius: radius + ringGap

    hoverEnabled: true
    focusPolicy: Qt.StrongFocus

    Accessible.role: Accessible.Button

    Keys.onPressed: EnterKey.activate(event, clicked)

    background: Rectangle {
        radius: _flat.radius
        color: _flat.fill
        border.width: _flat.frame.a > 0 ? 1 : 0
        border.color: _flat.frame

        FocusRing {
            anchors.margins: -_flat.ringGap
            radius: _flat.ringRadius
            shown: _flat.visualFocus
        }
    }
}
