// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12

import "../../customize"
import "../../customize/Format.js" as Format

/// A short state in a rounded frame of its colour.
Rectangle {
    id: _root

    property string text
    /// Colour of the text and the frame.
    property color tone: PageStyle.settingsText
    property real pointSize: 10

    implicitWidth: _label.implicitWidth + 24
    implicitHeight: _label.implicitHeight + 8
    radius: height / 2
    border.width: 1
    border.color: Format.withAlpha(tone, 0.55)

    Accessible.role: Accessible.StaticText
    Accessible.name: text

    Text {
        id: _label

        anchors.centerIn: parent
        text: _root.text
        color: _root.tone
        font.family: GenFontManager.mainFontFamily
        font.pointSize: _root.pointSize
    }
}
