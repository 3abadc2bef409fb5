// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import QtQuick.Controls 2.12
import GenToolbox 1.0

Label {
    id: control

    property color borderColor: "transparent"

    text: ""
    color: GenToolbox.genPalette.text
    font.family: GenFontManager.mainFontFamily
    font.pointSize: 11

    background: Rectangle {
        color: "transparent"
        border.width: 1
        border.color: control.borderColor
    }
}
