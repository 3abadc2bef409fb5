// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import QtTest 1.12
import GenControl.ScreenTools 1.0
import GenToolbox 1.0

import "qrc:/qml/customize"
import "qrc:/qml/customize/Format.js" as Format

Item {
    id: _root

    width: 400
    height: 400

    GenSwitch { id: _switch }
    GenSpinBox { id: _spinBox; x: 80; to: 10000; value: 1234 }
    GenTextField { id: _field; y: 50; width: 200; showClearButton: true }
    GenTextField { id: _password; y: 100; width: 200; passwordMode: true }
    GenButton { id: _button; y: 150; text: "Go"; iconSource: "qrc:/basic/close.svg" }
    GenCombobox { id: _combobox; y: 200; model: ["<b>one</b>", "two"] }
    GenCheckbox { id: _checkbox; y: 250 }
    GenTextButton { id: _textButton; y: 300 }
    GenLabel { x: 250; text: "label" }
    GenSlider { id: _slider; y: 350 }
    GenMouseArea { id: _mouseArea; x: 300; y: 300; width: 20; height: 20 }

    GenColoredImage {
        id: _picture

        x: 300
        width: 40
        height: 40
        color: "#ff8000"
        source: "qrc:/basic/checkbox-blank.svg"
    }

    SignalSpy { id: _toggled; target: _switch; signalName: "toggled" }
    SignalSpy { id: _areaClicked; target: _mouseArea; signalName: "clicked" }

    TestCase {
        name: "Controls"
        when: windowShown

        function pictureButton(field, picture) {
            return Array.from(field.children).find(function(child) { return child.picture === picture })
        }

        function cleanup() {
            mouseMove(_root, 399, 1)
        }

        function test_switchInvertsByMouseAndKeyboard() {
            mouseClick(_switch)
            _switch.forceActiveFocus()
            for (var key of [Qt.Key_Space, Qt.Key_Return, Qt.Key_Enter])
                keyClick(key)
            compare(_toggled.signalArguments.map(function(row) { return row[0] }), [true, false, true, false])
            compare(_switch.checked, false)
        }

        function test_spinBoxCountsHundredths() {
            compare([_spinBox.realValue, _spinBox.textFromValue(1234, Qt.locale("en_US")),
                     _spinBox.valueFromText("12.35", Qt.locale("en_US"))], [12.34, "12.34", 1235])
            _spinBox.forceActiveFocus()
            keyClick(Qt.Key_Up)
            compare(_spinBox.value, 1235)
            mouseClick(_spinBox, 10, _spinBox.height / 2)
            compare(_spinBox.value, 1234)
        }

        function test_textFieldClears() {
            _field.text = "abc"
            _field.forceActiveFocus()
            var button = pictureButton(_field, "qrc:/basic/close.svg")
            verify(button.visible)
            mouseClick(button)
            compare([_field.text, button.visible, _field.activeFocus], ["", false, true])

            _password.text = "abc"
            compare(_password.echoMode, TextInput.Password)
            _password.forceActiveFocus()
            var eye = pictureButton(_password, "qrc:/basic/close2.svg")
            mouseClick(eye)
            compare(_password.echoMode, TextInput.Normal)
            eye.forceActiveFocus()
            keyClick(Qt.Key_Return)
            compare(_password.echoMode, TextInput.Password)
        }

        function test_mouseAreaTakesTwiceItsSize() {
            mouseClick(_root, 292, 310)
            compare(_areaClicked.count, 1)
            mouseClick(_root, 288, 310)
            compare(_areaClicked.count, 1)
        }

        function test_buttonHighlightEndsWhenTheCursorLeavesUnseen() {
            compare(_button._highlighted, false)
            mouseMove(_button, 20, 20)
            compare(_button._highlighted, true)
            // The cursor leaves, but the button gets no event for it.
            TestCursor.moveTo(5, 790)
            tryCompare(_button, "_highlighted", false)
            mouseMove(_root, 399, 399)
            TestCursor.moveTo(7, 790)
            mouseMove(_button, 20, 20)
            compare(_button._highlighted, true)
        }

        function test_comboboxShowsEntriesAndRoles() {
            compare(_combobox.displayText, "<b>one</b>")
            // Entries may come from a server: they are not markup.
            compare(_combobox.contentItem.textFormat, Text.PlainText)
            mouseClick(_combobox)
            for (var keys of [[Qt.Key_Down, Qt.Key_Return], [Qt.Key_Escape]]) {
                tryCompare(_combobox.popup, "opened", true)
                keys.forEach(function(key) { keyClick(key) })
                tryCompare(_combobox.popup, "opened", false)
                compare(_combobox.displayText, "two")
                keyClick(Qt.Key_Return)
            }
            _combobox.popup.close()
        }

        function test_checkboxStartsChecked() {
            compare(_checkbox.checked, true)
            _checkbox.forceActiveFocus()
            keyClick(Qt.Key_Return)
            compare(_checkbox.checked, false)
            compare(String(_checkbox.indicator.source), "qrc:/basic/checkbox-blank.svg")
        }

        function test_sliderTooltipHasTheStepsDecimals() {
            for (var row of [[0.01, "0.50"], [1, "1"], [1e-7, "0.5000000"]]) {
                _slider.stepSize = row[0]
                _slider.value = 0.5
                compare(_slider.tooltip.text, row[1])
            }
        }

        function test_pictureIsPaintedInItsColour() {
            compare(_picture.status, Image.Ready)
            var painted = _picture.children[1]
            compare(painted.status, Image.Ready)
            compare(painted.sourceSize, Qt.size(40, 40))
            _picture.color = "#0040ff"
            verify(String(painted.source).indexOf("0040ff") > 0)
            compare(painted.status, Image.Ready)
        }

        function test_formats_data() {
            return [
                { tag: "number", result: Format.formatMetric(1.23456, 3, " V"), expected: "1.235 V" },
                { tag: "no negative zero", result: Format.formatMetric(-0.0004, 3, " A"), expected: "0.000 A" },
                { tag: "negative", result: Format.formatMetric(-0.0006, 3, " A"), expected: "-0.001 A" },
                { tag: "no number", result: Format.formatMetric(NaN, 3, " V"), expected: "--" },
                { tag: "endless", result: Format.formatMetric(-Infinity, 3, " V"), expected: "--" },
                { tag: "disconnected", result: Format.formatMetric(Format.ifConnected(false, 1), 3, " V"), expected: "--" },
                { tag: "seconds", result: Format.formatSeconds(3725.9), expected: "01:02:05" },
                { tag: "over 99 hours", result: Format.formatSeconds(360000), expected: "100:00:00" },
                { tag: "negative time", result: Format.formatSeconds(-5), expected: "00:00:00" },
                { tag: "no time", result: Format.formatSeconds(NaN), expected: "00:00:00" },
                { tag: "endless time", result: Format.formatSeconds(Infinity), expected: "00:00:00" },
                { tag: "no time, own text", result: Format.formatSeconds(NaN, "--:--:--"), expected: "--:--:--" },
                { tag: "alpha", result: String(Format.withAlpha("#102030", 0.5)), expected: "#80102030" },
                { tag: "alpha above one", result: String(Format.withAlpha("#102030", 7)), expected: "#102030" },
                { tag: "transparent stays", result: Format.faded("transparent", 1).a, expected: 0 }
            ]
        }

        function test_formats(data) {
            compare(data.result, data.expected)
        }
    }
}
