// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12

import "EnterKey.js" as EnterKey
import "Format.js" as Format

Rectangle {
    id: root

    property bool checked: false
    property real backgroundOpacity: 1
    property int switchWidth: 50
    property int switchHeight: 24

    signal toggled(bool checked)

    implicitWidth: switchWidth
    implicitHeight: switchHeight
    width: switchWidth
    height: switchHeight
    radius: height / 2
    color: Format.withAlpha(PageStyle.switchTrack, backgroundOpacity)
    border.width: 1
    border.color: Format.withAlpha(checked ? PageStyle.switchBorderOn : PageStyle.switchBorder, backgroundOpacity)
    activeFocusOnTab: true

    Accessible.role: Accessible.CheckBox
    Accessible.checkable: true
    Accessible.checked: checked
    Accessible.focusable: true
    Accessible.onToggleAction: toggle()
    Accessible.onPressAction: toggle()

    Keys.onSpacePressed: toggle()
    Keys.onPressed: EnterKey.activate(event, toggle)

    function toggle() {
        checked = !checked
        toggled(checked)
    }

    Rectangle {
        id: _knob

        readonly property real _inset: 2

        width: root.switchHeight - 4
        height: width
        radius: width / 2
        anchors.verticalCenter: parent.verticalCenter
        x: root.checked ? root.width - width - _inset : _inset
        color: root.checked ? PageStyle.switchKnobOn : PageStyle.switchKnob

        Behavior on x {
            NumberAnimation { duration: 200; easing.type: Easing.InOutQuad }
        }
    }

    FocusRing {
        anchors.margins: -3
        radius: root.radius + 3
        shown: root.activeFocus && !_area.pressed
    }

    MouseArea {
        id: _area

        anchors.fill: parent
        cursorShape: Qt.PointingHandCursor
        onClicked: root.toggle()
    }
}
