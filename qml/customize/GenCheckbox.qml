// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import QtQuick.Controls 2.12
import GenControl.ScreenTools 1.0
import GenToolbox 1.0

import "EnterKey.js" as EnterKey

CheckBox {
    id: control

    checked: true
    text: "CheckBox"
    height: 40
    leftPadding: 0
    opacity: enabled ? 1 : 0.3
    focusPolicy: Qt.StrongFocus
    font.family: GenFontManager.mainFontFamily
    font.pointSize: 11

    indicator: GenColoredImage {
        x: control.leftPadding
        y: (control.height - height) / 2
        width: ScreenTools.defaultFontPixelWidth * 3
        height: width
        color: GenToolbox.genPalette.text
        source: control.checkState === Qt.PartiallyChecked ? "qrc:/basic/checkbox-partial.svg"
                : control.checkState === Qt.Checked ? "qrc:/basic/checkbox-check.svg"
                                                    : "qrc:/basic/checkbox-blank.svg"

        FocusRing {
            shown: control.visualFocus
        }
    }
    contentItem: Text {
        leftPadding: control.indicator.width + control.spacing
        text: control.text
        font: control.font
        color: GenToolbox.genPalette.text
        verticalAlignment: Text.AlignVCenter
        wrapMode: Text.WordWrap
    }

    Keys.onPressed: EnterKey.activate(event, _toggleByKey)

    function _toggleByKey() {
        toggle()
        toggled()
        clicked()
    }
}
