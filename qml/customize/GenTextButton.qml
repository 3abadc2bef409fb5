// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import QtQuick.Controls 2.12
import GenToolbox 1.0

import "EnterKey.js" as EnterKey

Button {
    id: control

    property bool primary: false
    property real minWidth: 120
    property real minHeight: 40

    readonly property bool _lit: pressed || hovered || checked

    implicitWidth: minWidth
    implicitHeight: minHeight
    opacity: enabled ? 1 : 0.3
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    text: qsTr("Button")
    font.family: GenFontManager.mainFontFamily
    font.pointSize: 10

    background: Rectangle {
        radius: 8
        border.width: 0
        color: control._lit ? GenToolbox.genPalette.buttonHighlight
                            : control.primary ? GenToolbox.genPalette.primaryButton : GenToolbox.genPalette.button2

        FocusRing {
            anchors.margins: -3
            radius: parent.radius + 3
            shown: control.visualFocus
        }
    }
    contentItem: Text {
        text: control.text
        font: control.font
        color: control._lit ? GenToolbox.genPalette.buttonHighlightText
                            : control.primary ? GenToolbox.genPalette.primaryButtonText
                                              : GenToolbox.genPalette.buttonText2
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
        rightPadding: -PageStyle.roundingSlack
    }

    Keys.onPressed: EnterKey.activate(event, clicked)
}
