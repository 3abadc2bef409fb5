// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.15

import "../../customize"
import "../../customize/Format.js" as Format

/// A main value of the dashboard: title with an icon letter, the value in large type, a hint below.
Rectangle {
    id: _root

    property string title
    property string value
    property string hint
    property string icon
    property color accent: PageStyle.accentCyan
    property real titleSize: 12
    property real valueSize: 26
    property real hintSize: 10
    property real padding: 16
    /// Without room for all three, the hint gives way to the value.
    property bool low: false
    /// Opacity of the window's background, 0 to 1; the fills are multiplied with it.
    property real backgroundOpacity: 1

    implicitHeight: _icon.height + _value.implicitHeight + (low ? 0 : _hint.implicitHeight) + 2 * padding + 8
    radius: 12
    border.width: 1
    border.color: PageStyle.cardBorder

    Accessible.role: Accessible.StaticText
    Accessible.name: title + " " + value

    Rectangle {
        anchors { left: parent.left; right: parent.right; top: parent.top; leftMargin: 14; rightMargin: 14 }
        height: 2
        radius: 1
        color: _root.accent
        opacity: 0.85
    }

    Rectangle {
        id: _icon

        anchors { right: parent.right; top: parent.top; margins: _root.padding }
        width: Math.round(_letter.implicitHeight * 1.5)
        height: width
        radius: width / 2
        antialiasing: true
        color: Format.withAlpha(_root.accent, 0.14 * _root.backgroundOpacity)
        border.width: 1
        border.color: Format.withAlpha(_root.accent, 0.6)

        Text {
            id: _letter

            anchors.centerIn: parent
            text: _root.icon
            color: _root.accent
            font.family: GenFontManager.mainFontFamily
            font.pointSize: _root.titleSize
            font.bold: true
        }
    }
    Text {
        anchors { left: parent.left; right: _icon.left; verticalCenter: _icon.verticalCenter; leftMargin: _root.padding }
        text: _root.title
        color: PageStyle.chargeTitle
        font.family: GenFontManager.mainFontFamily
        font.pointSize: _root.titleSize
        elide: Text.ElideRight
        rightPadding: -PageStyle.roundingSlack
    }
    Text {
        id: _value

        anchors { left: parent.left; right: parent.right; leftMargin: _root.padding; rightMargin: _root.padding }
        anchors { top: _icon.bottom; bottom: _root.low ? parent.bottom : _hint.top }
        text: _root.value
        color: _root.accent
        font.family: GenFontManager.mainFontFamily
        font.pointSize: _root.valueSize
        font.bold: true
        fontSizeMode: Text.HorizontalFit
        minimumPointSize: 12
        verticalAlignment: Text.AlignVCenter
    }
    Text {
        id: _hint

        anchors { left: parent.left; right: parent.right; bottom: parent.bottom; margins: _root.padding }
        visible: !_root.low
        text: _root.hint
        color: PageStyle.chargeDim
        font.family: GenFontManager.mainFontFamily
        font.pointSize: _root.hintSize
        elide: Text.ElideRight
        rightPadding: -PageStyle.roundingSlack
    }
}
