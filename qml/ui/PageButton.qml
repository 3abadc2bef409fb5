// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import GenToolbox 1.0

import "../customize"

/// A page of the page column: its icon alone while `collapsed`, else icon and title.
GenButton {
    id: _root

    property string title: ""
    property url icon
    property bool collapsed: true

    // One title begins with a blank, which is part of its translation key only.
    readonly property string _shownTitle: title.trim()

    checkable: true
    backRadius: 6
    Accessible.name: _shownTitle
    Accessible.role: Accessible.PageTab

    Behavior on height {
        NumberAnimation { duration: 220; easing.type: Easing.OutCubic }
    }

    GenColoredImage {
        anchors.centerIn: parent
        width: 24
        height: 24
        color: GenToolbox.genPalette.buttonText
        source: _root.icon
        opacity: _root.collapsed ? 1 : 0
        visible: opacity > 0

        Behavior on opacity {
            NumberAnimation { duration: 140 }
        }
    }
    // Only once the list was expanded: a window starts with it collapsed, and should start at once.
    Loader {
        anchors { fill: parent; leftMargin: 18; rightMargin: 12 }
        active: !_root.collapsed || opacity > 0
        opacity: _root.collapsed ? 0 : 1
        visible: opacity > 0
        sourceComponent: Item {
            GenColoredImage {
                id: _icon

                anchors.verticalCenter: parent.verticalCenter
                width: 24
                height: 24
                color: GenToolbox.genPalette.buttonText
                source: _root.icon
            }
            Text {
                anchors {
                    left: _icon.right
                    leftMargin: 12
                    right: parent.right
                    verticalCenter: parent.verticalCenter
                }
                text: _root._shownTitle
                color: GenToolbox.genPalette.buttonText
                font.family: GenFontManager.mainFontFamily
                font.pixelSize: 16
                elide: Text.ElideRight
                rightPadding: -PageStyle.roundingSlack
            }
        }

        Behavior on opacity {
            NumberAnimation { duration: 120 }
        }
    }
    HoverTip {
        target: _root
        text: _root._shownTitle
        shown: _root.collapsed && _root.hovered
        beside: true
    }
}
