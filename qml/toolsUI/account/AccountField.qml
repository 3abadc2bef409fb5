// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12

import "../../customize"
import "../common"

/// A labelled input; beside its label where there is room, below it in a compact page.
Item {
    id: _root

    required property PageLook look
    property string label
    /// A password field, with the button that shows it; else a text field with a clear button.
    property bool secret: false
    property alias text: _field.text

    readonly property bool _stacked: width < 400
    readonly property real _labelWidth: 150

    width: parent ? parent.width : 0
    height: _field.y + _field.height

    Text {
        id: _label

        y: _root._stacked ? 0 : (_field.height - height) / 2
        width: _root._stacked ? parent.width : _root._labelWidth
        text: _root.label
        color: PageStyle.accountDim
        font.family: GenFontManager.mainFontFamily
        font.pointSize: _root.look.point(11)
        elide: Text.ElideRight
        rightPadding: -PageStyle.roundingSlack
    }
    GenTextField {
        id: _field

        objectName: "input"
        x: _root._stacked ? 0 : _root._labelWidth + 16
        y: _root._stacked ? _label.height + 4 : 0
        width: parent.width - x
        height: 38
        showClearButton: !_root.secret
        passwordMode: _root.secret
        color: PageStyle.accountText
        font.pointSize: _root.look.point(11)
        Accessible.name: _root.label
        Accessible.passwordEdit: _root.secret && !passwordVisible
    }
}
