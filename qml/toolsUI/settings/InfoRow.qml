// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12

import "../../customize"
import "../common"

/// A label at the left with a value, or a control given as content, at its right.
Item {
    id: _root

    required property PageLook look
    property string label
    property string value
    property color valueColor: PageStyle.settingsText
    property real labelWidth: look.labelWidth

    default property alias content: _content.data

    readonly property real _spacing: 12

    width: parent ? parent.width : 0
    height: Math.max(_label.height, _value.visible ? _value.height : _content.height)

    Text {
        id: _label

        anchors.verticalCenter: parent.verticalCenter
        width: _root.labelWidth
        text: _root.label
        color: PageStyle.settingsDim
        font.family: GenFontManager.mainFontFamily
        font.pointSize: _root.look.point(10.5)
        wrapMode: Text.Wrap
    }
    Text {
        id: _value

        anchors { left: _label.right; leftMargin: _root._spacing; right: parent.right }
        anchors.verticalCenter: parent.verticalCenter
        visible: text.length > 0
        text: _root.value
        textFormat: Text.PlainText
        color: _root.valueColor
        font.family: GenFontManager.mainFontFamily
        font.pointSize: _root.look.point(10.5)
        wrapMode: Text.WrapAtWordBoundaryOrAnywhere
        Accessible.role: Accessible.StaticText
        Accessible.name: _root.label + " " + text
    }
    Item {
        id: _content

        anchors { left: _label.right; leftMargin: _root._spacing; right: parent.right }
        anchors.verticalCenter: parent.verticalCenter
        height: childrenRect.height
        visible: !_value.visible
    }
}
