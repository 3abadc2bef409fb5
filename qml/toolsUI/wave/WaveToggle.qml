// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.15
import GenControl.ScreenTools 1.0

import "../../customize"
import "../../customize/Format.js" as Format

/// Hides and shows the page's controls.
FlatButton {
    id: _toggle

    /// Whether the controls are hidden now.
    property bool collapsed: false
    /// Opacity of the window's background, 0 to 1; the fills are multiplied with it.
    property real backgroundOpacity: 1

    objectName: "waveToggle"
    implicitWidth: ScreenTools.defaultFontPixelWidth * 8
    text: collapsed ? qsTranslate("PoweWaveAnalysis", "Show") : qsTranslate("PoweWaveAnalysis", "Hide")
    fill: Format.withAlpha(hovered || down ? PageStyle.rangePanelTop : PageStyle.card, backgroundOpacity)
    frame: Format.withAlpha(hovered ? PageStyle.accentCyan : PageStyle.cardBorder, backgroundOpacity)
    ringGap: 0

    Accessible.name: text

    contentItem: Item {
        Column {
            anchors.centerIn: parent

            WaveText {
                anchors.horizontalCenter: parent.horizontalCenter
                text: _toggle.collapsed ? "v" : "^"
                color: PageStyle.accentCyan
                font.pointSize: 11
                font.bold: true
            }
            WaveText {
                anchors.horizontalCenter: parent.horizontalCenter
                text: _toggle.text
                color: PageStyle.titleText
                font.pointSize: 9
            }
        }
    }
}
