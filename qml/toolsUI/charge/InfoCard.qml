// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.15

import "../../customize"

/// A minor value of the dashboard: a title over the value.
Rectangle {
    id: _root

    property string title
    property string value
    property color valueColor: PageStyle.chargeValue
    /// Colour of the edge that tells cards apart; transparent for none.
    property color edge: "transparent"
    property real titleSize: 11
    property real valueSize: 15
    property real padding: 16
    /// 0 to 1: how far the level below the value is filled; negative for no level.
    property real level: -1
    property color grooveColor: "transparent"

    implicitHeight: _column.implicitHeight + 2 * padding * 0.75
    radius: 10
    border.width: 1
    border.color: PageStyle.cardBorder

    Accessible.role: Accessible.StaticText
    Accessible.name: title + " " + value

    Column {
        id: _column

        anchors { left: parent.left; right: parent.right; verticalCenter: parent.verticalCenter }
        anchors { leftMargin: _root.padding; rightMargin: _root.padding }
        spacing: 4

        Row {
            spacing: 7

            Rectangle {
                anchors.verticalCenter: parent.verticalCenter
                visible: _root.edge.a > 0
                width: 8
                height: 8
                radius: 4
                antialiasing: true
                color: _root.edge
            }
            Text {
                text: _root.title
                color: PageStyle.chargeDim
                font.family: GenFontManager.mainFontFamily
                font.pointSize: _root.titleSize
            }
        }
        Text {
            width: parent.width
            text: _root.value
            color: _root.valueColor
            font.family: GenFontManager.mainFontFamily
            font.pointSize: _root.valueSize
            font.bold: true
            fontSizeMode: Text.HorizontalFit
            minimumPointSize: 9
        }
        Rectangle {
            visible: _root.level >= 0
            width: parent.width
            height: 4
            radius: 2
            color: _root.grooveColor

            Rectangle {
                width: parent.width * Math.min(1, Math.max(0, _root.level))
                height: parent.height
                radius: 2
                color: _root.edge
            }
        }
    }
}
