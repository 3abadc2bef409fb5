// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import GenToolbox 1.0

import "../../customize"

/// Whether the server answers.
SettingsCard {
    id: _root

    readonly property bool _online: GenToolbox.systemManager.serverConnected
    readonly property color _color: _online ? PageStyle.settingsOk : PageStyle.settingsWarning

    title: qsTranslate("SysSettings", "Server Link")

    Item {
        width: parent.width
        height: _text.height

        Rectangle {
            anchors.verticalCenter: parent.verticalCenter
            width: 12
            height: 12
            radius: 6
            color: _root.look.fill(_root._color, 0.3)

            Rectangle {
                anchors.centerIn: parent
                width: 6
                height: 6
                radius: 3
                color: _root._color
            }
        }
        Text {
            id: _text

            x: 22
            width: parent.width - x
            text: _root._online ? qsTranslate("SysSettings", "Online, checked automatically every 10 seconds.")
                                : qsTranslate("SysSettings", "Offline or unreachable, retrying automatically.")
            color: _root._color
            font.family: GenFontManager.mainFontFamily
            font.pointSize: _root.look.point(10.5)
            wrapMode: Text.Wrap
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }
}
