// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import GenControl.ScreenTools 1.0

import "../../customize"

/// A switch of the page's controls with its label.
Row {
    id: _row

    property alias checked: _switch.checked
    property string text: ""

    signal toggled(bool checked)

    spacing: ScreenTools.defaultFontPixelWidth * 0.8

    GenSwitch {
        id: _switch

        anchors.verticalCenter: parent.verticalCenter
        switchWidth: 40
        switchHeight: 20
        Accessible.name: _row.text
        onToggled: _row.toggled(checked)
    }
    WaveText {
        anchors.verticalCenter: parent.verticalCenter
        text: _row.text
        color: PageStyle.titleText
        font.pointSize: 10
    }
}
