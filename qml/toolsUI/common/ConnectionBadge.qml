// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.15

import "../../customize"

/// Tells whether the instrument is connected, with a lamp before the text.
Row {
    id: _root

    property bool connected: false
    /// Translated by the page that shows the badge.
    property string text
    property real pointSize: 11
    /// Where there is no room for the text.
    property bool lampOnly: false

    spacing: 8

    Accessible.role: Accessible.StaticText
    Accessible.name: text

    Rectangle {
        anchors.verticalCenter: parent.verticalCenter
        width: 9
        height: 9
        radius: 4.5
        antialiasing: true
        color: _root.connected ? PageStyle.accentGreen : "transparent"
        border.width: 1.5
        border.color: _root.connected ? PageStyle.accentGreen : PageStyle.dimText
    }
    Text {
        anchors.verticalCenter: parent.verticalCenter
        visible: !_root.lampOnly
        text: _root.text
        color: _root.connected ? PageStyle.accentGreen : PageStyle.dimText
        font.family: GenFontManager.mainFontFamily
        font.pointSize: _root.pointSize
        font.bold: _root.connected
    }
}
