// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Window 2.15
import GenControl 1.0

import "../../customize"
import "../../customize/EnterKey.js" as EnterKey

/// The actions of a table row: a single item. Give it the focus when it is shown. A press beside it, anywhere in the
/// window, dismisses it and does nothing else.
FocusScope {
    id: _root

    property string text

    signal triggered()
    signal dismissed()

    readonly property bool _windowActive: Window.active

    implicitWidth: _item.implicitWidth + 8
    implicitHeight: _item.implicitHeight + 8

    Keys.onEscapePressed: dismissed()
    on_WindowActiveChanged: {
        if (visible && !_windowActive)
            dismissed()
    }

    MouseArea {
        parent: _root.Window.contentItem
        width: parent ? parent.width : 0
        height: parent ? parent.height : 0
        z: GenControl.zOrderTopMost
        visible: _root.visible
        acceptedButtons: Qt.AllButtons
        onPressed: function(mouse) {
            var place = mapToItem(_root, mouse.x, mouse.y)
            mouse.accepted = !_root.contains(Qt.point(place.x, place.y))
            if (mouse.accepted)
                _root.dismissed()
        }
        onWheel: _root.dismissed()
    }

    Rectangle {
        anchors.fill: parent
        radius: 6
        color: PageStyle.infoPanelTop
        border.width: 1
        border.color: PageStyle.menuBorder
    }

    AbstractButton {
        id: _item

        anchors.fill: parent
        anchors.margins: 4
        implicitWidth: Math.max(132, _label.implicitWidth + 28)
        implicitHeight: Math.max(32, _label.implicitHeight + 12)
        focus: true
        hoverEnabled: true
        text: _root.text

        Accessible.role: Accessible.MenuItem
        Accessible.name: text

        Keys.onPressed: EnterKey.activate(event, clicked)
        onClicked: _root.triggered()

        background: Rectangle {
            radius: 4
            color: _item.hovered || _item.activeFocus ? PageStyle.selectedRow : "transparent"
        }
        contentItem: Text {
            id: _label

            text: _item.text
            color: PageStyle.titleText
            font.family: GenFontManager.mainFontFamily
            font.pointSize: 10.5
            leftPadding: 8
            verticalAlignment: Text.AlignVCenter
        }
    }
}
