// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import QtQuick.Templates 2.12 as Templates
import QtQuick.Window 2.12
import GenControl.ScreenTools 1.0
import GenToolbox 1.0

import "../customize"
import "../customize/Format.js" as Format

/// The left column of the window: logo, toggle and page list.
Rectangle {
    id: _root

    property bool collapsed: true
    property real backgroundOpacity: 1
    // Lies over the page: hides it and keeps the mouse from it.
    property bool overlays: false
    property alias pages: menuTool

    signal toggleRequested()

    clip: true
    color: Format.withAlpha(GenToolbox.genPalette.leftPanelColor, overlays ? 1 : backgroundOpacity)

    MouseArea {
        anchors.fill: parent
        enabled: _root.overlays
        hoverEnabled: true
        acceptedButtons: Qt.AllButtons
        onWheel: wheel.accepted = true
    }
    Item {
        id: _header

        anchors { left: parent.left; right: parent.right; top: parent.top; topMargin: 10 }
        height: _root.collapsed ? 54 : 70

        Image {
            anchors { left: parent.left; leftMargin: 14; verticalCenter: parent.verticalCenter }
            visible: !_root.collapsed
            width: _toggle._rightX - x - 8
            height: parent.height * 0.75
            // Decoding it is a good part of a start, and most windows start with the list collapsed.
            source: _root.collapsed ? "" : "qrc:/res/Quorvel.png"
            // Twice what is shown, in device pixels.
            sourceSize.height: Math.round(height * 2 * Screen.devicePixelRatio)
            fillMode: Image.PreserveAspectFit
            horizontalAlignment: Image.AlignLeft
            asynchronous: true
            mipmap: true
            Accessible.role: Accessible.Graphic
            Accessible.name: "Quorvel"
        }

        Templates.AbstractButton {
            id: _toggle

            readonly property real _rightX: _header.width - width - ScreenTools.defaultFontPixelWidth
            // 1 in the middle, 0 at the right. Animating the place itself would lag behind the column's width.
            property real _centred: _root.collapsed ? 1 : 0

            width: ScreenTools.defaultFontPixelWidth * 4.2
            height: width
            x: _rightX + _centred * ((_header.width - width) / 2 - _rightX)
            anchors.verticalCenter: parent.verticalCenter
            hoverEnabled: true
            focusPolicy: Qt.TabFocus
            text: _root.collapsed ? ">" : "<"

            Accessible.role: Accessible.Button
            Accessible.name: _root.collapsed ? qsTr("Expand the page list") : qsTr("Collapse the page list")

            Keys.onReturnPressed: clicked()
            Keys.onEnterPressed: clicked()
            onClicked: _root.toggleRequested()

            Behavior on _centred {
                NumberAnimation { duration: 220; easing.type: Easing.OutCubic }
            }

            background: Rectangle {
                radius: 10
                color: _toggle.hovered ? Qt.rgba(0.22, 0.88, 0.82, 0.28 * _root.backgroundOpacity)
                                       : Qt.rgba(0.1, 0.2, 0.24, 0.72 * _root.backgroundOpacity)
                border.width: 1
                border.color: _toggle.hovered ? Qt.rgba(0.36, 1, 0.9, 0.78) : Qt.rgba(0.22, 0.88, 0.82, 0.46)

                FocusRing {
                    anchors.margins: -3
                    radius: 13
                    shown: _toggle.visualFocus
                }
            }
            contentItem: Text {
                text: _toggle.text
                color: _toggle.hovered ? "#FFFFFF" : "#36E0D0"
                font.bold: true
                font.pixelSize: 21
                font.family: GenFontManager.mainFontFamily
                horizontalAlignment: Text.AlignHCenter
                verticalAlignment: Text.AlignVCenter
            }
        }
    }

    ToolsIndicators {
        id: menuTool

        anchors { left: parent.left; right: parent.right; top: _header.bottom; bottom: parent.bottom }
        clip: true
        model: GenToolbox.toolsManager.settingsPages
        collapsed: _root.collapsed
    }
}
