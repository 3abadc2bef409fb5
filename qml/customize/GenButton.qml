// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import QtQuick.Controls 1.4
import QtQuick.Controls.Styles 1.4
import GenToolbox 1.0

import "EnterKey.js" as EnterKey
import "Format.js" as Format

Button {
    id: _root

    property real backgroundOpacity: 1
    property bool primary: false
    property real pointSize: 11
    property bool showBorder: true
    property bool iconLeft: true
    property real backRadius: 4
    property real heightFactor: 0.5
    property color defaultBorderColor: GenToolbox.genPalette.button

    /// It has the focus, and not from the mouse.
    readonly property bool visualFocus: activeFocus && _keyboardFocus

    readonly property bool _highlighted: checked || (!_hoverForcedOff && (pressed || hovered))

    property bool _hoverForcedOff: false
    property int _lastCursorX: 0
    property int _lastCursorY: 0
    property bool _keyboardFocus: false

    clip: true
    activeFocusOnPress: true

    Accessible.name: text

    Keys.onPressed: EnterKey.activate(event, _triggerByKey)

    onHoveredChanged: {
        _hoverForcedOff = false
        if (hovered)
            _recordCursor()
        _hoverTimer.running = hovered
    }
    onActiveFocusChanged: _keyboardFocus = activeFocus && !__behavior.pressed
    onPressedChanged: {
        if (__behavior.pressed)
            _keyboardFocus = false
    }

    function _recordCursor() {
        _lastCursorX = GenToolbox.screenTool.mouseX()
        _lastCursorY = GenToolbox.screenTool.mouseY()
    }

    // The window system may not report that the cursor left, for example when the window is moved away
    // under it: a cursor that moved without this button seeing it is no longer inside.
    function _checkCursor() {
        if (GenToolbox.screenTool.mouseX() !== _lastCursorX || GenToolbox.screenTool.mouseY() !== _lastCursorY)
            _hoverForcedOff = true
    }

    function _triggerByKey() {
        __behavior.toggle()
        __action.trigger(_root)
    }

    Connections {
        target: _root.__behavior
        function onPositionChanged() { _root._recordCursor() }
    }

    Timer {
        id: _hoverTimer

        interval: 250
        repeat: true
        onTriggered: _root._checkCursor()
    }

    style: ButtonStyle {
        padding {
            left: 8
            right: 8
            top: Math.round(10 * _root.heightFactor)
            bottom: Math.round(10 * _root.heightFactor)
        }
        background: Rectangle {
            implicitWidth: 120
            implicitHeight: 40
            radius: _root.backRadius
            color: Format.faded(_root._highlighted ? GenToolbox.genPalette.selectButtonColor
                                : _root.primary ? GenToolbox.genPalette.primaryButton
                                                : GenToolbox.genPalette.button, _root.backgroundOpacity)
            border.width: _root.showBorder ? 1 : 0
            border.color: Format.faded(_root._highlighted ? GenToolbox.genPalette.selectButtonBorderColor
                                                          : _root.defaultBorderColor, _root.backgroundOpacity)

            FocusRing {
                radius: parent.radius
                shown: _root.visualFocus
            }
        }
        label: Item {
            implicitWidth: _row.implicitWidth
            implicitHeight: _row.implicitHeight
            opacity: _root.enabled ? 1 : 0.3

            Row {
                id: _row

                anchors.centerIn: parent
                spacing: 8
                layoutDirection: _root.iconLeft ? Qt.LeftToRight : Qt.RightToLeft

                GenColoredImage {
                    anchors.verticalCenter: parent.verticalCenter
                    visible: String(_root.iconSource).length > 0
                    width: height
                    height: _text.implicitHeight
                    color: PageStyle.buttonPicture
                    source: _root.iconSource
                }
                Text {
                    id: _text

                    anchors.verticalCenter: parent.verticalCenter
                    visible: text.length > 0
                    text: _root.text
                    color: GenToolbox.genPalette.buttonText
                    font.family: GenFontManager.mainFontFamily
                    font.pointSize: _root.pointSize
                }
            }
        }
    }
}
