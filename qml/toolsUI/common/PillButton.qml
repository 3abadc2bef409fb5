// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import QtQuick.Controls 2.12

import "../../customize"

/// A flat button of the measurement pages; `active` fills it with the accent colour.
AbstractButton {
    id: _root

    property bool active: false
    property real pointSize: 10.5
    property real minimumWidth: 64
    property color idleColor: "#1A252E"
    property color textColor: PageStyle.titleText

    leftPadding: 14
    rightPadding: 14
    // Whole pixels: a layout rounds other widths, and the label would miss the difference.
    implicitWidth: Math.max(minimumWidth, Math.ceil(_label.implicitWidth) + leftPadding + rightPadding)
    implicitHeight: Math.max(30, _label.implicitHeight + 12)
    // Where it is checkable, its state is always that of `active`, whoever clicks it.
    checked: active
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true

    Accessible.role: Accessible.Button
    Accessible.name: text

    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()
    onToggled: checked = Qt.binding(function() { return active })

    background: Rectangle {
        radius: 6
        color: _root.active ? PageStyle.accentCyan
                            : _root.pressed ? Qt.darker(_root.idleColor, 1.25)
                                            : _root.hovered ? Qt.lighter(_root.idleColor, 1.35) : _root.idleColor
        border.width: 1
        border.color: _root.active ? PageStyle.accentCyan
                                   : _root.hovered ? PageStyle.accentCyan : PageStyle.panelBorder

        FocusRing {
            anchors.margins: -3
            radius: 9
            shown: _root.visualFocus
        }
    }

    contentItem: Text {
        id: _label

        text: _root.text
        color: _root.active ? PageStyle.textOnAccent : _root.textColor
        font.family: GenFontManager.mainFontFamily
        font.pointSize: _root.pointSize
        font.bold: _root.active
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
        rightPadding: -PageStyle.roundingSlack
    }
}
