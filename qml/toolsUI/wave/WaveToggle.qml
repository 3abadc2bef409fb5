// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import QtQuick.Controls 2.12
import GenControl.ScreenTools 1.0

import "../../customize"

/// Hides and shows the page's controls.
AbstractButton {
    id: _toggle

    property Item page

    objectName: "waveToggle"
    implicitWidth: ScreenTools.defaultFontPixelWidth * 8
    text: page._controlPanelCollapsed ? qsTranslate("PoweWaveAnalysis", "Show") : qsTranslate("PoweWaveAnalysis", "Hide")
    focusPolicy: Qt.StrongFocus

    Accessible.name: text

    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    onClicked: {
        page._controlPanelCollapsed = !page._controlPanelCollapsed
        page.saveViewSetting("controlPanelCollapsed", page._controlPanelCollapsed)
    }

    background: Rectangle {
        radius: 6
        color: _toggle.page.bgColor(_toggle.hovered || _toggle.down ? "#1D2A34" : PageStyle.card, 1)
        border.width: 1
        border.color: _toggle.page.bgColor(_toggle.hovered ? PageStyle.accentCyan : PageStyle.cardBorder, 1)

        FocusRing {
            radius: parent.radius
            shown: _toggle.visualFocus
        }
    }
    contentItem: Item {
        Column {
            anchors.centerIn: parent

            WaveText {
                anchors.horizontalCenter: parent.horizontalCenter
                text: _toggle.page._controlPanelCollapsed ? "v" : "^"
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
