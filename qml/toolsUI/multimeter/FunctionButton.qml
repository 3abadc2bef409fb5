// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.15
import QtQuick.Controls 2.15

import "../../customize"
import "../../customize/EnterKey.js" as EnterKey
import "../../customize/Format.js" as Format

/// Switches the instrument to one function: the number of the function before its name.
RadioButton {
    id: _root

    property int mode: 0
    property bool active: false
    /// Opacity of the window's background, 0 to 1; the fills are multiplied with it.
    property real backgroundOpacity: 1

    // All buttons of a row are of one size, so their texts are too.
    readonly property bool _narrow: width < 140
    readonly property real _pointSize: _narrow ? Math.max(8.5, Math.min(9.5, width * 0.084))
                                               : Math.max(11, Math.min(16, height * 0.17, width * 0.075))
    readonly property color _idleColor: Format.withAlpha(PageStyle.idleFill, backgroundOpacity)
    readonly property real _badgeSize: Math.round(_pointSize * 2)

    implicitHeight: 44
    implicitWidth: 96
    // A control tells assistive technology its own state: it is always that of `active`, whoever clicks it.
    autoExclusive: false
    checked: active
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true

    Accessible.name: text

    Keys.onPressed: EnterKey.activate(event, clicked)
    onToggled: checked = Qt.binding(function() { return active })

    indicator: null
    background: Rectangle {
        radius: 8
        color: _root.active ? PageStyle.accentCyan
                            : _root.pressed ? Qt.darker(_root._idleColor, 1.25)
                                            : _root.hovered ? Qt.lighter(_root._idleColor, 1.35) : _root._idleColor
        border.width: 1
        border.color: _root.active || _root.hovered ? PageStyle.accentCyan : PageStyle.panelBorder

        FocusRing {
            anchors.margins: -3
            radius: 11
            shown: _root.visualFocus
        }
    }

    contentItem: Item {
        Row {
            anchors.centerIn: parent
            spacing: _root._narrow ? 5 : 8

            Rectangle {
                anchors.verticalCenter: parent.verticalCenter
                width: _root._badgeSize
                height: width
                radius: width / 2
                antialiasing: true
                color: _root.active ? PageStyle.badgeOnAccent : "transparent"
                border.width: 1
                border.color: _root.active ? "transparent" : PageStyle.dimText

                Text {
                    anchors.centerIn: parent
                    text: _root.mode
                    color: _root.active ? PageStyle.accentCyan : PageStyle.dimText
                    font.family: GenFontManager.mainFontFamily
                    font.pointSize: _root._pointSize * 0.86
                    font.bold: true
                }
            }
            Text {
                readonly property real _room: _root.width - _root._badgeSize - 14

                anchors.verticalCenter: parent.verticalCenter
                width: Math.min(implicitWidth, _room)
                text: _root.text
                color: _root.active ? PageStyle.textOnAccent : PageStyle.titleText
                font.family: GenFontManager.mainFontFamily
                font.pointSize: _root._pointSize
                font.bold: _root.active
                // Only then: rounding may shrink a text that just fits.
                fontSizeMode: implicitWidth > _room ? Text.HorizontalFit : Text.FixedSize
                minimumPointSize: 8
            }
        }
    }
}
