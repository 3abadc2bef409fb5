// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import QtQuick.Controls 2.12
import GenToolbox 1.0

/// A spin box of real numbers: the integer value counts hundredths.
SpinBox {
    id: spinbox

    property int decimals: 2
    readonly property real realValue: value / _scale

    readonly property int _scale: 100

    editable: true
    focusPolicy: Qt.StrongFocus
    opacity: enabled ? 1 : 0.3
    leftPadding: 36
    rightPadding: 36
    font.family: GenFontManager.mainFontFamily
    font.pointSize: 11

    Accessible.role: Accessible.SpinBox
    Accessible.name: displayText

    validator: DoubleValidator {
        bottom: Math.min(spinbox.from, spinbox.to)
        top: Math.max(spinbox.from, spinbox.to)
    }
    textFromValue: function(value, locale) {
        return Number(value / _scale).toLocaleString(locale, "f", decimals)
    }
    valueFromText: function(text, locale) {
        return Math.round(Number.fromLocaleString(locale, text) * _scale)
    }

    background: Rectangle {
        implicitWidth: 140
        implicitHeight: 36
        color: PageStyle.field
        radius: 4
        border.width: 1
        border.color: spinbox.activeFocus ? PageStyle.focus : PageStyle.fieldBorder
    }
    contentItem: TextInput {
        text: spinbox.displayText
        font: spinbox.font
        color: GenToolbox.genPalette.text
        selectionColor: GenToolbox.genPalette.selectButtonColor
        selectedTextColor: GenToolbox.genPalette.text
        selectByMouse: true
        horizontalAlignment: Qt.AlignHCenter
        verticalAlignment: Qt.AlignVCenter
        readOnly: !spinbox.editable
        validator: spinbox.validator
        inputMethodHints: Qt.ImhFormattedNumbersOnly
    }
    down.indicator: SpinBoxStep {
        height: spinbox.height
        sign: "−"
        lit: spinbox.down.pressed || spinbox.down.hovered
    }
    up.indicator: SpinBoxStep {
        x: spinbox.width - width
        height: spinbox.height
        sign: "+"
        lit: spinbox.up.pressed || spinbox.up.hovered
    }
}
