// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import QtQuick.Controls 2.12
import QtQuick.Window 2.12
import GenToolbox 1.0

TextField {
    id: _root

    property bool showClearButton: false
    property bool passwordMode: false
    property bool passwordVisible: false
    property int inputHint: Qt.ImhLatinOnly | Qt.ImhPreferLowercase | Qt.ImhNoAutoUppercase
    property string icon: ""

    // The buttons stay while the focus is on themselves, so that Tab can reach them.
    readonly property bool _focusInside: activeFocus || _clearButton.activeFocus || _eyeButton.activeFocus
    readonly property real _buttonSize: Math.min(_dp(45), height * 0.6)

    implicitHeight: Math.max(contentHeight + topPadding + bottomPadding, 36)
    leftPadding: icon.length > 0 ? _icon.x + _icon.width + _dp(16) : _dp(24)
    rightPadding: _dp(16) + (showClearButton ? _buttonSize + _dp(8) : 0) + (passwordMode ? _buttonSize + _dp(8) : 0)
    color: GenToolbox.genPalette.text
    placeholderTextColor: PageStyle.fieldPlaceholder
    selectionColor: GenToolbox.genPalette.selectButtonColor
    selectedTextColor: GenToolbox.genPalette.text
    selectByMouse: true
    verticalAlignment: TextInput.AlignVCenter
    font.family: GenFontManager.mainFontFamily
    font.pointSize: 11
    inputMethodHints: inputHint
    passwordMaskDelay: 300
    echoMode: passwordMode && !passwordVisible ? TextInput.Password : TextInput.Normal

    background: Rectangle {
        implicitWidth: 200
        color: PageStyle.field
        radius: 4
        border.width: 1
        border.color: PageStyle.fieldBorder

        FocusRing {
            radius: parent.radius
            shown: _root.activeFocus
        }
    }

    // Lengths follow the main window's scale; outside it, the scale's own rule.
    function _dp(length) {
        var window = Window.window
        return window && window.dp ? window.dp(length) : length * Screen.pixelDensity * 0.12
    }

    GenColoredImage {
        id: _icon

        x: _root._dp(20)
        anchors.verticalCenter: parent.verticalCenter
        visible: _root.icon.length > 0
        height: _root.height * 0.5
        width: height
        color: _root.activeFocus ? PageStyle.fieldIconFocus : PageStyle.fieldIcon
        source: _root.icon
    }

    TextFieldButton {
        id: _clearButton

        size: _root._buttonSize
        picture: "qrc:/basic/close.svg"
        anchors.right: parent.right
        anchors.rightMargin: _root._dp(12)
        visible: _root.showClearButton && _root._focusInside && _root.text.length > 0
        Accessible.name: qsTr("Clear text")
        onClicked: {
            _root.forceActiveFocus()
            _root.clear()
        }
    }

    TextFieldButton {
        id: _eyeButton

        size: _root._buttonSize
        picture: "qrc:/basic/close2.svg"
        lit: _root.passwordVisible
        anchors.right: _root.showClearButton ? _clearButton.left : parent.right
        anchors.rightMargin: _root.showClearButton ? _root._dp(8) : _root._dp(12)
        visible: _root.passwordMode && _root._focusInside && _root.text.length > 0
        Accessible.name: _root.passwordVisible ? qsTr("Hide password") : qsTr("Show password")
        onClicked: _root.passwordVisible = !_root.passwordVisible
    }
}
