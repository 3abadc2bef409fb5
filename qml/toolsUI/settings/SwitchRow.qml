// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12

import "../../customize"
import "../common"

/// A switch with its name and a line that tells what its present position means.
Item {
    id: _root

    required property PageLook look
    property string label
    property string line
    property alias checked: _switch.checked

    signal toggled(bool checked)

    width: parent ? parent.width : 0
    height: Math.max(_texts.height, _switch.height)

    Column {
        id: _texts

        anchors { left: parent.left; right: _switch.left; rightMargin: 16; verticalCenter: parent.verticalCenter }
        spacing: 2

        Text {
            width: parent.width
            text: _root.label
            color: PageStyle.settingsText
            font.family: GenFontManager.mainFontFamily
            font.pointSize: _root.look.point(11)
            wrapMode: Text.Wrap
        }
        Text {
            width: parent.width
            text: _root.line
            color: PageStyle.settingsDim
            font.family: GenFontManager.mainFontFamily
            font.pointSize: _root.look.point(10)
            wrapMode: Text.Wrap
        }
    }
    GenSwitch {
        id: _switch

        objectName: "switch"
        anchors { right: parent.right; rightMargin: 2; verticalCenter: parent.verticalCenter }
        Accessible.name: _root.label
        Accessible.description: _root.line
        onToggled: _root.toggled(checked)
    }
}
