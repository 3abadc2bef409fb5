// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
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

        FlatButton {
            id: _toggle

            readonly property real _rightX: _header.width - width - ScreenTools.defaultFontPixelWidth
            // 1 in the middle, 0 at the right. Animating the place itself would lag behind the column's width.
            property real _centred: _root.collapsed ? 1 : 0

            width: ScreenTools.defaultFontPixelWidth * 4.2
            height: width
            x: _rightX + _centred * ((_header.width - width) / 2 - _rightX)
            anchors.verticalCenter: parent.verticalCenter
            radius: 10
            fill: hovered ? Format.withAlpha(PageStyle.windowAccent, 0.28 * _root.backgroundOpacity)
                          : Format.withAlpha(PageStyle.toggleFill, 0.72 * _root.backgroundOpacity)
            frame: hovered ? PageStyle.toggleBorderHover : Format.withAlpha(PageStyle.windowAccent, 0.46)
            focusPolicy: Qt.TabFocus
            text: _root.collapsed ? ">" : "<"

            Accessible.name: _root.collapsed ? qsTr("Expand the page list") : qsTr("Collapse the page list")

            onClicked: _root.toggleRequested()

            Behavior on _centred {
                NumberAnimation { duration: 220; easing.type: Easing.OutCubic }
            }

            contentItem: Text {
                text: _toggle.text
                color: _toggle.hovered ? PageStyle.textHover : PageStyle.accentCyan
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
