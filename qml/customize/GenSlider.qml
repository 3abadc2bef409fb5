// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import QtQuick.Controls 2.12

Slider {
    id: control

    property alias tooltip: _tooltip

    readonly property color _tone: Qt.lighter(palette.button, pressed ? 1.0 : 1.1)

    stepSize: 0.01
    padding: 6
    spacing: 3
    focusPolicy: Qt.StrongFocus

    Accessible.role: Accessible.Slider

    function _decimals() {
        var text = String(stepSize)
        var exponent = text.match(/e-(\d+)$/)
        if (exponent)
            return Number(exponent[1])
        var point = text.indexOf(".")
        return point < 0 ? 0 : text.length - point - 1
    }

    background: Rectangle {
        implicitWidth: control.horizontal ? 200 : 1
        implicitHeight: control.horizontal ? 1 : 200
        x: control.leftPadding + (control.horizontal ? 0 : (control.availableWidth - width) / 2)
        y: control.topPadding + (control.horizontal ? (control.availableHeight - height) / 2 : 0)
        width: control.horizontal ? control.availableWidth : 1
        height: control.horizontal ? 1 : control.availableHeight
        color: control.enabled ? control._tone : control.palette.mid
    }
    handle: Rectangle {
        implicitWidth: 15
        implicitHeight: 15
        x: control.leftPadding + (control.horizontal ? control.visualPosition * (control.availableWidth - width)
                                                     : (control.availableWidth - width) / 2)
        y: control.topPadding + (control.horizontal ? (control.availableHeight - height) / 2
                                                    : control.visualPosition * (control.availableHeight - height))
        radius: width / 2
        color: control.palette.window
        border.width: control.pressed ? width / 2 : 1
        border.color: control.enabled ? control._tone : control.palette.mid

        Behavior on border.width {
            NumberAnimation { duration: 80 }
        }

        FocusRing {
            anchors.margins: -3
            radius: width / 2
            shown: control.visualFocus
        }

        ToolTip {
            id: _tooltip

            parent: control.handle
            visible: control.pressed
            timeout: -1
            delay: 100
            opacity: 0.8
            font.family: GenFontManager.mainFontFamily
            text: control.value.toFixed(control._decimals())
        }
    }
}
