// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12

/// Outline of the control that the keyboard operates. Fill the control with it and bind `shown`.
Rectangle {
    property bool shown: false

    anchors.fill: parent
    visible: shown
    color: "transparent"
    radius: 4
    border.width: 2
    border.color: PageStyle.focus
}
