// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.15

import "../../customize"
import "../../customize/Format.js" as Format

/// A framed area of the page. The fill lies inside the rounded frame as a plain rectangle: unlike a rounded one
/// it needs no smooth edges, which a software renderer pays for on its whole area with every frame.
Rectangle {
    id: _panel

    /// Opacity of the window's background, 0 to 1; the fills are multiplied with it.
    property real backgroundOpacity: 1

    // The corners of the fill end inside the frame's arcs.
    readonly property real _inset: 2

    radius: 6
    color: "transparent"
    border.width: 1
    border.color: Format.withAlpha(PageStyle.panelBorder, backgroundOpacity)

    Rectangle {
        anchors.fill: parent
        anchors.margins: _panel._inset
        antialiasing: false
        gradient: Gradient {
            GradientStop { position: 0; color: Format.withAlpha(PageStyle.panel, _panel.backgroundOpacity) }
            GradientStop { position: 1; color: Format.withAlpha(PageStyle.deepPanel, _panel.backgroundOpacity) }
        }
    }
}
