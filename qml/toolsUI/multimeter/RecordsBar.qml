// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import QtQuick.Layouts 1.12

import "../../customize"
import "../common"

/// Shows and hides the table of recorded readings, and clears it.
RowLayout {
    id: _root

    property bool expanded: true
    property string toggleText
    property string clearText
    property bool clearEnabled: true
    property color idleColor: "#1A252E"

    signal toggled()
    signal clearClicked()

    PillButton {
        id: _toggle

        text: _root.toggleText
        idleColor: _root.idleColor
        leftPadding: 32
        onClicked: _root.toggled()

        Text {
            x: 12
            anchors.verticalCenter: parent.verticalCenter
            text: ">"
            color: PageStyle.accentCyan
            font.family: GenFontManager.mainFontFamily
            font.pointSize: 11
            font.bold: true
            rotation: _root.expanded ? 90 : 0

            Behavior on rotation {
                NumberAnimation { duration: 160 }
            }
        }
    }

    Item { Layout.fillWidth: true }

    PillButton {
        text: _root.clearText
        idleColor: _root.idleColor
        enabled: _root.clearEnabled
        opacity: enabled ? 1 : 0.45
        onClicked: _root.clearClicked()
    }
}
