// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.15
import QtQuick.Layouts 1.15

import "../../customize"
import "../../customize/Format.js" as Format

/// Title of the dashboard, and whether the device charges fast or slowly.
Rectangle {
    id: _root

    property string title
    property string subtitle
    property bool fast: false
    /// Without an instrument neither speed holds: the switch and the badge are dimmed.
    property bool live: true
    property string fastText
    property string slowText
    property string badgeText
    property color fastColor: PageStyle.accentGold
    property real titleSize: 18
    property real textSize: 11
    property real padding: 16
    /// Opacity of the window's background, 0 to 1; the fills are multiplied with it.
    property real backgroundOpacity: 1

    readonly property color _speedColor: fast ? fastColor : PageStyle.accentCyan

    implicitHeight: _row.implicitHeight + 1.5 * padding
    radius: 12
    border.width: 1
    border.color: PageStyle.panelBorder

    RowLayout {
        id: _row

        anchors { left: parent.left; right: parent.right; verticalCenter: parent.verticalCenter }
        anchors { leftMargin: _root.padding; rightMargin: _root.padding }
        spacing: _root.padding

        ColumnLayout {
            Layout.fillWidth: true
            spacing: 2

            Text {
                Layout.fillWidth: true
                text: _root.title
                color: PageStyle.chargeTitle
                font.family: GenFontManager.mainFontFamily
                font.pointSize: _root.titleSize
                font.bold: true
                elide: Text.ElideRight
                rightPadding: -PageStyle.roundingSlack
            }
            Text {
                Layout.fillWidth: true
                text: _root.subtitle
                color: PageStyle.chargeDim
                font.family: GenFontManager.mainFontFamily
                font.pointSize: _root.textSize
                fontSizeMode: Text.HorizontalFit
                minimumPointSize: 8
                elide: Text.ElideRight
                rightPadding: -PageStyle.roundingSlack
            }
        }

        SpeedSwitch {
            opacity: _root.live ? 1 : 0.45
            color: Format.withAlpha(PageStyle.idleFill, _root.backgroundOpacity)
            fast: _root.fast
            fastText: _root.fastText
            slowText: _root.slowText
            fastColor: _root.fastColor
            pointSize: _root.textSize
        }

        Rectangle {
            opacity: _root.live ? 1 : 0.45
            implicitWidth: Math.round(_badge.implicitHeight * 1.7)
            implicitHeight: implicitWidth
            radius: width / 2
            antialiasing: true
            color: Format.withAlpha(_root._speedColor, 0.14 * _root.backgroundOpacity)
            border.width: 2
            border.color: _root._speedColor

            Text {
                id: _badge

                anchors.centerIn: parent
                text: _root.badgeText
                color: _root._speedColor
                font.family: GenFontManager.mainFontFamily
                font.pointSize: _root.titleSize
                font.bold: true
            }
        }
    }
}
