// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.15
import QtQuick.Layouts 1.15

import "../../customize"
import "../common"

/// Shows and hides the table of recorded readings, and clears it.
RowLayout {
    id: _root

    property bool expanded: true
    property string toggleText
    property string clearText
    property bool clearEnabled: true
    /// Opacity of the window's background, 0 to 1; the fills are multiplied with it.
    property real backgroundOpacity: 1

    signal toggled()
    signal clearClicked()

    PillButton {
        id: _toggle

        text: _root.toggleText
        backgroundOpacity: _root.backgroundOpacity
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
        backgroundOpacity: _root.backgroundOpacity
        enabled: _root.clearEnabled
        opacity: enabled ? 1 : 0.45
        onClicked: _root.clearClicked()
    }
}
