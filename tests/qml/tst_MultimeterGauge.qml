// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import QtTest 1.12
import GenControl.ScreenTools 1.0
import GenToolbox 1.0

Item {
    id: _root

    property var _page: null

    width: 1000
    height: 640

    TestCase {
        name: "MultimeterGauge"
        when: windowShown

        readonly property var _link: GenToolbox.hidLink

        function openPage() {
            var component = Qt.createComponent("qrc:/qml/toolsUI/MultimeterGauge.qml")
            compare(component.status, Component.Ready, component.errorString())
            _root._page = component.createObject(_root, { width: _root.width, height: _root.height })
            waitForRendering(_root._page)
        }

        function find(item, matches) {
            if (matches(item))
                return item
            for (var i = 0; i < item.children.length; ++i) {
                var found = find(item.children[i], matches)
                if (found)
                    return found
            }
            return null
        }

        function button(text) {
            return find(_root._page, function(item) { return item.text === text && item.clicked !== undefined })
        }

        function table() {
            return find(_root._page, function(item) { return item.menuRequested !== undefined })
        }

        function menu() {
            return find(_root._page, function(item) { return item.dismissed !== undefined })
        }

        function readingPanel() {
            return find(_root._page, function(item) { return item.heading !== undefined })
        }

        function rowTexts() {
            return _link.multimeterCurrentTable.map(function(row) { return row.ResistanceValue }).join(" ")
        }

        function record(texts) {
            texts.split(" ").forEach(function(text) { TestInstrument.read(2, text, 5) })
        }

        function rightClickRow(row) {
            var item = table().listView.itemAtIndex(row)
            mouseClick(item, 40, item.height / 2, Qt.RightButton)
        }

        function initTestCase() {
            GenApp.setLanguage(1)
        }

        function init() {
            GenToolbox.genSettings.setValue("historyTableVisible", true, "multimeterGauge")
            TestInstrument.plugIn()
        }

        function cleanup() {
            if (_root._page)
                _root._page.destroy()
            _root._page = null
            TestInstrument.unplug()
            wait(0)
        }

        function test_functionButtonsAskTheInstrument_data() {
            return [
                { tag: "Voltage", layer1: 0 }, { tag: "Resistance", layer1: 1 }, { tag: "Capacitance", layer1: 2 },
                { tag: "Diode", layer1: 3 }, { tag: "Buzzer", layer1: 4 }
            ]
        }

        function test_functionButtonsAskTheInstrument(data) {
            openPage()
            // The second click changes nothing.
            for (var i = 0; i < 2; ++i) {
                mouseClick(button(data.tag))
                compare(TestInstrument.lastRequest(), [0x10, 1, 4, data.layer1, 255, 255])
                compare(button(data.tag).active, true)
                compare(button(data.tag).checked, true)
            }
            compare(readingPanel().heading, data.tag + " Gear")
        }

        function test_functionByKeyboard() {
            openPage()
            button("Diode").forceActiveFocus(Qt.TabFocusReason)
            keyClick(Qt.Key_Return)
            compare(TestInstrument.lastRequest()[3], 3)
        }

        function test_followsTheInstrument() {
            openPage()
            compare(readingPanel().heading, "Disable")
            TestInstrument.read(3, "1.5nF")
            compare(readingPanel().heading, "Capacitance Gear")
            TestInstrument.choose(4, 4)
            compare(button("Buzzer").active, true)
            TestInstrument.choose(4, 7)
            TestInstrument.choose(3, 1)
            compare(button("Buzzer").active, true)
        }

        // The instrument reports its buzzer function as diode. A reading of the former function may still come
        // after the click.
        function test_buzzerStaysLit_data() {
            return [{ tag: "at once", late: 0 }, { tag: "after a late reading", late: 1 }]
        }

        function test_buzzerStaysLit(data) {
            openPage()
            TestInstrument.read(1, "1.000V")
            mouseClick(button("Buzzer"))
            TestInstrument.read(1, "1.000V", data.late)
            TestInstrument.read(4, "0.512V")
            compare(button("Buzzer").active, true)
            TestInstrument.read(1, "5.000V")
            compare(button("Voltage").active, true)
            compare([button("Voltage").checked, button("Buzzer").checked], [true, false])
            TestInstrument.read(4, "0.512V")
            compare(button("Diode").active, true)
        }

        function test_readingIsSplit_data() {
            return [
                { tag: "number", text: "4.7kOhm", value: "4.7", unit: "kΩ" },
                { tag: "over range", text: "OL", value: "OL", unit: " " },
                { tag: "nothing", text: "", value: "--", unit: " " }
            ]
        }

        function test_readingIsSplit(data) {
            openPage()
            TestInstrument.read(2, data.text)
            tryCompare(readingPanel(), "value", data.value)
            tryCompare(readingPanel(), "unit", data.unit)
            TestInstrument.unplug()
            compare(readingPanel().value, "--")
            compare(readingPanel().unit, " ")
            compare(readingPanel().connectionText, "Not Connected")
        }

        function test_deleteByMenu() {
            openPage()
            record("1.0kOhm 2.0kOhm 3.0kOhm")
            tryCompare(table().listView, "count", 3)
            tryVerify(function() { return table().listView.itemAtIndex(1) !== null })
            rightClickRow(1)
            compare(_root._page._contextMenuVisible, true)
            compare(_root._page._contextMenuRow, 1)
            mouseClick(menu())
            compare(rowTexts(), "3.0kΩ 1.0kΩ")
            compare(_root._page._contextMenuVisible, false)
            compare(_root._page._contextMenuRow, -1)
        }

        // A reading that arrives above the row does not change what the open menu deletes.
        function test_menuStaysWithItsRow() {
            openPage()
            record("1.0kOhm 2.0kOhm")
            tryVerify(function() { return table().listView.itemAtIndex(1) !== null })
            rightClickRow(1)
            record("3.0kOhm")
            mouseClick(menu())
            compare(rowTexts(), "3.0kΩ 2.0kΩ")
            rightClickRow(0)
            _link.clearMultimeterCurrentTable()
            compare(_root._page._contextMenuVisible, false)
        }

        function test_deleteByKeyboard() {
            openPage()
            record("1.0kOhm 2.0kOhm 3.0kOhm")
            tryCompare(table().listView, "count", 3)
            table().listView.forceActiveFocus()
            keyClick(Qt.Key_Down)
            keyClick(Qt.Key_Delete)
            compare(rowTexts(), "3.0kΩ 1.0kΩ")
            keyClick(Qt.Key_Menu)
            compare(_root._page._contextMenuVisible, true)
            keyClick(Qt.Key_Escape)
            compare(_root._page._contextMenuVisible, false)
            compare(rowTexts(), "3.0kΩ 1.0kΩ")
            keyClick(Qt.Key_F10, Qt.ShiftModifier)
            keyClick(Qt.Key_Return)
            compare(_link.multimeterCurrentTable.length, 1)
        }

        function test_menuStaysInThePage_data() {
            return [
                { tag: "upper left", x: -50, y: 0 }, { tag: "lower right", x: 2000, y: 2000 },
                { tag: "inside", x: 300, y: 200 }
            ]
        }

        function test_menuStaysInThePage(data) {
            openPage()
            _root._page.showTableContextMenu(-1, data.x, data.y)
            compare(_root._page._contextMenuVisible, false)
            _root._page.showTableContextMenu(0, data.x, data.y)
            verify(menu().x >= 8 && menu().x + menu().width <= _root._page.width - 8)
            verify(menu().y >= 8 && menu().y + menu().height <= _root._page.height - 8)
            if (data.tag === "inside")
                compare([menu().x, menu().y], [data.x, data.y])
            mouseClick(_root._page, data.tag === "upper left" ? 900 : 20, 300)
            compare(_root._page._contextMenuVisible, false)
        }

        function test_tableVisibilityIsKept() {
            openPage()
            compare(table().height, _root._page.historyTableExpandedHeight)
            mouseClick(button("Hide Records"))
            tryCompare(table(), "visible", false)
            compare(GenToolbox.genSettings.bValue("historyTableVisible", true, "multimeterGauge"), false)
            _root._page.destroy()
            openPage()
            compare(_root._page._historyTableVisible, false)
            fuzzyCompare(readingPanel().height, _root._page.height * 0.52, 1)
            mouseClick(button("Show Records"))
            tryCompare(table(), "opacity", 1)
            tryVerify(function() { return Math.abs(readingPanel().height - _root._page.height * 0.32) < 1 })
        }

        // As high as the window's minimum leaves it.
        function test_lowPageShowsTheWholeTable() {
            openPage()
            _root._page.height = 45 * ScreenTools.defaultFontPixelWidth
            tryVerify(function() { return table().height === _root._page.historyTableExpandedHeight })
            tryVerify(function() { return table().y + table().height <= _root._page.height - 2 * table().parent.y })
        }

        function test_clear() {
            openPage()
            record("1.0kOhm 2.0kOhm")
            mouseClick(button("Clear"))
            compare(table().listView.count, 0)
            compare(_link.multimeterCurrentTable.length, 0)
        }
    }
}
