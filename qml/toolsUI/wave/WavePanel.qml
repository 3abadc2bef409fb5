// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12

import "../../customize"

/// A framed area of the page. The fill lies inside the rounded frame as a plain rectangle: unlike a rounded one
/// it needs no smooth edges, which a software renderer pays for on its whole area with every frame.
Rectangle {
    id: _panel

    property Item page

    // The corners of the fill end inside the frame's arcs.
    readonly property real _inset: 2

    radius: 6
    color: "transparent"
    border.width: 1
    border.color: page.bgColor(PageStyle.panelBorder, 1)

    Rectangle {
        anchors.fill: parent
        anchors.margins: _panel._inset
        antialiasing: false
        gradient: Gradient {
            GradientStop { position: 0; color: _panel.page.bgColor(PageStyle.panel, 1) }
            GradientStop { position: 1; color: _panel.page.bgColor(PageStyle.deepPanel, 1) }
        }
    }
}
