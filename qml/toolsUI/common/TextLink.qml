// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.15

import "../../customize"
import "../../customize/EnterKey.js" as EnterKey

/// An underlined text that does something when it is clicked or when Enter or Space is pressed on it.
Text {
    id: _root

    property bool active: true

    signal clicked()

    font.family: GenFontManager.mainFontFamily
    font.underline: true
    textFormat: Text.PlainText
    activeFocusOnTab: active
    opacity: _area.containsMouse && active ? 0.75 : 1

    Accessible.role: active ? Accessible.Link : Accessible.StaticText
    Accessible.name: text
    Accessible.onPressAction: _root._trigger()

    Keys.onPressed: EnterKey.activate(event, _trigger)
    Keys.onSpacePressed: _trigger()

    function _trigger() {
        if (active)
            clicked()
    }

    FocusRing {
        anchors.margins: -3
        shown: _root.activeFocus && !_area.pressed
    }
    MouseArea {
        id: _area

        anchors.fill: parent
        enabled: _root.active
        hoverEnabled: true
        cursorShape: Qt.PointingHandCursor
        onClicked: _root.clicked()
    }
}
