// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.15
import QtQuick.Layouts 1.15
import GenControl.ScreenTools 1.0

import "../../customize"
import "../../customize/Format.js" as Format
import "../common"

/// The strip above the dial: one button per range, and the connection badge.
Rectangle {
    id: _root

    property string title
    /// List of { label, max }.
    property var options: []
    property int currentIndex: 0
    property bool connected: false
    property string connectionText
    /// Opacity of the window's background, 0 to 1; the fills are multiplied with it.
    property real backgroundOpacity: 1

    // Less room around the texts; then without the title and the badge's text, so that all ranges stay in reach.
    readonly property bool _tight: width < ScreenTools.defaultFontPixelWidth * 70
    readonly property bool _narrow: width < ScreenTools.defaultFontPixelWidth * 50

    signal selected(int index)

    // Not the row's: its implicit height may change while a parent's layout sets the width.
    implicitHeight: _sample.implicitHeight + 16
    radius: 10
    border.width: 1
    border.color: PageStyle.panelBorder
    gradient: Gradient {
        GradientStop { position: 0; color: Format.withAlpha(PageStyle.rangePanelTop, _root.backgroundOpacity) }
        GradientStop { position: 1; color: Format.withAlpha(PageStyle.deepPanel, _root.backgroundOpacity) }
    }

    // As high as the buttons, which are the highest of the row.
    PillButton {
        id: _sample

        visible: false
        text: "0"
    }

    RowLayout {
        id: _row

        anchors { left: parent.left; right: parent.right; verticalCenter: parent.verticalCenter }
        anchors { leftMargin: _root._tight ? 8 : 16; rightMargin: _root._tight ? 8 : 16 }
        spacing: _root._tight ? 4 : 8

        Text {
            Layout.rightMargin: 6
            visible: !_root._narrow
            text: _root.title
            color: PageStyle.dimText
            font.family: GenFontManager.mainFontFamily
            font.pointSize: 11
        }

        Repeater {
            model: _root.options.length

            PillButton {
                required property int index

                text: _root.options[index].label
                checkable: true
                active: index === _root.currentIndex
                backgroundOpacity: _root.backgroundOpacity
                leftPadding: _root._tight ? 8 : 14
                rightPadding: leftPadding
                minimumWidth: _root._tight ? 0 : 64
                Accessible.name: _root.title + " " + text
                onClicked: _root.selected(index)
            }
        }

        Item { Layout.fillWidth: true }

        ConnectionBadge {
            connected: _root.connected
            text: _root.connectionText
            lampOnly: _root._narrow
        }
    }
}
