// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.15

import "../../customize"
import "../../customize/Format.js" as Format

/// One value below the dial: a title over the value, with an edge in the accent colour.
Rectangle {
    id: _root

    property string title
    property string value
    property color accent: PageStyle.accentCyan
    /// Opacity of the window's background, 0 to 1; the fills are multiplied with it.
    property real backgroundOpacity: 1

    implicitHeight: _texts.implicitHeight + 24
    radius: 10
    border.width: 1
    border.color: PageStyle.cardBorder
    gradient: Gradient {
        GradientStop { position: 0; color: Format.withAlpha(PageStyle.infoPanelTop, _root.backgroundOpacity) }
        GradientStop { position: 1; color: Format.withAlpha(PageStyle.deepPanel, _root.backgroundOpacity) }
    }

    Accessible.role: Accessible.StaticText
    Accessible.name: title + " " + value

    Rectangle {
        anchors { left: parent.left; top: parent.top; bottom: parent.bottom; topMargin: 12; bottomMargin: 12 }
        width: 3
        radius: 1.5
        color: _root.accent
    }

    Column {
        id: _texts

        anchors { left: parent.left; right: parent.right; verticalCenter: parent.verticalCenter }
        anchors { leftMargin: 16; rightMargin: 10 }
        spacing: 2

        Text {
            width: parent.width
            text: _root.title
            color: PageStyle.dimText
            font.family: GenFontManager.mainFontFamily
            font.pointSize: 10
            elide: Text.ElideRight
            rightPadding: -PageStyle.roundingSlack
        }
        Text {
            width: parent.width
            text: _root.value
            color: _root.accent
            font.family: GenFontManager.mainFontFamily
            font.pointSize: 17
            font.bold: true
            fontSizeMode: Text.HorizontalFit
            minimumPointSize: 9
        }
    }
}
