// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12

import "../../customize"
import "../common"

/// The way back to the login form, and the form's own button.
Row {
    id: _root

    property bool compact: false
    property alias text: _action.text

    signal backClicked()

    readonly property real _buttonWidth: compact ? 116 : 160

    anchors.horizontalCenter: parent.horizontalCenter
    spacing: 16
    topPadding: 8

    PillButton {
        objectName: "backButton"
        width: _root._buttonWidth
        height: 40
        pointSize: 10
        text: qsTranslate("UserSettings", "Back", "返回")
        onClicked: _root.backClicked()
    }
    GenTextButton {
        id: _action

        primary: true
        minWidth: _root._buttonWidth
    }
}
